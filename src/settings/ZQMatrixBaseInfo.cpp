#include "settings/ZQMatrixBaseInfo.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <functional>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"

ZQMatrixBaseInfo::~ZQMatrixBaseInfo() {
  releaseMemoryGlobalMatrixInfoParameters();
}

int ZQMatrixBaseInfo::initMatrixInfo(int id) {
  if (magicNumber_ == zmatrix::matrixInfoMagicNumber) {
    dbPrintf(1, "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n");
    if (numberOfMatrixElements_ > 0) {
      dbPrintf(0, "initMatrixInfo: warning: reinitializing will erase all information in this matrix...\n");
    }
    ZQMatrixBaseInfo::deInitMatrixInfo();
  }
  updateInfoSize_ = 0;
  zmatrix::setToDefaults(*this, ZQMatrixInfoTypeBase);
  timeStamp_ = static_cast<unsigned int>(time(nullptr));
  matrixId_ = id;
  const bool hasRoom =
      sizeOfCoordinateDimensions_.assign(coordinateDimension_, zmatrix::defaultCoordinateSize) &&
      minimalIndices_.resize(internalCurrentDimension_, 0) && maximalIndices_.resize(internalCurrentDimension_, 0) &&
      matrixPtr_.assign(internalCurrentDimension_ + 1, 0) && temporaryMemory_.assign(zmatrix::smallestTemporaryMemory, 0);
  _resetIndexLimits();
  return hasRoom ? 1 : 0;
}

void ZQMatrixBaseInfo::deInitMatrixInfo() {
  sizeOfCoordinateDimensions_.reset();
  minimalIndices_.reset();
  maximalIndices_.reset();
  matrixPtr_.reset();
  temporaryMemory_.reset();
  releaseMemoryGlobalMatrixInfoParameters();
  updateInfoSize_ = -1;
  zmatrix::setToUnusable(*this, ZQMatrixInfoTypeBase);
}

void ZQMatrixBaseInfo::refuseOnFilledMatrix(const char* setter) const {
  dbPrintf(0, "error: %s can only be set for an empty matrix!\n", setter);
}

void ZQMatrixBaseInfo::storeIfEmpty(int& field, int value, const char* setter) {
  if (value == field) return;
  if (isEmpty()) {
    field = value;
  } else {
    refuseOnFilledMatrix(setter);
  }
}

void ZQMatrixBaseInfo::storeFlag(int& field, int value, const char* label) {
  if (value == field) return;
  if (value == 0 || value == 1) {
    field = value;
  } else {
    dbPrintf(0, "error: %s: illegal value; %d\n", label, value);
  }
}

void ZQMatrixBaseInfo::storeFlagWithWarning(int& field, int value, const char* setter) {
  if (value == field) return;
  if (!isEmpty()) dbPrintf(0, "warning: %s with new value applied to an non-empty matrix!\n", setter);
  if (value == 0 || value == 1) {
    field = value;
  } else {
    dbPrintf(0, "error: %s illegal value: %d\n", setter, value);
  }
}

void ZQMatrixBaseInfo::setMatrixType(int value) {
  storeIfEmpty(matrixType_, value, "matrixType");
}

void ZQMatrixBaseInfo::setAllowLargeIndices(int value) {
  if (value == allowLargeIndices_) return;
  if (value < 0 || value > 2) {
    dbPrintf(0, "error: setAllowLargeIndices :illegal value: %d\n", value);
  } else if (!isEmpty()) {
    refuseOnFilledMatrix("setAllowLargeIndices");
  } else {
    const int forcedDimension = 1 << value;
    dbPrintf(0, "warning: setAllowLargeIndices(%d) forces coordDimension to %d!\n", value, forcedDimension);
    ZQMatrixBaseInfo::setCoordinateDimension(forcedDimension);
    allowLargeIndices_ = value;
  }
}

void ZQMatrixBaseInfo::setCoordinateDimension(int dimension) {
  if (dimension == coordinateDimension_) return;
  if (dimension < 0 || dimension > zmatrix::largestCoordinateDimension) {
    dbPrintf(0, "error: setCoordinateDimension :illegal value: %d\n", dimension);
  } else if (allowLargeIndices_ > 0) {
    dbPrintf(0, "error: setCoordinateDimension can not be set if allowLargeIndices >0!\n");
  } else if (!isEmpty()) {
    refuseOnFilledMatrix("setCoordinateDimension");
  } else if (sizeOfCoordinateDimensions_.assign(dimension, zmatrix::defaultCoordinateSize)) {
    coordinateDimension_ = dimension;
  }
}

void ZQMatrixBaseInfo::setMaxDimOfMatrix(int dimension) {
  if (dimension == maxDimOfMatrix_) return;
  if (!isEmpty() && dimension < currentDimension_) {
    dbPrintf(0, "error: maximalDimension for non-empty matrix cannot be set because current dimension (%d)is higher:\n",
             currentDimension_);
  } else if (dimension < 0) {
    dbPrintf(0, "error: maximalDimension illegal value: %d\n", dimension);
  } else {
    maxDimOfMatrix_ = dimension;
  }
}

void ZQMatrixBaseInfo::setMaximalMatrixIndex(int index) {
  if (index == maximalMatrixIndex_) return;
  if (minimalIndices_.empty() || maximalIndices_.empty() || internalCurrentDimension_ <= 0) {
    dbPrintf(0, "error: setMaximalIndex can only be called after initMatrix!\n");
  } else if (!isEmpty() && smallestLegalMaximalIndex() > index) {
    dbPrintf(0, "error: setMaximalIndex for non-empty matrix failed because matrix contains values with higher indices\n");
  } else {
    maximalMatrixIndex_ = index;
    _resetIndexLimits();
  }
}

// The bound rises by one per dimension in use, so that deep matrices require slightly more than their largest index.
long long ZQMatrixBaseInfo::smallestLegalMaximalIndex() const {
  long long bound = minimalIndices_[0];
  for (int i = 0; i < currentDimension_ && i < minimalIndices_.count(); ++i) {
    const long long lowest = std::llabs(static_cast<long long>(minimalIndices_[i]));
    const long long highest = std::llabs(static_cast<long long>(maximalIndices_[i]));
    bound = std::max({bound, lowest, highest}) + 1;
  }
  return bound;
}

void ZQMatrixBaseInfo::_resetIndexLimits() {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex_);
  minimalIndices_.fillFrom(0, beyond);
  maximalIndices_.fillFrom(0, zmatrix::negativeOf(beyond));
}

void ZQMatrixBaseInfo::_resizeIndexLimits(int capacity) {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex_);
  if (!minimalIndices_.resize(capacity, beyond) || !maximalIndices_.resize(capacity, zmatrix::negativeOf(beyond))) return;
  internalCurrentDimension_ = capacity;
}

int ZQMatrixBaseInfo::setSizeOfCoordDimension(int dimension, int size) {
  if (dimension < 0 || dimension >= sizeOfCoordinateDimensions_.count()) return 0;
  const long long width = std::llabs(static_cast<long long>(size));
  if (width != 1 && width != 2 && width != 4 && width != 8) return 0;
  sizeOfCoordinateDimensions_[dimension] = size;
  return 1;
}

int ZQMatrixBaseInfo::reportDimensionBeyondCapacity() const {
  dbPrintf(0, "updateMatrixInfo: dimIndex >= _internalCurrentDimension unexpected\n");
  return 0;
}

// The growth factor alone would not enlarge a very small capacity.
int ZQMatrixBaseInfo::capacityForDimension(int dimIndex) const {
  if (dimIndex < internalCurrentDimension_) return internalCurrentDimension_;
  return std::min(std::max(zmatrix::grownCapacity(dimIndex), zmatrix::successorOf(dimIndex)), INT_MAX - 1);
}

int ZQMatrixBaseInfo::enterMatrixDimension(int dimIndex) {
  if (dimIndex >= maxDimOfMatrix_) {
    dbPrintf(0, "checkMatrixDimension: dimIndex >= _maximalDimension unexpected\n");
    return 0;
  }
  if (dimIndex < currentDimension_) return 1;
  if (dimIndex >= internalCurrentDimension_ || dimIndex >= maximalIndices_.count()) {
    if (!growDimensionArrays(capacityForDimension(dimIndex))) return 0;
  }
  currentDimension_ = dimIndex + 1;
  return 1;
}

bool ZQMatrixBaseInfo::growDimensionArrays(int capacity) {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex_);
  const bool hasRoom = minimalIndices_.resize(capacity, beyond) &&
                       maximalIndices_.resize(capacity, zmatrix::negativeOf(beyond)) &&
                       (capacity <= getRoomOfMatrixPtr() || matrixPtr_.resize(capacity + 1LL, 0));
  if (!hasRoom) return false;
  minimalIndices_.fillFrom(currentDimension_, beyond);
  maximalIndices_.fillFrom(currentDimension_, zmatrix::negativeOf(beyond));
  matrixPtr_.fillFrom(currentDimension_, 0);
  internalCurrentDimension_ = capacity;
  return true;
}

bool ZQMatrixBaseInfo::growMatrixPtr(int numberOfSteps) {
  const long long grown = std::max<long long>(zmatrix::grownCapacity(numberOfSteps), numberOfSteps);
  return matrixPtr_.resize(grown + 1, 0);
}

int* ZQMatrixBaseInfo::provideTemporaryMemory(int length) {
  if (length > temporaryMemory_.count() && !temporaryMemory_.resize(length, 0)) return nullptr;
  if (length > internalLengthOfTemporaryMemory_) internalLengthOfTemporaryMemory_ = length;
  return temporaryMemory_.data();
}

int ZQMatrixBaseInfo::readableFrom(const int* item) const {
  const int* begin = temporaryMemory_.data();
  const int* end = begin + temporaryMemory_.count();
  const bool isInside = !std::less<>()(item, begin) && std::less<>()(item, end);
  return isInside ? static_cast<int>(end - item) : INT_MAX;
}

ZQMatrixProperties* ZQMatrixBaseInfo::getGlobalMatrixInfoParameters() {
  if (globalMatrixInfoParameters_ == nullptr) {
    globalMatrixInfoParameters_ = systemMallocArray<ZQMatrixProperties>(1);
    if (globalMatrixInfoParameters_ == nullptr) return nullptr;
  } else {
    systemFree(globalMatrixInfoParameters_->namesOfUpdateFiles);
  }
  ZQMatrixProperties* snapshot = globalMatrixInfoParameters_;
  *snapshot = ZQMatrixProperties{};
  zmatrix::copyToSnapshot(*this, ZQMatrixInfoTypeBase, *snapshot);
  snapshot->updateInfoSize = updateInfoSize_;
  snapshot->sizeOfCoordinateDimensions = sizeOfCoordinateDimensions_.data();
  snapshot->minimalIndices = minimalIndices_.data();
  snapshot->maximalIndices = maximalIndices_.data();
  snapshot->matrixPtr = matrixPtr_.data();
  snapshot->temporaryMemory = temporaryMemory_.data();
  return snapshot;
}

void ZQMatrixBaseInfo::releaseMemoryGlobalMatrixInfoParameters() {
  if (globalMatrixInfoParameters_ == nullptr) return;
  systemFree(globalMatrixInfoParameters_->namesOfUpdateFiles);
  systemFree(globalMatrixInfoParameters_);
  globalMatrixInfoParameters_ = nullptr;
}
