// Finds where sentences begin and end. Characters are items as in TextEncoding.h: the byte of a Windows-1252 character, the code
// point of any other.
#pragma once

#include <vector>

/// Reads a text character by character and reports which one begins a new sentence. A sentence ends after . ! ? or an ellipsis
/// and any closing quotes or brackets, if white space and then a capital letter, a digit or an opening mark follow. The dot of an
/// abbreviation, an initial or an ordinal ends no sentence.
class SentenceReader {
 public:
  /// Reads a character. True if it begins a new sentence after the end of another.
  bool takes(int character);
  /// True if the last word ends a sentence, provided that one begins after it.
  bool isBehindMark() const { return isBehindMark_; }

 private:
  bool isAbbreviation() const;

  std::vector<int> word_;  ///< the characters since the last white space
  bool isBehindMark_ = false;
  bool isBehindWhite_ = false;
};

/// True for control characters, the blank and the no-break space.
bool isWhiteSpace(int character);

/// The last sentence of a text, without white space before it, if it is unfinished; else empty. A blank line ends a sentence too.
std::vector<int> unfinishedSentence(const std::vector<int>& text);

/// Changes the white space of a text so that the library, which has simpler rules, cuts sentences in the same places: a blank
/// line goes after each sentence, a no-break space after a mark that ends none. Both are learned as ordinary white space.
std::vector<int> withMarkedSentences(const std::vector<int>& text);

/// True if a word ends with . ! ? or an ellipsis; a dot counts only after four letters, since it may belong to an abbreviation.
bool surelyEndsSentence(const std::vector<int>& word);

/// True for a capital letter, a digit and an opening mark.
bool mayBeginSentence(int character);
