// The entry points of the sequence update, shared by the tiers that learn: checks, preprocessing, and the phrase loop. All call
// the operations of the matrix's own tier.
#pragma once

#include <climits>

#include "frame/ZQMemory.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQPreprocessing.h"
#include "sequence/ZQSequenceUpdate.h"
#include "store/ZQHeldFreeSlotSearch.h"

namespace zmatrix {

/// Shows a preprocessed text character by character, at debug level 5.
void showPreProcessedText(const int* sequence, int length);

inline int clampToInt(long long value) {
  return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

/// Optional results of an update; each pointer may be null.
struct UpdateOutputs {
  int* numberOfProcessedVectors = nullptr;
  int* numberOfOverwrites = nullptr;
  int** values = nullptr;
  int** lengths = nullptr;
  int*** indexVectors = nullptr;

  void clear() const {
    if (numberOfOverwrites != nullptr) *numberOfOverwrites = 0;
    if (values != nullptr) *values = nullptr;
    if (lengths != nullptr) *lengths = nullptr;
    if (indexVectors != nullptr) *indexVectors = nullptr;
  }
  bool wantPhrases() const { return values != nullptr && lengths != nullptr && indexVectors != nullptr; }
};

/// Learns a preprocessed sequence with the settings of the current sub-matrix: 1 learned, -1 a write failed, -2 memory has run
/// out.
template <class Matrix>
int learnPreProcessed(Matrix& matrix, const int* preProcessed, int numberOfItems, const UpdateOutputs& outputs,
                      const int* symbolMarkers) {
  using Tier = typename Matrix::Tier;
  const HeldFreeSlotSearch search(matrix);
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  const int root = zmatrix::ZQStoreWrite<Tier>::provideRoot(matrix);
  if (root < 0) return -2;
  auto* rootElement = static_cast<typename Tier::Element*>(matrix.elementAt(root));
  rootElement->addWriteCountWithSuccessor(numberOfItems);
  rootElement->incrementWriteCount();

  const SystemOwned<int> derived(
      symbolMarkers == nullptr ? Tier::deriveMarkers(matrix, preProcessed, numberOfItems * coordinateDimension) : nullptr);
  if (derived == nullptr && symbolMarkers == nullptr && numberOfItems > 0 && Tier::derivesMarkers(matrix)) return -2;
  ZQLearnedPhrases phrases(outputs.wantPhrases());
  zmatrix::ZQSequenceUpdate<Tier> update(matrix, preProcessed, numberOfItems * coordinateDimension, coordinateDimension,
                                         symbolMarkers != nullptr ? symbolMarkers : derived.get());
  int result = update.run(matrix.getMatrixInfo()->getMaxPhraseLengthForUpdateWithSequence(), phrases);
  if (phrases.hasRunOut()) result = -2;
  if (outputs.numberOfProcessedVectors != nullptr) {
    *outputs.numberOfProcessedVectors = clampToInt(update.getNumberOfProcessedVectors());
  }
  if (outputs.numberOfOverwrites != nullptr) *outputs.numberOfOverwrites = update.getNumberOfOverwrites();
  if (result != -2) phrases.handOver(outputs.values, outputs.lengths, outputs.indexVectors);
  return result;
}

template <class Matrix>
int updateMatrixWithCombinedSequenceIn(Matrix& matrix, const int* sequence, int length, int matrixType, int coordinateDimension,
                                       int preProcessingType, int allowLargeIndices, const UpdateOutputs& outputs,
                                       const int* symbolMarkers = nullptr) {
  outputs.clear();
  if (sequence == nullptr || length <= 0) {
    dbPrintf(0, "warning from updateMatrixWithCombinedSequence: original Sequence is empty!\n");
    return 0;
  }
  if (matrix.checkSettingsForUpdateMatrixWithSequence(coordinateDimension, preProcessingType, allowLargeIndices, matrixType) <
      1) {
    return 0;
  }
  // In an empty sub-matrix, large indices set another dimension.
  const int dimension = matrix.getMatrixInfo()->getCoordinateDimension();
  if (coordinateDimension < 1 || dimension < 1) return 0;
  int numberOfIntegers = 0;
  const SystemOwned<int> preProcessed(matrix.getPreProcessedSequenceFromOriginalSequence(sequence, length, &numberOfIntegers));
  if (preProcessed == nullptr) {
    numberOfIntegers = 0;
    if (givesSequence({preProcessingType, dimension}, length)) {
      learnPreProcessed(matrix, nullptr, 0, {}, nullptr);  // counts the root, as after every failure past the settings
      return -2;
    }
  }
  const int numberOfItems = numberOfIntegers / dimension;
  if (matrixType == ZQMatrixTypeANSIText && Matrix::shows(5)) showPreProcessedText(preProcessed.get(), numberOfIntegers);

  return learnPreProcessed(matrix, preProcessed.get(), numberOfItems, outputs, symbolMarkers);
}

/// Learns two arrays as one sequence of pairs.
template <class Matrix>
int updateMatrixWith2DimSequenceIn(Matrix& matrix, int matrixType, int preProcessingType, const int* first, const int* second,
                                   int length) {
  if (first == nullptr || second == nullptr || length < 0 || length > INT_MAX / 2) length = 0;
  const SystemOwned<int> pairs(systemMallocArray<int>(2LL * length));
  if (pairs == nullptr) return -2;
  for (int i = 0; i < length; ++i) {
    pairs[static_cast<size_t>(i) * 2] = first[i];
    pairs[static_cast<size_t>(i) * 2 + 1] = second[i];
  }
  return updateMatrixWithCombinedSequenceIn(matrix, pairs.get(), 2 * length, matrixType, 2, preProcessingType, 0, {});
}

/// Learns a sequence and counts it as an update.
template <class Matrix>
int updateMatrixWithLongINTSequenceIn(Matrix& matrix, const int* sequence, int numberOfItems, int matrixType,
                                      int coordinateDimension, int preProcessingType, int allowLargeIndices) {
  auto& info = *matrix.getMatrixInfo();
  const long long length = static_cast<long long>(numberOfItems) * coordinateDimension;
  if (length > INT_MAX || length < 0) return 0;
  if (info.getAddUpdateInfo() == 1 && sequence != nullptr) {
    info.generateUpdateInfoSequence(sequence, static_cast<int>(length));
  }
  const int result = updateMatrixWithCombinedSequenceIn(matrix, sequence, static_cast<int>(length), matrixType,
                                                        coordinateDimension, preProcessingType, allowLargeIndices, {});
  if (result >= 1) matrix.countUpdate();
  return result;
}

}  // namespace zmatrix
