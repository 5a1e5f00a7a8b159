// Set-up and release of a matrix object, its debug channel, and queries on its sub-matrices.
#include "store/ZQMatrixBase.h"

#include <cstring>

#include "frame/ZQMemory.h"
#include "store/ZQBaseTier.h"
#include "store/ZQTierLife.h"

namespace {

constexpr int lowestDebugLevel = -1;
constexpr int highestDebugLevel = 9;

}  // namespace

ZQMatrixBase::~ZQMatrixBase() {
  if (matrixFileHeader_ == nullptr) return;  // creation failed
  matrixFileHeader_->closeAndRemoveUpdateInfos();
  setMatrixDebugOff();
}

bool ZQMatrixBase::resizeSubMatrices(int number) {
  const bool hasRoom =
      matrixDataEntryArray_.resize(number) && matrixFileHeader_->resizeStopFlags(number) && matrixInfoArray_.resize(number);
  if (hasRoom) matrixFileHeader_->_setMaxNumberOfMatrices(number);
  return hasRoom;
}

int ZQMatrixBase::initMatrix(int debugOutputDevice, int newDebugLevel, const char* debugDirectory) {
  currentMatrixId_ = 0;
  ZQMatrixFileHeader* header = matrixFileHeader_.get();
  header->setFileType(zmatrix::matrixFileType);
  header->setMatrixDescription("");
  header->setLastSoftwareVersion(zmatrix::matrixFormatVersion);
  header->setIs64BitMatrix(0);
  header->_setMaxNumberOfMatrices(zmatrix::initialNumberOfMatrices);
  header->setNumberOfMatrices(1);
  header->setMatrixAILevel(0);
  header->setOffsetToUpdateInfos(0);
  header->_setMatrixBlockSize(zmatrix::initialBlockSize);
  header->_setMatrixBlockSizeOld(0);
  header->_setMaximalStack(0);
  header->setNumberOfMatrixUpdates(0);
  header->setMatrixDebugOutputDevice(debugOutputDevice);
  // The setter would write a probe file to the working directory for an empty name.
  if (debugDirectory != nullptr && *debugDirectory != '\0') header->setMatrixDebugDirectory(debugDirectory);
  header->setMatrixOriginFilename("");
  header->setMatrixDestinationFilename("");
  header->setUserRandomValue(zmatrix::initialRandomValue);
  header->setSystemRandomValue(zmatrix::initialRandomValue);
  header->setUserRandomType(1);
  header->setSystemRandomType(1);
  header->setMatrixInfoType(0);
  header->clearStopFlags();
  setMatrixDebugOn(newDebugLevel);
  header->setFpUpdateInfos(nullptr);
  header->setFpUpdateInfosFileName("");
  if (!resizeBlock(zmatrix::initialBlockSize)) {
    deInitMatrix();
    dbPrintf(0, "error from InitMat: Allocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(zmatrix::initialBlockSize));
    return 0;
  }
  dbPrintf(1, "_matrixData initialized!\n");
  return 1;
}

void ZQMatrixBase::deInitMatrix() {
  currentMatrixId_ = 0;
  releaseMemory();
  ZQMatrixFileHeader* header = matrixFileHeader_.get();
  matrixDataEntryArray_.fillFrom(0, nullptr);
  header->setMatrixDescription("");
  header->setLastSoftwareVersion(zmatrix::matrixFormatVersion);
  header->setIs64BitMatrix(0);
  header->setNumberOfMatrices(1);
  header->setMatrixAILevel(0);
  header->setOffsetToUpdateInfos(0);
  header->_setMatrixBlockSize(zmatrix::initialBlockSize);
  header->_setMatrixBlockSizeOld(0);
  header->_setMaximalStack(0);
  header->setNumberOfMatrixUpdates(0);
  header->closeAndRemoveUpdateInfos();
}

void* ZQMatrixBase::mMalloc(size_t size) {
  return systemMalloc(size);
}

void ZQMatrixBase::mFree(void* pointer) {
  systemFree(pointer);
}

int ZQMatrixBase::setMatrixDebugOn(int level) {
  if (level < lowestDebugLevel) level = lowestDebugLevel;
  if (level > highestDebugLevel) level = highestDebugLevel;
  globalDebugLevel = level;
  debugLevel_ = level;
  if (matrixFileHeader_->getMatrixDebugOutputDevice() >= 2 && fpMatrixErr == nullptr && level >= 0) {
    char name[300];
    snprintf(name, sizeof name, "%smatrixDebug.txt", matrixFileHeader_->getMatrixDebugDirectory());
    openDebugFile(name);
    dbPrintf(1,
             "########################CPP DebugFile opened for Debug-Output (%d Bit-MAC OS Intel Version) with level %d "
             "######################\n",
             64, level);
  } else if (debugLevel_ != level) {
    // Never printed: debugLevel_ was set to `level` above.
    dbPrintf(1, "########################CPP debugLevel changed to %d #######################\n", level);
  }
  return fpMatrixErr != nullptr ? 1 : 0;
}

void ZQMatrixBase::setMatrixDebugOff() {
  globalDebugLevel = 0;
  debugLevel_ = 0;
  dbPrintf(1, "*************************DebugFile Debug-Output closed  and debugLevel set to 0  **********************\n");
  closeDebugFile();
}

int ZQMatrixBase::getNextFreeMatrixID() const {
  for (int id = 0; id < matrixFileHeader_->getMaxNumberOfMatrices(); ++id) {
    if (matrixInfoArray_[id]->isEmpty()) return id;
  }
  return -1;
}

int ZQMatrixBase::getHighestOccupiedMatrixID() const {
  for (int id = matrixFileHeader_->getMaxNumberOfMatrices() - 1; id >= 0; --id) {
    if (matrixInfoArray_[id]->getNumberOfMatrixElements() > 0 || matrixInfoArray_[id]->getNumberOfWriteElements() > 0) return id;
  }
  return -1;
}

void ZQMatrixBase::setMaxNumberOfMatrices(int number) {
  zmatrix::setMaxNumberOfMatricesIn(*this, number);
}

void ZQMatrixBase::makeMatrixEmpty() {
  getMatrixInfo()->initMatrixInfo(currentMatrixId_);
}
