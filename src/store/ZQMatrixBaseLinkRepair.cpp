// Repairs a block from a file whose links are inconsistent: drops unreachable elements, and rebuilds child and sibling links from
// parent links and coordinates. Working memory is per element, not per slot, since a small file may claim a large block.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace {

enum State : uint8_t { unknown = 0, reached = 1, lost = 2, inProgress = 3 };

/// The elements of a block up to slot `top`, numbered in ascending order, each with its state. Element 0 is a root.
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
  /// For each element the child whose field begin its other children must have; while links are rebuilt, the last child linked so
  /// far. 0 for none.
  size_t& childOf(size_t number) { return children_[number]; }

  bool isOccupied(long long position) const { return position <= top_ && matrix_.elementAt(position) != nullptr; }
  /// The slot must be occupied.
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

/// Marks as lost every element that has no parent, an illegal index, or another field begin than its siblings.
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

/// Marks as lost every element below a lost one or in a cycle of parents, and all others as reached.
void findUnreachable(Elements& elements) {
  for (size_t number = 0; number < elements.size(); ++number) {
    size_t at = number;
    while (elements.stateOf(at) == unknown) {
      elements.stateOf(at) = inProgress;
      at = elements.parentOf(at);
    }
    const State result = elements.stateOf(at) == reached ? reached : lost;
    for (at = number; elements.stateOf(at) == inProgress; at = elements.parentOf(at)) elements.stateOf(at) = result;
  }
}

}  // namespace

// Writes refuse an index above the maximalMatrixIndex of their sub-matrix. A larger one from a file would make a field as wide,
// and the block grow with it.
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
