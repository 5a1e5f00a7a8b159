// Adds many children of one element at once. Single writes would move the field for each child whose slot is taken; here one
// search finds a place for all children, and one pass links them. Only the field's position differs from that of single writes.
#pragma once

#include <climits>

#include "frame/ZQArray.h"
#include "store/ZQShiftSearch.h"
#include "store/ZQStoreWrite.h"

namespace zmatrix {

template <class Tier>
struct ZQFieldPlacement {
  using Matrix = typename Tier::Matrix;
  using Info = typename Tier::Info;
  using Write = ZQStoreWrite<Tier>;

  /// Adds children for these coordinates, which ascend; none of the children exists yet. False if there is no room: then some
  /// may have been added.
  bool add(Matrix& matrix, int parent, std::span<const int> coordinates) {
    if (!findField(matrix, parent, coordinates.front())) return false;
    targets_.clear();
    for (const int coordinate : coordinates) {
      const long long target = static_cast<long long>(begin_) + coordinate;
      if (target > INT_MAX || target < -INT_MAX || !targets_.append(static_cast<int>(target))) return false;
    }
    return (areFree(matrix) || moveAway(matrix)) && link(matrix, parent, coordinates);
  }

 private:
  // Finds the field's begin: of the existing field, or of a new one whose first child takes the nearest free slot.
  bool findField(Matrix& matrix, int parent, int firstCoordinate) {
    const int offset = matrix.elementAt(parent)->getOffsetToElementInNextDimension();
    first_ = offset != 0 ? parent + offset : -1;
    if (first_ >= 0) {
      const ZQMatrixBaseElement* element = matrix.elementAt(first_);
      if (element == nullptr) return false;
      begin_ = static_cast<int>(static_cast<long long>(first_) - element->getIndexInDimension());
      return true;
    }
    const int free = matrix.findNearestFreeMatrixElement(matrix.getMatrixInfo()->getMemorySearchMethod());
    if (free < matrix.getMatrixFileHeader()->getMaxNumberOfMatrices()) return false;
    begin_ = free - firstCoordinate;
    return true;
  }

  bool areFree(const Matrix& matrix) const {
    for (const int target : targets_) {
      if (target < 0 || target >= matrix.numberOfSlots_ || !matrix.freeSlots_.isFree(target)) return false;
    }
    return true;
  }

  bool moveAway(Matrix& matrix) {
    int last = first_;
    int count = 0;
    if (first_ >= 0) count = matrix.getNumberOfItemsAndFirstLastElementsInSameDimension(first_, &first_, &last);
    if (first_ >= 0 && count < 1) return false;
    const int offset = ZQStoreMove<Tier>::moveFieldWithNewElements(
        matrix, first_, count, targets_, [&](std::span<const int> positions) { return findOffset(matrix, positions); });
    if (offset == 0) return false;
    for (int& target : targets_) target += offset;
    if (first_ >= 0) {
      first_ += offset;
      Write::raiseStack(matrix, last + offset);
    }
    return true;
  }

  // The first fit above the frontier. Below the frontier, wide fields already fill each other's gaps: another one seldom fits
  // there, and the gaps are left to single elements. If a fit lies far above the frontier, the frontier moves up.
  int findOffset(Matrix& matrix, std::span<const int> positions) {
    constexpr int largestDistance = 1 << 17;
    const long long lowest = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices();
    frontier_ = std::max(frontier_, lowest);
    for (long long from = frontier_ - positions.front();;) {
      const long long highest = static_cast<long long>(matrix.numberOfSlots_) - 1 - positions.back();
      zmatrix::ZQShiftSearch search(matrix.freeSlots_, positions, matrix.positionsOfField_);
      long long offset = search.nextFit(from, highest);
      if (offset == 0) offset = search.nextFit(1, highest);
      if (offset != zmatrix::ZQShiftSearch::none) {
        const long long slot = positions.front() + offset;
        if (slot - frontier_ > largestDistance) frontier_ = slot - largestDistance / 2;
        return static_cast<int>(offset);
      }
      from = std::max(from, highest + 1);
      if (!matrix.expandMatrixBlock(0)) return 0;
    }
  }

  bool link(Matrix& matrix, int parent, std::span<const int> coordinates) {
    size_t next = 0;
    int below = -1;
    int above = first_;
    if (first_ < 0) {
      if (!Write::insertFirst(matrix, targets_[0], coordinates[0], parent)) return false;
      below = targets_[next++];
      Write::raiseStack(matrix, below);
    }
    for (; next < coordinates.size(); ++next) {
      while (above >= 0 && above < targets_[next]) {
        below = above;
        above = Write::nextInField(matrix, above);
      }
      if (!Write::insertBetween(matrix, targets_[next], coordinates[next], parent, below, above)) return false;
      below = targets_[next];
      Write::raiseStack(matrix, below);
    }
    return true;
  }

  int begin_ = 0;
  int first_ = -1;  // the field's first element, -1 if there is none yet
  zmatrix::ZQArray<int> targets_;
  long long frontier_ = 0;
};

}  // namespace zmatrix
