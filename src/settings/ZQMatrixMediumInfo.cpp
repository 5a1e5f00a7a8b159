#include "settings/ZQMatrixMediumInfo.h"

#include <algorithm>
#include <functional>

#include "frame/ZQDebugChannel.h"
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

// What a record of the base type still holds of the arrays below goes with the next initMatrixInfo or with the record.
void ZQMatrixMediumInfo::deInitMatrixInfo() {
  if (updateInfoType >= ZQMatrixInfoTypeMedium) {
    rulesInDimension.release();
    uniqueRulesInDimension.release();
    writeElementsInDimension.release();
    kernelOriginalSequence.release();
    kernelPreProcessedSequence.release();
    updateSequence.release();
    kernelOriginalSequenceInitialValues.release();
    namesOfUpdateFiles.release();
#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) name = static_cast<type>(-1);
#include "settings/ZQMatrixInfoFields.def"
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

void ZQMatrixMediumInfo::setSucessorMethod(int method) {
  const bool isLegal = method >= ZQSuccessorMethodMostProbable && method <= ZQSuccessorMethodRandom;
  successorMethod = isLegal ? method : ZQSuccessorMethodRandom;
}

void ZQMatrixMediumInfo::setNameOfUpdateFile(const char* name) {
  zmatrix::storeUnterminatedText(nameOfUpdateFile, nameCapacity, name);
}

void ZQMatrixMediumInfo::addNameOfUpdateFile(const char* name) {
  if (name == nullptr) return;
  const size_t length = strlen(name);
  const int oldLength = std::max(namesOfUpdateFiles.size() - 1, 0);
  // The name may be one of those that are kept here already, which are about to move.
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
#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) name = static_cast<type>(initial);
#include "settings/ZQMatrixInfoFields.def"
  kernelMatrixHandle = matrixID;
  memset(nameOfUpdateFile, 0, sizeof nameOfUpdateFile);
  memset(midiChannelFilter, 0, sizeof midiChannelFilter);
  namesOfUpdateFiles.release();
  updateSequence.release();
}

// An internal length may be 0 while the sequence is not empty, so it alone does not tell how much room there must be.
bool ZQMatrixMediumInfo::makeKernelItems(int dimension) {
  const int originalLength =
      std::max({internalLengthOfKernelOriginalSequence, lengthOfKernelOriginalSequence, firstKernelLength});
  const int preProcessedLength =
      std::max({internalLengthOfKernelPreProcessedSequence, lengthOfKernelPreProcessedSequence, firstKernelLength});
  facesThatAgree = noFaces;
  return kernelOriginalSequence.assign(dimension, originalLength) &&
         kernelOriginalSequenceInitialValues.assign(dimension, originalLength) &&
         kernelPreProcessedSequence.assign(dimension, preProcessedLength);
}

// The own arrays grow first: the base raises currentDimension, which is what the fast path believes.
int ZQMatrixMediumInfo::enterMediumMatrixDimension(int dimIndex) {
  if (dimIndex < maxDimOfMatrix && dimIndex >= writeElementsInDimension.size()) {
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
#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) snapshot->name = name;
#define ZQ_OCRON(type, name, Name, initial, since, printType, format)
#include "settings/ZQMatrixInfoFields.def"
  memcpy(snapshot->nameOfUpdateFile, nameOfUpdateFile, sizeof snapshot->nameOfUpdateFile);
  memcpy(snapshot->midiChannelFilter, midiChannelFilter, sizeof snapshot->midiChannelFilter);
  snapshot->rulesInDimension = rulesInDimension.data();
  snapshot->uniqueRulesInDimension = uniqueRulesInDimension.data();
  snapshot->writeElementsInDimension = writeElementsInDimension.data();
  snapshot->kernelOriginalSequence = getKernelOriginalSequence();
  snapshot->kernelPreProcessedSequence = getKernelPreProcessedSequence();
  snapshot->kernelOriginalSequenceInitialValues = getKernelOriginalSequenceInitialValues();
  snapshot->updateSequence = updateSequence.data();
  if (namesOfUpdateFiles.size() > 0) {
    snapshot->namesOfUpdateFiles = systemMallocArray<char>(namesOfUpdateFiles.size());
    if (snapshot->namesOfUpdateFiles != nullptr) {
      memcpy(snapshot->namesOfUpdateFiles, namesOfUpdateFiles.data(), static_cast<size_t>(namesOfUpdateFiles.size()));
    }
  }
  return snapshot;
}
