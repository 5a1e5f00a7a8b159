// For operations that fill many slots: the state of the thread's search is looked up once, since a thread's variables are found
// by a call where the library is a shared object.
#pragma once

#include "store/ZQFreeSlotSearch.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Lets the searches of a matrix take the state of the calling thread from here until the end of a scope.
class HeldFreeSlotSearch {
 public:
  explicit HeldFreeSlotSearch(ZQMatrixBase& matrix) : held_(matrix.searchState_), before_(held_) {
    held_ = &freeSlotSearchState();
  }
  ~HeldFreeSlotSearch() { held_ = before_; }
  HeldFreeSlotSearch(const HeldFreeSlotSearch&) = delete;
  HeldFreeSlotSearch& operator=(const HeldFreeSlotSearch&) = delete;

 private:
  ZQFreeSlotSearchState*& held_;
  ZQFreeSlotSearchState* const before_;
};

}  // namespace zmatrix
