// For operations that fill many slots: looks up the state of the free-slot search once, since in a shared library each access to
// a thread-local variable is a function call.
#pragma once

#include "store/ZQFreeSlotSearch.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Until the end of its scope, the searches of the matrix use the state that was looked up here.
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
