// Store operations of the full tier: instances of the templates shared by all tiers.
#include "symbols/ZQMatrix.h"

#include "sequence/ZQRulePruning.h"
#include "store/ZQItemSplit.h"
#include "store/ZQStoreDelete.h"
#include "store/ZQStoreWrite.h"
#include "store/ZQTierLife.h"
#include "symbols/ZQFullTier.h"

void ZQMatrix::setMaxNumberOfMatrices(int number) {
  zmatrix::setMaxNumberOfMatricesIn(*this, number);
}

void ZQMatrix::clearMatrixElement(int position, int updateStartCounter) {
  const auto* element = elementAt(position);
  if (element == nullptr) return;
  if (updateStartCounter == 1 && element->getSymbolID() > 0) getMatrixInfo()->decrementNumberOfSymbols();
  ZQMatrixMedium::clearMatrixElement(position, updateStartCounter);
}

int ZQMatrix::moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems,
                                      int* firstElement, int* lastElement, int moveWithNewIndex) {
  return zmatrix::ZQStoreMove<Tier>::moveField(*this, memorySearchMethod, fieldBegin, newElementIndex, numberOfItems,
                                               firstElement, lastElement, moveWithNewIndex);
}

int ZQMatrix::insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition) {
  return zmatrix::ZQStoreWrite<Tier>::insertFirst(*this, newPosition, coordinate, parentPosition);
}

int ZQMatrix::insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField) {
  return zmatrix::ZQStoreWrite<Tier>::insertExisting(*this, newPosition, coordinate, elementOfField);
}

int ZQMatrix::writeMatrixData(const int* indexVector, int length, long long value, char startFlag, char endFlag,
                              int symbolMarker) {
  return zmatrix::ZQStoreWrite<Tier>::write(*this, indexVector, length, value, {startFlag, endFlag, symbolMarker});
}

int ZQMatrix::writeMatrixElement(const int* indexVector, int length, long long value) {
  return writeMatrixData(indexVector, length, value, 0, 0, 0);
}

int ZQMatrix::writeMatrixElement32(const int* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement32", [&](const int* vector, int splitLength) {
    return writeMatrixElement(vector, splitLength, value);
  });
}

int ZQMatrix::writeMatrixElement64(const long long* items, int length, long long value) {
  return zmatrix::withSplitItems(*this, items, length, 0, "writeMatrixElement64", [&](const int* vector, int splitLength) {
    return writeMatrixElement(vector, splitLength, value);
  });
}

int ZQMatrix::deleteMatrixElement(const int* indexVector, int length, int keepInnerElements) {
  return zmatrix::ZQStoreDelete<Tier>::remove(*this, indexVector, length, keepInnerElements);
}

int ZQMatrix::deleteMatrixElement32(const int* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement32", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}

int ZQMatrix::deleteMatrixElement64(const long long* items, int length, int keepInnerElements) {
  return zmatrix::withSplitItems(*this, items, length, 0, "deleteMatrixElement64", [&](const int* vector, int splitLength) {
    return deleteMatrixElement(vector, splitLength, keepInnerElements);
  });
}

void ZQMatrix::makeMatrixEmpty() {
  getMatrixInfo()->initMatrixInfo(currentMatrixId_);
}

int ZQMatrix::removeOverDeterminedElements() {
  return zmatrix::ZQRulePruning<Tier>::removeOverDetermined(*this);
}

int ZQMatrix::removeOverDeterminedElementsSingleIteration(int passNumber) {
  return zmatrix::ZQRulePruning<Tier>::removeOverDeterminedOnce(*this, passNumber);
}

int ZQMatrix::removeLongElements(int maximalLength) {
  return zmatrix::ZQRulePruning<Tier>::removeLong(*this, maximalLength);
}

int ZQMatrix::clearMatrixForID(int matrixID) {
  return zmatrix::ZQRulePruning<Tier>::clearForID(*this, matrixID);
}

int ZQMatrix::removeEmptyMatrices() {
  return zmatrix::ZQRulePruning<Tier>::removeEmpty(*this);
}

int ZQMatrix::getNewSymbolID() {
  getMatrixInfo()->incrementNewSymbol();
  return getMatrixInfo()->getNewSymbol();
}

int ZQMatrix::getSymbolDownLinkHandleFromSymbol(int symbol) {
  int handle;
  const auto* element = getMatrixElementFromElementVector(&symbol, 1, &handle);
  return element != nullptr ? element->getSymbolDownLinkHandle() : -1;
}

int ZQMatrix::getActualAILevelIndex() {
  int level = 0;
  int id = currentMatrixId_;
  // A cycle of links ends after as many steps as there are sub-matrices. A link to itself or out of range counts and ends the
  // walk.
  while (level < getMaxNumberOfMatrices()) {
    const int below = getMatrixInfo(id)->getCurrentMatrixIDLevelDown();
    if (below < 0) break;
    ++level;
    if (below == id || below >= getMaxNumberOfMatrices()) break;
    id = below;
  }
  return level;
}
