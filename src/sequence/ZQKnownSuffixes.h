// The search for the longest known ending of a sequence. It keeps the result of the last search: the items, and the place of the
// path of each ending, shortest first. When one item is appended, as in a generation, each ending is one item longer than an
// ending found before, so that no path has to be walked from the root. The result is valid until an element moves or is deleted.
#pragma once

#include <span>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// An ending of a sequence that has successors: its length in integers, and the handle of its last element.
struct KnownSuffix {
  int length = 0;
  int handle = -1;
};

class ZQKnownSuffixes {
 public:
  /// Searches from the shortest ending to longer ones, up to `longestSearched` integers. The search stops at the first ending
  /// that is unknown or has no successors, even if a longer one is known.
  KnownSuffix findLongest(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);

 private:
  /// The place of the path of an ending.
  struct Place {
    long long fieldBegin;    ///< begin of the field of its successors
    long long firstInField;  ///< position of the first element of that field, or -1
    int position;            ///< position of its last element
    bool isWritten;
  };
  using Places = std::span<Place>;

  bool isContinuedBy(const ZQMatrixBase& matrix, const int* sequence, int length) const;
  KnownSuffix oneItemFurther(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);
  KnownSuffix fromTheRoot(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);
  void enterRoot(const ZQMatrixBase& matrix);
  bool addPlace(const ZQMatrixBase& matrix, int position);
  void remember(const ZQMatrixBase& matrix, const int* context, int length, bool isComplete);

  ZQArray<int> items_;        // of the longest ending found
  ZQArray<Place> places_;     // of the root, then of the endings, shortest first
  ZQArray<Place> newPlaces_;  // of the current search
  int root_ = -1;             // matrix ID, or -1 if no result is kept
  int coordinateDimension_ = 0;
  unsigned layoutVersion_ = 0;
};

}  // namespace zmatrix
