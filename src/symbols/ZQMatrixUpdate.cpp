// The sequence update of the full tier: instances of the shared worker.
#include "sequence/ZQUpdateWorker.h"
#include "symbols/ZQFullTier.h"

int ZQMatrix::updateMatrixWithCombinedSequenceDebug(const int* sequence, int length, int matrixType, int coordinateDimension,
                                                    int preProcessingType, int allowLargeIndices, const int* symbolMarkers,
                                                    int* numberOfProcessedVectors, int* numberOfOverwrites, int** values,
                                                    int** lengths, int*** indexVectors) {
  return zmatrix::updateMatrixWithCombinedSequenceIn(
      *this, sequence, length, matrixType, coordinateDimension, preProcessingType, allowLargeIndices,
      {numberOfProcessedVectors, numberOfOverwrites, values, lengths, indexVectors}, symbolMarkers);
}

int ZQMatrix::updateMatrixWithCombinedSequence(const int* sequence, int length, int matrixType, int coordinateDimension,
                                               int preProcessingType, int allowLargeIndices) {
  return zmatrix::updateMatrixWithCombinedSequenceIn(*this, sequence, length, matrixType, coordinateDimension, preProcessingType,
                                                     allowLargeIndices, {});
}

int ZQMatrix::updateMatrixWithSequence(int matrixType, int coordinateDimension, const int* sequence, int length) {
  return updateMatrixWithCombinedSequence(sequence, length, matrixType, coordinateDimension, 1, 0);
}

int ZQMatrix::updateMatrixWith2DimSequence(int matrixType, int preProcessingType, const int* first, const int* second,
                                           int length) {
  return zmatrix::updateMatrixWith2DimSequenceIn(*this, matrixType, preProcessingType, first, second, length);
}

int ZQMatrix::updateMatrixWithLongINTSequence(const int* sequence, int numberOfItems) {
  const auto& info = *getMatrixInfo();
  return updateMatrixWithLongINTSequenceExt(sequence, numberOfItems, info.getMatrixType(), info.getCoordinateDimension(),
                                            info.getPreProcessingType(), info.getAllowLargeIndices());
}

int ZQMatrix::updateMatrixWithLongINTSequenceExt(const int* sequence, int numberOfItems, int matrixType, int coordinateDimension,
                                                 int preProcessingType, int allowLargeIndices) {
  return zmatrix::updateMatrixWithLongINTSequenceIn(*this, sequence, numberOfItems, matrixType, coordinateDimension,
                                                    preProcessingType, allowLargeIndices);
}
