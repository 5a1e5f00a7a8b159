// How learned sentences go on from their first letter. A model counts as a start the first letter of a sentence alone; of a
// longer beginning the starts are its occurrences less those with a letter before it. So a sentence begins as sentences do, and
// not as names do which share their capital.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "Matrix.h"

class SentenceStarts {
 public:
  /// Of the sub-matrix that is selected now and at each question.
  SentenceStarts(Matrix& matrix, int phraseLimit) : matrix_(matrix), phraseLimit_(phraseLimit) {}

  /// The letters that follow a beginning, with the number of sentences that begin so; what the sentences that go on don't make up
  /// are those that end there. None if the model can't tell: its phrases are too short, or rules were taken out of it.
  const std::optional<std::vector<Matrix::Successor>>& after(const std::vector<int>& beginning);

 private:
  Matrix& matrix_;
  std::size_t phraseLimit_;
  std::map<std::vector<int>, std::optional<std::vector<Matrix::Successor>>> known_;
};
