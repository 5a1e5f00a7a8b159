// Writing, moving and deleting of the base tier: instantiates the templates shared by all tiers.
#include "store/ZQBaseTier.h"
#include "store/ZQItemSplit.h"
#include "store/ZQStoreDelete.h"
#include "store/ZQStoreWrite.h"

int ZQMatrixBase::moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems,
                                          int* firstElement, int* lastElement, int moveWithNewIndex) {
  return zmatrix::ZQStoreMove<zmatrix::ZQBaseTier>::moveField(*this, memorySearchMethod, fieldBegin, newElementIndex,
                                                              numberOfItems, firstElement, lastElement, moveWithNewIndex);
}

int ZQMatrixBase::insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition) {
  return zmatrix::ZQStoreWrite<zmatrix::ZQBaseTier>::insertFirst(*this, newPosition, coordinate, parentPosition);
}

int ZQMatrixBase::insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField) {
  return zmatrix::ZQStoreWrite<zmatrix::ZQBaseTier>::insertExisting(*this, newPosition, coordinate, elementOfField);
}

int ZQMatrixBase::writeMatrixData(const int* indexVector, int length, long long value) {
  return zmatrix::ZQStoreWrite<zmatrix::ZQBaseTier>::write(*this, indexVector, length, value, {});
}

int ZQMatrixBase::writeMatrixElement(const int* indexVector, int length, long long value) {
  return writeMatrixData(indexVector, length, value);
}

int ZQMatrixBase::writeMatrixElement32(const int* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement32",
                                 [&](const int* vector, int splitLength) { return writeMatrixData(vector, splitLength, value); });
}

int ZQMatrixBase::writeMatrixElement64(const long long* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement64",
                                 [&](const int* vector, int splitLength) { return writeMatrixData(vector, splitLength, value); });
}

int ZQMatrixBase::deleteMatrixElement(const int* indexVector, int length, int keepInnerElements) {
  return zmatrix::ZQStoreDelete<zmatrix::ZQBaseTier>::remove(*this, indexVector, length, keepInnerElements);
}

int ZQMatrixBase::deleteMatrixElement32(const int* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement32", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}

int ZQMatrixBase::deleteMatrixElement64(const long long* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement64", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}
