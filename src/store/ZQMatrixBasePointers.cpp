// The block as an array of pointers to its elements, for who reads it through its slots.
#include "frame/ZQMemory.h"
#include "store/ZQMatrixBase.h"

bool ZQMatrixBase::refreshPointers() {
  if (versionOfPointers == getContentVersion()) return true;
  if (!pointers.resize(static_cast<size_t>(numberOfSlots), 0)) return false;
  for (int position = 0; position < numberOfSlots; ++position) pointers[static_cast<size_t>(position)] = elementAt(position);
  versionOfPointers = getContentVersion();
  return true;
}

ZQMatrixBaseElement** ZQMatrixBase::getMatrixData() {
  return hasBlock() && refreshPointers() ? &pointers[0] : nullptr;
}

ZQMatrixBaseElement*** ZQMatrixBase::getMatrixDataEntryArray() {
  ZQMatrixBaseElement** block = getMatrixData();
  for (int id = 0; matrixDataEntryArray != nullptr && id < matrixFileHeader->getMaxNumberOfMatrices(); ++id) {
    matrixDataEntryArray[id] = block != nullptr ? block + id : nullptr;
  }
  return matrixDataEntryArray;
}

bool ZQMatrixBase::resizeEntryArray(int numberOfMatrices) {
  void* entries = systemRealloc(matrixDataEntryArray,
                                zmatrix::bytesOf(static_cast<unsigned>(numberOfMatrices), sizeof *matrixDataEntryArray));
  if (entries == nullptr) return false;
  matrixDataEntryArray = static_cast<ZQMatrixBaseElement***>(entries);
  return true;
}

void ZQMatrixBase::releaseEntryArray() {
  systemFree(matrixDataEntryArray);
  matrixDataEntryArray = nullptr;
}

ZQMatrixBaseElement** ZQMatrixBase::getOwner(ZQMatrixBaseElement** slot) {
  if (slot == nullptr || *slot == nullptr || (*slot)->getOffsetToElementInPrevDimension() == 0) return nullptr;
  ZQMatrixBaseElement** block = getMatrixData();
  const long long owner = (slot - block) + static_cast<long long>((*slot)->getOffsetToElementInPrevDimension());
  return isSlot(owner) ? block + owner : nullptr;
}
