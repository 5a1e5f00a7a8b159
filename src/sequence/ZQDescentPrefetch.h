// Prefetches the records that the next steps down will read. A step reads the front's record, which says where the child lies,
// and the child's. In a large matrix each of them is a cache miss. The starts of a pass don't depend on each other, so each
// record is prefetched some starts before it is read.
//
// If a write in between moves a record, only a prefetch is wasted.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// A place in the trie: a slot and the name of the record that it held. It is good while the slot still holds the record.
struct ZQFront {
  int position = -1;
  ZQMatrixBase::RecordName record = ZQMatrixBase::noRecord;
};

class ZQDescentPrefetch {
 public:
  /// `fronts` has an entry for each start; start i goes on to the coordinate `coordinates`[i * stride].
  ZQDescentPrefetch(const ZQMatrixBase& matrixToRead, const ZQFront* frontsOfStarts, int numberOfStarts, const int* coordinates,
                    int stride)
      : matrix(matrixToRead), fronts(frontsOfStarts), number(numberOfStarts), next(coordinates), distance(stride) {
    for (int start = -farthest; start < 0; ++start) lookAhead(start);
  }

  /// Called before `start` is handled, for each start in turn.
  void lookAhead(int start) {
    if (const int far = start + farthest; far < number) matrix.prefetchSlot(fronts[far].position);
    if (const int far = start + near; far >= 0 && far < number) {
      const int position = fronts[far].position;
      if (position >= 0) matrix.prefetchSlot(matrix.slotOfChild(position, next[static_cast<long long>(far) * distance]));
    }
  }

 private:
  static constexpr int farthest = 16;
  static constexpr int near = 6;

  const ZQMatrixBase& matrix;
  const ZQFront* fronts;
  const int number;
  const int* next;
  const int distance;
};

}  // namespace zmatrix
