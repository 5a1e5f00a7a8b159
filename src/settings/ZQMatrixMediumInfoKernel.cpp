// The kernel operations of the medium record: storing items, the reset to initial values and the copies for callers. Lengths
// count items. The internal lengths may differ from the allocated memory; only the rows for callers depend on them.
#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>

#include "frame/ZQAssert.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"
#include "frame/ZQOptionalOutput.h"
#include "settings/ZQMatrixMediumInfo.h"

using zmatrix::answer;
using zmatrix::dbPrintf;
using zmatrix::systemMallocArray;

namespace {

constexpr int largestDefaultItem = 4;

struct DefaultItem {
  int numberOfCoordinates;  ///< the number that is written; -1 for all, with 0
  int coordinates[largestDefaultItem];
};

// By matrix type: the item with which a continuation without a start begins. For text the kernel's items are left as they are.
constexpr DefaultItem defaultItems[] = {{-1, {}}, {2, {65, 0}}, {-1, {}}, {0, {}}, {3, {65, 0, 3072}}, {4, {65, 0, 3072, 0}}};
constexpr DefaultItem noDefaultItem = {0, {}};

const DefaultItem& defaultItemOf(int matrixType) {
  return matrixType >= 0 && matrixType < static_cast<int>(std::size(defaultItems)) ? defaultItems[matrixType] : noDefaultItem;
}

void storeItems(zmatrix::ZQKernelItems& to, const int* items, int numberOfItems) {
  ZQ_ASSERT(numberOfItems <= to.room());
  if (numberOfItems > 0)
    memmove(to.data(), items, sizeof(int) * static_cast<size_t>(numberOfItems) * static_cast<size_t>(to.coordinates()));
}

}  // namespace

void ZQMatrixMediumInfo::storeKernelOriginal(const int* items, int length) {
  facesThatAgree_ = noFaces;
  lengthOfKernelOriginalSequence_ = length;
  storeItems(kernelOriginalSequence_, items, length);
}

void ZQMatrixMediumInfo::storeKernelInitialValues(const int* items, int length) {
  storeItems(kernelOriginalSequenceInitialValues_, items, length);
}

void ZQMatrixMediumInfo::storeKernelPreProcessed(const int* items, int length) {
  facesThatAgree_ = noFaces;
  lengthOfKernelPreProcessedSequence_ = length;
  storeItems(kernelPreProcessedSequence_, items, length);
}

int* ZQMatrixMediumInfo::roomBehindKernelOriginal(int length) {
  return length < INT_MAX && provideKernelOriginal(length + 1) ? &kernelOriginalSequence_.at(length, 0) : nullptr;
}

int* ZQMatrixMediumInfo::roomBehindKernelPreProcessed(int length) {
  if (length == INT_MAX || !provideKernelPreProcessed(std::max(length + 1, zmatrix::grownCapacity(length + 1)))) return nullptr;
  return &kernelPreProcessedSequence_.at(length, 0);
}

int ZQMatrixMediumInfo::resetKernelSequence(int id, int resetInitialValues) {
  const int needed = zmatrix::numberOfItemsToRestore(preProcessingType_);
  if (resetInitialValues == 1 || (needed >= 1 && lengthOfKernelOriginalSequence_ < needed)) {
    lengthOfKernelOriginalSequence_ = writeDefaultItems(needed) ? needed : 0;
  } else {
    if (lengthOfKernelOriginalSequence_ < lengthOfKernelPreProcessedSequence_) {
      dbPrintf(8,
               "initializeKernelSequenceWithObjectOriginalSequence(): _lengthOfKernelOriginalSequence(%d) - "
               "_lengthOfKernelPreProcessedSequence(%d)) <0)\n",
               lengthOfKernelOriginalSequence_, lengthOfKernelPreProcessedSequence_);
    }
    const long long itemsLeft = static_cast<long long>(lengthOfKernelOriginalSequence_) - lengthOfKernelPreProcessedSequence_;
    lengthOfKernelOriginalSequence_ = static_cast<int>(std::clamp<long long>(itemsLeft, INT_MIN, INT_MAX));
  }
  lengthOfKernelPreProcessedSequence_ = 0;
  kernelMatrixHandle_ = id;
  if (lengthOfKernelOriginalSequence_ > zmatrix::initialKernelLength) {
    internalLengthOfKernelOriginalSequence_ = zmatrix::initialKernelLength;
    internalLengthOfKernelPreProcessedSequence_ = zmatrix::initialKernelLength;
  }
  facesThatAgree_ = noFaces;
  if (!provideKernelOriginal(lengthOfKernelOriginalSequence_) || !provideKernelPreProcessed(1)) return 0;
  std::fill_n(kernelPreProcessedSequence_.data(), coordinateDimension_, 0);
  storeItems(kernelOriginalSequence_, kernelOriginalSequenceInitialValues_.data(), lengthOfKernelOriginalSequence_);
  return lengthOfKernelOriginalSequence_;
}

bool ZQMatrixMediumInfo::writeDefaultItems(int numberOfItems) {
  if (!provideKernelOriginal(numberOfItems)) return false;
  const DefaultItem& item = defaultItemOf(matrixType_);
  for (int k = 0; k < coordinateDimension_; ++k) {
    if (item.numberOfCoordinates >= 0 && k >= item.numberOfCoordinates) break;
    const int value = k < largestDefaultItem ? item.coordinates[k] : 0;
    for (int i = 0; i < numberOfItems; ++i) {
      kernelOriginalSequence_.at(i, k) = kernelOriginalSequenceInitialValues_.at(i, k) = value;
    }
  }
  return true;
}

// A loaded record has room for its sequences alone; its internal lengths are as in the file. A length far beyond what the
// sequence needs stems from a damaged file, and gets no more than mostUnusedItems.
int** ZQMatrixMediumInfo::kernelRows(zmatrix::ZQKernelItems& items, int length, int internalLength) {
  constexpr long long mostUnusedItems = 65536;
  const auto rowLength = std::min<long long>(internalLength, zmatrix::grownCapacity(length) + mostUnusedItems);
  const bool hasRoom = items.provide(coordinateDimension_, std::max(static_cast<int>(rowLength), zmatrix::initialKernelLength)) ||
                       items.provide(coordinateDimension_, zmatrix::initialKernelLength);
  return hasRoom ? items.rows() : nullptr;
}

int** ZQMatrixMediumInfo::getKernelOriginalSequence() {
  return kernelRows(kernelOriginalSequence_, lengthOfKernelOriginalSequence_, internalLengthOfKernelOriginalSequence_);
}

int** ZQMatrixMediumInfo::getKernelOriginalSequenceInitialValues() {
  return kernelRows(kernelOriginalSequenceInitialValues_, lengthOfKernelOriginalSequence_,
                    internalLengthOfKernelOriginalSequence_);
}

int** ZQMatrixMediumInfo::getKernelPreProcessedSequence() {
  return kernelRows(kernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_,
                    internalLengthOfKernelPreProcessedSequence_);
}

int* ZQMatrixMediumInfo::flatCopy(zmatrix::ZQKernelItems& from, int numberOfItems, int* length, int* dimension) {
  answer(length, 0);
  answer(dimension, coordinateDimension_);
  const int itemsThere = std::min(numberOfItems, from.room());
  if (itemsThere < 1 || coordinateDimension_ < 1 || !from.provide(coordinateDimension_, zmatrix::initialKernelLength))
    return nullptr;
  const int integers = itemsThere * coordinateDimension_;
  int* flat = systemMallocArray<int>(integers);
  if (flat == nullptr) return nullptr;
  std::copy_n(from.data(), integers, flat);
  answer(length, integers);
  return flat;
}

int** ZQMatrixMediumInfo::objexCopy(zmatrix::ZQKernelItems& from, int numberOfItems, int* count, int* dimension) {
  answer(count, 0);
  answer(dimension, coordinateDimension_);
  const int itemsThere = std::clamp(numberOfItems, 0, from.room());
  if (coordinateDimension_ < 0 || !from.provide(coordinateDimension_, zmatrix::initialKernelLength)) return nullptr;
  const size_t integers = static_cast<size_t>(itemsThere) * static_cast<size_t>(coordinateDimension_);
  const size_t sizeOfPointers = static_cast<size_t>(itemsThere) * sizeof(int*);
  const size_t sizeOfBlock = sizeOfPointers + integers * sizeof(int);
  char* block = systemMallocArray<char>(static_cast<long long>(sizeOfBlock));
  if (block == nullptr) return nullptr;
  int** items = reinterpret_cast<int**>(block);
  int* values = reinterpret_cast<int*>(block + sizeOfPointers);
  std::copy_n(from.data(), integers, values);
  for (int i = 0; i < itemsThere; ++i) items[i] = values + static_cast<ptrdiff_t>(i) * coordinateDimension_;
  answer(count, itemsThere);
  return items;
}

int* ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector(int* length, int* dimension) {
  return flatCopy(kernelOriginalSequence_, lengthOfKernelOriginalSequence_, length, dimension);
}

int* ZQMatrixMediumInfo::getKernelOriginalSequenceInitialValuesFlatIndexVector(int* length, int* dimension) {
  return flatCopy(kernelOriginalSequenceInitialValues_, lengthOfKernelOriginalSequence_, length, dimension);
}

int* ZQMatrixMediumInfo::getKernelPreProcessedSequenceIndexVector(int* length, int* dimension) {
  return flatCopy(kernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_, length, dimension);
}

int** ZQMatrixMediumInfo::createKernelOriginalSequenceObjexVector(int* count, int* dimension) {
  return objexCopy(kernelOriginalSequence_, lengthOfKernelOriginalSequence_, count, dimension);
}

int** ZQMatrixMediumInfo::createKernelOriginalSequenceInitialValuesObjexVector(int* count, int* dimension) {
  return objexCopy(kernelOriginalSequenceInitialValues_, lengthOfKernelOriginalSequence_, count, dimension);
}

int** ZQMatrixMediumInfo::createKernelPreprocessedSequenceObjexVector(int* count, int* dimension) {
  return objexCopy(kernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_, count, dimension);
}

int** ZQMatrixMediumInfo::getKernelSequenceObjectVector(int* count, int* dimension) {
  dbPrintf(8, "getKernelSequenceObjectVector89: not yet implemented\n");
  answer(count, lengthOfKernelPreProcessedSequence_);
  answer(dimension, coordinateDimension_);
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
