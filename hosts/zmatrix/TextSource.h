// Where the next piece of a text comes from: from the sub-matrix of the letters, or from that of the words above them. Both begin
// a new sentence as learned sentences begin.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Matrix.h"
#include "SentenceStarts.h"
#include "SureCopies.h"

class TextSource {
 public:
  /// Draws from the sub-matrix that is selected, on from its context, or from the beginning of a sentence.
  TextSource(Matrix& matrix, Method method, bool beginsSentence, SureCopies* copies)
      : matrix_(matrix), method_(method), beginsSentence_(beginsSentence), copies_(copies) {}
  virtual ~TextSource() = default;

  /// A letter or a word; a line feed where a sequence ends.
  std::vector<int> next();

 protected:
  /// An item of the beginning of a sentence. None at its end; none too, with `beginsSentence_` cleared, if the ordinary choice is
  /// to go on.
  virtual std::optional<int> begin() = 0;
  virtual std::vector<int> charactersOf(int item) = 0;
  virtual std::vector<int> lineEnd() = 0;
  /// Sets the context.
  void go(const std::vector<int>& context);

  Matrix& matrix_;
  Method method_;
  bool beginsSentence_;

 private:
  SureCopies* copies_;  ///< null if it isn't asked for
};

class LetterSource : public TextSource {
 public:
  LetterSource(Matrix& matrix, int phraseLimit, Method method, bool beginsSentence, SureCopies* copies)
      : TextSource(matrix, method, beginsSentence, copies), starts_(matrix, phraseLimit) {}

 private:
  std::optional<int> begin() override;
  std::vector<int> charactersOf(int item) override { return {item}; }
  std::vector<int> lineEnd() override { return {'\n'}; }

  SentenceStarts starts_;
  std::vector<int> beginning_;  ///< of the sentence, as long as it is drawn from the starts
  long long sentencesSo_ = 0;   ///< how many learned ones begin so
};

class WordSource : public TextSource {
 public:
  WordSource(Matrix& matrix, int phraseLimit, Method method, bool beginsSentence, bool needsBlank, SureCopies* copies)
      : TextSource(matrix, method, beginsSentence, copies), phraseLimit_(phraseLimit), needsBlank_(needsBlank) {}

 private:
  std::optional<int> begin() override;
  std::vector<int> charactersOf(int symbol) override;
  std::vector<int> lineEnd() override;
  static bool isLineEnd(int symbol);
  void findBeginnings();
  std::vector<Matrix::Successor> successorsOfEnds(const std::vector<int>& words, bool onlyBeginnings);

  int phraseLimit_;
  bool needsBlank_;                            ///< between the word written last and the next
  std::vector<int> ends_;                      ///< the words that end a sentence, and what stands for a blank line
  std::vector<Matrix::Successor> beginnings_;  ///< the words that follow one of those, or begin a text
  std::optional<int> firstWord_;               ///< the one that was drawn, until the second is
};
