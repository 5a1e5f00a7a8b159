// What the model itself tells of copying, without the texts. Where all occurrences of a context go on with the same item,
// whatever stretch of a text leads to it goes on with that item too; so a path without a choice is a copy. A path with a choice
// may be one as well, which the model can't tell: its shares are what is copied at least.
#pragma once

#include <deque>
#include <vector>

#include "CopiedRuns.h"
#include "Matrix.h"

class SureCopies {
 public:
  explicit SureCopies(Matrix& matrix) : matrix_(matrix) {}

  /// An item of the selected sub-matrix that was chosen behind a context of so many items, and how many characters it writes.
  void follow(int lengthOfContext, int item, int characters);
  /// A sentence or a text ended, or the context was changed.
  void breakOff();
  /// Of all characters written, those that lie within a sure copy of at least each length.
  CopiedRuns::Shares shares() const;

 private:
  bool isOnlyWayOn(std::size_t lengthOfContext, int item);

  Matrix& matrix_;
  std::vector<int> said_;   ///< items since the last break, the later ones if they are many
  std::deque<int> copied_;  ///< the characters of each item of the sure copy that ends here
  long long charactersOfCopy_ = 0;
  long long written_ = 0;
  struct Covered {
    long long characters = 0;
    long long upTo = 0;
  };
  std::array<Covered, CopiedRuns::lengths.size()> covered_;
};
