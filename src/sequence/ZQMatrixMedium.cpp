// Store operations of the medium tier: instances of the templates that all tiers share, and the reads that give its two counters
// as well.
#include "sequence/ZQMatrixMedium.h"

#include "sequence/ZQMediumTier.h"
#include "sequence/ZQRulePruning.h"
#include "store/ZQItemSplit.h"
#include "store/ZQStoreDelete.h"
#include "store/ZQStoreWrite.h"
#include "store/ZQTierLife.h"

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
  return ZQStoreMove<Tier>::moveField(*this, memorySearchMethod, fieldBegin, newElementIndex, numberOfItems, firstElement,
                                      lastElement, moveWithNewIndex);
}

int ZQMatrixMedium::insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition) {
  return ZQStoreWrite<Tier>::insertFirst(*this, newPosition, coordinate, parentPosition);
}

int ZQMatrixMedium::insertMatrixElementInExistingDimension(int newPosition, int coordinate, int anElementOfField) {
  return ZQStoreWrite<Tier>::insertExisting(*this, newPosition, coordinate, anElementOfField);
}

int ZQMatrixMedium::writeMatrixData(const int* indexVector, int length, long long value, char startFlag, char endFlag) {
  return ZQStoreWrite<Tier>::write(*this, indexVector, length, value, {startFlag, endFlag});
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
  return ZQStoreDelete<Tier>::remove(*this, indexVector, length, keepInnerElements);
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
  getMatrixInfo()->initMatrixInfo(currentMatrixID);
}

int ZQMatrixMedium::removeOverDeterminedElements() {
  return ZQRulePruning<Tier>::removeOverDetermined(*this);
}

int ZQMatrixMedium::removeOverDeterminedElementsSingleIteration(int passNumber) {
  return ZQRulePruning<Tier>::removeOverDeterminedOnce(*this, passNumber);
}

int ZQMatrixMedium::removeLongElements(int maximalLength) {
  return ZQRulePruning<Tier>::removeLong(*this, maximalLength);
}

int ZQMatrixMedium::clearMatrixForID(int matrixID) {
  return ZQRulePruning<Tier>::clearForID(*this, matrixID);
}

int ZQMatrixMedium::removeEmptyMatrices() {
  return ZQRulePruning<Tier>::removeEmpty(*this);
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
