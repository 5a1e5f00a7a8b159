// Prefetches the records that the next steps down will read. A step reads the record at the front, which gives the slot of the
// child, and the record of the child; an item of several coordinates takes one step per coordinate. In a large matrix each read
// is a cache miss. The starts of a pass don't depend on each other, so each record is prefetched some starts before it is read.
//
// If a write in between moves a record, only a prefetch is wasted.
#pragma once

#include <algorithm>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// A place in the trie: a slot and the name of the record in it. Valid as long as the slot holds that record.
struct ZQFront {
  static constexpr int unknownBegin = INT_MIN;

  int position = -1;
  ZQMatrixBase::RecordName record = ZQMatrixBase::noRecord;
  int fieldBegin = unknownBegin;  ///< begin of the field of the children; valid until an element moves

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
  /// `frontsOfStarts` has one entry per start; start i continues with `coordinates`[i * dimension] and the following. With
  /// `isSettled`, the fronts' fieldBegin is valid and is used.
  ZQDescentPrefetch(const ZQMatrixBase& matrix, const ZQFront* frontsOfStarts, int numberOfStarts, const int* coordinates,
                    int dimension, bool isSettled)
      : matrix_(matrix),
        fronts_(frontsOfStarts),
        number_(numberOfStarts),
        next_(coordinates),
        stride_(dimension),
        steps_(std::min(dimension, mostSteps)),
        knowsBegins_(isSettled) {}

  /// Called before the first start is handled.
  void begin() {
    for (int start = -distanceOfStep(-1); start < 0; ++start) lookAhead(start);
  }

  /// Called before `start` is handled, for each start in turn.
  void lookAhead(int start) {
    if (!knowsBegins_ && isAhead(start, -1)) matrix_.prefetchSlot(fronts_[start + distanceOfStep(-1)].position);
    for (int step = 0; step < steps_; ++step) {
      if (isAhead(start, step)) fetch(start + distanceOfStep(step), step);
    }
  }

 private:
  static constexpr int mostSteps = 3;
  static constexpr int nearest = 30;  // starts between the last prefetch for a start and its turn
  static constexpr int startsBetweenSteps = 10;
  static constexpr int numberOfPlaces = 128;  // more than the largest distance

  int distanceOfStep(int step) const { return nearest + startsBetweenSteps * (steps_ - 1 - step); }
  bool isAhead(int start, int step) const {
    const int far = start + distanceOfStep(step);
    return far >= 0 && far < number_;
  }

  void fetch(int start, int step) {
    const ZQFront& front = fronts_[start];
    const int coordinate = next_[static_cast<long long>(start) * stride_ + step];
    int& place = places_[start % numberOfPlaces];
    long long target;
    if (step > 0) {
      target = place >= 0 ? matrix_.slotOfChild(place, coordinate) : -1;
    } else if (knowsBegins_ && front.fieldBegin != ZQFront::unknownBegin) {
      target = static_cast<long long>(front.fieldBegin) + coordinate;
    } else {
      target = front.position >= 0 ? matrix_.slotOfChild(front.position, coordinate) : -1;
    }
    place = matrix_.isSlot(target) ? static_cast<int>(target) : -1;
    if (place < 0) return;
    if (step + 1 == steps_) {
      matrix_.prefetchWholeSlot(place);
    } else {
      matrix_.prefetchSlot(place);
    }
  }

  const ZQMatrixBase& matrix_;
  const ZQFront* fronts_;
  const int number_;
  const int* next_;
  const int stride_;
  const int steps_;
  const bool knowsBegins_;
  int places_[numberOfPlaces];  // by start: the slot to which its last prefetched step led, or -1
};

}  // namespace zmatrix
