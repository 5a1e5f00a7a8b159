// How learned sentences continue from their first letter. A model counts only first letters as starts of a sentence; the starts
// of a longer beginning are its occurrences minus those with a letter before it. With these counts a generated sentence begins
// like learned ones, and not like names with the same capital.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "Matrix.h"

class SentenceStarts {
 public:
  /// The same sub-matrix must be selected at each call of after().
  SentenceStarts(Matrix& matrix, int phraseLimit) : matrix_(matrix), phraseLimit_(phraseLimit) {}

  /// The letters that follow a beginning, with the number of sentences that begin so. The sentences missing from the sum of these
  /// counts end there. Null if the model can't tell: its phrases are too short, or rules were removed from it.
  const std::optional<std::vector<Matrix::Successor>>& after(const std::vector<int>& beginning);

 private:
  Matrix& matrix_;
  std::size_t phraseLimit_;
  std::map<std::vector<int>, std::optional<std::vector<Matrix::Successor>>> known_;
};
