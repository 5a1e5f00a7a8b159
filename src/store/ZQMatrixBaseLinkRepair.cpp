// A block from a file whose links don't answer each other is made good: what no root leads to goes, and the rest is linked anew
// from the parent links and the coordinates. A file of few elements may tell of a large block, so that what is noted here is
// noted by element, not by slot.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace {

enum State : uint8_t { unknown = 0, reached = 1, lost = 2, onTheWay = 3 };

/// The occupied slots of a block up to `top`, ascending, each with what is found out about it. An element is named by its number
/// here; the first one is a root.
class Elements {
 public:
  Elements(const ZQMatrixBase& matrix, int top)
      : matrix_(matrix), roots_(matrix.getMatrixFileHeader()->getMaxNumberOfMatrices()), top_(top) {}

  /// False if memory has run out.
  bool collect() {
    for (int position = 0; position <= top_; ++position) count_ += matrix_.elementAt(position) != nullptr;
    if (!positions_.resize(count_) || !states_.resize(count_) || !children_.resize(count_)) return false;
    size_t number = 0;
    for (int position = 0; position <= top_; ++position) {
      if (matrix_.elementAt(position) != nullptr) positions_[number++] = position;
    }
    return true;
  }

  size_t size() const { return count_; }
  int positionOf(size_t number) const { return positions_[number]; }
  ZQMatrixBaseElement* operator[](size_t number) const { return matrix_.elementAt(positions_[number]); }
  bool isRoot(size_t number) const { return positions_[number] < roots_; }
  State& stateOf(size_t number) { return states_[number]; }
  /// Of each element a child that the others are held against; later its last one so far. 0 for none.
  size_t& childOf(size_t number) { return children_[number]; }

  bool isOccupied(long long position) const { return position <= top_ && matrix_.elementAt(position) != nullptr; }
  /// Of an occupied slot.
  size_t numberOf(long long position) const {
    const int* const first = positions_.begin();
    return static_cast<size_t>(std::lower_bound(first, first + count_, static_cast<int>(position)) - first);
  }
  long long parentPositionOf(size_t number) const {
    return static_cast<long long>(positions_[number]) + (*this)[number]->getOffsetToElementInPrevDimension();
  }
  size_t parentOf(size_t number) const { return numberOf(parentPositionOf(number)); }
  long long fieldBeginOf(size_t number) const {
    return static_cast<long long>(positions_[number]) - (*this)[number]->getIndexInDimension();
  }

 private:
  const ZQMatrixBase& matrix_;
  int roots_;
  int top_;
  size_t count_ = 0;
  zmatrix::ZQArray<int> positions_;
  zmatrix::ZQArray<State> states_;
  zmatrix::ZQArray<size_t> children_;
};

/// Marks as lost what has no parent, an illegal index, or another begin of its field than its siblings.
void findMisfits(Elements& elements, long long largestIndex) {
  for (size_t number = 0; number < elements.size(); ++number) {
    if (elements.isRoot(number)) {
      elements[number]->setOffsetToElementInPrevDimension(0);
      elements.stateOf(number) = reached;
      continue;
    }
    const long long parentPosition = elements.parentPositionOf(number);
    const bool isLegalIndex = std::llabs(static_cast<long long>(elements[number]->getIndexInDimension())) <= largestIndex;
    if (!isLegalIndex || parentPosition == elements.positionOf(number) || !elements.isOccupied(parentPosition)) {
      elements.stateOf(number) = lost;
      continue;
    }
    const size_t parent = elements.numberOf(parentPosition);
    size_t& child = elements.childOf(parent);
    if (child == 0) {
      const long long first = parentPosition + elements[parent]->getOffsetToElementInNextDimension();
      const size_t firstChild = elements.isOccupied(first) ? elements.numberOf(first) : 0;
      const bool isChild =
          firstChild != 0 && !elements.isRoot(firstChild) && elements.parentPositionOf(firstChild) == parentPosition;
      child = isChild ? firstChild : number;
    }
    if (elements.fieldBeginOf(number) != elements.fieldBeginOf(child)) elements.stateOf(number) = lost;
  }
}

/// Marks as lost what stands below a lost element, or in a circle.
void findUnreachable(Elements& elements) {
  for (size_t number = 0; number < elements.size(); ++number) {
    size_t at = number;
    while (elements.stateOf(at) == unknown) {
      elements.stateOf(at) = onTheWay;
      at = elements.parentOf(at);
    }
    const State result = elements.stateOf(at) == reached ? reached : lost;
    for (at = number; elements.stateOf(at) == onTheWay; at = elements.parentOf(at)) elements.stateOf(at) = result;
  }
}

}  // namespace

// No write lets an index in that is larger than its record allows. One from a file would let a field reach as far, and the block
// grow with it.
long long ZQMatrixBase::largestLegalIndex() const {
  int largest = 0;
  for (int id = 0; id < matrixFileHeader_->getMaxNumberOfMatrices(); ++id) {
    largest = std::max(largest, matrixInfoArray_[id]->getMaximalMatrixIndex());
  }
  return largest;
}

int ZQMatrixBase::repairLinks() {
  Elements elements(*this, std::min(matrixFileHeader_->getMaximalStack(), numberOfSlots_ - 1));
  if (!elements.collect()) return -1;
  findMisfits(elements, largestLegalIndex());
  findUnreachable(elements);
  int dropped = 0;
  for (size_t number = 0; number < elements.size(); ++number) {
    elements.childOf(number) = 0;
    elements[number]->setOffsetToNextElementInDimension(0);
    elements[number]->setOffsetToPreviousElementInDimension(0);
    elements[number]->setOffsetToElementInNextDimension(0);
    if (elements.stateOf(number) == reached) continue;
    destroyElementAt(elements.positionOf(number));
    ++dropped;
  }
  for (size_t number = 0; number < elements.size(); ++number) {
    if (elements[number] == nullptr || elements.isRoot(number)) continue;
    const int position = elements.positionOf(number);
    const size_t parent = elements.parentOf(number);
    size_t& last = elements.childOf(parent);
    if (last == 0) {
      elements[parent]->setOffsetToElementInNextDimension(position - elements.positionOf(parent));
    } else {
      elements[last]->setOffsetToNextElementInDimension(position - elements.positionOf(last));
      elements[number]->setOffsetToPreviousElementInDimension(elements.positionOf(last) - position);
    }
    last = number;
  }
  return dropped;
}
