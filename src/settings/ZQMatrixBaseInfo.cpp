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
  if (magicNumber == zmatrix::matrixInfoMagicNumber) {
    dbPrintf(1, "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n");
    if (numberOfMatrixElements > 0) {
      dbPrintf(0, "initMatrixInfo: warning: reinitializing will erase all information in this matrix...\n");
    }
    ZQMatrixBaseInfo::deInitMatrixInfo();
  }
  updateInfoSize = 0;
  zmatrix::setToDefaults(*this, ZQMatrixInfoTypeBase);
  timeStamp = static_cast<unsigned int>(time(nullptr));
  matrixID = id;
  const bool hasRoom = sizeOfCoordinateDimensions.assign(coordinateDimension, zmatrix::defaultCoordinateSize) &&
                       minimalIndices.resize(internalCurrentDimension, 0) && maximalIndices.resize(internalCurrentDimension, 0) &&
                       matrixPtr.assign(internalCurrentDimension + 1, 0) &&
                       temporaryMemory.assign(zmatrix::smallestTemporaryMemory, 0);
  _resetIndexLimits();
  return hasRoom ? 1 : 0;
}

void ZQMatrixBaseInfo::deInitMatrixInfo() {
  sizeOfCoordinateDimensions.reset();
  minimalIndices.reset();
  maximalIndices.reset();
  matrixPtr.reset();
  temporaryMemory.reset();
  releaseMemoryGlobalMatrixInfoParameters();
  updateInfoSize = -1;
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
  storeIfEmpty(matrixType, value, "matrixType");
}

void ZQMatrixBaseInfo::setAllowLargeIndices(int value) {
  if (value == allowLargeIndices) return;
  if (value < 0 || value > 2) {
    dbPrintf(0, "error: setAllowLargeIndices :illegal value: %d\n", value);
  } else if (!isEmpty()) {
    refuseOnFilledMatrix("setAllowLargeIndices");
  } else {
    const int forcedDimension = 1 << value;
    dbPrintf(0, "warning: setAllowLargeIndices(%d) forces coordDimension to %d!\n", value, forcedDimension);
    ZQMatrixBaseInfo::setCoordinateDimension(forcedDimension);
    allowLargeIndices = value;
  }
}

void ZQMatrixBaseInfo::setCoordinateDimension(int dimension) {
  if (dimension == coordinateDimension) return;
  if (dimension < 0 || dimension > zmatrix::largestCoordinateDimension) {
    dbPrintf(0, "error: setCoordinateDimension :illegal value: %d\n", dimension);
  } else if (allowLargeIndices > 0) {
    dbPrintf(0, "error: setCoordinateDimension can not be set if allowLargeIndices >0!\n");
  } else if (!isEmpty()) {
    refuseOnFilledMatrix("setCoordinateDimension");
  } else if (sizeOfCoordinateDimensions.assign(dimension, zmatrix::defaultCoordinateSize)) {
    coordinateDimension = dimension;
  }
}

void ZQMatrixBaseInfo::setMaxDimOfMatrix(int dimension) {
  if (dimension == maxDimOfMatrix) return;
  if (!isEmpty() && dimension < currentDimension) {
    dbPrintf(0, "error: maximalDimension for non-empty matrix cannot be set because current dimension (%d)is higher:\n",
             currentDimension);
  } else if (dimension < 0) {
    dbPrintf(0, "error: maximalDimension illegal value: %d\n", dimension);
  } else {
    maxDimOfMatrix = dimension;
  }
}

void ZQMatrixBaseInfo::setMaximalMatrixIndex(int index) {
  if (index == maximalMatrixIndex) return;
  if (minimalIndices.empty() || maximalIndices.empty() || internalCurrentDimension <= 0) {
    dbPrintf(0, "error: setMaximalIndex can only be called after initMatrix!\n");
  } else if (!isEmpty() && smallestLegalMaximalIndex() > index) {
    dbPrintf(0, "error: setMaximalIndex for non-empty matrix failed because matrix contains values with higher indices\n");
  } else {
    maximalMatrixIndex = index;
    _resetIndexLimits();
  }
}

// The bound rises by one at every dimension in use, so deep matrices ask for a little more than their largest index.
long long ZQMatrixBaseInfo::smallestLegalMaximalIndex() const {
  long long bound = minimalIndices[0];
  for (int i = 0; i < currentDimension && i < minimalIndices.count(); ++i) {
    const long long lowest = std::llabs(static_cast<long long>(minimalIndices[i]));
    const long long highest = std::llabs(static_cast<long long>(maximalIndices[i]));
    bound = std::max({bound, lowest, highest}) + 1;
  }
  return bound;
}

void ZQMatrixBaseInfo::_resetIndexLimits() {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex);
  minimalIndices.fillFrom(0, beyond);
  maximalIndices.fillFrom(0, zmatrix::negativeOf(beyond));
}

void ZQMatrixBaseInfo::_resizeIndexLimits(int capacity) {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex);
  if (!minimalIndices.resize(capacity, beyond) || !maximalIndices.resize(capacity, zmatrix::negativeOf(beyond))) return;
  internalCurrentDimension = capacity;
}

int ZQMatrixBaseInfo::setSizeOfCoordDimension(int dimension, int size) {
  if (dimension < 0 || dimension >= sizeOfCoordinateDimensions.count()) return 0;
  const long long width = std::llabs(static_cast<long long>(size));
  if (width != 1 && width != 2 && width != 4 && width != 8) return 0;
  sizeOfCoordinateDimensions[dimension] = size;
  return 1;
}

int ZQMatrixBaseInfo::reportDimensionBeyondCapacity() const {
  dbPrintf(0, "updateMatrixInfo: dimIndex >= _internalCurrentDimension unexpected\n");
  return 0;
}

// The factor alone would leave a very small capacity where it is.
int ZQMatrixBaseInfo::capacityForDimension(int dimIndex) const {
  if (dimIndex < internalCurrentDimension) return internalCurrentDimension;
  return std::min(std::max(zmatrix::grownCapacity(dimIndex), zmatrix::successorOf(dimIndex)), INT_MAX - 1);
}

int ZQMatrixBaseInfo::enterMatrixDimension(int dimIndex) {
  if (dimIndex >= maxDimOfMatrix) {
    dbPrintf(0, "checkMatrixDimension: dimIndex >= _maximalDimension unexpected\n");
    return 0;
  }
  if (dimIndex < currentDimension) return 1;
  if (dimIndex >= internalCurrentDimension || dimIndex >= maximalIndices.count()) {
    if (!growDimensionArrays(capacityForDimension(dimIndex))) return 0;
  }
  currentDimension = dimIndex + 1;
  return 1;
}

bool ZQMatrixBaseInfo::growDimensionArrays(int capacity) {
  const int beyond = zmatrix::successorOf(maximalMatrixIndex);
  const bool hasRoom = minimalIndices.resize(capacity, beyond) && maximalIndices.resize(capacity, zmatrix::negativeOf(beyond)) &&
                       (capacity <= getRoomOfMatrixPtr() || matrixPtr.resize(capacity + 1LL, 0));
  if (!hasRoom) return false;
  minimalIndices.fillFrom(currentDimension, beyond);
  maximalIndices.fillFrom(currentDimension, zmatrix::negativeOf(beyond));
  matrixPtr.fillFrom(currentDimension, 0);
  internalCurrentDimension = capacity;
  return true;
}

bool ZQMatrixBaseInfo::growMatrixPtr(int numberOfSteps) {
  const long long grown = std::max<long long>(zmatrix::grownCapacity(numberOfSteps), numberOfSteps);
  return matrixPtr.resize(grown + 1, 0);
}

int* ZQMatrixBaseInfo::provideTemporaryMemory(int length) {
  if (length > temporaryMemory.count() && !temporaryMemory.resize(length, 0)) return nullptr;
  if (length > internalLengthOfTemporaryMemory) internalLengthOfTemporaryMemory = length;
  return temporaryMemory.data();
}

int ZQMatrixBaseInfo::readableFrom(const int* item) const {
  const int* begin = temporaryMemory.data();
  const int* end = begin + temporaryMemory.count();
  const bool isInside = !std::less<>()(item, begin) && std::less<>()(item, end);
  return isInside ? static_cast<int>(end - item) : INT_MAX;
}

ZQMatrixProperties* ZQMatrixBaseInfo::getGlobalMatrixInfoParameters() {
  if (globalMatrixInfoParameters == nullptr) {
    globalMatrixInfoParameters = systemMallocArray<ZQMatrixProperties>(1);
    if (globalMatrixInfoParameters == nullptr) return nullptr;
  } else {
    systemFree(globalMatrixInfoParameters->namesOfUpdateFiles);
  }
  ZQMatrixProperties* snapshot = globalMatrixInfoParameters;
  *snapshot = ZQMatrixProperties{};
  zmatrix::copyToSnapshot(*this, ZQMatrixInfoTypeBase, *snapshot);
  snapshot->updateInfoSize = updateInfoSize;
  snapshot->sizeOfCoordinateDimensions = sizeOfCoordinateDimensions.data();
  snapshot->minimalIndices = minimalIndices.data();
  snapshot->maximalIndices = maximalIndices.data();
  snapshot->matrixPtr = matrixPtr.data();
  snapshot->temporaryMemory = temporaryMemory.data();
  return snapshot;
}

void ZQMatrixBaseInfo::releaseMemoryGlobalMatrixInfoParameters() {
  if (globalMatrixInfoParameters == nullptr) return;
  systemFree(globalMatrixInfoParameters->namesOfUpdateFiles);
  systemFree(globalMatrixInfoParameters);
  globalMatrixInfoParameters = nullptr;
}
