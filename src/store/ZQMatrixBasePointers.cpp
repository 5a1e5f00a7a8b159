// The block as an array of pointers to its elements, for getMatrixData, getMatrixDataEntryArray and getOwner.
#include "store/ZQMatrixBase.h"

bool ZQMatrixBase::refreshPointers() {
  if (versionOfPointers_ == getContentVersion()) return true;
  if (!pointers_.resize(numberOfSlots_)) return false;
  for (int position = 0; position < numberOfSlots_; ++position) pointers_[position] = elementAt(position);
  versionOfPointers_ = getContentVersion();
  return true;
}

ZQMatrixBaseElement** ZQMatrixBase::getMatrixData() {
  return hasBlock() && refreshPointers() ? pointers_.data() : nullptr;
}

ZQMatrixBaseElement*** ZQMatrixBase::getMatrixDataEntryArray() {
  ZQMatrixBaseElement** block = getMatrixData();
  for (int id = 0; id < matrixFileHeader_->getMaxNumberOfMatrices(); ++id) {
    matrixDataEntryArray_[id] = block != nullptr ? block + id : nullptr;
  }
  return matrixDataEntryArray_.data();
}

ZQMatrixBaseElement** ZQMatrixBase::getOwner(ZQMatrixBaseElement** slot) {
  if (slot == nullptr || *slot == nullptr || (*slot)->getOffsetToElementInPrevDimension() == 0) return nullptr;
  ZQMatrixBaseElement** block = getMatrixData();
  const long long owner = (slot - block) + static_cast<long long>((*slot)->getOffsetToElementInPrevDimension());
  return isSlot(owner) ? block + owner : nullptr;
}
