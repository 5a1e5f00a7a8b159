// Writing, reading, placing, moving and growing; handles, delete and pruning are in PlainStorePaths.cpp.
#include "support/PlainStore.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace plain {

Info::Info() : minimalIndices(32, 500001), maximalIndices(32, -500001), matrixPtr(33, 0) {
}

long long nextRandom(long long state) {
  return (static_cast<unsigned>(state) * 214013u + 2531011u) & 0x7fffffffu;
}

Store::Store(Tier tierOfStore) : tier(tierOfStore), block(64000), infos(4) {
  for (int id = 0; id < maxNumberOfMatrices; ++id) block[static_cast<size_t>(id)] = std::make_unique<Element>();
}

void Store::print(int level, const char* format, ...) {
  if (level > 1) return;
  char text[2048];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  messages += text;
}

int Store::positionOfFirst(int position) const {
  while (at(position) != nullptr && at(position)->previous != 0) position += at(position)->previous;
  return position;
}

int Store::positionOfLast(int position) const {
  while (at(position) != nullptr && at(position)->next != 0) position += at(position)->next;
  return position;
}

int Store::countField(int position, int* first, int* last) const {
  int count = 1;
  for (*first = position; at(*first) && at(*first)->previous != 0; *first += at(*first)->previous) ++count;
  for (*last = position; at(*last) && at(*last)->next != 0; *last += at(*last)->next) ++count;
  return count;
}

int Store::ownerOf(int position) const {
  const Element* element = at(position);
  return element == nullptr || element->parent == 0 ? -1 : position + element->parent;
}

// ------------------------------------------------------------------------------------------------ write and read

int Store::write(const std::vector<int>& vector, long long value, int startFlag, int endFlag, int symbolMarker) {
  const int length = static_cast<int>(vector.size());
  if (info().memIsReadOnly) return 0;
  if (length > info().maxDimOfMatrix) {
    print(0, "error: maximal dimension exceeded: %d\n", length);
    return 0;
  }
  int last = currentMatrixID;
  int stackCandidate = 0;
  bool success = true;
  for (int i = 0; i < length && success; ++i) {
    const int k = vector[static_cast<size_t>(i)];
    if (std::abs(k) > info().maximalMatrixIndex) {
      print(0, "writeMatrixData: error: max matrix Index %d exceeded:  %d\n", info().maximalMatrixIndex, std::abs(k));
      print(0, "please increase this value (setMaximalMatrixIndex())\n");
      return 0;
    }
    success = placeChild(last, stackCandidate, k);
    if (!success) break;
    maximalStack = std::max({maximalStack, stackCandidate, last});
    checkMatrixDimension(i);
    int& low = info().minimalIndices[static_cast<size_t>(i)];
    int& high = info().maximalIndices[static_cast<size_t>(i)];
    low = std::min(low, k);
    high = std::max(high, k);
  }
  if (last > maximalStack) print(0, "writeMatrixData error: lastelement (%d) > stackPtr (%d)\n", last, maximalStack);
  if (!success) return 0;

  Element& end = *at(last);
  end.value = value;
  if (tier == Tier::full && symbolMarker != 0) {
    if (symbolMarker > 0 && end.symbolID == 0) {
      end.symbolID = ++info().newSymbol;
      ++info().symbols;
    } else if (end.symbolID < 1) {
      print(0, "negtive symbolID unexpected\n");
    }
  }
  ++end.writeCount;
  if (tier != Tier::base) {
    if (endFlag == 0) ++end.withSuccessor;
    if (startFlag != 0 && ++end.withoutPredecessor == 1) ++info().startElements;
  }
  ++info().writeEvents;
  ++info().writeCounts;
  if (end.writeCount == 1) ++info().writeElements;
  return 1;
}

// One step of the walk: from the element at `last` to its child for coordinate k, which is created if missing.
bool Store::placeChild(int& last, int& stackCandidate, int k) {
  if (at(last)->child == 0) {
    const int newPosition = findNearestFreeMatrixElement(info().memorySearchMethod);
    if (newPosition < 0) {
      if (tier != Tier::base) print(0, "hier ist der Fehler1");
      return false;
    }
    insertFirst(newPosition, k, last);
    last = stackCandidate = newPosition;
    return true;
  }
  const int method = info().memorySearchMethod;
  int first = last + at(last)->child;
  int fieldBegin = first - at(first)->index;
  int target = fieldBegin + k;
  int ownFirst = 0, ownLast = 0;
  if (target >= blockSize) {
    const int count = countField(first, &ownFirst, &ownLast);
    if (moveFieldToFreePosition(method, &fieldBegin, &target, count, &first, &ownLast, 1) == 0) {
      print(1, "Moving own field to the left failed..now expandig...\n");
      if (expandMatrixBlock(target) != 1) {
        print(0, "expanding matrix failed..\n");
        return false;
      }
    }
    if (!insertExisting(target, k, first)) return false;
    stackCandidate = target;
  } else if (target < 0) {
    const int count = countField(first, &ownFirst, &ownLast);
    if (moveFieldToFreePosition(method, &fieldBegin, &target, count, &first, &ownLast, 1) == 0) {
      print(0, "moving own field to the right failed..\n");
      return false;
    }
    if (!insertExisting(target, k, first)) return false;
    stackCandidate = positionOfLast(first);
  } else if (at(target) == nullptr) {
    if (!insertExisting(target, k, first)) return false;
    stackCandidate = target;
  } else if (positionOfFirst(target) == first) {
    if (at(target)->index != k) {
      print(0, "Das sollte nicht passieren!\n");
      return false;
    }
  } else {
    int foreignFirst = 0, foreignLast = 0;
    const int foreignCount = countField(target, &foreignFirst, &foreignLast);
    int foreignBegin = foreignFirst - at(foreignFirst)->index;
    const int ownCount = countField(first, &ownFirst, &ownLast);
    if (ownCount <= foreignCount || target < maxNumberOfMatrices) {
      if (moveFieldToFreePosition(method, &fieldBegin, &target, ownCount, &first, &ownLast, 1) == 0) {
        print(0, "error from WriteData: MoveFieldWithNewIndex failed\n");
        return false;
      }
      if (!insertExisting(target, k, first)) return false;
      stackCandidate = positionOfLast(first);
    } else {
      if (moveFieldToFreePosition(method, &foreignBegin, &target, foreignCount, &foreignFirst, &foreignLast, 0) == 0) {
        print(0, "error from WriteData: MoveFieldWithoutIndex failed\n");
        return false;
      }
      if (!insertExisting(target, k, first)) return false;
      stackCandidate = foreignLast;
    }
  }
  last = first - at(first)->index + k;
  return true;
}

void Store::insertFirst(int newPosition, int coordinate, int parentPosition) {
  auto& slot = block[static_cast<size_t>(newPosition)];
  if (slot == nullptr) {
    slot = std::make_unique<Element>();
    ++info().elements;
  }
  *slot = Element();
  slot->index = coordinate;
  slot->parent = parentPosition - newPosition;
  at(parentPosition)->child = newPosition - parentPosition;
  if (parentPosition == currentMatrixID) ++info().endElements;
}

int Store::insertExisting(int newPosition, int coordinate, int elementOfField) {
  const int first = positionOfFirst(elementOfField);
  const int last = positionOfLast(elementOfField);
  if (at(newPosition) != nullptr) {
    print(0, "Cannot insert element to an occupied index\n");
    return 0;
  }
  const int parent = first + at(first)->parent;
  block[static_cast<size_t>(newPosition)] = std::make_unique<Element>();
  Element& element = *at(newPosition);
  ++info().elements;
  ++info().endElements;
  element.index = coordinate;
  element.parent = parent - newPosition;
  if (newPosition < first) {
    element.next = first - newPosition;
    at(first)->previous = newPosition - first;
    at(parent)->child = newPosition - parent;
  } else if (newPosition > last) {
    element.previous = last - newPosition;
    at(last)->next = newPosition - last;
  } else {
    int below = last;
    while (below > newPosition) below += at(below)->previous;
    const int above = below + at(below)->next;
    element.next = above - newPosition;
    element.previous = below - newPosition;
    at(below)->next = newPosition - below;
    at(above)->previous = newPosition - above;
  }
  return 1;
}

int Store::checkMatrixDimension(int dimIndex) {
  Info& i = info();
  if (dimIndex >= i.maxDimOfMatrix) return 0;
  if (dimIndex < i.currentDimension) return 1;
  if (dimIndex >= i.internalCurrentDimension) {
    i.internalCurrentDimension = static_cast<int>(dimIndex * 1.618);
    const auto capacity = static_cast<size_t>(i.internalCurrentDimension);
    i.minimalIndices.resize(capacity, i.maximalMatrixIndex + 1);
    i.maximalIndices.resize(capacity, -(i.maximalMatrixIndex + 1));
    i.matrixPtr.resize(capacity + 1, 0);
  }
  i.currentDimension = dimIndex + 1;
  return 1;
}

int Store::exist(const int* vector, int length) {
  if (length < 1 || length >= info().maxDimOfMatrix) return -2;
  info().matrixPtr[0] = currentMatrixID;
  int current = currentMatrixID;
  for (int i = 0; i < length; ++i) {
    if (at(current) == nullptr || at(current)->child == 0) return -1;
    const int first = current + at(current)->child;
    if (first < 0 || first >= blockSize) return -3;
    if (at(first) == nullptr) return -5;
    const int fieldBegin = first - at(first)->index;
    info().matrixPtr[static_cast<size_t>(i) + 1] = fieldBegin;
    const long long target = static_cast<long long>(fieldBegin) + vector[i];
    if (target < 0 || target >= blockSize) return -2;
    current = static_cast<int>(target);
    if (at(current) == nullptr) return 0;
    if (ownerOf(current) != ownerOf(first)) return -1;
  }
  if (at(current)->child == 0) return 3;
  if (at(current)->writeCount > 0) return 2;
  return at(current)->writeCount == 0 ? 1 : -5;
}

Read Store::read(const std::vector<int>& vector) {
  Read result;
  result.existCode = exist(vector);
  if (result.existCode < 1) return result;
  const Element& end = *at(vector.back() + info().matrixPtr[vector.size()]);
  return {end.value, result.existCode, end.writeCount, end.withSuccessor, end.withoutPredecessor};
}

// ------------------------------------------------------------------------------------------------ free slots

int Store::findNearestFreeMatrixElement(int method) {
  search.lastOffset = std::max(search.lastOffset, maxNumberOfMatrices);
  search.goodStartIndex = std::max(search.goodStartIndex, maxNumberOfMatrices);
  if (method < 0 || method > 3) return 0;
  int start = -1;
  if (method == 0 || method == 2) {
    systemRandomValue = nextRandom(systemRandomValue);
    const double r = static_cast<double>(systemRandomValue) / 2147483647.0;
    if (method == 0) start = search.goodStartIndex + static_cast<int>((blockSize - search.goodStartIndex) * r);
    if (method == 2) start = std::max(static_cast<int>(maximalStack * r), maxNumberOfMatrices);
  }
  if (method != 1) return findIndexOfNearestFreeElement(start, &search.goodStartIndex);
  search.lastOffset = findIndexOfNearestFreeElement(search.lastOffset, &search.goodStartIndex);
  return search.lastOffset;
}

int Store::failedSearch(int* goodStart, int newGoodStart) {
  print(0, "error from findFreeFieldBegin: Could not expand _matrixBlockSize , Search failed\n");
  *goodStart = newGoodStart;
  return -1;
}

int Store::findIndexOfNearestFreeElement(int start, int* goodStart) {
  const int low = maxNumberOfMatrices;
  search.firstFree = std::max(search.firstFree, low);
  const int remembered = search.numberOfFunctionCalls++;
  if (start == -1 || remembered >= 1024) {
    ++periodicScans;
    const int method = info().memorySearchMethod;
    int skip = 0;
    if (method == 2 || method == 3) skip = 1;
    if (method == 0) skip = static_cast<int>(blockSize * 0.01);
    if (method == 1) skip = static_cast<int>(maximalStack * 0.01);
    search.numberOfFunctionCalls = 0;
    search.firstFree = low;
    for (int position = low; position < blockSize; ++position) {
      if (at(position) != nullptr) continue;
      if (skip-- > 0) continue;
      search.firstFree = *goodStart = position;
      return position;
    }
    ++growthsInSearch;
    if (expandMatrixBlock(0) != 1) {
      search.firstFree = low;
      return failedSearch(goodStart, low);
    }
    for (int position = blockSizeOld; position < blockSize; ++position) {
      if (at(position) != nullptr) continue;
      search.firstFree = *goodStart = position;
      return position;
    }
  }
  const int fillLimit = static_cast<int>(0.9 * blockSize);
  if (start < -1 || start >= blockSize) start = search.firstFree;
  if (start < low) return -1;
  const int centre = std::max(start, search.firstFree);
  if (centre < blockSize && centre >= low && at(centre) == nullptr) {
    *goodStart = search.firstFree;
    return centre;
  }
  if (info().elements > fillLimit) {
    ++growthsInSearch;
    if (expandMatrixBlock(0) != 1) return failedSearch(goodStart, 0);
  }
  int offset = 0;
  bool leftLimit = false, rightLimit = false;
  while (true) {
    if (leftLimit && rightLimit) {
      ++growthsInSearch;
      if (expandMatrixBlock(0) != 1) return failedSearch(goodStart, 0);
      rightLimit = false;
    }
    if (leftLimit) {
      offset = std::abs(offset) + 1;
    } else if (rightLimit) {
      offset = -(std::abs(offset) + 1);
    } else {
      offset = offset < 0 ? -offset : -(offset + 1);
    }
    const int probe = centre + offset;
    if (probe < 0) {
      leftLimit = true;
    } else if (probe >= blockSize) {
      rightLimit = true;
    } else if (at(probe) == nullptr) {
      *goodStart = search.firstFree;
      return probe;
    }
  }
}

// ------------------------------------------------------------------------------------------------ moving a field

int Store::moveFieldToFreePosition(int method, int* fieldBegin, int* newElementIndex, int numberOfItems, int* firstElement,
                                   int* lastElement, int moveWithNewIndex) {
  if (info().memIsReadOnly) return 0;
  const bool withIndex = moveWithNewIndex == 1 && newElementIndex != nullptr;
  const int offset = findOffset(method, *newElementIndex, numberOfItems, *firstElement, *lastElement, withIndex);
  if (offset == 0) return 0;
  ++moves;
  if (at(*firstElement)->parent != 0) at(*firstElement + at(*firstElement)->parent)->child += offset;
  for (int position = *firstElement;; position += at(position)->next) {
    Element& element = *at(position);
    if (element.parent != 0) element.parent -= offset;
    if (element.child != 0) {
      int child = position + element.child;
      element.child -= offset;
      for (;; child += at(child)->next) {
        at(child)->parent += offset;
        if (at(child)->next == 0) break;
      }
    }
    if (tier == Tier::full) followSymbols(element, offset);
    if (element.next == 0) break;
  }
  for (int position = offset < 0 ? *firstElement : *lastElement;;) {
    auto& source = block[static_cast<size_t>(position)];
    const int step = offset < 0 ? source->next : source->previous;
    block[static_cast<size_t>(position + offset)] = std::make_unique<Element>(*source);
    source.reset();
    if (step == 0) break;
    position += step;
  }
  if (withIndex) *newElementIndex += offset;
  *fieldBegin += offset;
  *firstElement += offset;
  *lastElement += offset;
  return offset;
}

// The first offset, in the method's order, at which the whole field fits; 0 if the block can't grow.
int Store::findOffset(int method, int newElementIndex, int numberOfItems, int first, int last, bool withIndex) {
  const int low = maxNumberOfMatrices;
  int offset = 0;
  bool leftLimit = false, rightLimit = false;
  const auto stepRight = [&] { offset = offset < 0 ? -offset : offset + 1; };
  const auto stepLeft = [&] { offset = offset > 0 ? -offset : offset - 1; };
  while (true) {
    if (leftLimit && rightLimit) {
      ++growthsInMove;
      if (expandMatrixBlock(0) != 1) {
        print(0, "internal error from MoveField: _matrixBlockSize too small, *fieldBegin, iOffset: %ld %ld\n",
              static_cast<long>(first - at(first)->index), static_cast<long>(offset));
        return 0;
      }
      rightLimit = false;
    }
    if (method == 2) {
      if (leftLimit) {
        stepRight();
      } else {
        stepLeft();
      }
    } else if (method == 3) {
      offset = std::abs(offset) + 1;
      leftLimit = true;
    } else if (leftLimit) {
      stepRight();
    } else if (rightLimit) {
      stepLeft();
    } else {
      offset = offset < 0 ? -offset : -(offset + 1);
    }
    const bool pastRight = last + offset >= blockSize || (withIndex && newElementIndex + offset >= blockSize);
    if (first + offset < low || (withIndex && newElementIndex + offset < low)) {
      leftLimit = true;
      if (pastRight) rightLimit = true;
      continue;
    }
    if (pastRight) {
      rightLimit = true;
      continue;
    }
    if (offsetFits(offset, newElementIndex, numberOfItems, first, withIndex)) return offset;
  }
}

bool Store::offsetFits(int offset, int newElementIndex, int numberOfItems, int first, bool withIndex) const {
  const int owner = first + at(first)->parent;
  int position = first;
  for (int item = 0; item < numberOfItems; ++item) {
    const int target = position + offset;
    if (at(target) != nullptr && ownerOf(target) != owner) return false;
    if (!withIndex && target == newElementIndex) return false;
    position += at(position)->next;
  }
  if (!withIndex) return true;
  const int target = newElementIndex + offset;
  return at(target) == nullptr || ownerOf(target) == owner;
}

// Updates the down link of the symbol's element one level up. A symbol element's own link is changed as if it were relative.
void Store::followSymbols(Element& element, int offset) {
  const int levelUp = info().levelUp;
  if (element.symbolID >= 256 && levelUp >= 0 && levelUp < maxNumberOfMatrices) {
    const int remembered = currentMatrixID;
    currentMatrixID = levelUp;
    const int handle = handleOf(&element.symbolID, 1);
    if (handle >= 0) at(handle)->symbolDownLink += offset;
    currentMatrixID = remembered;
  }
  if (element.symbolDownLink > 0) element.symbolDownLink -= offset;
}

// ------------------------------------------------------------------------------------------------ growth

int Store::expandMatrixBlock(int minimalSize) {
  constexpr long long cap = 134217728;
  blockSizeOld = blockSize;
  long long newSize = static_cast<long long>(1.618 * (minimalSize < 1 ? blockSize : minimalSize));
  if (newSize * 8 >= 1073741824) {
    newSize = blockSize = static_cast<int>(cap);
    print(0, "warning from expandMatrixBlock: Reallocation: blocksize reduced: %ld", static_cast<long>(newSize));
    if (blockSizeOld >= cap) {
      print(0, "error from expandMatrixBlock: Reallocation of _matrixData failed _matrixBlockSize too large: %ld!",
            static_cast<long>(newSize));
      return 0;
    }
  }
  blockSize = static_cast<int>(newSize);
  block.resize(static_cast<size_t>(blockSize));
  ++growths;
  print(1, "Memory-block enlarged from %ld up to %ld\n", static_cast<long>(blockSizeOld), static_cast<long>(blockSize));
  return 1;
}

int Store::setInitialMatrixBlocksize(int size) {
  blockSizeOld = blockSize;
  blockSize = size;
  if (size < 1 || size == blockSizeOld) return 0;
  block.resize(static_cast<size_t>(size));
  blockSizeOld = size;
  return 1;
}

}  // namespace plain
