// The records of an index vector's preprocessing levels. Accessors use the record of the current level; without one, getters
// return -1, 0 or null.
#include <algorithm>
#include <climits>
#include <cstring>

#include "frame/ZQGrowth.h"
#include "sequence/ZQComplaint.h"
#include "sequence/ZQMatrixSequenceIndexVector.h"

using zmatrix::complain;

namespace {

constexpr int firstLengthOfOriginalItems = 10;

// Real vectors have few levels and coordinates. Larger numbers are refused, so that a wrong argument allocates no memory.
constexpr int largestNumberOfInfos = 1 << 16;
constexpr int largestCoordDimension = 1 << 16;

// The blocks of a record are plain pointers, since hosts see the record: a ZQArray adopts a block only to resize it.

/// Resizes a block of `length` integers; new ones are 0. False, with nothing changed, if memory runs out.
bool resizeBlock(int*& block, int length, long long newLength) {
  zmatrix::ZQArray<int> array;
  array.adopt(block, static_cast<size_t>(std::max(length, 0)));
  const bool isResized = array.resize(newLength);
  block = array.release();
  return isResized;
}

/// A copy of `count` integers with room for `length`, the rest 0; null for a null block or if memory runs out.
int* copyOfBlock(const int* block, int count, int length) {
  zmatrix::ZQArray<int> copy;
  if (block == nullptr || !copy.resize(std::max({count, length, 0}))) return nullptr;
  std::copy_n(block, std::max(count, 0), copy.begin());
  return copy.release();
}

}  // namespace

// --- the array of records

const tagSequenceInfo* ZQMatrixSequenceIndexVector::currentInfo() const {
  const int numberOfInfos = std::min(lengthOfIndexVectorInfos_, indexVectorInfos_.count());
  const bool isThere = levelOfPreprocOperations_ >= 0 && levelOfPreprocOperations_ < numberOfInfos;
  return isThere ? &indexVectorInfos_[levelOfPreprocOperations_] : nullptr;
}

tagSequenceInfo* ZQMatrixSequenceIndexVector::currentInfo() {
  return const_cast<tagSequenceInfo*>(std::as_const(*this).currentInfo());
}

bool ZQMatrixSequenceIndexVector::reserveInfos(long long numberOfInfos) {
  if (numberOfInfos <= indexVectorInfos_.count()) return true;
  return numberOfInfos <= largestNumberOfInfos && indexVectorInfos_.resize(numberOfInfos);
}

void ZQMatrixSequenceIndexVector::releaseInfos() {
  for (tagSequenceInfo& info : indexVectorInfos_) clearZQSequenceInfo(&info);
  indexVectorInfos_.reset();
}

bool ZQMatrixSequenceIndexVector::copyInfosFrom(const ZQMatrixSequenceIndexVector& other) {
  releaseInfos();
  if (!reserveInfos(std::max(other.indexVectorInfos_.count(), 1))) return false;
  for (int i = 0; i < other.indexVectorInfos_.count(); i++) {
    const tagSequenceInfo& from = other.indexVectorInfos_[i];
    tagSequenceInfo& to = indexVectorInfos_[i];
    to = from;
    to.usedPreprocessingVector =
        copyOfBlock(from.usedPreprocessingVector, from.coordDimensionAfterPreproc, from.coordDimensionAfterPreproc);
    to.originalIndexItems = copyOfBlock(from.originalIndexItems, from.numberOfOriginalItemsNeededForInversePreProcess,
                                        from.internalLengthOfOriginalIndexItems);
    if (to.originalIndexItems == nullptr)
      to.numberOfOriginalItemsNeededForInversePreProcess = to.internalLengthOfOriginalIndexItems = 0;
  }
  return true;
}

void ZQMatrixSequenceIndexVector::setCurrentLevelOfPreprocOperations(int level) {
  const long long numberOfInfos = static_cast<long long>(level) + 1;
  if (numberOfInfos >= lengthOfIndexVectorInfos_) {
    const long long doubled = 2LL * indexVectorInfos_.count();
    if (numberOfInfos > indexVectorInfos_.count() && !reserveInfos(doubled >= numberOfInfos ? doubled : numberOfInfos + 1))
      return;
    lengthOfIndexVectorInfos_ = static_cast<int>(numberOfInfos);
  }
  levelOfPreprocOperations_ = level;
}

void ZQMatrixSequenceIndexVector::initZQSequenceInfoWithNull(tagSequenceInfo* info) {
  if (info != nullptr) *info = tagSequenceInfo{};
}

void ZQMatrixSequenceIndexVector::clearZQSequenceInfo(tagSequenceInfo* info) {
  if (info == nullptr) return;
  systemFree(info->usedPreprocessingVector);
  systemFree(info->originalIndexItems);
  *info = tagSequenceInfo{};
}

// --- the original items that the inverse needs

int* ZQMatrixSequenceIndexVector::getOriginalIndexItems() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->originalIndexItems : nullptr;
}

int ZQMatrixSequenceIndexVector::getNumberOfOriginalItemsNeededForInversePreProcess() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->numberOfOriginalItemsNeededForInversePreProcess : -1;
}

int ZQMatrixSequenceIndexVector::getOriginalIndexItemAtIndex(int index) const {
  const tagSequenceInfo* info = currentInfo();
  if (info == nullptr || info->originalIndexItems == nullptr) return 0;
  return index >= 0 && index < info->numberOfOriginalItemsNeededForInversePreProcess ? info->originalIndexItems[index] : 0;
}

bool ZQMatrixSequenceIndexVector::reserveOriginalItems(tagSequenceInfo* info, long long capacity) {
  if (!resizeBlock(info->originalIndexItems, info->internalLengthOfOriginalIndexItems, capacity)) return false;
  info->internalLengthOfOriginalIndexItems = static_cast<int>(capacity);
  return true;
}

void ZQMatrixSequenceIndexVector::addOriginalSequenceItem(int item) {
  if (!reserveInfos(1) || levelOfPreprocOperations_ < 0)
    return complain("error addOriginalSequenceItem: _levelOfPreprocOperations <0 or _indexVectorInfos = NULL\n");
  tagSequenceInfo* info = currentInfo();
  if (info == nullptr || info->coordDimensionAfterPreproc <= 0)
    return complain("error addOriginalSequenceItem: coordDimensionAfterPreproc <=0\n");
  int& count = info->numberOfOriginalItemsNeededForInversePreProcess;
  if (info->originalIndexItems == nullptr && !reserveOriginalItems(info, firstLengthOfOriginalItems)) return;
  if (count >= info->internalLengthOfOriginalIndexItems) {
    const int grown = zmatrix::grownCapacity(info->internalLengthOfOriginalIndexItems);
    if (grown <= count || !reserveOriginalItems(info, grown)) return;
  }
  info->originalIndexItems[count++] = item;
}

void ZQMatrixSequenceIndexVector::removeAllOriginalSequenceItems() {
  tagSequenceInfo* info = currentInfo();
  if (info == nullptr) return;
  systemFree(info->originalIndexItems);
  info->originalIndexItems = nullptr;
  info->numberOfOriginalItemsNeededForInversePreProcess = info->internalLengthOfOriginalIndexItems = 0;
}

void ZQMatrixSequenceIndexVector::setOriginalIndexItems(const int* items, int count) {
  tagSequenceInfo* info = currentInfo();
  if (info == nullptr || count < 0 || (items == nullptr && count > 0)) return;
  if (info->originalIndexItems == nullptr && !reserveOriginalItems(info, firstLengthOfOriginalItems)) return;
  // The items may lie in the record's own block.
  if (count >= info->internalLengthOfOriginalIndexItems) {
    if (count > INT_MAX / 2) return;
    int* copy = copyOfBlock(items, count, 2 * count);
    if (copy == nullptr) return;
    systemFree(info->originalIndexItems);
    info->originalIndexItems = copy;
    info->internalLengthOfOriginalIndexItems = 2 * count;
  } else if (count > 0) {
    std::memmove(info->originalIndexItems, items, static_cast<size_t>(count) * sizeof(int));
  }
  info->numberOfOriginalItemsNeededForInversePreProcess = count;
}

// --- the step of the current level

int ZQMatrixSequenceIndexVector::getCoordDimensionAfterPreproc() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->coordDimensionAfterPreproc : -1;
}

void ZQMatrixSequenceIndexVector::setCoordDimensionAfterPreproc(int dimension) {
  tagSequenceInfo* info = currentInfo();
  if (info == nullptr || dimension < 0 || dimension > largestCoordDimension) return;
  if (resizeBlock(info->usedPreprocessingVector, info->coordDimensionAfterPreproc, dimension))
    info->coordDimensionAfterPreproc = dimension;
}

int ZQMatrixSequenceIndexVector::getUsedPreprocessingType() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->usedPreprocessingType : -1;
}

void ZQMatrixSequenceIndexVector::_setUsedPreprocessingType(int type) {
  if (tagSequenceInfo* info = currentInfo()) info->usedPreprocessingType = type;
}

int* ZQMatrixSequenceIndexVector::getUsedPreprocessingVector() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->usedPreprocessingVector : nullptr;
}

int ZQMatrixSequenceIndexVector::getUsedPreprocessingTypeAtIndex(int index) const {
  const tagSequenceInfo* info = currentInfo();
  const bool isThere =
      info != nullptr && info->usedPreprocessingVector != nullptr && index >= 0 && index < info->coordDimensionAfterPreproc;
  return isThere ? info->usedPreprocessingVector[index] : -1;
}

void ZQMatrixSequenceIndexVector::setUsedPreprocessingTypeAtIndex(int index, int value) {
  const tagSequenceInfo* info = currentInfo();
  const bool isThere =
      info != nullptr && info->usedPreprocessingVector != nullptr && index >= 0 && index < info->coordDimensionAfterPreproc;
  if (isThere) info->usedPreprocessingVector[index] = value;
}
