#include "settings/ZQMatrixMediumInfo.h"

#include <algorithm>
#include <functional>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"
#include "settings/ZQMatrixFileHeader.h"

using zmatrix::dbPrintf;
using zmatrix::systemMallocArray;

int ZQMatrixMediumInfo::initMatrixInfo(int id) {
  const bool baseHasRoom = ZQMatrixBaseInfo::initMatrixInfo(id) == 1;
  setMediumDefaults();
  updateInfoType_ = ZQMatrixInfoTypeMedium;
  hasBeenChanged_ = 0;
  const bool hasRoom = rulesInDimension_.assign(internalCurrentDimension_, 0) &&
                       uniqueRulesInDimension_.assign(internalCurrentDimension_, 0) &&
                       writeElementsInDimension_.assign(internalCurrentDimension_, 0) && makeKernelItems(coordinateDimension_);
  return baseHasRoom && hasRoom ? 1 : 0;
}

// The medium arrays of a record with the base type are released by the next initMatrixInfo or by the destructor.
void ZQMatrixMediumInfo::deInitMatrixInfo() {
  if (updateInfoType_ >= ZQMatrixInfoTypeMedium) {
    rulesInDimension_.reset();
    uniqueRulesInDimension_.reset();
    writeElementsInDimension_.reset();
    kernelOriginalSequence_.reset();
    kernelPreProcessedSequence_.reset();
    updateSequence_.reset();
    kernelOriginalSequenceInitialValues_.reset();
    namesOfUpdateFiles_.reset();
    zmatrix::setToUnusable(*this, ZQMatrixInfoTypeMedium);
    hasBeenChanged_ = -1;
    midiSoundId_ = ZQMatrixSoundUndefined;
    musicStyle_ = ZQMatrixMusicStyleUndefined;
    memset(midiChannelFilter_, 255, sizeof midiChannelFilter_);
    nameOfUpdateFile_[0] = 1;
  }
  ZQMatrixBaseInfo::deInitMatrixInfo();
}

void ZQMatrixMediumInfo::setIsPhraseMatrix(int value) {
  if (value == isPhraseMatrix_) return;
  if (!isEmpty()) {
    refuseOnFilledMatrix("setIsPhraseMatrix");
  } else if (value != 0 && value != 1) {
    dbPrintf(0, "error: setIsPhraseMatrix illegal value: %d\n", value);
  } else {
    isPhraseMatrix_ = value;
  }
}

void ZQMatrixMediumInfo::setMaxPhraseLengthForUpdateWithSequence(int length) {
  if (length == maxPhraseLengthForUpdateWithSequence_) return;
  if (length >= 1 && length <= maxDimOfMatrix_) {
    maxPhraseLengthForUpdateWithSequence_ = length;
  } else {
    dbPrintf(0, "error: setMaxPhraseLength: illegal value; %d\n", length);
  }
}

void ZQMatrixMediumInfo::setSkillOutputLevel(int level) {
  const bool isLegal = level >= 0 && level <= maxPhraseLengthForUpdateWithSequence_;
  skillOutputLevel_ = isLegal ? level : maxPhraseLengthForUpdateWithSequence_;
}

void ZQMatrixMediumInfo::setSuccessorMethod(int method) {
  const bool isLegal = method >= ZQSuccessorMethodMostProbable && method <= ZQSuccessorMethodRandom;
  successorMethod_ = isLegal ? method : ZQSuccessorMethodRandom;
}

void ZQMatrixMediumInfo::setNameOfUpdateFile(const char* name) {
  zmatrix::storeUnterminatedText(nameOfUpdateFile_, nameCapacity, name);
}

void ZQMatrixMediumInfo::addNameOfUpdateFile(const char* name) {
  if (name == nullptr) return;
  const size_t length = strlen(name);
  const int oldLength = std::max(namesOfUpdateFiles_.count() - 1, 0);
  // The name may be part of the array, which the resize below reallocates.
  const char* old = namesOfUpdateFiles_.data();
  const bool isInArray =
      oldLength > 0 && std::less_equal<const char*>()(old, name) && std::less<const char*>()(name, old + oldLength + 1);
  const ptrdiff_t offset = isInArray ? name - old : 0;
  if (!namesOfUpdateFiles_.resize(static_cast<long long>(length) + oldLength + 2, 0)) return;
  if (isInArray) name = namesOfUpdateFiles_.data() + offset;
  char* end = namesOfUpdateFiles_.data() + oldLength;
  std::copy_n(name, length, end);
  end[length] = '\n';
}

void ZQMatrixMediumInfo::setMidiChannelFilterArray(const char* channels) {
  if (channels != nullptr) memmove(midiChannelFilter_, channels, sizeof midiChannelFilter_);
}

void ZQMatrixMediumInfo::setCoordinateDimension(int dimension) {
  // Without memory the kernel has no room; whoever sets it asks for room again.
  static_cast<void>(makeKernelItems(std::clamp(dimension, 0, zmatrix::largestCoordinateDimension)));
  ZQMatrixBaseInfo::setCoordinateDimension(dimension);
}

void ZQMatrixMediumInfo::setMediumDefaults() {
  zmatrix::setToDefaults(*this, ZQMatrixInfoTypeMedium);
  kernelMatrixHandle_ = matrixId_;
  memset(nameOfUpdateFile_, 0, sizeof nameOfUpdateFile_);
  memset(midiChannelFilter_, 0, sizeof midiChannelFilter_);
  namesOfUpdateFiles_.reset();
  updateSequence_.reset();
}

// An internal length may be 0 although the sequence is not empty, so that the larger of both lengths is allocated.
bool ZQMatrixMediumInfo::makeKernelItems(int dimension) {
  const int originalLength =
      std::max({internalLengthOfKernelOriginalSequence_, lengthOfKernelOriginalSequence_, zmatrix::initialKernelLength});
  const int preProcessedLength =
      std::max({internalLengthOfKernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_, zmatrix::initialKernelLength});
  facesThatAgree_ = noFaces;
  return kernelOriginalSequence_.assign(dimension, originalLength) &&
         kernelOriginalSequenceInitialValues_.assign(dimension, originalLength) &&
         kernelPreProcessedSequence_.assign(dimension, preProcessedLength);
}

// The medium arrays grow first: afterwards the base raises currentDimension, up to which the inline path of checkMatrixDimension
// assumes them to reach.
int ZQMatrixMediumInfo::enterMediumMatrixDimension(int dimIndex) {
  if (dimIndex < maxDimOfMatrix_ && dimIndex >= writeElementsInDimension_.count()) {
    const int capacity = capacityForDimension(dimIndex);
    const bool hasRoom = uniqueRulesInDimension_.resize(capacity, 0) && rulesInDimension_.resize(capacity, 0) &&
                         writeElementsInDimension_.resize(capacity, 0);
    if (!hasRoom) return 0;
  }
  return ZQMatrixBaseInfo::enterMatrixDimension(dimIndex);
}

ZQMatrixProperties* ZQMatrixMediumInfo::getGlobalMatrixInfoParameters() {
  ZQMatrixProperties* snapshot = ZQMatrixBaseInfo::getGlobalMatrixInfoParameters();
  if (snapshot == nullptr) return nullptr;
  zmatrix::copyToSnapshot(*this, ZQMatrixInfoTypeMedium, *snapshot);
  memcpy(snapshot->nameOfUpdateFile, nameOfUpdateFile_, sizeof snapshot->nameOfUpdateFile);
  memcpy(snapshot->midiChannelFilter, midiChannelFilter_, sizeof snapshot->midiChannelFilter);
  snapshot->rulesInDimension = rulesInDimension_.data();
  snapshot->uniqueRulesInDimension = uniqueRulesInDimension_.data();
  snapshot->writeElementsInDimension = writeElementsInDimension_.data();
  snapshot->kernelOriginalSequence = getKernelOriginalSequence();
  snapshot->kernelPreProcessedSequence = getKernelPreProcessedSequence();
  snapshot->kernelOriginalSequenceInitialValues = getKernelOriginalSequenceInitialValues();
  snapshot->updateSequence = updateSequence_.data();
  if (!namesOfUpdateFiles_.empty()) {
    snapshot->namesOfUpdateFiles = systemMallocArray<char>(namesOfUpdateFiles_.count());
    if (snapshot->namesOfUpdateFiles != nullptr) {
      memcpy(snapshot->namesOfUpdateFiles, namesOfUpdateFiles_.data(), static_cast<size_t>(namesOfUpdateFiles_.count()));
    }
  }
  return snapshot;
}
