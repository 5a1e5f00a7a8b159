// Fetches ahead what the next steps down will read. One step needs five things that each tell where the next one lies: the
// front's record, its first child's slot and record, the wanted child's slot and record. In a large matrix each of them is a
// miss. The starts of a pass don't depend on each other, so each of the five is asked for some starts before it is read.
//
// It only hints: what a write between moves elsewhere was fetched in vain, and nothing else follows from it.
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
    if (const int far = start + farthest; far < number) {
      matrix.prefetchRecord(fronts[far].record);
      matrix.prefetchSlot(fronts[far].position);
    }
    if (const int far = start + 12; far >= 0 && far < number) findFirstChild(far);
    if (const int far = start + 8; far >= 0 && far < number) matrix.prefetchElementAt(firsts[far & mask]);
    if (const int far = start + 5; far >= 0 && far < number) findTarget(far);
    if (const int far = start + 2; far >= 0 && far < number) matrix.prefetchElementAt(targets[far & mask]);
  }

 private:
  static constexpr int farthest = 16;
  static constexpr int mask = farthest - 1;

  void findFirstChild(int start) {
    const ZQMatrixBaseElement* element = matrix.elementAt(fronts[start].position);
    const int offset = element == nullptr ? 0 : element->getOffsetToElementInNextDimension();
    const long long first = offset == 0 ? -1 : static_cast<long long>(fronts[start].position) + offset;
    firsts[start & mask] = first;
    matrix.prefetchSlot(first);
  }

  void findTarget(int start) {
    const long long first = firsts[start & mask];
    const ZQMatrixBaseElement* element = matrix.elementAt(first);
    const long long target =
        element == nullptr ? -1 : first - element->getIndexInDimension() + next[static_cast<long long>(start) * distance];
    targets[start & mask] = target;
    matrix.prefetchSlot(target);
  }

  const ZQMatrixBase& matrix;
  const ZQFront* fronts;
  const int number;
  const int* next;
  const int distance;
  long long firsts[farthest] = {};   // slot of the first child, or -1; by start
  long long targets[farthest] = {};  // slot of the wanted child, or -1
};

}  // namespace zmatrix
