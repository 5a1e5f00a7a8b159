// The inverse preprocessing of whole sequences, and the preprocessing of index vectors and its inverse. An index vector has
// settings of its own, so the operation works on an empty sub-matrix that is set to them.
#include <algorithm>

#include "sequence/ZQComplaint.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQMatrixSequenceIndexVector.h"
#include "sequence/ZQNumberCoding.h"
#include "sequence/ZQObjexBlock.h"

using zmatrix::complain;
using zmatrix::ObjexBlock;
using zmatrix::SystemOwned;

namespace {

/// Decodes the ocron that begins at each preprocessed item, or, with `walksByOcrons`, at the first item and after each end
/// symbol. Returns the number of items in the block.
int restoreOcrons(ZQMatrixMedium* matrix, int** items, int first, int total, int** preProcessed, bool walksByOcrons) {
  ZQMatrixMediumInfo* info = matrix->getMatrixInfo();
  const int numberOfPreProcessed = total - first;
  // An ocron extends over several items, which may lie apart in memory.
  const SystemOwned<int> symbols = zmatrix::flatSequenceOfObjex(preProcessed, numberOfPreProcessed, 1);
  if (symbols == nullptr) return first;
  int restored = first;
  for (int position = 0; position < numberOfPreProcessed; position++) {
    const int* number = zmatrix::numberOfCode(info, symbols.get() + position, numberOfPreProcessed - position,
                                              zmatrix::InverseOperation::withSequence);
    if (number == nullptr) break;
    items[restored++][0] = number[0];
    while (walksByOcrons && position < numberOfPreProcessed && symbols[position] != info->getOcronEndSymbol()) position++;
  }
  return restored;
}

/// Restores the items after the first ones, which are in the block already. Returns the number of items in the block.
int restoreItems(ZQMatrixMedium* matrix, int** items, int first, int total, int** preProcessed) {
  const int coordinateDimension = matrix->getMatrixInfo()->getCoordinateDimension();
  if (zmatrix::isOcronCoding(matrix->getMatrixInfo()->getPreProcessingType()))
    return coordinateDimension == 1 ? restoreOcrons(matrix, items, first, total, preProcessed, false) : first;
  for (int k = first; k < total; k++) {
    const int* item =
        matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(items, k - 1, total, preProcessed[k - first]);
    if (item == nullptr) return k;
    std::copy_n(item, coordinateDimension, items[k]);
  }
  return total;
}

void copyItems(int** to, const int* const* from, int numberOfItems, int coordinateDimension) {
  for (int i = 0; i < numberOfItems; i++) std::copy_n(from[i], coordinateDimension, to[i]);
}

/// Makes the sub-matrix after the last occupied one the current one, with these settings. False, with a message that names the
/// forward operation for both directions, if there is none.
bool switchToSpareMatrix(ZQMatrixMedium* matrix, int coordinateDimension, int preProcessingType) {
  const int spareID = matrix->getHighestOccupiedMatrixID() + 1;
  if (spareID >= matrix->getMaxNumberOfMatrices()) {
    complain("error: getPreProcessedZQIndexVectorFromOriginalIndexVector(): no free sub matrix found...\n");
    return false;
  }
  matrix->setCurrentMatrixID(spareID);
  matrix->getMatrixInfo()->setCoordinateDimension(coordinateDimension);
  matrix->getMatrixInfo()->setPreProcessingType(preProcessingType);
  return true;
}

void giveIndexVector(ZQMatrixSequenceIndexVector* vector, SystemOwned<int> data, int length) {
  if (vector->setIndexVectorReference(data.get(), length)) data.release();
}

/// The vector one level up. The spare sub-matrix must be the current one.
ZQMatrixSequenceIndexVector* newPreProcessedVector(ZQMatrixMedium* matrix, const ZQMatrixSequenceIndexVector* original) {
  ZQMatrixSequenceIndexVector* result = createZQMatrixSequenceIndexVector();
  if (result == nullptr) return nullptr;
  const int type = original->getApplyPreprocessingType();
  result->setPropertiesFrom(original);
  result->setCurrentLevelOfPreprocOperations(original->getCurrentLevelOfPreprocOperations() + 1);
  result->_setUsedPreprocessingType(type);
  result->setCoordDimensionAfterPreproc(original->getCoordDimension());
  const long long neededIntegers = static_cast<long long>(zmatrix::numberOfItemsToRestore(type)) * original->getCoordDimension();
  const int length = original->getLengthOfIndexVector();
  result->setOriginalIndexItems(original->getIndexVector(), static_cast<int>(std::clamp<long long>(neededIntegers, 0, length)));

  int preProcessedLength = 0;
  SystemOwned<int> preProcessed(
      matrix->getPreProcessedSequenceFromOriginalSequence(original->getIndexVector(), length, &preProcessedLength));
  giveIndexVector(result, std::move(preProcessed), preProcessedLength);
  return result;
}

/// The vector one level down. The spare sub-matrix must be the current one; `preProcessed` and `start` have items of its
/// dimension. Null if memory runs out.
ZQMatrixSequenceIndexVector* newOriginalVector(ZQMatrixMedium* matrix, const ZQMatrixSequenceIndexVector* preProcessedVector,
                                               int** preProcessed, int numberOfPreProcessed, int** start, int numberOfStart) {
  const int coordinateDimension = matrix->getMatrixInfo()->getCoordinateDimension();
  const long long total = static_cast<long long>(numberOfStart) + numberOfPreProcessed;
  ObjexBlock items = zmatrix::newObjexBlock(total, coordinateDimension);
  if (items == nullptr) return nullptr;
  copyItems(items.get(), start, numberOfStart, coordinateDimension);
  int numberOfItems = static_cast<int>(total);
  if (preProcessedVector->getUsedPreprocessingType() == ZQPreProcessingTypeNone)
    copyItems(items.get() + numberOfStart, preProcessed, numberOfPreProcessed, coordinateDimension);
  else if (zmatrix::isOcronCoding(preProcessedVector->getUsedPreprocessingType()) && coordinateDimension == 1)
    numberOfItems = restoreOcrons(matrix, items.get(), numberOfStart, numberOfItems, preProcessed, true);
  else
    numberOfItems = restoreItems(matrix, items.get(), numberOfStart, numberOfItems, preProcessed);

  ZQMatrixSequenceIndexVector* result = createZQMatrixSequenceIndexVector();
  if (result == nullptr) return nullptr;
  result->setPropertiesFrom(preProcessedVector);
  giveIndexVector(result, zmatrix::flatSequenceOfObjex(items.get(), numberOfItems, coordinateDimension),
                  numberOfItems * coordinateDimension);
  result->setLengthOfIndexVectorInfos(preProcessedVector->getLengthOfIndexVectorInfos() - 1);
  result->setCurrentLevelOfPreprocOperations(preProcessedVector->getCurrentLevelOfPreprocOperations() - 1);
  return result;
}

/// False, with a message, for a vector that can't be restored.
bool canGoDown(const ZQMatrixSequenceIndexVector* preprocessedIndexVector) {
  if (preprocessedIndexVector == nullptr) {
    complain("error from getOriginalZQIndexVectorFromPreprocessedIndexVector: preprocessedIndexVector = NULL!\n");
    return false;
  }
  const bool isOriginal = preprocessedIndexVector->getCurrentLevelOfPreprocOperations() < 0;
  // The dimension is checked first, except for an original vector with records, which has no current record.
  const bool hasRecords = preprocessedIndexVector->getLengthOfIndexVectorInfos() > 0;
  if ((!isOriginal || !hasRecords) && preprocessedIndexVector->getCoordDimensionAfterPreproc() < 1) {
    complain(
        "error from getOriginalZQIndexVectorFromPreprocessedIndexVector: cannot perform inverse preproc because coordDimension = "
        "0!\n");
    return false;
  }
  if (isOriginal) {
    complain(
        "error from getOriginalZQIndexVectorFromPreprocessedIndexVector: cannot perform inverse preproc because vector is "
        "original!\n");
    return false;
  }
  return true;
}

}  // namespace

int** ZQMatrixMedium::getOriginalObjexSequenceFromPreProcessedObjexSequence(int** start, int countOfStart, int capacity,
                                                                            int** preProcessed, int countOfPreProcessed,
                                                                            int* resultCount, int inPlace) {
  *resultCount = 0;
  const int type = getMatrixInfo()->getPreProcessingType(), coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  const int needed = zmatrix::numberOfItemsToRestore(type);
  const long long total = static_cast<long long>(needed) + countOfPreProcessed;
  if (start == nullptr || countOfStart < needed || preProcessed == nullptr || countOfPreProcessed < 1) return nullptr;
  if (inPlace == 1 && total > capacity) return nullptr;

  ObjexBlock block;
  if (inPlace != 1) {
    block = zmatrix::newObjexBlock(total, coordinateDimension);
    if (block == nullptr) return nullptr;
    copyItems(block.get(), start, needed, coordinateDimension);
  }
  int** items = inPlace == 1 ? start : block.release();
  *resultCount = static_cast<int>(total);
  if (type != ZQPreProcessingTypeNone)
    *resultCount = restoreItems(this, items, needed, *resultCount, preProcessed);
  else if (inPlace != 1)
    copyItems(items, preProcessed, countOfPreProcessed, coordinateDimension);
  return items;
}

int* ZQMatrixMedium::getOriginalSequenceFromPreProcessedSequence(int* start, int lengthOfStart, int capacity,
                                                                 const int* preProcessed, int lengthOfPreProcessed,
                                                                 int* resultLength, int inPlace) {
  *resultLength = 0;
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  if (start == nullptr || capacity < 1 || coordinateDimension < 1) return nullptr;
  int countOfStart = 0, countOfPreProcessed = 0, resultCount = 0;
  ObjexBlock startItems(getObjexSequenceFromFlatSequence(start, lengthOfStart, &countOfStart));
  const ObjexBlock preProcessedItems(getObjexSequenceFromFlatSequence(preProcessed, lengthOfPreProcessed, &countOfPreProcessed));
  if (startItems == nullptr || preProcessedItems == nullptr) return nullptr;

  const int capacityInItems = capacity / coordinateDimension;
  if (inPlace == 1) {
    // The items are appended in place too, so the block gets a copy of `start` up to the length of the result.
    const long long total =
        static_cast<long long>(zmatrix::numberOfItemsToRestore(getMatrixInfo()->getPreProcessingType())) + countOfPreProcessed;
    if (total > capacityInItems) return nullptr;
    const int itemsInPlace = std::max(countOfStart, static_cast<int>(total));
    startItems = zmatrix::newObjexBlockFrom(start, itemsInPlace * coordinateDimension, coordinateDimension);
    if (startItems == nullptr) return nullptr;
  }
  int** items = getOriginalObjexSequenceFromPreProcessedObjexSequence(
      startItems.get(), countOfStart, capacityInItems, preProcessedItems.get(), countOfPreProcessed, &resultCount, inPlace);
  const ObjexBlock ownItems(items != startItems.get() ? items : nullptr);
  SystemOwned<int> flat(getFlatSequenceFromObjexSequence(items, resultCount, resultLength));
  if (flat == nullptr || inPlace != 1) return flat.release();
  std::copy_n(flat.get(), *resultLength, start);
  return start;
}

ZQMatrixSequenceIndexVector* ZQMatrixMedium::getPreProcessedZQIndexVectorFromOriginalIndexVector(
    ZQMatrixSequenceIndexVector* originalIndexVector) {
  if (originalIndexVector == nullptr) {
    complain("error from getPreProcessedZQIndexVectorFromPreprocessedIndexVector: originalIndexVector = NULL!\n");
    return nullptr;
  }
  const int matrixID = getCurrentMatrixID();
  if (!switchToSpareMatrix(this, originalIndexVector->getCoordDimension(), originalIndexVector->getApplyPreprocessingType()))
    return nullptr;
  ZQMatrixSequenceIndexVector* result = newPreProcessedVector(this, originalIndexVector);
  setCurrentMatrixID(matrixID);
  return result;
}

ZQMatrixSequenceIndexVector* ZQMatrixMedium::getOriginalZQIndexVectorFromPreprocessedIndexVector(
    ZQMatrixSequenceIndexVector* preprocessedIndexVector) {
  if (!canGoDown(preprocessedIndexVector)) return nullptr;
  const int matrixID = getCurrentMatrixID();
  const int type = preprocessedIndexVector->getUsedPreprocessingType();
  if (!switchToSpareMatrix(this, preprocessedIndexVector->getCoordDimensionAfterPreproc(), type)) return nullptr;

  int numberOfPreProcessed = 0, numberOfStart = 0;
  const ObjexBlock preProcessed(getObjexSequenceFromFlatSequence(
      preprocessedIndexVector->getIndexVector(), preprocessedIndexVector->getLengthOfIndexVector(), &numberOfPreProcessed));
  if (preProcessed == nullptr || numberOfPreProcessed < 1) {
    // The spare sub-matrix stays the current one here; hosts may depend on it.
    complain("error: getPreProcessedZQIndexVectorFromOriginalIndexVector(): preprocessedObjexSequence = NULL or length = 0..\n");
    return nullptr;
  }
  const int neededItems = zmatrix::numberOfItemsToRestore(type);
  const ObjexBlock start(getObjexSequenceFromFlatSequence(
      preprocessedIndexVector->getOriginalIndexItems(),
      preprocessedIndexVector->getNumberOfOriginalItemsNeededForInversePreProcess(), &numberOfStart));
  ZQMatrixSequenceIndexVector* result = nullptr;
  if (numberOfStart < neededItems)
    complain(
        "error: getPreProcessedZQIndexVectorFromOriginalIndexVector(): lengthOfOriginalObjexStartSequence < "
        "requiredLengthOfStartSequence\n");
  else
    result = newOriginalVector(this, preprocessedIndexVector, preProcessed.get(), numberOfPreProcessed, start.get(), neededItems);
  setCurrentMatrixID(matrixID);
  return result;
}
