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

// --- the preprocessed items

/// 0 if a preprocessed sequence of this length may become the kernel, else the error code -1 to -6.
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

/// Makes room for the items of a suffix. The internal length, which hosts can read, may be less than the actual room.
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

// --- original and preprocessed items

/// True if the preprocessed form of a sequence of this length is a difference that is too long for a kernel.
bool ZQKernel::isTooLong(int length) const {
  const int type = info_.getPreProcessingType();
  if (type < 0 || type > ZQPreProcessingTypeHighestDifference) return false;
  return length - static_cast<long long>(coordinateDimension_) * type > info_.getMaxDimOfMatrix();
}

/// The number of items other than bar markers among the first `numberOfItems` preprocessed items.
int ZQKernel::countNotes(int numberOfItems) const {
  int notes = 0;
  const int* item = info_.getKernelPreProcessedItems();
  for (int i = 0; i < numberOfItems; ++i, item += coordinateDimension_) notes += *item != ZQNotNote;
  return notes;
}

/// The offset in the original input, in integers, at which the original items of the kernel begin, including those that the
/// inverse needs; or offsetNotFound. Computed from lengths only, so it is exact only if preprocessing dropped no item.
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

/// For an input too short to be preprocessed: sets the kernel to the root, with those original items that the inverse needs, as
/// far as the input has them.
KernelSetting ZQKernel::setFromShortOriginal(const int* sequence, int length, const KernelSettingRequest& request) {
  const int needed = zmatrix::numberOfItemsToRestore(info_.getPreProcessingType());
  if (!info_.storeKernelOriginal(sequence, std::min(needed, length / coordinateDimension_))) return reset(request);
  info_.setLengthOfKernelOriginalSequence(needed);
  info_.setLengthOfKernelPreProcessedSequence(0);
  info_.setKernelMatrixHandle(matrix_.getCurrentMatrixID());
  if (request.setInitialValues == 1) info_.storeKernelInitialValues(info_.getKernelOriginalItems(), needed);
  return {needed, false};
}

/// Stores the original items of the kernel, for which there must be room.
void ZQKernel::storeOriginal(const int* items, int numberOfItems) {
  info_.storeKernelOriginal(items, numberOfItems);
  // Kept for hosts that read it: 0 from then on. Room is provided as needed.
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

// --- appending one item

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

/// Appends an item without processing the whole sequence. False if that is not possible; the kernel's items
/// are unchanged then.
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
