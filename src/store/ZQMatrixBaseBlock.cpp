// The block: growth, shrinking, and the two places that empty a slot for good.
#include <cstring>

#include "frame/ZQMemory.h"
#include "store/ZQMatrixBase.h"

void ZQMatrixBase::pointEntriesAtBlock() {
  for (int id = 0; id < matrixFileHeader->getMaxNumberOfMatrices(); ++id) matrixDataEntryArray[id] = matrixData + id;
}

// Gives the block another size; new slots are empty, the records of slots above a smaller size stay with the slab until the end.
bool ZQMatrixBase::resizeBlock(int newSize) {
  auto** block =
      static_cast<ZQMatrixBaseElement**>(systemRealloc(matrixData, static_cast<size_t>(newSize) * sizeof(ZQMatrixBaseElement*)));
  if (block == nullptr) return false;
  matrixData = block;
  if (newSize > numberOfSlots) memset(block + numberOfSlots, 0, static_cast<size_t>(newSize - numberOfSlots) * sizeof *block);
  numberOfSlots = newSize;
  if (!freeSlots.resize(newSize)) return false;
  pointEntriesAtBlock();
  return true;
}

bool ZQMatrixBase::makeEmptyBlock(int size) {
  records.clear();
  ++releasedRecords;
  systemFree(matrixData);
  freeSlots.clear();
  numberOfSlots = 0;
  matrixData = static_cast<ZQMatrixBaseElement**>(systemCalloc(static_cast<size_t>(size), sizeof *matrixData));
  if (matrixData == nullptr) return false;
  numberOfSlots = size;
  if (!freeSlots.resize(size)) return false;
  pointEntriesAtBlock();
  return true;
}

int ZQMatrixBase::expandMatrixBlock(int minimalSize) {
  if (!hasBlock()) return 0;
  const int oldSize = matrixFileHeader->getMatrixBlockSize();
  matrixFileHeader->_setMatrixBlockSizeOld(oldSize);
  long long newSize = static_cast<long long>(zmatrix::growthFactor * (minimalSize < 1 ? oldSize : minimalSize));
  if (newSize >= zmatrix::largestBlockSize) {
    newSize = zmatrix::largestBlockSize;
    if (oldSize < zmatrix::largestBlockSize) matrixFileHeader->_setMatrixBlockSize(zmatrix::largestBlockSize);
    dbPrintf(0, "warning from expandMatrixBlock: Reallocation: blocksize reduced: %ld", static_cast<long>(newSize));
    if (oldSize >= zmatrix::largestBlockSize) {
      dbPrintf(0, "error from expandMatrixBlock: Reallocation of _matrixData failed _matrixBlockSize too large: %ld!",
               static_cast<long>(newSize));
      return 0;
    }
  }
  // A size that leaves no room for the roots can only come of a header or a caller that makes no sense: the block stays.
  if (newSize < matrixFileHeader->getMaxNumberOfMatrices()) return 0;
  matrixFileHeader->_setMatrixBlockSize(static_cast<int>(newSize));
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
  const int oldSize = matrixFileHeader->getMatrixBlockSize();
  // A positive size that leaves no room for the roots is refused: the block would not hold what the entries point at. So is one
  // that no growth would ever reach.
  if (size >= 1 && size < matrixFileHeader->getMaxNumberOfMatrices()) return;
  if (size > zmatrix::largestBlockSize) {
    dbPrintf(0, "error from setInitialMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(size));
    return;
  }
  matrixFileHeader->_setMatrixBlockSizeOld(oldSize);
  matrixFileHeader->_setMatrixBlockSize(size);
  if (size < 1 || size == oldSize) return;
  if (!resizeBlock(size)) {
    deInitMatrix();
    dbPrintf(0, "error from setInitialMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
             static_cast<long>(size));
    return;
  }
  dbPrintf(2, "Memory-block enlarged from %ld up to %ld\n", static_cast<long>(oldSize), static_cast<long>(size));
  matrixFileHeader->_setMatrixBlockSizeOld(size);
}

void ZQMatrixBase::destroyElementAt(int position) {
  records.release(matrixData[position]);
  matrixData[position] = nullptr;
  freeSlots.release(position);
  ++releasedRecords;
}

void ZQMatrixBase::clearMatrixElement(int position, int) {
  if (elementAt(position) == nullptr) return;
  destroyElementAt(position);
  getMatrixInfo()->decrementNumberOfMatrixElements();
}
