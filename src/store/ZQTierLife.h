// Creation of a matrix object and reservation of more sub-matrices, shared by all tiers.
#pragma once

#include <memory>
#include <new>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Makes info record and root for the IDs `from` .. `to` - 1. Returns `to`, or the ID at which memory has run out.
template <class Matrix>
int createSubMatrices(Matrix& matrix, int from, int to) {
  using Tier = typename Matrix::Tier;
  for (int id = from; id < to; ++id) {
    std::unique_ptr<typename Tier::Info> info(new (std::nothrow) typename Tier::Info());
    if (info == nullptr || !info->initMatrixInfo(id)) return id;
    matrix.getRecords().put(id, std::move(info));
    matrix.template createElementAt<typename Tier::Element>(id);
    matrix.getMatrixFileHeader()->setStopFlag(id, 0);
  }
  return to;
}

/// Null if memory has run out.
template <class Matrix>
std::unique_ptr<Matrix> createMatrixIn(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  using Tier = typename Matrix::Tier;
  std::unique_ptr<Matrix> matrix(new (std::nothrow) Matrix());
  std::unique_ptr<ZQMatrixFileHeader> header(new (std::nothrow) ZQMatrixFileHeader());
  if (matrix == nullptr || header == nullptr || !header->initFileHeader(Tier::infoType)) return nullptr;
  const int numberOfMatrices = header->getMaxNumberOfMatrices();
  matrix->setMatrixFileHeader(header.release());
  matrix->setRecordSize(sizeof(typename Tier::Element));
  const bool isComplete = matrix->resizeSubMatrices(numberOfMatrices) &&
                          matrix->initMatrix(debugOutputDevice, debugLevel, debugDirectory) &&
                          createSubMatrices(*matrix, 0, numberOfMatrices) == numberOfMatrices;
  if (!isComplete) return nullptr;
  matrix->getMatrixFileHeader()->setMatrixInfoType(Tier::infoType);
  matrix->getMatrixFileHeader()->_setMaximalStack(numberOfMatrices);
  return matrix;
}

/// Only for a matrix whose sub-matrices are all empty. Leaves the last ID that it has examined as the current one.
template <class Matrix>
void setMaxNumberOfMatricesIn(Matrix& matrix, int number) {
  ZQMatrixFileHeader* header = matrix.getMatrixFileHeader();
  const int oldNumber = header->getMaxNumberOfMatrices();
  if (number <= oldNumber || !matrix.hasBlock()) return;
  long long content = 0;
  for (int id = 0; id < header->getNumberOfMatrices(); ++id) {
    matrix.setCurrentMatrixID(id);
    content += matrix.getMatrixInfo()->getNumberOfMatrixElements();
    content += matrix.getMatrixInfo()->getNumberOfWriteElements();
  }
  if (content != 0) {
    dbPrintf(0, "setMaxNumberOfMatrices: Can only be set if matrix is completely empty\n");
    return;
  }
  if (number > header->getMatrixBlockSize() || number > largestNumberOfMatrices) return;  // the roots must lie in the block
  if (!matrix.resizeSubMatrices(number)) return;
  header->clearStopFlags();
  // If memory has run out, keeps only the complete sub-matrices.
  static_cast<void>(matrix.resizeSubMatrices(createSubMatrices(matrix, oldNumber, number)));
}

}  // namespace zmatrix
