// The block: its memory, growth, shrinking, and the two places that empty a slot for good.
#include <algorithm>

#include "frame/ZQMemory.h"
#include "store/ZQMatrixBase.h"

namespace {

constexpr int slotsProvidedAtOnce = 8192;  // what the second level of a cache holds

}  // namespace

bool ZQMatrixBase::resizeMemory(int newNumberOfSlots) {
  const auto newSlots = static_cast<size_t>(newNumberOfSlots);
  if (newSlots > SIZE_MAX / sizeOfRecord_ || !memory_.resize(newSlots * sizeOfRecord_)) return false;
  slots_ = memory_.getBegin();
  numberOfSlots_ = newNumberOfSlots;
  endOfProvidedSlots_ = std::min(endOfProvidedSlots_, numberOfSlots_);
  pages_.beginWithSmallPages(recordIn(endOfProvidedSlots_),
                             static_cast<size_t>(numberOfSlots_ - endOfProvidedSlots_) * sizeOfRecord_);
  return true;
}

void ZQMatrixBase::releaseMemory() {
  memory_.clear();
  slots_ = nullptr;
  numberOfSlots_ = endOfProvidedSlots_ = 0;
  freeSlots_.clear();
  pointers_.reset();
  versionOfPointers_ = {};
  ++releasedRecords_;
}

// A slot above all others is about to be filled, and those behind it will be soon.
void ZQMatrixBase::provideSlots(int position) {
  const int count = std::min(numberOfSlots_ - position, slotsProvidedAtOnce);
  pages_.provide(recordIn(position), static_cast<size_t>(count) * sizeOfRecord_);
  endOfProvidedSlots_ = position + count;
}

// Gives the block another size; new slots are empty, what stands in slots above a smaller size is gone.
bool ZQMatrixBase::resizeBlock(int newSize) {
  return resizeMemory(newSize) && freeSlots_.resize(newSize);
}

bool ZQMatrixBase::makeEmptyBlock(int size) {
  releaseMemory();
  return resizeMemory(size) && freeSlots_.resize(size);
}

int ZQMatrixBase::expandMatrixBlock(int minimalSize) {
  if (!hasBlock()) return 0;
  const int oldSize = matrixFileHeader_->getMatrixBlockSize();
  matrixFileHeader_->_setMatrixBlockSizeOld(oldSize);
  long long newSize = static_cast<long long>(zmatrix::growthFactor * (minimalSize < 1 ? oldSize : minimalSize));
  if (newSize >= zmatrix::largestBlockSize) {
    newSize = zmatrix::largestBlockSize;
    if (oldSize < zmatrix::largestBlockSize) matrixFileHeader_->_setMatrixBlockSize(zmatrix::largestBlockSize);
    dbPrintf(0, "warning from expandMatrixBlock: Reallocation: blocksize reduced: %ld", static_cast<long>(newSize));
    if (oldSize >= zmatrix::largestBlockSize) {
      dbPrintf(0, "error from expandMatrixBlock: Reallocation of _matrixData failed _matrixBlockSize too large: %ld!",
               static_cast<long>(newSize));
      return 0;
    }
  }
  // A size that leaves no room for the roots can only come of a header or a caller that makes no sense: the block stays.
  if (newSize < matrixFileHeader_->getMaxNumberOfMatrices()) return 0;
  matrixFileHeader_->_setMatrixBlockSize(static_cast<int>(newSize));
  if (!resizeBlock(static_cast<int>(newSize))) {
    deInitMatrix();
    dbPrintf(0, "error from expandMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(newSize));
    return 0;
  }
  dbPrintf(1, "Memory-block enlarged from %ld up to %ld\n", static_cast<long>(oldSize), static_cast<long>(newSize));
  return 1;
}

void ZQMatrixBase::setInitialMatrixBlocksize(int size) {
  const int oldSize = matrixFileHeader_->getMatrixBlockSize();
  // A positive size that leaves no room for the roots is refused: the block would not hold what the entries point at. So is one
  // that no growth would ever reach.
  if (size >= 1 && size < matrixFileHeader_->getMaxNumberOfMatrices()) return;
  if (size > zmatrix::largestBlockSize) {
    dbPrintf(0, "error from setInitialMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(size));
    return;
  }
  matrixFileHeader_->_setMatrixBlockSizeOld(oldSize);
  matrixFileHeader_->_setMatrixBlockSize(size);
  if (size < 1 || size == oldSize) return;
  if (!resizeBlock(size)) {
    deInitMatrix();
    dbPrintf(0, "error from setInitialMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(size));
    return;
  }
  dbPrintf(2, "Memory-block enlarged from %ld up to %ld\n", static_cast<long>(oldSize), static_cast<long>(size));
  matrixFileHeader_->_setMatrixBlockSizeOld(size);
}

void ZQMatrixBase::destroyElementAt(int position) {
  emptySlot(position);
  freeSlots_.release(position);
  ++releasedRecords_;
}

void ZQMatrixBase::clearMatrixElement(int position, int) {
  if (elementAt(position) == nullptr) return;
  destroyElementAt(position);
  getMatrixInfo()->decrementNumberOfMatrixElements();
}
