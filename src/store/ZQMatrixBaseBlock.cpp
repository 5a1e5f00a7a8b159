// The block: its memory, growth and shrinking, and the deletion of single elements.
#include <algorithm>

#include "frame/ZQMemory.h"
#include "store/ZQMatrixBase.h"

namespace {

constexpr int slotsProvidedAtOnce = 8192;  // 320 to 448 kB, which a second-level cache holds

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

// Called before a slot at or above endOfProvidedSlots_ is filled; the slots behind it are likely to be filled soon.
void ZQMatrixBase::provideSlots(int position) {
  const int count = std::min(numberOfSlots_ - position, slotsProvidedAtOnce);
  pages_.provide(recordIn(position), static_cast<size_t>(count) * sizeOfRecord_);
  endOfProvidedSlots_ = position + count;
}

// New slots are empty; elements above a smaller size are lost.
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
  // A size without room for the roots can only result from an invalid header or argument: the block is left as it is.
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
  // Refuses a positive size without room for the roots, to which the entries point, and one beyond the limit of growth.
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
