// Generates a text piece by piece: LetterSource from the sub-matrix of the letters, WordSource from that of the words. Both begin
// a new sentence with the counts of learned beginnings.
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
  /// Draws from the selected sub-matrix, either from its context on or from the beginning of a sentence.
  TextSource(Matrix& matrix, Method method, bool beginsSentence, SureCopies* copies)
      : matrix_(matrix), method_(method), beginsSentence_(beginsSentence), copies_(copies) {}
  virtual ~TextSource() = default;

  /// The next letter or word; a line feed at the end of a sequence.
  std::vector<int> next();

 protected:
  /// The next item of the beginning of a sentence. Null if the sentence ends here; null with `beginsSentence_` cleared if the
  /// ordinary choice continues.
  virtual std::optional<int> begin() = 0;
  virtual std::vector<int> charactersOf(int item) = 0;
  virtual std::vector<int> lineEnd() = 0;
  /// Sets the context.
  void go(const std::vector<int>& context);

  Matrix& matrix_;
  Method method_;
  bool beginsSentence_;

 private:
  SureCopies* copies_;  ///< null if copies are not measured
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
  std::vector<int> beginning_;            ///< the letters of the sentence that were drawn by begin()
  long long sentencesWithBeginning_ = 0;  ///< how many learned sentences begin with `beginning_`
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
  bool needsBlank_;                            ///< true if the next word needs a blank before it
  std::vector<int> ends_;                      ///< the words that end a sentence, and the symbol of a blank line
  std::vector<Matrix::Successor> beginnings_;  ///< the words that follow one of `ends_`, or begin a text
  std::optional<int> firstWord_;               ///< the first word of a sentence, until the second is drawn
};
