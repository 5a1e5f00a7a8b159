// Relocation of a field as a whole, shared by all tiers: finds an offset at which every element of the field lands on a free
// slot, patches the links between the field and its parent and children, and moves the records. The cost is that of the field's
// elements and their children; deeper elements are not touched.
#pragma once

#include <algorithm>
#include <span>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

template <class Tier>
struct ZQStoreMove {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;

  /// The offset moved, or 0 for failure. With moveWithNewIndex 1 the position of a new element, *newElementIndex, moves along and
  /// must land on a free slot too; with 0 the field moves away from that slot.
  static int moveField(Matrix& matrix, int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems,
                       int* firstElement, int* lastElement, int moveWithNewIndex) {
    if (matrix.getMatrixInfo()->getMemIsReadOnly() || !collect(matrix, *firstElement, numberOfItems)) return 0;
    const bool withIndex = moveWithNewIndex == 1 && newElementIndex != nullptr;
    const bool keepsOff = moveWithNewIndex == 0 && newElementIndex != nullptr;
    const std::span<const int> newIndices(newElementIndex, withIndex ? 1 : 0);
    const auto search = [&](std::span<const int> positions) {
      return matrix.searchShift(memorySearchMethod, positions, *fieldBegin);
    };
    const int offset = findOffset(matrix, newIndices, keepsOff ? *newElementIndex : -1, search);
    if (offset == 0 || !moveBy(matrix, offset)) return 0;
    if (withIndex) *newElementIndex += offset;
    // With wraparound: the begin is no slot, and with indices near the limits of int it may exceed them.
    *fieldBegin = static_cast<int>(static_cast<unsigned>(*fieldBegin) + static_cast<unsigned>(offset));
    *firstElement += offset;
    *lastElement += offset;
    return offset;
  }

  /// Moves a field so that several new elements, at ascending positions that are not the field's own, land on free slots too. The
  /// field may have no element yet. search(positions) returns the offset at which all of them land on free slots. The offset
  /// moved, or 0 for failure.
  template <class Search>
  static int moveFieldWithNewElements(Matrix& matrix, int firstElement, int numberOfItems, std::span<const int> newElements,
                                      Search search) {
    if (matrix.getMatrixInfo()->getMemIsReadOnly()) return 0;
    matrix.positionsOfField_.clear();
    if (numberOfItems > 0 && !collect(matrix, firstElement, numberOfItems)) return 0;
    const int offset = findOffset(matrix, newElements, -1, search);
    return offset != 0 && (numberOfItems == 0 || moveBy(matrix, offset)) ? offset : 0;
  }

 private:
  static bool moveBy(Matrix& matrix, int offset) {
    ++matrix.movedFields_;
    const bool isPatched = patchLinks(matrix, offset);
    if (isPatched) moveRecords(matrix, offset);
    refreshIndex(matrix, isPatched ? offset : 0);
    return isPatched;
  }

  static bool collect(Matrix& matrix, int first, int numberOfItems) {
    zmatrix::ZQArray<int>& positions = matrix.positionsOfField_;
    positions.clear();
    long long at = first;
    while (static_cast<int>(positions.size()) < numberOfItems) {
      const ZQMatrixBaseElement* element = matrix.elementAt(at);
      if (element == nullptr) return false;
      if (!positions.append(static_cast<int>(at))) return false;
      matrix.prefetchSlot(at + element->getOffsetToElementInNextDimension());
      const int next = element->getOffsetToNextElementInDimension();
      if (next < 1) break;
      at += next;
    }
    return !positions.empty();
  }

  // During the search the field's own slots count as free, and `keptOff`, the slot that the field must not hold, as occupied.
  template <class Search>
  static int findOffset(Matrix& matrix, std::span<const int> newIndices, int keptOff, Search search) {
    const zmatrix::ZQArray<int>& own = matrix.positionsOfField_;
    zmatrix::ZQArray<int>& toPlace = matrix.positionsToPlace_;
    toPlace.clear();
    size_t next = 0;
    for (int position : own) {
      for (; next < newIndices.size() && newIndices[next] < position; ++next) {
        if (!toPlace.append(newIndices[next])) return 0;
      }
      if (!toPlace.append(position)) return 0;
    }
    for (; next < newIndices.size(); ++next) {
      if (!toPlace.append(newIndices[next])) return 0;
    }
    for (int position : own) {
      if (position != keptOff) matrix.freeSlots_.lend(position);
    }
    const bool keepsOffFreeSlot = keptOff >= 0 && keptOff < matrix.numberOfSlots_ && matrix.freeSlots_.isFree(keptOff);
    if (keepsOffFreeSlot) matrix.freeSlots_.fill(keptOff);
    const int offset = search(std::span<const int>(toPlace));
    if (!matrix.hasBlock()) return 0;
    if (keepsOffFreeSlot) matrix.freeSlots_.release(keptOff);
    if (offset == 0) refreshIndex(matrix, 0);
    return offset;
  }

  static bool patchLinks(Matrix& matrix, int offset) {
    const zmatrix::ZQArray<int>& own = matrix.positionsOfField_;
    if (ZQMatrixBaseElement* parent = matrix.parentOf(own.front())) parent->addOffsetToElementInNextDimension(offset);
    for (int position : own) {
      Element* element = static_cast<Element*>(matrix.elementAt(position));
      Tier::onMoving(matrix, *element, offset);
      if (element->getOffsetToElementInPrevDimension() != 0) element->addOffsetToElementInPrevDimension(-offset);
      if (element->getOffsetToElementInNextDimension() == 0) continue;
      long long child = static_cast<long long>(position) + element->getOffsetToElementInNextDimension();
      if (child < 0 || child >= matrix.numberOfSlots_) {
        dbPrintf(0, child < 0 ? "error im moveFieldToFreePosition: elementinNextDimension out of range (left)\n"
                              : "error im moveFieldToFreePosition: elementinNextDimension out of range (right)\n");
        return false;
      }
      element->addOffsetToElementInNextDimension(-offset);
      for (ZQMatrixBaseElement* at = matrix.elementAt(child); at != nullptr; at = matrix.elementAt(child)) {
        at->addOffsetToElementInPrevDimension(offset);
        if (at->getOffsetToNextElementInDimension() < 1) break;
        child += at->getOffsetToNextElementInDimension();
      }
    }
    return true;
  }

  // In an order in which a slot of the field is empty before another of its records moves in.
  static void moveRecords(Matrix& matrix, int offset) {
    zmatrix::ZQArray<int>& own = matrix.positionsOfField_;
    if (offset > 0) std::reverse(own.begin(), own.end());
    for (int position : own) {
      matrix.template moveElement<Element>(position, position + offset);
    }
  }

  // Updates the index of free slots for the field's old slots, which were lent, and its new ones.
  static void refreshIndex(Matrix& matrix, int offset) {
    for (int position : matrix.positionsOfField_) {
      if (matrix.elementAt(position) == nullptr) {
        matrix.freeSlots_.fill(position);
        matrix.freeSlots_.release(position);
      } else {
        matrix.freeSlots_.fill(position);
      }
      if (offset != 0) matrix.freeSlots_.fill(position + offset);
    }
  }
};

}  // namespace zmatrix
