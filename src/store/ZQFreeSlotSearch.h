// Where the search for a free slot begins. This state is the thread's: all matrices and IDs that a thread uses share it, and it
// survives a matrix's deletion, so that a matrix starts where the last one's search left off. Every start is held against the
// block before it is used.
#pragma once

namespace zmatrix {

struct ZQFreeSlotSearchState {
  int firstFree = 4;              ///< no search starts below this position; raised by the periodic scan
  int numberOfFunctionCalls = 0;  ///< calls since the last periodic scan
  int lastOffset = 4;             ///< the last result under method 1
  int goodStartIndex = 4;         ///< low bound for the random start of method 0
};

/// The one state of the calling thread.
ZQFreeSlotSearchState& freeSlotSearchState();

}  // namespace zmatrix
