#include "sequence/ZQKernel.h"

#include <algorithm>
#include <climits>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQGrowth.h"
#include "sequence/ZQItemPreprocessing.h"

namespace zmatrix {

namespace {

constexpr int offsetNotFound = -1;

}  // namespace

// --- the preprocessed face

/// 0 if a preprocessed sequence of this length may become the kernel, or the number of the refusal.
int ZQKernel::refusalOf(int length) const {
  if (coordinateDimension_ < 1) return -2;
  if (length % coordinateDimension_ != 0) return -1;
  if (length < 0 || length > info_.getMaxDimOfMatrix()) return -3;
  if (info_.getInternalLengthOfKernelPreProcessedSequence() < 1) return -4;
  if (info_.getIsPhraseMatrix() != 1) return -5;
  return info_.getSkillOutputLevel() < 0 ? -6 : 0;
}

KnownSuffix ZQKernel::findKnownSuffix(const int* sequence, int length) {
  const int longestSearched = info_.getSkillOutputLevel();
  return longestSearched >= 1 ? scratch_.knownSuffixes.findLongest(matrix_, sequence, length, longestSearched) : KnownSuffix{};
}

/// Makes room for the items of a suffix. The internal length says less than what there is room for.
bool ZQKernel::provideForSuffix(int numberOfItems) {
  const int internalLength = info_.getInternalLengthOfKernelPreProcessedSequence();
  if (!info_.provideKernelPreProcessed(numberOfItems)) return false;
  if (numberOfItems < internalLength) return true;
  const int enlarged = grownCapacity(numberOfItems);
  if (!info_.provideKernelPreProcessed(enlarged)) return false;
  dbPrintf(1, "initializeKernelSequenceWithPreProcessedequence: kernelSequence enlarged from %d up to %d\n", internalLength,
           enlarged);
  info_._setInternalLengthOfKernelPreProcessedSequence(enlarged);
  return true;
}

bool ZQKernel::keepSuffix(const KnownSuffix& suffix, const int* sequence, int length) {
  const int numberOfItems = suffix.length / coordinateDimension_;
  if (numberOfItems < 1 || !provideForSuffix(numberOfItems)) return false;
  info_.setKernelMatrixHandle(suffix.handle);
  return info_.storeKernelPreProcessed(sequence + (length - suffix.length), numberOfItems);
}

int ZQKernel::setFromPreProcessed(const int* sequence, int length) {
  const int refusal = refusalOf(length);
  if (refusal != 0) return refusal;
  const bool isEmpty = sequence == nullptr || length == 0;
  if (!isEmpty) {
    if (keepSuffix(findKnownSuffix(sequence, length), sequence, length)) return info_.getLengthOfKernelPreProcessedSequence();
    dbPrintf(1,
             "\n###initializeKernelSequenceWithPreProcessedSequence: warning: no part of input sequence found in matrix. "
             "Initializing with root-element...\n");
  }
  info_.resetKernelSequence(matrix_.getCurrentMatrixID(), 0);
  return info_.getLengthOfKernelPreProcessedSequence();
}

void ZQKernel::pushPreProcessed(const int* item) {
  const int numberOfItems = std::max(info_.getLengthOfKernelPreProcessedSequence(), 0);
  int* const added = info_.roomBehindKernelPreProcessed(numberOfItems);
  if (added == nullptr) {
    setFromPreProcessed(nullptr, 0);
    return;
  }
  std::copy_n(item, coordinateDimension_, added);
  setFromPreProcessed(info_.getKernelPreProcessedItems(), (numberOfItems + 1) * coordinateDimension_);
}

// --- both faces

/// True if a difference of this length would be refused as a kernel: known before the input is touched.
bool ZQKernel::isTooLong(int length) const {
  const int type = info_.getPreProcessingType();
  if (type < 0 || type > ZQPreProcessingTypeHighestDifference) return false;
  return length - static_cast<long long>(coordinateDimension_) * type > info_.getMaxDimOfMatrix();
}

/// Of the first preprocessed items those that are no bar markers.
int ZQKernel::countNotes(int numberOfItems) const {
  int notes = 0;
  const int* item = info_.getKernelPreProcessedItems();
  for (int i = 0; i < numberOfItems; ++i, item += coordinateDimension_) notes += *item != ZQNotNote;
  return notes;
}

/// Where the kernel begins in the original input, in integers, with the items in front that the inverse needs; or offsetNotFound.
/// What it is found from is lengths alone, so that it is exact only where no item of the input was dropped.
int ZQKernel::offsetInOriginal(int length, int preProcessedLength, bool warnsOfUnsecureRecompute) const {
  const int type = info_.getPreProcessingType(), numberOfItems = info_.getLengthOfKernelPreProcessedSequence();
  if (type <= ZQPreProcessingTypeANSIText) {
    const bool isText = type == ZQPreProcessingTypeANSIText;
    const int offset = preProcessedLength - numberOfItems * coordinateDimension_;
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
  if (coordinatesOfMidiType(type) == 0) return 0;
  const long long offset = length - static_cast<long long>(coordinateDimension_) * (countNotes(numberOfItems) + 1LL);
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

KernelSetting ZQKernel::reset(const KernelSettingRequest& request) {
  return {info_.resetKernelSequence(request.matrixIDAtRoot, request.setInitialValues), false};
}

/// For an input too short to be preprocessed: the kernel is at the root, with as many of the items that the inverse needs as
/// there are.
KernelSetting ZQKernel::setFromShortOriginal(const int* sequence, int length, const KernelSettingRequest& request) {
  const int needed = zmatrix::numberOfItemsToRestore(info_.getPreProcessingType());
  if (!info_.storeKernelOriginal(sequence, std::min(needed, length / coordinateDimension_))) return reset(request);
  info_.setLengthOfKernelOriginalSequence(needed);
  info_.setLengthOfKernelPreProcessedSequence(0);
  info_.setKernelMatrixHandle(matrix_.getCurrentMatrixID());
  if (request.setInitialValues == 1) info_.storeKernelInitialValues(info_.getKernelOriginalItems(), needed);
  return {needed, false};
}

/// Makes these items, for which there is room, the original kernel.
void ZQKernel::storeOriginal(const int* items, int numberOfItems) {
  info_.storeKernelOriginal(items, numberOfItems);
  // Once set to 0 it stays below every length; room is made by need alone.
  if (numberOfItems >= info_.getInternalLengthOfKernelOriginalSequence()) info_._setInternalLengthOfKernelOriginalSequence(0);
}

std::span<const int> ZQKernel::originalItems() const {
  return {info_.getKernelOriginalItems(),
          static_cast<size_t>(info_.getLengthOfKernelOriginalSequence()) * static_cast<size_t>(coordinateDimension_)};
}

std::span<const int> ZQKernel::preProcessedItems() const {
  return {info_.getKernelPreProcessedItems(),
          static_cast<size_t>(info_.getLengthOfKernelPreProcessedSequence()) * static_cast<size_t>(coordinateDimension_)};
}

KernelSetting ZQKernel::setFromOriginal(const int* sequence, int length, const KernelSettingRequest& request) {
  if (sequence == nullptr || length < 1 || coordinateDimension_ < 1 || isTooLong(length)) return reset(request);
  const int* preProcessed = sequence;
  int preProcessedLength = length;
  if (info_.getPreProcessingType() != ZQPreProcessingTypeNone) {
    preProcessed = matrix_.preProcessIntoScratch(sequence, length, &preProcessedLength);
    if (preProcessed == nullptr) return {-1, false};
    if (preProcessedLength < 1) return setFromShortOriginal(sequence, length, request);
  }
  if (setFromPreProcessed(preProcessed, preProcessedLength) < 0) return reset(request);
  const int offset = offsetInOriginal(length, preProcessedLength, request.warnsOfUnsecureRecompute);
  const int numberOfItems = (length - offset) / coordinateDimension_;
  if (offset == offsetNotFound || !info_.provideKernelOriginal(numberOfItems)) return reset(request);
  storeOriginal(sequence + offset, numberOfItems);
  if (request.setInitialValues == 1) info_.storeKernelInitialValues(sequence + offset, numberOfItems);
  const bool isWhole = length % coordinateDimension_ == 0;
  if (isWhole && isPreProcessedFormOf(preprocessingSettingsOf(info_), originalItems(), preProcessedItems())) {
    info_.noteThatKernelFacesAgree();
  }
  return {numberOfItems, true};
}

// --- one item more

void ZQKernel::push(const int* item, int numberOfItems) {
  numberOfItems = std::max(numberOfItems, 0);
  if (numberOfItems == info_.getLengthOfKernelOriginalSequence() && info_.kernelFacesAgree() && pushOneItem(item)) return;
  const size_t lengthBefore = static_cast<size_t>(numberOfItems) * static_cast<size_t>(coordinateDimension_);
  const size_t length = lengthBefore + static_cast<size_t>(coordinateDimension_);
  int* const sequence =
      length <= INT_MAX && info_.provideKernelOriginal(numberOfItems) ? scratch_.sequence.makeRoomFor(length) : nullptr;
  if (sequence != nullptr) {
    std::copy_n(info_.getKernelOriginalItems(), lengthBefore, sequence);
    std::copy_n(item, coordinateDimension_, sequence + lengthBefore);
  }
  setFromOriginal(sequence, sequence != nullptr ? static_cast<int>(length) : 0, {matrix_.getCurrentMatrixID(), 0, false});
}

/// False, with nothing changed that counts, if the whole sequence has to be looked at.
bool ZQKernel::pushOneItem(const int* item) {
  const int numberOfOriginal = info_.getLengthOfKernelOriginalSequence();
  const int numberOfPreProcessed = info_.getLengthOfKernelPreProcessedSequence();
  int* const addedOriginal = info_.roomBehindKernelOriginal(numberOfOriginal);
  int* const addedPreProcessed = info_.roomBehindKernelPreProcessed(numberOfPreProcessed);
  if (addedOriginal == nullptr || addedPreProcessed == nullptr) return false;
  std::copy_n(item, coordinateDimension_, addedOriginal);
  const PreprocessingSettings settings = preprocessingSettingsOf(info_);
  const std::span<const int> original(info_.getKernelOriginalItems(), addedOriginal + coordinateDimension_);
  if (!preProcessedItem(settings, original, addedPreProcessed)) return false;

  const int* const preProcessed = info_.getKernelPreProcessedItems();
  const int length = (numberOfPreProcessed + 1) * coordinateDimension_;
  if (refusalOf(length) != 0) return false;
  const KnownSuffix suffix = findKnownSuffix(preProcessed, length);
  const int numberCut = numberOfPreProcessed + 1 - suffix.length / coordinateDimension_;
  const int originalCut = coordinatesOfMidiType(settings.preProcessingType) != 0 ? countNotes(numberCut) : numberCut;
  if (!keepSuffix(suffix, preProcessed, length)) return false;
  storeOriginal(original.data() + originalCut * coordinateDimension_, numberOfOriginal + 1 - originalCut);
  if (isPreProcessedFormAfterCut(settings, originalItems(), preProcessedItems())) info_.noteThatKernelFacesAgree();
  return true;
}

}  // namespace zmatrix
