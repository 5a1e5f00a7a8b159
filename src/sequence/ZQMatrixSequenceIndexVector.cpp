#include "sequence/ZQMatrixSequenceIndexVector.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "frame/ZQGrowth.h"

namespace {

constexpr int firstLengthOfIndexVector = 16;
constexpr int firstLengthOfGrowingBlock = 10;

/// Makes the array one of `length` integers: a copy, which may be of a stretch of the old one, and zeros. False, and nothing
/// changed, if there is no room.
bool replaceByCopy(zmatrix::ZQArray<int>& array, const int* values, int count, int length) {
  zmatrix::ZQArray<int> copy;
  if (!copy.resize(length)) return false;
  std::copy_n(values, count, copy.begin());
  array.swap(copy);
  return true;
}

}  // namespace

ZQMatrixSequenceIndexVector::ZQMatrixSequenceIndexVector() {
  static_cast<void>(indexVector.resize(firstLengthOfIndexVector));
  reserveInfos(1);
}

ZQMatrixSequenceIndexVector::~ZQMatrixSequenceIndexVector() {
  releaseInfos();
}

// --- the data

void ZQMatrixSequenceIndexVector::setIndexVector(const int* data, int length) {
  if (indexVector.empty() || length < 0 || (data == nullptr && length > 0)) return;
  if (length >= indexVector.count()) {
    if (!replaceByCopy(indexVector, data, length, length < INT_MAX ? length + 1 : INT_MAX)) return;
  } else if (length > 0) {
    std::memmove(indexVector.data(), data, static_cast<size_t>(length) * sizeof(int));
  }
  lengthOfIndexVector = length;
}

bool ZQMatrixSequenceIndexVector::setIndexVectorReference(int* data, int length) {
  if (indexVector.empty()) return false;
  lengthOfIndexVector = data == nullptr ? 0 : std::max(length, 0);
  indexVector.adopt(data, static_cast<size_t>(lengthOfIndexVector));
  return true;
}

void ZQMatrixSequenceIndexVector::removeAllSequenceItems() {
  if (indexVector.resize(firstLengthOfGrowingBlock)) lengthOfIndexVector = 0;
}

void ZQMatrixSequenceIndexVector::addSequenceItem(int item) {
  if (indexVector.empty()) {
    removeAllSequenceItems();
    if (indexVector.empty()) return;
  }
  if (lengthOfIndexVector >= indexVector.count()) {
    long long capacity = zmatrix::grownCapacity(indexVector.count());
    if (capacity <= lengthOfIndexVector) capacity *= 2;
    if (!indexVector.resize(capacity)) return;
  }
  indexVector[lengthOfIndexVector++] = item;
}

int ZQMatrixSequenceIndexVector::getIndexItemAtIndex(int index) const {
  return index >= 0 && index < lengthOfIndexVector ? indexVector[index] : 0;
}

// --- the types that a next step would apply

int ZQMatrixSequenceIndexVector::getApplyPreprocessingTypeAtIndex(int index) const {
  const bool isThere = index >= 0 && index <= coordDimension && index < applyPreprocessingTypeVector.count();
  return isThere ? applyPreprocessingTypeVector[index] : -1;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeAtIndex(int value, int index) {
  const bool isThere = index >= 0 && index <= coordDimension && index < applyPreprocessingTypeVector.count();
  if (isThere) applyPreprocessingTypeVector[index] = value;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeVector(const int* types, int count) {
  if (types == nullptr || count < 0 || count == INT_MAX) return;
  // One entry more, since an index of `count` is within the range of the accessors.
  if (replaceByCopy(applyPreprocessingTypeVector, types, count, count + 1)) coordDimension = count;
}

// --- copies of the whole object

void ZQMatrixSequenceIndexVector::setPropertiesFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  coordDimension = other->coordDimension;
  applyPreprocessingType = other->applyPreprocessingType;

  applyPreprocessingTypeVector.reset();
  static_cast<void>(applyPreprocessingTypeVector.copyFrom(other->applyPreprocessingTypeVector));

  // The data stay behind, but as many integers as the other has are readable here.
  static_cast<void>(indexVector.resize(other->indexVector.count()));
  lengthOfIndexVector = std::min(other->lengthOfIndexVector, indexVector.count());

  if (!copyInfosFrom(*other)) return;
  lengthOfIndexVectorInfos = other->lengthOfIndexVectorInfos;
  levelOfPreprocOperations = other->levelOfPreprocOperations;
}

void ZQMatrixSequenceIndexVector::copyFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  setPropertiesFrom(other);
  if (lengthOfIndexVector > 0) std::copy_n(other->indexVector.begin(), lengthOfIndexVector, indexVector.begin());
}

ZQMatrixSequenceIndexVector* createZQMatrixSequenceIndexVector() {
  return new (std::nothrow) ZQMatrixSequenceIndexVector;
}

void deleteZQMatrixSequenceIndexVector(ZQMatrixSequenceIndexVector* vector) {
  delete vector;
}
