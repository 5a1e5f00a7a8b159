// The records of an index vector's preprocessing levels. All accessors work on the current level's record; where there is none,
// or the level lies outside the records in use, they answer -1, 0 or null.
#include <algorithm>
#include <climits>
#include <cstring>

#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"
#include "sequence/ZQComplaint.h"
#include "sequence/ZQIntegerBlock.h"
#include "sequence/ZQMatrixSequenceIndexVector.h"

using zmatrix::complain;
using zmatrix::copyOfIntegerBlock;
using zmatrix::resizeIntegerBlock;

namespace {

constexpr int firstLengthOfOriginalItems = 10;

// Levels and coordinates come one by one in practice; who asks for more than this has sent nonsense, and gets no memory for it.
constexpr int largestNumberOfInfos = 1 << 16;
constexpr int largestCoordDimension = 1 << 16;

}  // namespace

// --- the array of records

tagSequenceInfo* ZQMatrixSequenceIndexVector::currentInfo() const {
  const int numberOfInfos = std::min(lengthOfIndexVectorInfos, internalLengthOfIndexVectorInfos);
  const bool isThere = levelOfPreprocOperations >= 0 && levelOfPreprocOperations < numberOfInfos;
  return isThere ? &indexVectorInfos[levelOfPreprocOperations] : nullptr;
}

bool ZQMatrixSequenceIndexVector::reserveInfos(long long numberOfInfos) {
  if (numberOfInfos <= internalLengthOfIndexVectorInfos) return true;
  if (numberOfInfos > largestNumberOfInfos) return false;
  const size_t wanted = static_cast<size_t>(numberOfInfos);
  auto* infos = static_cast<tagSequenceInfo*>(systemRealloc(indexVectorInfos, wanted * sizeof(tagSequenceInfo)));
  if (infos == nullptr) return false;
  for (size_t i = static_cast<size_t>(internalLengthOfIndexVectorInfos); i < wanted; i++) infos[i] = tagSequenceInfo{};
  indexVectorInfos = infos;
  internalLengthOfIndexVectorInfos = static_cast<int>(wanted);
  return true;
}

void ZQMatrixSequenceIndexVector::releaseInfos() {
  for (int i = 0; i < internalLengthOfIndexVectorInfos; i++) clearZQSequenceInfo(&indexVectorInfos[i]);
  systemFree(indexVectorInfos);
  indexVectorInfos = nullptr;
  internalLengthOfIndexVectorInfos = 0;
}

bool ZQMatrixSequenceIndexVector::copyInfosFrom(const ZQMatrixSequenceIndexVector& other) {
  releaseInfos();
  if (!reserveInfos(std::max(other.internalLengthOfIndexVectorInfos, 1))) return false;
  for (int i = 0; i < other.internalLengthOfIndexVectorInfos; i++) {
    const tagSequenceInfo& from = other.indexVectorInfos[i];
    tagSequenceInfo& to = indexVectorInfos[i];
    to = from;
    to.usedPreprocessingVector =
        copyOfIntegerBlock(from.usedPreprocessingVector, from.coordDimensionAfterPreproc, from.coordDimensionAfterPreproc);
    to.originalIndexItems = copyOfIntegerBlock(from.originalIndexItems, from.numberOfOriginalItemsNeededForInversePreProcess,
                                               from.internalLengthOfOriginalIndexItems);
    if (to.originalIndexItems == nullptr)
      to.numberOfOriginalItemsNeededForInversePreProcess = to.internalLengthOfOriginalIndexItems = 0;
  }
  return true;
}

void ZQMatrixSequenceIndexVector::setCurrentLevelOfPreprocOperations(int level) {
  const long long numberOfInfos = static_cast<long long>(level) + 1;
  if (numberOfInfos >= lengthOfIndexVectorInfos) {
    const long long doubled = 2LL * internalLengthOfIndexVectorInfos;
    if (numberOfInfos > internalLengthOfIndexVectorInfos && !reserveInfos(doubled >= numberOfInfos ? doubled : numberOfInfos + 1))
      return;
    lengthOfIndexVectorInfos = static_cast<int>(numberOfInfos);
  }
  levelOfPreprocOperations = level;
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
  if (!resizeIntegerBlock(info->originalIndexItems, info->internalLengthOfOriginalIndexItems, capacity)) return false;
  info->internalLengthOfOriginalIndexItems = static_cast<int>(capacity);
  return true;
}

void ZQMatrixSequenceIndexVector::addOriginalSequenceItem(int item) {
  reserveInfos(1);
  if (levelOfPreprocOperations < 0 || indexVectorInfos == nullptr)
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
  // The items may be a stretch of the record's own block.
  if (count >= info->internalLengthOfOriginalIndexItems) {
    if (count > INT_MAX / 2) return;
    int* copy = copyOfIntegerBlock(items, count, 2 * count);
    if (copy == nullptr) return;
    systemFree(info->originalIndexItems);
    info->originalIndexItems = copy;
    info->internalLengthOfOriginalIndexItems = 2 * count;
  } else if (count > 0) {
    std::memmove(info->originalIndexItems, items, static_cast<size_t>(count) * sizeof(int));
  }
  info->numberOfOriginalItemsNeededForInversePreProcess = count;
}

// --- what the step was

int ZQMatrixSequenceIndexVector::getCoordDimensionAfterPreproc() const {
  const tagSequenceInfo* info = currentInfo();
  return info != nullptr ? info->coordDimensionAfterPreproc : -1;
}

void ZQMatrixSequenceIndexVector::setCoordDimensionAfterPreproc(int dimension) {
  tagSequenceInfo* info = currentInfo();
  if (info == nullptr || dimension < 0 || dimension > largestCoordDimension) return;
  if (resizeIntegerBlock(info->usedPreprocessingVector, info->coordDimensionAfterPreproc, dimension))
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
