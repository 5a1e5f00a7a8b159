// The write walk, shared by all tiers: follows the vector down from a root and adds missing elements. If two fields need the same
// slot one of them moves; if no place is found the block grows. A write is a chain of single steps, so that a caller that knows
// the element of all coordinates but the last can take the last step alone.
#pragma once

#include <bit>
#include <climits>
#include <cstdlib>

#include "store/ZQStoreMove.h"

namespace zmatrix {

template <class Tier>
struct ZQStoreWrite {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;

  static int write(Matrix& matrix, const int* indexVector, int length, long long value, const typename Tier::WriteFlags& flags) {
    Info& info = *matrix.getMatrixInfo();
    if (info.getMemIsReadOnly()) return 0;
    if (length > info.getMaxDimOfMatrix()) {
      dbPrintf(0, "error: maximal dimension exceeded: %d\n", length);
      return 0;
    }
    if (length > 0 && indexVector == nullptr) return 0;
    int last = provideRoot(matrix);
    if (last < 0) return 0;
    for (int i = 0; i < length; ++i) {
      if (!step(matrix, info, last, i, indexVector[i])) return 0;
    }
    countWrite(matrix, info, last, value, flags);
    return 1;
  }

  /// The root's position; a missing root is made. -1 if there is no block.
  static int provideRoot(Matrix& matrix) {
    const int root = matrix.getCurrentMatrixID();
    if (!matrix.hasBlock()) return -1;
    if (matrix.elementAt(root) == nullptr) matrix.template createElementAt<Element>(root);
    return root;
  }

  /// One step down from `last`, which becomes the child's position. False if the coordinate is refused or there is no place for a
  /// new child.
  static bool step(Matrix& matrix, Info& info, int& last, int dimension, int coordinate) {
    if (!admits(info, coordinate)) return false;
    const int child = matrix.childAt(last, coordinate);
    if (child < 0) return add(matrix, info, last, dimension, coordinate);
    if (matrix.elementAt(child)->getIndexInDimension() != coordinate) {
      dbPrintf(0, "Das sollte nicht passieren!\n");
      return false;
    }
    last = child;
    countStep(info, dimension, coordinate);
    return true;
  }

  /// The same for a child that is known to be missing.
  static bool stepToNew(Matrix& matrix, Info& info, int& last, int dimension, int coordinate) {
    return admits(info, coordinate) && add(matrix, info, last, dimension, coordinate);
  }

  static void countStep(Info& info, int dimension, int coordinate) {
    info.checkMatrixDimension(dimension);
    info.updateMatrixIndexInfo(dimension, coordinate);
  }

  /// Sets the value and counts the write.
  static void countWrite(Matrix& matrix, Info& info, Element& element, long long value, const typename Tier::WriteFlags& flags) {
    element.setValue(value);
    Tier::onWritten(matrix, info, element, flags);
    info.incrementNumberOfWriteEvents();
    info.incrementNumberOfWriteCounts();
    if (element.getWriteCount() == 1) info.incrementNumberOfWriteElements();
  }

  static void countWrite(Matrix& matrix, Info& info, int position, long long value, const typename Tier::WriteFlags& flags) {
    countWrite(matrix, info, *matrix.template recordInSlot<Element>(position), value, flags);
  }

  static int insertFirst(Matrix& matrix, int newPosition, int coordinate, int parentPosition) {
    ZQMatrixBaseElement* parent = matrix.elementAt(parentPosition);
    if (parent == nullptr || newPosition < 0 || newPosition >= matrix.numberOfSlots_) return 0;
    Info& info = *matrix.getMatrixInfo();
    Element* element = static_cast<Element*>(matrix.elementAt(newPosition));
    ZQ_ASSERT(matrix.freeSlots_.isFree(newPosition) == (element == nullptr));
    if (element == nullptr) {
      element = matrix.template createElementAt<Element>(newPosition);
      info.incrementNumberOfMatrixElements();
    } else {
      element->clearMatrixData();
    }
    element->setIndexInDimension(coordinate);
    element->setOffsetToElementInPrevDimension(parentPosition - newPosition);
    parent->setOffsetToElementInNextDimension(newPosition - parentPosition);
    parent->setIndexOfFirstChild(coordinate);
    ZQ_ASSERT(matrix.childAt(parentPosition, coordinate) == newPosition);
    // Any other parent is no end element any more, so that the number of end elements is unchanged.
    if (parentPosition == matrix.getCurrentMatrixID()) info.incrementNumberOfEndElements();
    return 1;
  }

  static int insertExisting(Matrix& matrix, int newPosition, int coordinate, int elementOfField) {
    const int first = matrix.getFirstMatrixElementInDimension(elementOfField);
    ZQMatrixBaseElement* firstElement = matrix.elementAt(first);
    if (firstElement == nullptr || newPosition < 0 || newPosition >= matrix.numberOfSlots_) return 0;
    if (matrix.elementAt(newPosition) != nullptr) {
      dbPrintf(0, "Cannot insert element to an occupied index\n");
      return 0;
    }
    const long long parent = static_cast<long long>(first) + firstElement->getOffsetToElementInPrevDimension();
    const int below = lastElementBelow(matrix, first, newPosition, parent);
    const int above = below < 0 ? first : nextInField(matrix, below);
    if (below >= 0 && above >= 0) {
      const int previous = matrix.elementAt(above)->getOffsetToPreviousElementInDimension();
      if (previous >= 0 || matrix.elementAt(static_cast<long long>(above) + previous) == nullptr) {
        dbPrintf(0, "insertMatrixElementInExistingDimension: %d for offsetToPreviousElementInDimension unexpected\n", previous);
        return 0;
      }
    }
    return insertBetween(matrix, newPosition, coordinate, parent, below, above);
  }

  /// Adds an element between the siblings `below` and `above`, one of which may be -1 for none. `parent` is the field's parent.
  static int insertBetween(Matrix& matrix, int newPosition, int coordinate, long long parent, int below, int above) {
    ZQ_ASSERT(below < newPosition);
    ZQ_ASSERT(matrix.elementAt(newPosition) == nullptr && matrix.freeSlots_.isFree(newPosition));
    Element* element = matrix.template createElementAt<Element>(newPosition);
    Info& info = *matrix.getMatrixInfo();
    info.incrementNumberOfMatrixElements();
    info.incrementNumberOfEndElements();
    matrix.fieldCounts_.addOne(matrix.nameOfRecordAt(parent));
    element->setIndexInDimension(coordinate);
    element->setOffsetToElementInPrevDimension(static_cast<int>(parent - newPosition));
    if (below >= 0) {
      element->setOffsetToPreviousElementInDimension(below - newPosition);
      matrix.elementAt(below)->setOffsetToNextElementInDimension(newPosition - below);
    } else {
      if (above >= 0 && static_cast<long long>(above) + matrix.elementAt(above)->getOffsetToElementInPrevDimension() != parent) {
        dbPrintf(0, "internal error: unexpected offsetToElementInPrevDimension");
      }
      if (ZQMatrixBaseElement* owner = matrix.elementAt(parent)) {
        owner->setOffsetToElementInNextDimension(static_cast<int>(newPosition - parent));
        owner->setIndexOfFirstChild(coordinate);
      }
    }
    if (above >= 0) {
      element->setOffsetToNextElementInDimension(above - newPosition);
      matrix.elementAt(above)->setOffsetToPreviousElementInDimension(newPosition - above);
    }
    ZQ_ASSERT(below < 0 || nextInField(matrix, below) == newPosition);
    return 1;
  }

  /// True if the coordinate lies within maximalMatrixIndex; prints a message if not.
  static bool admits(const Info& info, int coordinate) {
    const long long magnitude = std::llabs(static_cast<long long>(coordinate));
    if (magnitude <= info.getMaximalMatrixIndex()) return true;
    dbPrintf(0, "writeMatrixData: error: max matrix Index %d exceeded:  %d\n", info.getMaximalMatrixIndex(),
             static_cast<int>(magnitude > INT_MAX ? INT_MAX : magnitude));
    dbPrintf(0, "please increase this value (setMaximalMatrixIndex())\n");
    return false;
  }

  static void raiseStack(Matrix& matrix, int position) {
    ZQMatrixFileHeader* header = matrix.getMatrixFileHeader();
    if (position > header->getMaximalStack()) header->_setMaximalStack(position);
  }

  static int nextInField(const Matrix& matrix, int position) {
    const int next = matrix.elementAt(position)->getOffsetToNextElementInDimension();
    return next > 0 && matrix.elementAt(static_cast<long long>(position) + next) != nullptr ? position + next : -1;
  }

 private:
  struct Field {
    int begin = 0;
    int first = 0;
    int last = 0;
    int count = 0;
  };

  // The last element of a field that lies below a slot, or -1. Two searches alternate: one along the field from its first
  // element, which is short if the field has few elements, and one through the occupied slots from `position` downwards, which is
  // short if the elements lie close together. In a wide field each step along it is a cache miss, while the slots of a word can
  // be prefetched together: after the first turns there is only one step along the field per eight slots.
  static int lastElementBelow(const Matrix& matrix, int first, int position, long long parent) {
    if (first >= position) return -1;
    constexpr int turnsInStep = 16, slotsPerStep = 8;
    int followed = first;
    int turn = 0;
    uint64_t mask = (uint64_t{1} << (position & 63)) - 1;
    for (int word = position >> 6; word >= 0; --word, mask = ~uint64_t{0}) {
      uint64_t occupied = matrix.freeSlots_.occupiedInWord(word) & mask;
      if (turn > turnsInStep) prefetchSlots(matrix, word, occupied);
      while (occupied != 0) {
        const int bit = 63 - std::countl_zero(occupied);
        const int slot = word * 64 + bit;
        occupied &= ~(uint64_t{1} << bit);
        if (slot <= followed) return followed;
        const int offsetToParent = matrix.template recordInSlot<Element>(slot)->getOffsetToElementInPrevDimension();
        if (offsetToParent != 0 && slot + static_cast<long long>(offsetToParent) == parent) return slot;
        if (++turn > turnsInStep && turn % slotsPerStep != 0) continue;
        const int next = nextInField(matrix, followed);
        if (next < 0 || next > position) return followed;
        followed = next;
      }
    }
    return followed;
  }

  static void prefetchSlots(const Matrix& matrix, int word, uint64_t slots) {
    for (; slots != 0; slots &= slots - 1) matrix.prefetchSlot(word * 64LL + std::countr_zero(slots));
  }

  // After a failed grow maximalStack is 0, so that the message appears.
  static void reportPositionBeyondStack(const Matrix& matrix, int position) {
    const int stack = matrix.getMatrixFileHeader()->getMaximalStack();
    if (position > stack) dbPrintf(0, "writeMatrixData error: lastelement (%d) > stackPtr (%d)\n", position, stack);
  }

  static bool add(Matrix& matrix, Info& info, int& last, int dimension, int coordinate) {
    int stackCandidate = 0;
    const int inserted = makeChild(matrix, info, last, coordinate, stackCandidate);
    if (inserted < 0) {
      // A field may have moved above the stack before the new element failed.
      if (matrix.hasBlock())
        raiseStack(matrix, stackCandidate < matrix.numberOfSlots_ ? stackCandidate : matrix.numberOfSlots_ - 1);
      reportPositionBeyondStack(matrix, last);
      return false;
    }
    last = inserted;
    raiseStack(matrix, stackCandidate);
    raiseStack(matrix, last);
    countStep(info, dimension, coordinate);
    return true;
  }

  // The position of the new child, or -1.
  static int makeChild(Matrix& matrix, Info& info, int parentPosition, int coordinate, int& stackCandidate) {
    const ZQMatrixBaseElement* parent = matrix.elementAt(parentPosition);
    if (parent == nullptr) return -1;
    if (parent->getOffsetToElementInNextDimension() == 0) {
      const int newPosition = matrix.findNearestFreeMatrixElement(info.getMemorySearchMethod());
      if (newPosition < 0 && Tier::reportsMissingSlot) dbPrintf(0, "hier ist der Fehler1");
      // An unknown search method returns 0, the slot of a root.
      if (newPosition < matrix.getMatrixFileHeader()->getMaxNumberOfMatrices()) return -1;
      stackCandidate = newPosition;
      return insertFirst(matrix, newPosition, coordinate, parentPosition) ? newPosition : -1;
    }
    const long long first = static_cast<long long>(parentPosition) + parent->getOffsetToElementInNextDimension();
    const ZQMatrixBaseElement* firstElement = matrix.elementAt(first);
    if (firstElement == nullptr) return -1;
    const long long target = first - firstElement->getIndexInDimension() + coordinate;
    if (target > INT_MAX || target < -INT_MAX) return -1;
    Field own;
    own.first = static_cast<int>(first);
    own.begin = static_cast<int>(first - firstElement->getIndexInDimension());
    return makeSibling(matrix, info, own, static_cast<int>(target), coordinate, stackCandidate);
  }

  static int makeSibling(Matrix& matrix, Info& info, Field own, int target, int coordinate, int& stackCandidate) {
    const int method = info.getMemorySearchMethod();
    if (target >= matrix.numberOfSlots_) {
      if (!count(matrix, own.first, own)) return -1;
      if (moveOwn(matrix, method, own, target) == 0) {
        dbPrintf(1, "Moving own field to the left failed..now expandig...\n");
        if (!matrix.expandMatrixBlock(target)) {
          dbPrintf(0, "expanding matrix failed..\n");
          return -1;
        }
      }
      stackCandidate = target;
    } else if (target < 0) {
      if (!count(matrix, own.first, own)) return -1;
      if (moveOwn(matrix, method, own, target) == 0) {
        dbPrintf(0, "moving own field to the right failed..\n");
        return -1;
      }
      stackCandidate = own.last;
    } else if (matrix.elementAt(target) == nullptr) {
      stackCandidate = target;
    } else if (!resolveClash(matrix, method, own, target, stackCandidate)) {
      return -1;
    }
    if (!insertExisting(matrix, target, coordinate, own.first)) return -1;
    if (target < 0) dbPrintf(0, "hier ist der Fehler2");
    return target;
  }

  // Another field holds the slot: the smaller of the two moves, at equal sizes the own one; a root never moves.
  static bool resolveClash(Matrix& matrix, int method, Field& own, int& target, int& stackCandidate) {
    Field foreign;
    if (!countUntilOneEnds(matrix, target, foreign, own)) return false;
    foreign.begin = static_cast<int>(static_cast<long long>(target) - matrix.elementAt(target)->getIndexInDimension());
    if (own.count <= foreign.count || target < matrix.getMatrixFileHeader()->getMaxNumberOfMatrices()) {
      if (!count(matrix, own.first, own)) return false;
      if (moveOwn(matrix, method, own, target) == 0) {
        dbPrintf(0, "error from WriteData: MoveFieldWithNewIndex failed\n");
        return false;
      }
      stackCandidate = own.last;
      return true;
    }
    if (!count(matrix, target, foreign)) return false;
    if (ZQStoreMove<Tier>::moveField(matrix, method, &foreign.begin, &target, foreign.count, &foreign.first, &foreign.last, 0) ==
        0) {
      dbPrintf(0, "error from WriteData: MoveFieldWithoutIndex failed\n");
      return false;
    }
    stackCandidate = foreign.last;
    // The move may have patched links in the own field, but not moved it: `own` is still valid.
    return true;
  }

  static bool count(Matrix& matrix, int position, Field& field) {
    field.count = matrix.getNumberOfItemsAndFirstLastElementsInSameDimension(position, &field.first, &field.last);
    if (field.count >= FieldCounts::smallestCount) rememberCount(matrix, position, field.count);
    return field.count > 0;
  }

  // Counts both fields up to about the size of the smaller one, so that a wide field that won't move is not walked to its end. A
  // field whose size is in the cache is not counted.
  static bool countUntilOneEnds(Matrix& matrix, int target, Field& foreign, Field& own) {
    for (int limit = 2;; limit = limit > INT_MAX / 4 ? INT_MAX : 4 * limit) {
      const bool areWide = limit > FieldCounts::smallestCount;
      const int knownForeign = areWide ? knownCount(matrix, target) : 0;
      const int knownOwn = areWide ? knownCount(matrix, own.first) : 0;
      foreign.count = knownForeign > 0 ? knownForeign : countUpTo(matrix, target, std::max(limit, knownOwn + 1), foreign);
      own.count = knownOwn > 0 ? knownOwn : countUpTo(matrix, own.first, std::max(limit, knownForeign + 1), own);
      if (foreign.count == 0 || own.count == 0) return false;
      if (knownForeign > 0 || knownOwn > 0 || foreign.count < limit || own.count < limit || limit == INT_MAX) return true;
    }
  }

  static int countUpTo(Matrix& matrix, int position, int limit, Field& field) {
    const int count = matrix.countField(position, limit, &field.first, &field.last);
    if (count >= FieldCounts::smallestCount && count < limit) rememberCount(matrix, position, count);
    return count;
  }

  using FieldCounts = zmatrix::ZQFieldCounts;

  static unsigned nameOfParent(const Matrix& matrix, int position) {
    return matrix.nameOfRecordAt(static_cast<long long>(position) +
                                 matrix.elementAt(position)->getOffsetToElementInPrevDimension());
  }
  static int knownCount(const Matrix& matrix, int position) {
    return matrix.fieldCounts_.find(nameOfParent(matrix, position), matrix.releasedRecords_);
  }
  static void rememberCount(Matrix& matrix, int position, int count) {
    matrix.fieldCounts_.set(nameOfParent(matrix, position), count, matrix.releasedRecords_);
  }

  static int moveOwn(Matrix& matrix, int method, Field& own, int& target) {
    return ZQStoreMove<Tier>::moveField(matrix, method, &own.begin, &target, own.count, &own.first, &own.last, 1);
  }
};

}  // namespace zmatrix
