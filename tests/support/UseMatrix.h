// Uses a loaded matrix as a host may: reads, writes, deletes, learns, generates, tests, prunes and saves in each sub-matrix. For
// hostile files: results are ignored, the sanitizers report what goes wrong.
#pragma once

#include <algorithm>
#include <string>
#include <type_traits>

#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <class Matrix>
constexpr int tierOf = std::is_base_of_v<ZQMatrix, Matrix>         ? 2
                       : std::is_base_of_v<ZQMatrixMedium, Matrix> ? 1
                                                                   : 0;

template <class Matrix>
void readAndWrite(Matrix& matrix) {
  int vectors[][4] = {{1, 2, 3, 4}, {1, 2, 3, 5}, {0, 0, 0, 0}, {-1, 500000, 7, 7}, {65, 66, 67, 68}};
  for (auto& vector : vectors) {
    for (int length = 1; length <= 4; ++length) {
      int existCode, numbers[3];
      if constexpr (tierOf<Matrix> == 0) matrix.readMatrixData(vector, length, &existCode, &numbers[0]);
      if constexpr (tierOf<Matrix> >= 1) matrix.readMatrixData(vector, length, &existCode, &numbers[0], &numbers[1], &numbers[2]);
      if (length % 2 == 0) matrix.writeMatrixElement(vector, length, length);
    }
  }
  for (int handle = -1; handle < 40; ++handle) {
    int length = 0;
    systemFree(matrix.getIndexVectorFromMatrixHandle(handle, &length));
    matrix.getLengthOfIndexVectorFromMatrixHandle(handle);
    matrix.getObjexFromMatrixHandle(handle);
    systemFree(matrix.getSuccessorHandlesFromMatrixHandle(handle, &length));
  }
  for (auto& vector : vectors) matrix.deleteMatrixElement(vector, 3, 1);
}

template <class Matrix>
void learnAndGenerate(Matrix& matrix) {
  double probability, stopProbability;
  int* item = nullptr;
  for (int i = 0; i < 8; ++i) item = matrix.readObjexFromMatrix(&probability, &stopProbability);
  (void)item;
  int start[256] = {84, 104, 101, 32, 84, 104, 101, 32};  // four items of the largest dimension that a record may have
  matrix.updateMatrixWithLongANSISequence(start, 8);
  matrix.updateMatrixWithLongINTSequence(start, 4);
  matrix.initializeKernelSequenceWithOriginalSequence(start, 4, 1);
  for (int i = 0; i < 8; ++i) matrix.readObjexFromMatrix(&probability, &stopProbability);
  int length, dimension;
  systemFree(matrix.getMatrixInfo()->getKernelOriginalSequenceFlatIndexVector(&length, &dimension));
  systemFree(matrix.getMatrixInfo()->getKernelPreProcessedSequenceIndexVector(&length, &dimension));
  systemFree(matrix.getMatrixInfo()->createKernelOriginalSequenceObjexVector(&length, &dimension));
  matrix.getMatrixInfo()->resetKernelSequence(matrix.getCurrentMatrixID(), 0);
  matrix.getMatrixInfo()->addNameOfUpdateFile("another.txt");
}

inline void useSymbols(ZQMatrix& matrix) {
  int length = 0;
  double probability, stopProbability;
  matrix.getActualAILevelIndex();
  for (int symbol = -1; symbol < 4; ++symbol) matrix.getSymbolDownLinkHandleFromSymbol(symbol);
  for (int symbol : {1, 256, 257, 258}) {
    systemFree(matrix.createPreviousLevelElementsFromOriginalSymbol(symbol, &length));
  }
  matrix.setMatrixAILevel(1);
  int text[] = {84, 104, 101, 32, 100, 114, 121, 32, 104, 97, 114, 46};
  matrix.updateMatrixFromBasicLevel(text, 12);
  systemFree(matrix.createPreviousLevelObjexsFromOriginalSymbol(257, &length));
  if (matrix.getMatrixInfo()->getCurrentMatrixIDLevelUp() >= 0) {
    matrix.setCurrentMatrixID(matrix.getMatrixInfo()->getCurrentMatrixIDLevelUp());
    matrix.readObjexFromMatrix(&probability, &stopProbability);
  }
}

template <class Matrix>
void useMatrix(Matrix& matrix, const std::string& pathToSaveAt, int mostMatrices = 5) {
  const int numberOfMatrices = std::min(matrix.getMaxNumberOfMatrices(), mostMatrices);
  for (int id = 0; id < numberOfMatrices; ++id) {
    matrix.setCurrentMatrixID(id);
    matrix.getMatrixInfo()->getGlobalMatrixInfoParameters();
    int written, ends;
    matrix.performMatrixConsistencyTest(&written, &ends, 0);
    matrix.performMatrixLinearTest(&written, &ends, 0);
    readAndWrite(matrix);
    if constexpr (tierOf<Matrix> >= 1) learnAndGenerate(matrix);
    if constexpr (tierOf<Matrix> == 2) useSymbols(matrix);
    matrix.setCurrentMatrixID(id);
    matrix.performMatrixConsistencyTest(&written, &ends, 0);
    matrix.performMatrixLinearTest(&written, &ends, id % 2);
    if constexpr (tierOf<Matrix> >= 1) {
      matrix.removeOverDeterminedElements();
      matrix.removeLongElements(2);
      if (id == 1) matrix.clearMatrixForID(id);
    }
    readAndWrite(matrix);
  }
  int count = 0;
  matrix.readMatrixUpdateInfos(&count);
  for (int i = 0; i < count && i < 4; ++i) {
    auto* record = matrix.getMatrixUpdateInfo(i);
    if (record != nullptr) record->getGlobalMatrixInfoParameters();
  }
  matrix.saveMatrixToDisk(pathToSaveAt.c_str());
  matrix.printMatrixOverallInfo();
}

}  // namespace zmatrix
