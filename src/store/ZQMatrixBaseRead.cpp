// The read walk and the reads of the base tier. A walk changes only the record's matrixPtr, the path of the last walk, and the
// cached coordinate of a first child.
#include "store/ZQItemSplit.h"
#include "store/ZQMatrixBase.h"

zmatrix::FoundPath ZQMatrixBase::find(const int* indexVector, int length) noexcept {
  ZQMatrixBaseInfo* info = getMatrixInfo();
  if (length < 1 || length >= info->getMaxDimOfMatrix()) return {-2};
  if (indexVector == nullptr) return {-2};
  int* const path = info->getMatrixPtr();
  const int room = info->getRoomOfMatrixPtr();
  if (room < 0) return findWithRoomFor(1, indexVector, length);
  long long current = currentMatrixId_;
  ZQMatrixBaseElement* element = elementAt(current);
  path[0] = currentMatrixId_;
  for (int i = 0; i < length; ++i) {
    if (element == nullptr || element->getOffsetToElementInNextDimension() == 0) return {-1};
    const long long first = current + element->getOffsetToElementInNextDimension();
    if (!isSlot(first)) {
      dbPrintf(0, "error in existMatrixData: illegal addressOfFirstElement (offset to _matrixData:) %d\n",
               static_cast<int>(first));
      return {-3};
    }
    if (!knowsFirstChild(current, *element)) {
      dbPrintf(0, "error in existMatrixData: illegal *addressOfFirstElement (NULL pointer) %d\n", static_cast<int>(first));
      return {-5};
    }
    if (i >= room) return findWithRoomFor(i + 1, indexVector, length);
    const long long fieldBegin = first - element->getIndexOfFirstChild();
    path[i + 1] = static_cast<int>(fieldBegin);
    const long long next = fieldBegin + indexVector[i];
    if (!isSlot(next)) return {-2};
    element = elementAt(next);
    if (element == nullptr) return {0};
    const int offsetToParent = element->getOffsetToElementInPrevDimension();
    if (offsetToParent == 0 || next + offsetToParent != current) return {-1};
    current = next;
  }
  if (element->getOffsetToElementInNextDimension() == 0) return {3, static_cast<int>(current)};
  if (element->getWriteCount() > 0) return {2, static_cast<int>(current)};
  if (element->getWriteCount() == 0) return {1, static_cast<int>(current)};
  dbPrintf(0, "error in existMatrixData: unexpected writeCount: %d\n", element->getWriteCount());
  return {-5};
}

// After a trim, or from a file, matrixPtr may be shorter than the deepest path.
zmatrix::FoundPath ZQMatrixBase::findWithRoomFor(int numberOfSteps, const int* indexVector, int length) {
  return getMatrixInfo()->growMatrixPtr(numberOfSteps) ? find(indexVector, length) : zmatrix::FoundPath{-1};
}

int ZQMatrixBase::existMatrixData(const int* indexVector, int length) noexcept {
  return find(indexVector, length).code;
}

int ZQMatrixBase::existMatrixData32(const int* items, int length) {
  return zmatrix::withSplitItems(*this, items, length, -1, "existMatrixData32",
                                 [this](const int* vector, int splitLength) { return existMatrixData(vector, splitLength); });
}

int ZQMatrixBase::existMatrixData64(const long long* items, int length) {
  return zmatrix::withSplitItems(*this, items, length, 0, "existMatrixData64",
                                 [this](const int* vector, int splitLength) { return existMatrixData(vector, splitLength); });
}

long long ZQMatrixBase::readMatrixData(const int* indexVector, int length, int* existCode, int* writeCount) noexcept {
  const ZQMatrixBaseElement* element = zmatrix::readElement(*this, indexVector, length, existCode);
  *writeCount = element != nullptr ? element->getWriteCount() : 0;
  return element != nullptr ? element->getValue() : 0;
}

long long ZQMatrixBase::readMatrixData32(const int* items, int length, int* existCode, int* writeCount) {
  *existCode = -5;
  *writeCount = 0;
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixData32", [&](const int* vector, int splitLength) {
    return readMatrixData(vector, splitLength, existCode, writeCount);
  });
}

long long ZQMatrixBase::readMatrixData64(const long long* items, int length, int* existCode, int* writeCount) {
  *existCode = -5;
  *writeCount = 0;
  // The message names the 32-bit function; its text is fixed.
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixData32", [&](const int* vector, int splitLength) {
    return readMatrixData(vector, splitLength, existCode, writeCount);
  });
}

long long ZQMatrixBase::readMatrixElement(const int* indexVector, int length, int* existCode) noexcept {
  const ZQMatrixBaseElement* element = zmatrix::readElement(*this, indexVector, length, existCode);
  return element != nullptr ? element->getValue() : 0;
}

long long ZQMatrixBase::readMatrixElement32(const int* items, int length, int* existCode) {
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixElement32", [&](const int* vector, int splitLength) {
    return readMatrixElement(vector, splitLength, existCode);
  });
}

long long ZQMatrixBase::readMatrixElement64(const long long* items, int length, int* existCode) {
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixElement64", [&](const int* vector, int splitLength) {
    return readMatrixElement(vector, splitLength, existCode);
  });
}
