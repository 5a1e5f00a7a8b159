#include "sequence/ZQMatrixSequenceIndexVector.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "frame/ZQGrowth.h"

namespace {

constexpr int firstLengthOfIndexVector = 16;
constexpr int firstLengthOfGrowingBlock = 10;

/// Replaces the array by one of `length` integers: a copy of `count` values, which may lie in the old array, then zeros. False,
/// with nothing changed, if memory runs out.
bool replaceByCopy(zmatrix::ZQArray<int>& array, const int* values, int count, int length) {
  zmatrix::ZQArray<int> copy;
  if (!copy.resize(length)) return false;
  std::copy_n(values, count, copy.begin());
  array.swap(copy);
  return true;
}

}  // namespace

ZQMatrixSequenceIndexVector::ZQMatrixSequenceIndexVector() {
  static_cast<void>(indexVector_.resize(firstLengthOfIndexVector));
  reserveInfos(1);
}

ZQMatrixSequenceIndexVector::~ZQMatrixSequenceIndexVector() {
  releaseInfos();
}

// --- the data

void ZQMatrixSequenceIndexVector::setIndexVector(const int* data, int length) {
  if (indexVector_.empty() || length < 0 || (data == nullptr && length > 0)) return;
  if (length >= indexVector_.count()) {
    if (!replaceByCopy(indexVector_, data, length, length < INT_MAX ? length + 1 : INT_MAX)) return;
  } else if (length > 0) {
    std::memmove(indexVector_.data(), data, static_cast<size_t>(length) * sizeof(int));
  }
  lengthOfIndexVector_ = length;
}

bool ZQMatrixSequenceIndexVector::setIndexVectorReference(int* data, int length) {
  if (indexVector_.empty()) return false;
  lengthOfIndexVector_ = data == nullptr ? 0 : std::max(length, 0);
  indexVector_.adopt(data, static_cast<size_t>(lengthOfIndexVector_));
  return true;
}

void ZQMatrixSequenceIndexVector::removeAllSequenceItems() {
  if (indexVector_.resize(firstLengthOfGrowingBlock)) lengthOfIndexVector_ = 0;
}

void ZQMatrixSequenceIndexVector::addSequenceItem(int item) {
  if (indexVector_.empty()) {
    removeAllSequenceItems();
    if (indexVector_.empty()) return;
  }
  if (lengthOfIndexVector_ >= indexVector_.count()) {
    long long capacity = zmatrix::grownCapacity(indexVector_.count());
    if (capacity <= lengthOfIndexVector_) capacity *= 2;
    if (!indexVector_.resize(capacity)) return;
  }
  indexVector_[lengthOfIndexVector_++] = item;
}

int ZQMatrixSequenceIndexVector::getIndexItemAtIndex(int index) const {
  return index >= 0 && index < lengthOfIndexVector_ ? indexVector_[index] : 0;
}

// --- the types that the next step will apply

int ZQMatrixSequenceIndexVector::getApplyPreprocessingTypeAtIndex(int index) const {
  const bool isThere = index >= 0 && index <= coordDimension_ && index < applyPreprocessingTypeVector_.count();
  return isThere ? applyPreprocessingTypeVector_[index] : -1;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeAtIndex(int value, int index) {
  const bool isThere = index >= 0 && index <= coordDimension_ && index < applyPreprocessingTypeVector_.count();
  if (isThere) applyPreprocessingTypeVector_[index] = value;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeVector(const int* types, int count) {
  if (types == nullptr || count < 0 || count == INT_MAX) return;
  // One entry more, since the accessors accept an index of `count`.
  if (replaceByCopy(applyPreprocessingTypeVector_, types, count, count + 1)) coordDimension_ = count;
}

// --- copying

void ZQMatrixSequenceIndexVector::setPropertiesFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  coordDimension_ = other->coordDimension_;
  applyPreprocessingType_ = other->applyPreprocessingType_;

  applyPreprocessingTypeVector_.reset();
  static_cast<void>(applyPreprocessingTypeVector_.copyFrom(other->applyPreprocessingTypeVector_));

  // The data are not copied, but the length is, so as many integers must be readable.
  static_cast<void>(indexVector_.resize(other->indexVector_.count()));
  lengthOfIndexVector_ = std::min(other->lengthOfIndexVector_, indexVector_.count());

  if (!copyInfosFrom(*other)) return;
  lengthOfIndexVectorInfos_ = other->lengthOfIndexVectorInfos_;
  levelOfPreprocOperations_ = other->levelOfPreprocOperations_;
}

void ZQMatrixSequenceIndexVector::copyFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  setPropertiesFrom(other);
  if (lengthOfIndexVector_ > 0) std::copy_n(other->indexVector_.begin(), lengthOfIndexVector_, indexVector_.begin());
}

ZQMatrixSequenceIndexVector* createZQMatrixSequenceIndexVector() {
  return new (std::nothrow) ZQMatrixSequenceIndexVector;
}

void deleteZQMatrixSequenceIndexVector(ZQMatrixSequenceIndexVector* vector) {
  delete vector;
}
