// Prefetches the records that the next steps down will read. A step reads the front's record, which says where the child lies,
// and the child's; an item of several coordinates goes on from there. In a large matrix each of them is a cache miss. The starts
// of a pass don't depend on each other, so each record is prefetched some starts before it is read, one step after the other.
//
// If a write in between moves a record, only a prefetch is wasted.
#pragma once

#include <algorithm>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// A place in the trie: a slot and the name of the record that it held. It is good while the slot still holds the record.
struct ZQFront {
  static constexpr int unknownBegin = INT_MIN;

  int position = -1;
  ZQMatrixBase::RecordName record = ZQMatrixBase::noRecord;
  int fieldBegin = unknownBegin;  ///< where the children lay, as long as nothing has moved

  static ZQFront at(int position, const ZQMatrixBaseElement& element) {
    ZQFront front{position, element.getName(), unknownBegin};
    if (element.getOffsetToElementInNextDimension() == 0) return front;
    if (element.getIndexOfFirstChild() == ZQMatrixBaseElement::unknownIndex) return front;
    const long long begin =
        static_cast<long long>(position) + element.getOffsetToElementInNextDimension() - element.getIndexOfFirstChild();
    if (begin == static_cast<int>(begin)) front.fieldBegin = static_cast<int>(begin);
    return front;
  }
};

class ZQDescentPrefetch {
 public:
  /// `fronts` has an entry for each start; start i goes on to the coordinates from `coordinates`[i * dimension] on. The begins of
  /// the fronts' fields are relied on if `isSettled` says so.
  ZQDescentPrefetch(const ZQMatrixBase& matrixToRead, const ZQFront* frontsOfStarts, int numberOfStarts, const int* coordinates,
                    int dimension, bool isSettled)
      : matrix(matrixToRead),
        fronts(frontsOfStarts),
        number(numberOfStarts),
        next(coordinates),
        stride(dimension),
        steps(std::min(dimension, mostSteps)),
        knowsBegins(isSettled) {}

  /// Called before the first start is handled.
  void begin() {
    for (int start = -distanceOfStep(-1); start < 0; ++start) lookAhead(start);
  }

  /// Called before `start` is handled, for each start in turn.
  void lookAhead(int start) {
    if (!knowsBegins && isAhead(start, -1)) matrix.prefetchSlot(fronts[start + distanceOfStep(-1)].position);
    for (int step = 0; step < steps; ++step) {
      if (isAhead(start, step)) fetch(start + distanceOfStep(step), step);
    }
  }

 private:
  static constexpr int mostSteps = 3;
  static constexpr int nearest = 30;
  static constexpr int startsBetweenSteps = 10;
  static constexpr int numberOfPlaces = 128;  // more than the farthest distance

  int distanceOfStep(int step) const { return nearest + startsBetweenSteps * (steps - 1 - step); }
  bool isAhead(int start, int step) const {
    const int far = start + distanceOfStep(step);
    return far >= 0 && far < number;
  }

  void fetch(int start, int step) {
    const ZQFront& front = fronts[start];
    const int coordinate = next[static_cast<long long>(start) * stride + step];
    int& place = places[start % numberOfPlaces];
    long long target;
    if (step > 0) {
      target = place >= 0 ? matrix.slotOfChild(place, coordinate) : -1;
    } else if (knowsBegins && front.fieldBegin != ZQFront::unknownBegin) {
      target = static_cast<long long>(front.fieldBegin) + coordinate;
    } else {
      target = front.position >= 0 ? matrix.slotOfChild(front.position, coordinate) : -1;
    }
    place = matrix.isSlot(target) ? static_cast<int>(target) : -1;
    if (place < 0) return;
    if (step + 1 == steps) {
      matrix.prefetchWholeSlot(place);
    } else {
      matrix.prefetchSlot(place);
    }
  }

  const ZQMatrixBase& matrix;
  const ZQFront* fronts;
  const int number;
  const int* next;
  const int stride;
  const int steps;
  const bool knowsBegins;
  int places[numberOfPlaces];  // by start, the slot that the last step led to, or -1
};

}  // namespace zmatrix
