// Store operations of the medium tier: instances of the templates shared by all tiers, and reads that also give the two counters
// of this tier.
#include "sequence/ZQMatrixMedium.h"

#include "sequence/ZQMediumTier.h"
#include "sequence/ZQRulePruning.h"
#include "store/ZQItemSplit.h"
#include "store/ZQStoreDelete.h"
#include "store/ZQStoreWrite.h"
#include "store/ZQTierLife.h"

ZQMatrixMediumInfo* ZQMatrixMedium::recordOf(int id) const {
  return id >= 0 && id < getMaxNumberOfMatrices() ? getMatrixInfo(id) : nullptr;
}

long long ZQMatrixMedium::getSuccessorRandomValue(int id) {
  auto* record = recordOf(id);
  return record != nullptr ? record->getSuccessorRandomValue() : 0;
}

long long ZQMatrixMedium::getActualSuccessorRandomValue(int id) {
  const auto* record = recordOf(id);
  return record != nullptr ? record->getActualSuccessorRandomValue() : 0;
}

void ZQMatrixMedium::setSuccessorRandomValue(int id, long long value) {
  if (auto* record = recordOf(id)) record->setSuccessorRandomValue(value);
}

int ZQMatrixMedium::getSuccessorRandomType(int id) {
  const auto* record = recordOf(id);
  return record != nullptr ? record->getSuccessorRandomType() : 0;
}

void ZQMatrixMedium::setSuccessorRandomType(int id, int type) {
  auto* record = recordOf(id);
  if (record == nullptr) return;
  if (record->getNumberOfMatrixElements() != 0 && record->getNumberOfWriteElements() != 0) {
    record->setSuccessorRandomType(type);
  } else {
    dbPrintf(0, "setSuccessorRandomType: can only be set for an empty matrix\n");
  }
}

int ZQMatrixMedium::resetKernelSequence(int resetInitialValues) {
  return getMatrixInfo()->resetKernelSequence(getCurrentMatrixID(), resetInitialValues);
}

void ZQMatrixMedium::setMaxNumberOfMatrices(int number) {
  zmatrix::setMaxNumberOfMatricesIn(*this, number);
}

void ZQMatrixMedium::clearMatrixElement(int position, int updateStartCounter) {
  const auto* element = elementAt(position);
  if (element == nullptr) return;
  if (updateStartCounter == 1 && element->getWriteCountWithoutPredecessor() > 0)
    getMatrixInfo()->decrementNumberOfStartElements();
  ZQMatrixBase::clearMatrixElement(position, 0);
}

int ZQMatrixMedium::moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems,
                                            int* firstElement, int* lastElement, int moveWithNewIndex) {
  return zmatrix::ZQStoreMove<Tier>::moveField(*this, memorySearchMethod, fieldBegin, newElementIndex, numberOfItems,
                                               firstElement, lastElement, moveWithNewIndex);
}

int ZQMatrixMedium::insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition) {
  return zmatrix::ZQStoreWrite<Tier>::insertFirst(*this, newPosition, coordinate, parentPosition);
}

int ZQMatrixMedium::insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField) {
  return zmatrix::ZQStoreWrite<Tier>::insertExisting(*this, newPosition, coordinate, elementOfField);
}

int ZQMatrixMedium::writeMatrixData(const int* indexVector, int length, long long value, char startFlag, char endFlag) {
  return zmatrix::ZQStoreWrite<Tier>::write(*this, indexVector, length, value, {startFlag, endFlag});
}

int ZQMatrixMedium::writeMatrixElement(const int* indexVector, int length, long long value) {
  return writeMatrixData(indexVector, length, value, 0, 0);
}

int ZQMatrixMedium::writeMatrixElement32(const int* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement32", [&](const int* vector, int splitLength) {
    return writeMatrixData(vector, splitLength, value, 0, 0);
  });
}

int ZQMatrixMedium::writeMatrixElement64(const long long* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement64", [&](const int* vector, int splitLength) {
    return writeMatrixData(vector, splitLength, value, 0, 0);
  });
}

int ZQMatrixMedium::deleteMatrixElement(const int* indexVector, int length, int keepInnerElements) {
  return zmatrix::ZQStoreDelete<Tier>::remove(*this, indexVector, length, keepInnerElements);
}

int ZQMatrixMedium::deleteMatrixElement32(const int* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement32", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}

int ZQMatrixMedium::deleteMatrixElement64(const long long* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement64", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}

void ZQMatrixMedium::makeMatrixEmpty() {
  getMatrixInfo()->initMatrixInfo(currentMatrixId_);
}

int ZQMatrixMedium::removeOverDeterminedElements() {
  return zmatrix::ZQRulePruning<Tier>::removeOverDetermined(*this);
}

int ZQMatrixMedium::removeOverDeterminedElementsSingleIteration(int passNumber) {
  return zmatrix::ZQRulePruning<Tier>::removeOverDeterminedOnce(*this, passNumber);
}

int ZQMatrixMedium::removeLongElements(int maximalLength) {
  return zmatrix::ZQRulePruning<Tier>::removeLong(*this, maximalLength);
}

int ZQMatrixMedium::clearMatrixForID(int matrixID) {
  return zmatrix::ZQRulePruning<Tier>::clearForID(*this, matrixID);
}

int ZQMatrixMedium::removeEmptyMatrices() {
  return zmatrix::ZQRulePruning<Tier>::removeEmpty(*this);
}

long long ZQMatrixMedium::readMatrixData(const int* indexVector, int length, int* existCode, int* writeCount,
                                         int* writeCountWithSuccessor, int* writeCountWithoutPredecessor) noexcept {
  const auto* element = static_cast<ZQMatrixMediumElement*>(zmatrix::readElement(*this, indexVector, length, existCode));
  *writeCount = element != nullptr ? element->getWriteCount() : 0;
  *writeCountWithSuccessor = element != nullptr ? element->getWriteCountWithSuccessor() : 0;
  *writeCountWithoutPredecessor = element != nullptr ? element->getWriteCountWithoutPredecessor() : 0;
  return element != nullptr ? element->getValue() : 0;
}

long long ZQMatrixMedium::readMatrixData32(const int* items, int length, int* existCode, int* writeCount,
                                           int* writeCountWithSuccessor, int* writeCountWithoutPredecessor) {
  *existCode = -5;
  *writeCount = *writeCountWithSuccessor = *writeCountWithoutPredecessor = 0;
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixData32", [&](const int* vector, int splitLength) {
    return readMatrixData(vector, splitLength, existCode, writeCount, writeCountWithSuccessor, writeCountWithoutPredecessor);
  });
}

long long ZQMatrixMedium::readMatrixData64(const long long* items, int length, int* existCode, int* writeCount,
                                           int* writeCountWithSuccessor, int* writeCountWithoutPredecessor) {
  *existCode = -5;
  *writeCount = *writeCountWithSuccessor = *writeCountWithoutPredecessor = 0;
  return zmatrix::withSplitItems(*this, items, length, 0LL, "readMatrixData32", [&](const int* vector, int splitLength) {
    return readMatrixData(vector, splitLength, existCode, writeCount, writeCountWithSuccessor, writeCountWithoutPredecessor);
  });
}
