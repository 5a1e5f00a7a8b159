// The state of the search for a free slot. It belongs to the calling thread: all its matrices and sub-matrices share it, and it
// outlives them, so that a matrix starts where the search of the one before ended. Every start is checked against the block
// before it is used.
#pragma once

namespace zmatrix {

struct ZQFreeSlotSearchState {
  int firstFree = 4;              ///< no search starts below this position; set by the periodic scan
  int numberOfFunctionCalls = 0;  ///< calls since the last periodic scan
  int lastOffset = 4;             ///< the last result under method 1
  int goodStartIndex = 4;         ///< low bound for the random start of method 0
};

/// The state of the calling thread.
ZQFreeSlotSearchState& freeSlotSearchState();

}  // namespace zmatrix
