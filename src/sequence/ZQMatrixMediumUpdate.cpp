// The sequence update of the medium tier: the check of the settings, and the entry points of the shared worker.
#include "frame/ZQCharacterTables.h"
#include "frame/ZQSentence.h"
#include "sequence/ZQMediumTier.h"
#include "sequence/ZQUpdateWorker.h"

namespace {

// A setting that a call needs.
struct NeededSetting {
  zmatrix::ZQSentence<int> mismatch;
  const char* overwritten;
  int actual;
  bool isMet;
  bool refuses;
  void (ZQMatrixMediumInfo::*set)(int);
  int wanted;
};

bool meets(ZQMatrixMediumInfo& info, const NeededSetting& setting) {
  if (setting.isMet) return true;
  dbPrintf(0, setting.mismatch, setting.actual);
  if (info.getNumberOfMatrixElements() != 0) return !setting.refuses;
  dbPrintf(0, "%s", setting.overwritten);
  (info.*setting.set)(setting.wanted);
  return true;
}

}  // namespace

int ZQMatrixMedium::checkSettingsForUpdateMatrixWithSequence(int coordinateDimension, int preProcessingType,
                                                             int allowLargeIndices, int matrixType) {
  using Info = ZQMatrixMediumInfo;
  Info& info = *getMatrixInfo();
  // Each setting is read just before its check, since setting one value may change another.
  const auto check = [&info](const zmatrix::ZQSentence<int>& mismatch, const char* overwritten, int actual, bool isMet,
                             void (Info::*set)(int), int wanted, bool refuses = true) {
    return meets(info, {mismatch, overwritten, actual, isMet, refuses, set, wanted});
  };
  return check("actual setting for isPhraseMatrix is illegal %d\n",
               "value for isPhraseMatrix overwritten, because matrix is empty. Can continue processing...\n",
               info.getIsPhraseMatrix(), info.getIsPhraseMatrix() == 1, &Info::setIsPhraseMatrix, 1) &&
                 check("actual coordinateDimension is illegal %d\n",
                       "value for coordinateDimension overwritten, because matrix is empty. Can continue processing...\n",
                       info.getCoordinateDimension(), info.getCoordinateDimension() == coordinateDimension,
                       &Info::setCoordinateDimension, coordinateDimension) &&
                 check("actual setting for preProcessingType is illegal %d\n",
                       "value for preprocessingType overwritten, because matrix is empty. Can continue processing...\n",
                       info.getPreProcessingType(), info.getPreProcessingType() == preProcessingType, &Info::setPreProcessingType,
                       preProcessingType) &&
                 check("actual setting for allowLargeIndices is illegal %d\n",
                       "value for allowLargeIndices overwritten, because matrix is empty. Can continue processing...\n",
                       info.getAllowLargeIndices(), info.getAllowLargeIndices() == allowLargeIndices, &Info::setAllowLargeIndices,
                       allowLargeIndices) &&
                 check("actual setting for memIsReadOnly is illegal %d\n",
                       "value for memIsReadOnly overwritten, because matrix is empty. Can continue processing...\n",
                       info.getMemIsReadOnly(), info.getMemIsReadOnly() != 1, &Info::setMemIsReadOnly, 0) &&
                 check("warning: actual setting for isFinalized is illegal; %d\n",
                       "value for isFinalized overwritten, because matrix is empty. Can continue processing...\n",
                       info.getIsFinalized(), info.getIsFinalized() != 1, &Info::setIsFinalized, 0, false) &&
                 check("actual setting for matrixType is illegal %d\n",
                       "value for matrixType overwritten, because matrix is empty. Can continue processing...\n",
                       info.getMatrixType(), info.getMatrixType() == matrixType, &Info::setMatrixType, matrixType)
             ? 1
             : 0;
}

namespace zmatrix {

void showPreProcessedText(const int* sequence, int length) {
  dbPrintf(5, "\nPOSTP SEQ: ");
  const int device = ZQDebugChannel::globalDebugOutputDevice;
  for (int i = 0; i < length; ++i) {
    if (sequence[i] < 0 || sequence[i] > 255) {
      dbPrintf(0, "ANSI data out of range!\n");
      continue;
    }
    if (device >= 2 && ZQDebugChannel::fpMatrixErr != nullptr) fputc(sequence[i], ZQDebugChannel::fpMatrixErr);
    if (device == 1 || device == 3) printfANSI("%c", static_cast<unsigned>(sequence[i]));
  }
  dbPrintf(5, "\n");
}

}  // namespace zmatrix

int ZQMatrixMedium::updateMatrixWithCombinedSequenceDebug(const int* sequence, int length, int matrixType,
                                                          int coordinateDimension, int preProcessingType, int allowLargeIndices,
                                                          int* numberOfProcessedVectors, int* numberOfOverwrites, int** values,
                                                          int** lengths, int*** indexVectors) {
  return zmatrix::updateMatrixWithCombinedSequenceIn(
      *this, sequence, length, matrixType, coordinateDimension, preProcessingType, allowLargeIndices,
      {numberOfProcessedVectors, numberOfOverwrites, values, lengths, indexVectors});
}

int ZQMatrixMedium::updateMatrixWithCombinedSequence(const int* sequence, int length, int matrixType, int coordinateDimension,
                                                     int preProcessingType, int allowLargeIndices) {
  return zmatrix::updateMatrixWithCombinedSequenceIn(*this, sequence, length, matrixType, coordinateDimension, preProcessingType,
                                                     allowLargeIndices, {});
}

int ZQMatrixMedium::updateMatrixWithSequence(int matrixType, int coordinateDimension, const int* sequence, int length) {
  return updateMatrixWithCombinedSequence(sequence, length, matrixType, coordinateDimension, 1, 0);
}

int ZQMatrixMedium::updateMatrixWith2DimSequence(int matrixType, int preProcessingType, const int* first, const int* second,
                                                 int length) {
  return zmatrix::updateMatrixWith2DimSequenceIn(*this, matrixType, preProcessingType, first, second, length);
}

int ZQMatrixMedium::updateMatrixWithLongINTSequence(const int* sequence, int numberOfItems) {
  const auto& info = *getMatrixInfo();
  return updateMatrixWithLongINTSequenceExt(sequence, numberOfItems, info.getMatrixType(), info.getCoordinateDimension(),
                                            info.getPreProcessingType(), info.getAllowLargeIndices());
}

int ZQMatrixMedium::updateMatrixWithLongINTSequenceExt(const int* sequence, int numberOfItems, int matrixType,
                                                       int coordinateDimension, int preProcessingType, int allowLargeIndices) {
  return zmatrix::updateMatrixWithLongINTSequenceIn(*this, sequence, numberOfItems, matrixType, coordinateDimension,
                                                    preProcessingType, allowLargeIndices);
}

void ZQMatrixMedium::updateNumberOfAppendedMatrices() {
  int updates = std::max(matrixFileHeader_->getNumberOfAppendedUpdates(), 0);
  zmatrix::addTo(updates, getNumberOfChangedMatrixInfos());
  matrixFileHeader_->setNumberOfAppendedUpdates(updates);
}

void ZQMatrixMedium::countUpdate() {
  ZQMatrixMediumInfo& info = *getMatrixInfo();
  info.setHasBeenChanged(1);
  info.incrementUpdateIndex();
  matrixFileHeader_->incrementNumberOfMatrixUpdates();
  if (info.getAddUpdateInfo() == 1) updateNumberOfAppendedMatrices();
}

int ZQMatrixMedium::getNumberOfChangedMatrixInfos() {
  int changed = 0;
  const int highest = getHighestOccupiedMatrixID();
  for (int id = 0; id <= highest; ++id) changed += getMatrixInfo(id)->getHasBeenChanged() != 0;
  return changed;
}
