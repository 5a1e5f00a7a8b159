// The block as an array of pointers to its elements, for who reads it through its slots.
#include "store/ZQMatrixBase.h"

bool ZQMatrixBase::refreshPointers() {
  if (versionOfPointers == getContentVersion()) return true;
  if (!pointers.resize(numberOfSlots)) return false;
  for (int position = 0; position < numberOfSlots; ++position) pointers[position] = elementAt(position);
  versionOfPointers = getContentVersion();
  return true;
}

ZQMatrixBaseElement** ZQMatrixBase::getMatrixData() {
  return hasBlock() && refreshPointers() ? pointers.data() : nullptr;
}

ZQMatrixBaseElement*** ZQMatrixBase::getMatrixDataEntryArray() {
  ZQMatrixBaseElement** block = getMatrixData();
  for (int id = 0; id < matrixFileHeader->getMaxNumberOfMatrices(); ++id) {
    matrixDataEntryArray[id] = block != nullptr ? block + id : nullptr;
  }
  return matrixDataEntryArray.data();
}

ZQMatrixBaseElement** ZQMatrixBase::getOwner(ZQMatrixBaseElement** slot) {
  if (slot == nullptr || *slot == nullptr || (*slot)->getOffsetToElementInPrevDimension() == 0) return nullptr;
  ZQMatrixBaseElement** block = getMatrixData();
  const long long owner = (slot - block) + static_cast<long long>((*slot)->getOffsetToElementInPrevDimension());
  return isSlot(owner) ? block + owner : nullptr;
}
