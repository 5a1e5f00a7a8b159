// Where sentences begin and end in a text that is given character by character: a Windows-1252 byte as its number, anything else
// as its code point.
#pragma once

#include <vector>

/// Reads a text and tells each character that begins a new sentence. A sentence ends at a mark, with what closes behind it, where
/// white space and then anything but a small letter follow; not at the dot of an abbreviation, of an initial or of an ordinal.
class SentenceReader {
 public:
  /// True if the character begins a sentence and another one ended before it.
  bool takes(int character);
  /// True if what was read last would end a sentence if one began behind it.
  bool isBehindMark() const { return isBehindMark_; }

 private:
  bool isAbbreviation() const;

  std::vector<int> word_;  ///< the characters since the last white space
  bool isBehindMark_ = false;
  bool isBehindWhite_ = false;
};

/// True for what separates words: white space and the no-break space.
bool isWhiteSpace(int character);

/// The part of a text behind its last end of a sentence or blank line, without the white space that follows that. Empty if the
/// text ends with one.
std::vector<int> unfinishedSentence(const std::vector<int>& text);

/// The text with its white space changed so that the library, which cuts sentences by rules of its own, cuts them where they end:
/// a blank line behind each, a no-break space behind a mark that ends none. As it is learned both are white space like any other.
std::vector<int> withMarkedSentences(const std::vector<int>& text);

/// True if a word ends a sentence beyond doubt: a dot counts only behind a word of four letters or more.
bool surelyEndsSentence(const std::vector<int>& word);

/// True if a sentence may begin with this character.
bool mayBeginSentence(int character);
