// The kernel operations of the medium record: the reset to the initial values and the copies for callers. The lengths count
// items, a row holds one coordinate. The internal lengths follow their own rules and may be smaller than the rows; rows never
// shrink, so nothing here depends on the internal lengths.
#include <algorithm>
#include <climits>
#include <iterator>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace {

constexpr int largestDefaultItem = 4;

struct DefaultItem {
  int numberOfCoordinates;  ///< that are written; -1 for all, with 0
  int coordinates[largestDefaultItem];
};

// By matrix type: the item that a continuation without a start begins with. For text the rows stay as they are.
constexpr DefaultItem defaultItems[] = {{-1, {}}, {2, {65, 0}}, {-1, {}}, {0, {}}, {3, {65, 0, 3072}}, {4, {65, 0, 3072, 0}}};
constexpr DefaultItem noDefaultItem = {0, {}};

const DefaultItem& defaultItemOf(int matrixType) {
  return matrixType >= 0 && matrixType < static_cast<int>(std::size(defaultItems)) ? defaultItems[matrixType] : noDefaultItem;
}

template <class Number>
void answer(Number* out, Number value) {
  if (out != nullptr) *out = value;
}

}  // namespace

bool ZQMatrixMediumInfo::growKernelOriginalRows(int length) {
  const int lengthOfRows = std::max(length, zmatrix::initialKernelLength);
  return kernelOriginalSequence.grow(coordinateDimension, lengthOfRows) &&
         kernelOriginalSequenceInitialValues.grow(coordinateDimension, lengthOfRows);
}

bool ZQMatrixMediumInfo::growKernelPreProcessedRows(int length) {
  return kernelPreProcessedSequence.grow(coordinateDimension, std::max(length, zmatrix::initialKernelLength));
}

int ZQMatrixMediumInfo::resetKernelSequence(int id, int resetInitialValues) {
  const int needed = zmatrix::numberOfItemsToRestore(preProcessingType);
  if (resetInitialValues == 1 || (needed >= 1 && lengthOfKernelOriginalSequence < needed)) {
    lengthOfKernelOriginalSequence = writeDefaultItems(needed) ? needed : 0;
  } else {
    if (lengthOfKernelOriginalSequence < lengthOfKernelPreProcessedSequence) {
      dbPrintf(8,
               "initializeKernelSequenceWithObjectOriginalSequence(): _lengthOfKernelOriginalSequence(%d) - "
               "_lengthOfKernelPreProcessedSequence(%d)) <0)\n",
               lengthOfKernelOriginalSequence, lengthOfKernelPreProcessedSequence);
    }
    const long long itemsLeft = static_cast<long long>(lengthOfKernelOriginalSequence) - lengthOfKernelPreProcessedSequence;
    lengthOfKernelOriginalSequence = static_cast<int>(std::clamp<long long>(itemsLeft, INT_MIN, INT_MAX));
  }
  lengthOfKernelPreProcessedSequence = 0;
  kernelMatrixHandle = id;
  if (lengthOfKernelOriginalSequence > zmatrix::initialKernelLength) {
    internalLengthOfKernelOriginalSequence = zmatrix::initialKernelLength;
    internalLengthOfKernelPreProcessedSequence = zmatrix::initialKernelLength;
  }
  if (!provideKernelOriginalRows(lengthOfKernelOriginalSequence) || !provideKernelPreProcessedRows(1)) return 0;
  for (int k = 0; k < coordinateDimension; ++k) {
    kernelPreProcessedSequence[k][0] = 0;
    for (int i = 0; i < lengthOfKernelOriginalSequence; ++i) {
      kernelOriginalSequence[k][i] = kernelOriginalSequenceInitialValues[k][i];
    }
  }
  return lengthOfKernelOriginalSequence;
}

bool ZQMatrixMediumInfo::writeDefaultItems(int numberOfItems) {
  if (!provideKernelOriginalRows(numberOfItems)) return false;
  const DefaultItem& item = defaultItemOf(matrixType);
  for (int k = 0; k < coordinateDimension; ++k) {
    if (item.numberOfCoordinates >= 0 && k >= item.numberOfCoordinates) break;
    const int value = k < largestDefaultItem ? item.coordinates[k] : 0;
    std::fill_n(kernelOriginalSequence[k], numberOfItems, value);
    std::fill_n(kernelOriginalSequenceInitialValues[k], numberOfItems, value);
  }
  return true;
}

int* ZQMatrixMediumInfo::flatCopy(zmatrix::ZQRowTable& rows, int numberOfItems, int* length, int* dimension) {
  answer(length, 0);
  answer(dimension, coordinateDimension);
  const int itemsThere = std::min(numberOfItems, rows.rowLength());
  if (itemsThere < 1 || coordinateDimension < 1 || kernelRows(rows) == nullptr) return nullptr;
  int* flat = systemMallocArray<int>(static_cast<long long>(itemsThere) * coordinateDimension);
  if (flat == nullptr) return nullptr;
  for (int i = 0; i < itemsThere; ++i) {
    for (int k = 0; k < coordinateDimension; ++k) flat[i * coordinateDimension + k] = rows[k][i];
  }
  answer(length, itemsThere * coordinateDimension);
  return flat;
}

int** ZQMatrixMediumInfo::objexCopy(zmatrix::ZQRowTable& rows, int numberOfItems, int* count, int* dimension) {
  answer(count, 0);
  answer(dimension, coordinateDimension);
  const int itemsThere = std::clamp(numberOfItems, 0, rows.rowLength());
  if (coordinateDimension < 0 || kernelRows(rows) == nullptr) return nullptr;
  const size_t sizeOfItem = sizeof(int) * static_cast<size_t>(coordinateDimension);
  char* block = systemMallocArray<char>(static_cast<long long>(static_cast<size_t>(itemsThere) * (sizeof(int*) + sizeOfItem)));
  if (block == nullptr) return nullptr;
  int** items = reinterpret_cast<int**>(block);
  int* values = reinterpret_cast<int*>(block + static_cast<size_t>(itemsThere) * sizeof(int*));
  for (int i = 0; i < itemsThere; ++i) {
    items[i] = values + static_cast<ptrdiff_t>(i) * coordinateDimension;
    for (int k = 0; k < coordinateDimension; ++k) items[i][k] = rows[k][i];
  }
  answer(count, itemsThere);
  return items;
}

int* ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector(int* length, int* dimension) {
  return flatCopy(kernelOriginalSequence, lengthOfKernelOriginalSequence, length, dimension);
}

int* ZQMatrixMediumInfo::getKernelOriginalSequenceInitialValuesFlatIndexVector(int* length, int* dimension) {
  return flatCopy(kernelOriginalSequenceInitialValues, lengthOfKernelOriginalSequence, length, dimension);
}

int* ZQMatrixMediumInfo::getKernelPreProcessedSequenceIndexVector(int* length, int* dimension) {
  return flatCopy(kernelPreProcessedSequence, lengthOfKernelPreProcessedSequence, length, dimension);
}

int** ZQMatrixMediumInfo::createKernelOriginalSequenceObjexVector(int* count, int* dimension) {
  return objexCopy(kernelOriginalSequence, lengthOfKernelOriginalSequence, count, dimension);
}

int** ZQMatrixMediumInfo::createKernelOriginalSequenceInitialValuesObjexVector(int* count, int* dimension) {
  return objexCopy(kernelOriginalSequenceInitialValues, lengthOfKernelOriginalSequence, count, dimension);
}

int** ZQMatrixMediumInfo::createKernelPreprocessedSequenceObjexVector(int* count, int* dimension) {
  return objexCopy(kernelPreProcessedSequence, lengthOfKernelPreProcessedSequence, count, dimension);
}

int** ZQMatrixMediumInfo::getKernelSequenceObjectVector(int* count, int* dimension) {
  dbPrintf(8, "getKernelSequenceObjectVector89: not yet implemented\n");
  answer(count, lengthOfKernelPreProcessedSequence);
  answer(dimension, coordinateDimension);
  return getKernelPreProcessedSequence();
}

int ZQMatrixMediumInfo::initializeKernelSequenceWithObjectOriginalSequence(int** items, int count) {
  if (items != nullptr && count > 0) {
    dbPrintf(8, "initializeKernelSequenceWithObjectOriginalSequence(): not yet implemented\n");
  }
  return 0;
}

int zmatrix::numberOfItemsToRestore(int preProcessingType) {
  if (preProcessingType < 0) return 0;
  if (preProcessingType <= 999) return preProcessingType;  // a difference of this order
  return preProcessingType >= 1002 && preProcessingType <= 1004 ? 1 : 0;
}
