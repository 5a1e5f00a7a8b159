// Measures copying from the model alone, without the texts. If all occurrences of a context continue with the same item, then so
// does the text that the context was copied from; a path without choices is therefore a copy. A path with choices may be a copy
// too, so the shares are lower bounds.
#pragma once

#include <deque>
#include <vector>

#include "CopiedRuns.h"
#include "Matrix.h"

class SureCopies {
 public:
  explicit SureCopies(Matrix& matrix) : matrix_(matrix) {}

  /// Adds a generated item of the selected sub-matrix: the length of the context it was chosen for, and the characters it writes.
  void follow(int lengthOfContext, int item, int characters);
  /// To be called when a sentence or a text ends, or the context is replaced.
  void breakOff();
  /// The share of the written characters that lie within a sure copy of at least each length.
  CopiedRuns::Shares shares() const;

 private:
  bool isOnlyWayOn(std::size_t lengthOfContext, int item);

  Matrix& matrix_;
  std::vector<int> items_;  ///< the items since the last break, at most the last 2,048
  std::deque<int> copied_;  ///< the characters of each item of the sure copy that ends here
  long long charactersOfCopy_ = 0;
  long long written_ = 0;
  struct Covered {
    long long characters = 0;
    long long upTo = 0;
  };
  std::array<Covered, CopiedRuns::lengths.size()> covered_;
};
