// The kernel: the context of a continuation, as far as the matrix knows it. Its preprocessed face is the longest ending of the
// items so far that is a path with successors; its original face is the same stretch as original items, with those in front that
// the inverse of the preprocessing needs. Every failure but a refusal leaves the kernel at the root.
#include <algorithm>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQGrowth.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQKernelSetting.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQPreprocessing.h"

using zmatrix::SystemOwned;

namespace {

constexpr int offsetNotFound = -1;

/// 0 if a preprocessed sequence of this length may become the kernel, or the number of the refusal.
int refusalOf(ZQMatrixMediumInfo* info, int length) {
  if (info->getCoordinateDimension() < 1) return -2;
  if (length % info->getCoordinateDimension() != 0) return -1;
  if (length < 0 || length > info->getMaxDimOfMatrix()) return -3;
  if (info->getInternalLengthOfKernelPreProcessedSequence() < 1) return -4;
  if (info->getIsPhraseMatrix() != 1) return -5;
  return info->getSkillOutputLevel() < 0 ? -6 : 0;
}

void copyIntoRows(const int* items, int numberOfItems, int coordinateDimension, int** rows) {
  if (coordinateDimension == 1) {
    std::copy_n(items, std::max(numberOfItems, 0), rows[0]);
    return;
  }
  for (int i = 0; i < numberOfItems; ++i) {
    for (int k = 0; k < coordinateDimension; ++k) rows[k][i] = *items++;
  }
}

/// Makes room for the items of a suffix. The internal length says less than what the rows hold, since rows never shrink.
bool provideRowsForSuffix(ZQMatrixMediumInfo* info, int numberOfItems) {
  const int internalLength = info->getInternalLengthOfKernelPreProcessedSequence();
  if (!info->provideKernelPreProcessedRows(numberOfItems) || info->getKernelPreProcessedSequence() == nullptr) return false;
  if (numberOfItems < internalLength) return true;
  const int enlarged = zmatrix::grownCapacity(numberOfItems);
  if (!info->provideKernelPreProcessedRows(enlarged)) return false;
  dbPrintf(1, "initializeKernelSequenceWithPreProcessedequence: kernelSequence enlarged from %d up to %d\n", internalLength,
           enlarged);
  info->_setInternalLengthOfKernelPreProcessedSequence(enlarged);
  return true;
}

/// Items of the kernel that are not bar markers.
int countKernelNotes(ZQMatrixMediumInfo* info) {
  int** rows = info->getKernelPreProcessedSequence();
  if (rows == nullptr) return 0;
  const int numberOfItems = info->getLengthOfKernelPreProcessedSequence();
  return numberOfItems - static_cast<int>(std::count(rows[0], rows[0] + numberOfItems, ZQNotNote));
}

/// Where the kernel begins in the original input, in integers, with the items in front that the inverse needs; or offsetNotFound.
/// What it is found from is lengths alone, so that it is exact only where no item of the input was dropped.
int offsetOfKernelInOriginal(ZQMatrixMediumInfo* info, int length, int preProcessedLength, bool warnsOfUnsecureRecompute) {
  const int type = info->getPreProcessingType(), coordinateDimension = info->getCoordinateDimension();
  if (type <= ZQPreProcessingTypeANSIText) {
    const bool isText = type == ZQPreProcessingTypeANSIText;
    const int offset = preProcessedLength - info->getLengthOfKernelPreProcessedSequence() * coordinateDimension;
    if (offset < 0) {
      dbPrintf(0, isText ? "initializeKerneSequenceWithOriginalSequence: internal error2\n"
                         : "initializeKerneSequenceWithOriginalSequence: internal error1\n");
      return 0;
    }
    if (isText && offset > 0 && warnsOfUnsecureRecompute) {
      dbPrintf(0, "warning: unsecure method for recomputing ANSI originalSequence from preprocessed Sequence, offset = %d\n",
               offset);
    }
    return std::min(offset, length);
  }
  if (zmatrix::coordinatesOfMidiType(type) == 0) return 0;
  const long long offset = length - static_cast<long long>(coordinateDimension) * (countKernelNotes(info) + 1LL);
  if (offset < 0) {
    dbPrintf(0, "Upps, da weiss ich auch keinen Rat mehr!!!\n");
    return offsetNotFound;
  }
  if (offset > 0 && warnsOfUnsecureRecompute) {
    dbPrintf(0, "warning: unsecure method for recomputing MIDI originalSequence from preprocessed Sequence, offset = %d\n",
             static_cast<int>(offset));
  }
  return static_cast<int>(offset);
}

/// Makes these items the original kernel. False if there is no room for them.
bool storeOriginalKernel(ZQMatrixMediumInfo* info, const int* items, int numberOfItems, int setInitialValues) {
  if (!info->provideKernelOriginalRows(numberOfItems)) return false;
  int** original = info->getKernelOriginalSequence();
  int** initialValues = info->getKernelOriginalSequenceInitialValues();
  if (original == nullptr || initialValues == nullptr) return false;
  info->setLengthOfKernelOriginalSequence(numberOfItems);
  // Once set to 0 it stays below every length; the rows themselves only grow when they have to.
  if (numberOfItems >= info->getInternalLengthOfKernelOriginalSequence()) info->_setInternalLengthOfKernelOriginalSequence(0);
  copyIntoRows(items, numberOfItems, info->getCoordinateDimension(), original);
  if (setInitialValues == 1) copyIntoRows(items, numberOfItems, info->getCoordinateDimension(), initialValues);
  return true;
}

/// For an input too short to be preprocessed: the kernel is at the root, with as many of the items that the inverse needs as
/// there are.
bool storeShortOriginalKernel(ZQMatrixMediumInfo* info, int matrixID, const int* sequence, int length, int needed,
                              int setInitialValues) {
  if (!info->provideKernelOriginalRows(needed)) return false;
  int** original = info->getKernelOriginalSequence();
  int** initialValues = info->getKernelOriginalSequenceInitialValues();
  if (original == nullptr || initialValues == nullptr) return false;
  const int coordinateDimension = info->getCoordinateDimension();
  info->setLengthOfKernelOriginalSequence(needed);
  info->setLengthOfKernelPreProcessedSequence(0);
  info->setKernelMatrixHandle(matrixID);
  copyIntoRows(sequence, std::min(needed, length / coordinateDimension), coordinateDimension, original);
  for (int k = 0; setInitialValues == 1 && k < coordinateDimension; ++k) std::copy_n(original[k], needed, initialValues[k]);
  return true;
}

/// True if a difference of this length would be refused as a kernel: known before the input is touched.
bool isTooLongForKernel(ZQMatrixMediumInfo* info, int length) {
  const int type = info->getPreProcessingType();
  if (type < 0 || type > ZQPreProcessingTypeHighestDifference) return false;
  return length - static_cast<long long>(info->getCoordinateDimension()) * type > info->getMaxDimOfMatrix();
}

}  // namespace

int ZQMatrixMedium::initializeKernelSequenceWithPreProcessedSequence(const int* sequence, int length) {
  ZQMatrixMediumInfo* info = getMatrixInfo();
  const int refusal = refusalOf(info, length);
  if (refusal != 0) return refusal;
  if (sequence == nullptr || length == 0) {
    info->resetKernelSequence(getCurrentMatrixID(), 0);
    return info->getLengthOfKernelPreProcessedSequence();
  }
  const int longestSearched = info->getSkillOutputLevel();
  zmatrix::KnownSuffix suffix;
  if (longestSearched >= 1) suffix = generation.knownSuffixes.findLongest(*this, sequence, length, longestSearched);
  const int numberOfItems = suffix.length / info->getCoordinateDimension();
  if (numberOfItems >= 1 && provideRowsForSuffix(info, numberOfItems)) {
    info->setKernelMatrixHandle(suffix.handle);
    info->setLengthOfKernelPreProcessedSequence(numberOfItems);
    copyIntoRows(sequence + (length - suffix.length), numberOfItems, info->getCoordinateDimension(),
                 info->getKernelPreProcessedSequence());
    return numberOfItems;
  }
  dbPrintf(1,
           "\n###initializeKernelSequenceWithPreProcessedSequence: warning: no part of input sequence found in matrix. "
           "Initializing with root-element...\n");
  info->resetKernelSequence(getCurrentMatrixID(), 0);
  return info->getLengthOfKernelPreProcessedSequence();
}

zmatrix::KernelSetting zmatrix::setKernelFromOriginalSequence(ZQMatrixMedium& matrix, const int* sequence, int length,
                                                              const KernelSettingRequest& request) {
  ZQMatrixMediumInfo* info = matrix.getMatrixInfo();
  const int setInitialValues = request.setInitialValues;
  const auto reset = [&] { return KernelSetting{info->resetKernelSequence(request.matrixIDAtRoot, setInitialValues), false}; };
  const int coordinateDimension = info->getCoordinateDimension();
  if (sequence == nullptr || length < 1 || coordinateDimension < 1 || isTooLongForKernel(info, length)) return reset();
  const int* preProcessed = sequence;
  int preProcessedLength = length;
  if (info->getPreProcessingType() != ZQPreProcessingTypeNone) {
    preProcessed = matrix.preProcessIntoScratch(sequence, length, &preProcessedLength);
    if (preProcessed == nullptr) return {-1, false};
    if (preProcessedLength < 1) {
      const int needed = zmatrix::numberOfItemsToRestore(info->getPreProcessingType());
      const bool isStored =
          storeShortOriginalKernel(info, matrix.getCurrentMatrixID(), sequence, length, needed, setInitialValues);
      return isStored ? KernelSetting{needed, false} : reset();
    }
  }
  if (matrix.initializeKernelSequenceWithPreProcessedSequence(preProcessed, preProcessedLength) < 0) return reset();
  const int offset = offsetOfKernelInOriginal(info, length, preProcessedLength, request.warnsOfUnsecureRecompute);
  if (offset == offsetNotFound) return reset();
  if (!storeOriginalKernel(info, sequence + offset, (length - offset) / coordinateDimension, setInitialValues)) return reset();
  return {info->getLengthOfKernelOriginalSequence(), true};
}

int ZQMatrixMedium::initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int setInitialValues) {
  return zmatrix::setKernelFromOriginalSequence(*this, sequence, length, {getCurrentMatrixID(), setInitialValues, false}).result;
}

int ZQMatrixMedium::updateAndGetMatrixKernelHandle() {
  int length = 0, coordinateDimension = 0;
  const SystemOwned<int> kernel(getMatrixInfo()->getKernelPreProcessedSequenceIndexVector(&length, &coordinateDimension));
  const int handle = getMatrixHandleFromElementVector(kernel.get(), length);
  getMatrixInfo()->setKernelMatrixHandle(handle);
  return handle;
}

int ZQMatrixMedium::getNumberOfSuccessorsFromKernelHandle() {
  return getNumberOfSuccessorsFromMatrixHandle(getMatrixInfo()->getKernelMatrixHandle());
}
