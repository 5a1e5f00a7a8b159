#include "settings/ZQMatrixMediumInfo.h"

#include <algorithm>
#include <functional>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"
#include "settings/ZQMatrixFileHeader.h"

int ZQMatrixMediumInfo::initMatrixInfo(int id) {
  const bool baseHasRoom = ZQMatrixBaseInfo::initMatrixInfo(id) == 1;
  setMediumDefaults();
  updateInfoType = ZQMatrixInfoTypeMedium;
  hasBeenChanged = 0;
  const bool hasRoom = rulesInDimension.assign(internalCurrentDimension, 0) &&
                       uniqueRulesInDimension.assign(internalCurrentDimension, 0) &&
                       writeElementsInDimension.assign(internalCurrentDimension, 0) && makeKernelItems(coordinateDimension);
  return baseHasRoom && hasRoom ? 1 : 0;
}

// The arrays of a record of the base type are released by the next initMatrixInfo or by the destructor.
void ZQMatrixMediumInfo::deInitMatrixInfo() {
  if (updateInfoType >= ZQMatrixInfoTypeMedium) {
    rulesInDimension.reset();
    uniqueRulesInDimension.reset();
    writeElementsInDimension.reset();
    kernelOriginalSequence.reset();
    kernelPreProcessedSequence.reset();
    updateSequence.reset();
    kernelOriginalSequenceInitialValues.reset();
    namesOfUpdateFiles.reset();
    zmatrix::setToUnusable(*this, ZQMatrixInfoTypeMedium);
    hasBeenChanged = -1;
    midiSoundID = ZQMatrixSoundUndefined;
    musicStyle = ZQMatrixMusicStyleUndefined;
    memset(midiChannelFilter, 255, sizeof midiChannelFilter);
    nameOfUpdateFile[0] = 1;
  }
  ZQMatrixBaseInfo::deInitMatrixInfo();
}

void ZQMatrixMediumInfo::setIsPhraseMatrix(int value) {
  if (value == isPhraseMatrix) return;
  if (!isEmpty()) {
    refuseOnFilledMatrix("setIsPhraseMatrix");
  } else if (value != 0 && value != 1) {
    dbPrintf(0, "error: setIsPhraseMatrix illegal value: %d\n", value);
  } else {
    isPhraseMatrix = value;
  }
}

void ZQMatrixMediumInfo::setMaxPhraseLengthForUpdateWithSequence(int length) {
  if (length == maxPhraseLengthForUpdateWithSequence) return;
  if (length >= 1 && length <= maxDimOfMatrix) {
    maxPhraseLengthForUpdateWithSequence = length;
  } else {
    dbPrintf(0, "error: setMaxPhraseLength: illegal value; %d\n", length);
  }
}

void ZQMatrixMediumInfo::setSkillOutputLevel(int level) {
  const bool isLegal = level >= 0 && level <= maxPhraseLengthForUpdateWithSequence;
  skillOutputLevel = isLegal ? level : maxPhraseLengthForUpdateWithSequence;
}

void ZQMatrixMediumInfo::setSuccessorMethod(int method) {
  const bool isLegal = method >= ZQSuccessorMethodMostProbable && method <= ZQSuccessorMethodRandom;
  successorMethod = isLegal ? method : ZQSuccessorMethodRandom;
}

void ZQMatrixMediumInfo::setNameOfUpdateFile(const char* name) {
  zmatrix::storeUnterminatedText(nameOfUpdateFile, nameCapacity, name);
}

void ZQMatrixMediumInfo::addNameOfUpdateFile(const char* name) {
  if (name == nullptr) return;
  const size_t length = strlen(name);
  const int oldLength = std::max(namesOfUpdateFiles.count() - 1, 0);
  // The name may lie in the array that is about to be reallocated.
  const char* old = namesOfUpdateFiles.data();
  const bool isKeptHere =
      oldLength > 0 && std::less_equal<const char*>()(old, name) && std::less<const char*>()(name, old + oldLength + 1);
  const ptrdiff_t place = isKeptHere ? name - old : 0;
  if (!namesOfUpdateFiles.resize(static_cast<long long>(length) + oldLength + 2, 0)) return;
  if (isKeptHere) name = namesOfUpdateFiles.data() + place;
  char* end = namesOfUpdateFiles.data() + oldLength;
  memcpy(end, name, length);
  end[length] = '\n';
}

void ZQMatrixMediumInfo::setMidiChannelFilterArray(const char* channels) {
  if (channels != nullptr) memmove(midiChannelFilter, channels, sizeof midiChannelFilter);
}

void ZQMatrixMediumInfo::setCoordinateDimension(int dimension) {
  makeKernelItems(std::clamp(dimension, 0, zmatrix::largestCoordinateDimension));
  ZQMatrixBaseInfo::setCoordinateDimension(dimension);
}

void ZQMatrixMediumInfo::setMediumDefaults() {
  zmatrix::setToDefaults(*this, ZQMatrixInfoTypeMedium);
  kernelMatrixHandle = matrixID;
  memset(nameOfUpdateFile, 0, sizeof nameOfUpdateFile);
  memset(midiChannelFilter, 0, sizeof midiChannelFilter);
  namesOfUpdateFiles.reset();
  updateSequence.reset();
}

// An internal length may be 0 while the sequence is not empty, so it alone does not tell how much room there must be.
bool ZQMatrixMediumInfo::makeKernelItems(int dimension) {
  const int originalLength =
      std::max({internalLengthOfKernelOriginalSequence, lengthOfKernelOriginalSequence, zmatrix::initialKernelLength});
  const int preProcessedLength =
      std::max({internalLengthOfKernelPreProcessedSequence, lengthOfKernelPreProcessedSequence, zmatrix::initialKernelLength});
  facesThatAgree = noFaces;
  return kernelOriginalSequence.assign(dimension, originalLength) &&
         kernelOriginalSequenceInitialValues.assign(dimension, originalLength) &&
         kernelPreProcessedSequence.assign(dimension, preProcessedLength);
}

// The own arrays grow first: the base raises currentDimension, which the fast path relies on.
int ZQMatrixMediumInfo::enterMediumMatrixDimension(int dimIndex) {
  if (dimIndex < maxDimOfMatrix && dimIndex >= writeElementsInDimension.count()) {
    const int capacity = capacityForDimension(dimIndex);
    const bool hasRoom = uniqueRulesInDimension.resize(capacity, 0) && rulesInDimension.resize(capacity, 0) &&
                         writeElementsInDimension.resize(capacity, 0);
    if (!hasRoom) return 0;
  }
  return ZQMatrixBaseInfo::enterMatrixDimension(dimIndex);
}

ZQMatrixProperties* ZQMatrixMediumInfo::getGlobalMatrixInfoParameters() {
  ZQMatrixProperties* snapshot = ZQMatrixBaseInfo::getGlobalMatrixInfoParameters();
  if (snapshot == nullptr) return nullptr;
  zmatrix::copyToSnapshot(*this, ZQMatrixInfoTypeMedium, *snapshot);
  memcpy(snapshot->nameOfUpdateFile, nameOfUpdateFile, sizeof snapshot->nameOfUpdateFile);
  memcpy(snapshot->midiChannelFilter, midiChannelFilter, sizeof snapshot->midiChannelFilter);
  snapshot->rulesInDimension = rulesInDimension.data();
  snapshot->uniqueRulesInDimension = uniqueRulesInDimension.data();
  snapshot->writeElementsInDimension = writeElementsInDimension.data();
  snapshot->kernelOriginalSequence = getKernelOriginalSequence();
  snapshot->kernelPreProcessedSequence = getKernelPreProcessedSequence();
  snapshot->kernelOriginalSequenceInitialValues = getKernelOriginalSequenceInitialValues();
  snapshot->updateSequence = updateSequence.data();
  if (!namesOfUpdateFiles.empty()) {
    snapshot->namesOfUpdateFiles = systemMallocArray<char>(namesOfUpdateFiles.count());
    if (snapshot->namesOfUpdateFiles != nullptr) {
      memcpy(snapshot->namesOfUpdateFiles, namesOfUpdateFiles.data(), static_cast<size_t>(namesOfUpdateFiles.count()));
    }
  }
  return snapshot;
}
