// Creation, deletion and widening of a matrix object, told once for the tiers.
#pragma once

#include <new>

#include "frame/ZQMemory.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Gives IDs `from` .. `to` - 1 their record and root. False if memory has run out.
template <class Matrix>
bool createSubMatrices(Matrix& matrix, int from, int to) {
  using Tier = typename Matrix::Tier;
  for (int id = from; id < to; ++id) {
    auto* info = new (std::nothrow) typename Tier::Info();
    if (info == nullptr || !info->initMatrixInfo(id)) {
      delete info;
      return false;
    }
    matrix.getMatrixInfoArray()[id] = info;
    matrix.template createElementAt<typename Tier::Element>(id);
    matrix.getMatrixFileHeader()->setStopFlag(id, 0);
  }
  return true;
}

template <class Matrix>
void deleteMatrixIn(Matrix* matrix) {
  if (matrix == nullptr) return;
  ZQMatrixFileHeader* header = matrix->getMatrixFileHeader();
  if (header != nullptr) {
    const int numberOfMatrices = header->getMaxNumberOfMatrices();
    matrix->deInitMatrix();
    for (int id = 0; matrix->getMatrixInfoArray() != nullptr && id < numberOfMatrices; ++id) {
      auto* info = static_cast<typename Matrix::Tier::Info*>(matrix->getMatrixInfoArray()[id]);
      if (info != nullptr) info->deInitMatrixInfo();
      delete info;
    }
    header->deInitFileHeader();
    delete header;
  }
  systemFree(matrix->getMatrixInfoArray());
  matrix->releaseEntryArray();
  matrix->setMatrixDebugOff();
  delete matrix;
}

template <class Matrix>
Matrix* createMatrixIn(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  using Tier = typename Matrix::Tier;
  Matrix* matrix = new (std::nothrow) Matrix();
  ZQMatrixFileHeader* header = new (std::nothrow) ZQMatrixFileHeader();
  if (matrix == nullptr || header == nullptr || !header->initFileHeader(Tier::infoType)) {
    delete header;
    delete matrix;
    return nullptr;
  }
  matrix->setMatrixFileHeader(header);
  matrix->setRecordSize(sizeof(typename Tier::Element));
  const int numberOfMatrices = header->getMaxNumberOfMatrices();
  auto** infos = systemMallocArray<ZQMatrixBaseInfo*>(numberOfMatrices);
  auto*** entries = systemMallocArray<ZQMatrixBaseElement**>(numberOfMatrices);
  for (int id = 0; infos != nullptr && id < numberOfMatrices; ++id) infos[id] = nullptr;
  matrix->setMatrixInfoArray(infos);
  matrix->setMatrixDataEntryArray(entries);
  const bool isComplete = infos != nullptr && entries != nullptr &&
                          matrix->initMatrix(debugOutputDevice, debugLevel, debugDirectory) &&
                          createSubMatrices(*matrix, 0, numberOfMatrices);
  if (!isComplete) {
    deleteMatrixIn(matrix);
    return nullptr;
  }
  header->setMatrixInfoType(Tier::infoType);
  header->_setMaximalStack(numberOfMatrices);
  return matrix;
}

/// The root area can only grow while the store is empty. The current ID stays at the last one looked at.
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
  auto** infos = static_cast<ZQMatrixBaseInfo**>(
      systemRealloc(matrix.getMatrixInfoArray(), bytesOf(static_cast<unsigned>(number), sizeof(ZQMatrixBaseInfo*))));
  if (infos == nullptr) return;
  matrix.setMatrixInfoArray(infos);
  if (!matrix.resizeEntryArray(number) || !header->resizeStopFlags(number)) return;
  for (int id = oldNumber; id < number; ++id) infos[id] = nullptr;
  header->_setMaxNumberOfMatrices(number);
  header->clearStopFlags();
  if (createSubMatrices(matrix, oldNumber, number)) return;
  // Memory has run out on the way: only what is whole is kept.
  int whole = oldNumber;
  while (whole < number && infos[whole] != nullptr && matrix.elementAt(whole) != nullptr) ++whole;
  if (whole < number) {
    delete infos[whole];
    infos[whole] = nullptr;
  }
  header->_setMaxNumberOfMatrices(whole);
}

}  // namespace zmatrix
