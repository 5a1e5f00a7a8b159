#include "sequence/ZQMatrixSequenceIndexVector.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"
#include "sequence/ZQIntegerBlock.h"

using zmatrix::copyOfIntegerBlock;
using zmatrix::resizeIntegerBlock;

namespace {

constexpr int firstLengthOfIndexVector = 16;
constexpr int firstLengthOfGrowingBlock = 10;

}  // namespace

ZQMatrixSequenceIndexVector::ZQMatrixSequenceIndexVector() {
  if (resizeIntegerBlock(indexVector, 0, firstLengthOfIndexVector)) internalLengthOfIndexVector = firstLengthOfIndexVector;
  reserveInfos(1);
}

ZQMatrixSequenceIndexVector::~ZQMatrixSequenceIndexVector() {
  systemFree(indexVector);
  systemFree(applyPreprocessingTypeVector);
  releaseInfos();
}

// --- the data

void ZQMatrixSequenceIndexVector::setIndexVector(const int* data, int length) {
  if (indexVector == nullptr || internalLengthOfIndexVector < 1) return;
  if (length < 0 || (data == nullptr && length > 0)) return;
  if (length >= internalLengthOfIndexVector) {
    // A new block, since the data may be a stretch of the old one.
    const int capacity = length < INT_MAX ? length + 1 : INT_MAX;
    int* block = copyOfIntegerBlock(data, length, capacity);
    if (block == nullptr) return;
    systemFree(indexVector);
    indexVector = block;
    internalLengthOfIndexVector = capacity;
  } else if (length > 0) {
    std::memmove(indexVector, data, static_cast<size_t>(length) * sizeof(int));
  }
  lengthOfIndexVector = length;
}

bool ZQMatrixSequenceIndexVector::setIndexVectorReference(int* data, int length) {
  if (indexVector == nullptr || internalLengthOfIndexVector < 1) return false;
  if (data != indexVector) systemFree(indexVector);
  indexVector = data;
  lengthOfIndexVector = data == nullptr ? 0 : std::max(length, 0);
  internalLengthOfIndexVector = lengthOfIndexVector;
  return true;
}

void ZQMatrixSequenceIndexVector::removeAllSequenceItems() {
  if (!resizeIntegerBlock(indexVector, internalLengthOfIndexVector, firstLengthOfGrowingBlock)) return;
  lengthOfIndexVector = 0;
  internalLengthOfIndexVector = firstLengthOfGrowingBlock;
}

void ZQMatrixSequenceIndexVector::addSequenceItem(int item) {
  if (indexVector == nullptr || internalLengthOfIndexVector < 1) {
    removeAllSequenceItems();
    if (indexVector == nullptr) return;
  }
  if (lengthOfIndexVector >= internalLengthOfIndexVector) {
    long long capacity = zmatrix::grownCapacity(internalLengthOfIndexVector);
    if (capacity <= lengthOfIndexVector) capacity *= 2;
    if (!resizeIntegerBlock(indexVector, internalLengthOfIndexVector, capacity)) return;
    internalLengthOfIndexVector = static_cast<int>(capacity);
  }
  indexVector[lengthOfIndexVector++] = item;
}

int ZQMatrixSequenceIndexVector::getIndexItemAtIndex(int index) const {
  return index >= 0 && index < lengthOfIndexVector ? indexVector[index] : 0;
}

// --- the types that a next step would apply

int ZQMatrixSequenceIndexVector::getApplyPreprocessingTypeAtIndex(int index) const {
  const bool isThere = index >= 0 && index <= coordDimension && index < internalLengthOfTypeVector;
  return isThere ? applyPreprocessingTypeVector[index] : -1;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeAtIndex(int value, int index) {
  const bool isThere = index >= 0 && index <= coordDimension && index < internalLengthOfTypeVector;
  if (isThere) applyPreprocessingTypeVector[index] = value;
}

void ZQMatrixSequenceIndexVector::setApplyPreprocessingTypeVector(const int* types, int count) {
  if (types == nullptr || count < 0 || count == INT_MAX) return;
  // One entry more, since an index of `count` is within the range of the accessors.
  int* copy = copyOfIntegerBlock(types, count, count + 1);
  if (copy == nullptr) return;
  systemFree(applyPreprocessingTypeVector);
  applyPreprocessingTypeVector = copy;
  internalLengthOfTypeVector = count + 1;
  coordDimension = count;
}

// --- copies of the whole object

void ZQMatrixSequenceIndexVector::setPropertiesFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  coordDimension = other->coordDimension;
  applyPreprocessingType = other->applyPreprocessingType;

  systemFree(applyPreprocessingTypeVector);
  const int numberOfTypes = other->internalLengthOfTypeVector;
  applyPreprocessingTypeVector = copyOfIntegerBlock(other->applyPreprocessingTypeVector, numberOfTypes, numberOfTypes);
  internalLengthOfTypeVector = applyPreprocessingTypeVector != nullptr ? numberOfTypes : 0;

  // The data stay behind, but as many integers as the other has are readable here.
  if (resizeIntegerBlock(indexVector, internalLengthOfIndexVector, other->internalLengthOfIndexVector))
    internalLengthOfIndexVector = other->internalLengthOfIndexVector;
  lengthOfIndexVector = std::min(other->lengthOfIndexVector, internalLengthOfIndexVector);

  if (!copyInfosFrom(*other)) return;
  lengthOfIndexVectorInfos = other->lengthOfIndexVectorInfos;
  levelOfPreprocOperations = other->levelOfPreprocOperations;
}

void ZQMatrixSequenceIndexVector::copyFrom(const ZQMatrixSequenceIndexVector* other) {
  if (other == nullptr || other == this) return;
  setPropertiesFrom(other);
  if (lengthOfIndexVector > 0) std::copy_n(other->indexVector, lengthOfIndexVector, indexVector);
}

ZQMatrixSequenceIndexVector* createZQMatrixSequenceIndexVector() {
  return new (std::nothrow) ZQMatrixSequenceIndexVector;
}

void deleteZQMatrixSequenceIndexVector(ZQMatrixSequenceIndexVector* vector) {
  delete vector;
}
