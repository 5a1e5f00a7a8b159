// The search for free slots. Its rule is a slot-by-slot walk to both sides of a start; the index of free slots finds the same
// slot without walking. The walk's limits decide which slot is found, so they are reproduced here: at one end of the block the
// walk goes on in the other direction only; at both ends the block grows, and the walk goes on to the right, at the distance that
// it has reached.
#include <algorithm>
#include <cstdlib>

#include "store/ZQFreeSlotSearch.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQShiftSearch.h"

namespace {

constexpr int callsBetweenPeriodicScans = 1024;
constexpr int lowestStart = 4;
constexpr double randomRange = 2147483647.0;

void reportFailedGrowth() {
  dbPrintf(0, "error from findFreeFieldBegin: Could not expand _matrixBlockSize , Search failed\n");
}

}  // namespace

// Not inlined, so that the thread-local variable is looked up once for all members.
[[gnu::noinline]] zmatrix::ZQFreeSlotSearchState& zmatrix::freeSlotSearchState() {
  static constinit thread_local zmatrix::ZQFreeSlotSearchState state;
  static_assert(lowestStart == zmatrix::ZQFreeSlotSearchState().firstFree);
  return state;
}

int ZQMatrixBase::findNearestFreeMatrixElement(int memorySearchMethod) {
  zmatrix::ZQFreeSlotSearchState& state = searchState_ != nullptr ? *searchState_ : zmatrix::freeSlotSearchState();
  const int low = matrixFileHeader_->getMaxNumberOfMatrices();
  state.lastOffset = std::max(state.lastOffset, low);
  state.goodStartIndex = std::max(state.goodStartIndex, low);
  switch (memorySearchMethod) {
    case 0: {
      const double fraction = static_cast<double>(matrixFileHeader_->getSystemRandomValue()) / randomRange;
      const double width = static_cast<double>(matrixFileHeader_->getMatrixBlockSize()) - state.goodStartIndex;
      return findIndexOfNearestFreeElement(state, state.goodStartIndex + static_cast<int>(width * fraction),
                                           &state.goodStartIndex);
    }
    case 1:
      state.lastOffset = findIndexOfNearestFreeElement(state, state.lastOffset, &state.goodStartIndex);
      return state.lastOffset;
    case 2: {
      const double fraction = static_cast<double>(matrixFileHeader_->getSystemRandomValue()) / randomRange;
      const int start = std::max(static_cast<int>(matrixFileHeader_->getMaximalStack() * fraction), low);
      return findIndexOfNearestFreeElement(state, start, &state.goodStartIndex);
    }
    case 3:
      return findIndexOfNearestFreeElement(state, -1, &state.goodStartIndex);
    default:
      return 0;
  }
}

int ZQMatrixBase::findIndexOfNearestFreeElement(int start, int* goodStart) {
  return findIndexOfNearestFreeElement(zmatrix::freeSlotSearchState(), start, goodStart);
}

int ZQMatrixBase::findIndexOfNearestFreeElement(zmatrix::ZQFreeSlotSearchState& state, int start, int* goodStart) {
  if (!hasBlock()) return -1;
  const int low = matrixFileHeader_->getMaxNumberOfMatrices();
  state.firstFree = std::max(state.firstFree, low);
  const int calls = state.numberOfFunctionCalls++;
  if (start == -1 || calls >= callsBetweenPeriodicScans) {
    int skip = 0;
    const int method = getMatrixInfo()->getMemorySearchMethod();
    if (method == 2 || method == 3) skip = 1;
    if (method == 0) skip = static_cast<int>(matrixFileHeader_->getMatrixBlockSize() * 0.01);
    if (method == 1) skip = static_cast<int>(matrixFileHeader_->getMaximalStack() * 0.01);
    state.numberOfFunctionCalls = 0;
    state.firstFree = low;
    int found = freeSlots_.nthFree(low, skip);
    if (found < 0) {
      if (!expandMatrixBlock(0)) {
        reportFailedGrowth();
        *goodStart = state.firstFree = low;
        return -1;
      }
      found = freeSlots_.nextFree(matrixFileHeader_->getMatrixBlockSizeOld());
    }
    if (found >= 0) {
      state.firstFree = *goodStart = found;
      return found;
    }
  }
  const int fillLimit = static_cast<int>(0.9 * matrixFileHeader_->getMatrixBlockSize());
  if (start < -1 || start >= numberOfSlots_) start = state.firstFree;
  if (start < low) return -1;
  const int centre = std::max(start, state.firstFree);
  if (centre < numberOfSlots_ && freeSlots_.isFree(centre)) {
    *goodStart = state.firstFree;
    return centre;
  }
  if (getMatrixInfo()->getNumberOfMatrixElements() > fillLimit && !expandMatrixBlock(0)) {
    reportFailedGrowth();
    *goodStart = 0;
    return -1;
  }
  const int found = searchFrom(centre);
  if (found < 0) {
    reportFailedGrowth();
    *goodStart = 0;
    return -1;
  }
  *goodStart = state.firstFree;
  return found;
}

// The first free slot of the walk -1, +1, -2, +2 ... around `centre`. The walk's left end is slot 0: roots' slots are never free.
int ZQMatrixBase::searchFrom(int centre) {
  if (const int near = freeSlots_.nearestWithinWord(centre); near != zmatrix::ZQFreeSlotIndex::none) return near;
  long long offset = 0;
  bool leftLimit = false;
  bool rightLimit = centre >= numberOfSlots_;
  for (;;) {
    if (leftLimit && rightLimit) {
      if (!expandMatrixBlock(0)) return -1;
      rightLimit = false;
    }
    if (leftLimit) {
      const long long from = centre + std::llabs(offset) + 1;
      const int found = freeSlots_.nextFree(from);
      if (found >= 0) return found;
      offset = std::max(from, static_cast<long long>(numberOfSlots_)) - centre;
      rightLimit = true;
    } else if (rightLimit) {
      const int found = freeSlots_.previousFree(centre - (std::llabs(offset) + 1));
      if (found >= 0) return found;
      offset = -std::max(std::llabs(offset) + 1, static_cast<long long>(centre) + 1);
      leftLimit = true;
    } else {
      const int right = freeSlots_.nextFree(static_cast<long long>(centre) + 1);
      const int left = freeSlots_.previousFree(centre - 1, right >= 0 ? 2LL * centre - right : 0);
      // On the left only slots as near as the one found on the right are searched: farther ones, and the left end, can't be
      // first.
      const long long distanceToLeftEvent = left >= 0 ? centre - left : static_cast<long long>(centre) + 1;
      const long long distanceToRightEvent = (right >= 0 ? right : numberOfSlots_) - static_cast<long long>(centre);
      if (distanceToLeftEvent <= distanceToRightEvent) {
        if (left >= 0) return left;
        offset = -distanceToLeftEvent;
        leftLimit = true;
      } else {
        if (right >= 0) return right;
        offset = distanceToRightEvent;
        rightLimit = true;
      }
    }
  }
}

int ZQMatrixBase::searchShift(int memorySearchMethod, std::span<const int> positions, int fieldBegin) {
  const int low = matrixFileHeader_->getMaxNumberOfMatrices();
  long long offset = 0;
  bool leftLimit = false;
  bool rightLimit = false;
  for (;;) {
    if (leftLimit && rightLimit) {
      if (!expandMatrixBlock(0)) {
        dbPrintf(0, "internal error from MoveField: _matrixBlockSize too small, *fieldBegin, iOffset: %ld %ld\n",
                 static_cast<long>(fieldBegin), static_cast<long>(offset));
        return 0;
      }
      rightLimit = false;
    }
    const long long lowest = static_cast<long long>(low) - positions.front();
    const long long highest = static_cast<long long>(numberOfSlots_) - 1 - positions.back();
    zmatrix::ZQShiftSearch search(freeSlots_, positions, positionsOfField_);
    if (memorySearchMethod == 3) {
      offset = std::llabs(offset);
      leftLimit = true;
    }
    if (leftLimit) {
      const long long from = offset < 0 ? -offset : offset + 1;
      const long long found = search.nextFit(std::max(from, lowest), highest);
      if (found != zmatrix::ZQShiftSearch::none) return static_cast<int>(found);
      offset = std::max(from, highest + 1);
      rightLimit = true;
      continue;
    }
    if (memorySearchMethod == 2 || rightLimit) {
      const long long from = offset > 0 ? -offset : offset - 1;
      const long long found = search.previousFit(std::min(from, highest), lowest);
      if (found != zmatrix::ZQShiftSearch::none) return static_cast<int>(found);
      offset = std::min(from, lowest - 1);
      leftLimit = true;
      rightLimit = rightLimit || from > highest;
      continue;
    }
    // Offsets -1, +1, -2, +2 ... up to the first fit or the first offset that leaves the block.
    const long long outsideLeft = lowest > -1 || highest < -1 ? 1 : 1 - lowest;
    const long long outsideRight = lowest > 1 || highest < 1 ? 1 : highest + 1;
    const auto nearest = search.nearest(outsideLeft > 1 ? lowest : 0, outsideRight > 1 ? highest : 0);
    const long long leftEvent = std::min(nearest.left, outsideLeft);
    const long long rightEvent = std::min(nearest.right, outsideRight);
    if (leftEvent <= rightEvent) {
      offset = -leftEvent;
      if (nearest.left == leftEvent) return static_cast<int>(offset);
    } else {
      offset = rightEvent;
      if (nearest.right == rightEvent) return static_cast<int>(offset);
    }
    if (offset < lowest) leftLimit = true;
    if (offset > highest) rightLimit = true;
  }
}
