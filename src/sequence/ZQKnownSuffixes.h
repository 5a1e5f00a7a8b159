// The search for the longest known ending of a sequence, and what the last one found: its items, and where the path of each of
// its endings lies, shortest first. When one item is appended, as a generation does, every longer ending is one item down from a
// shorter one found before, so that no ending has to be walked from the root. What was found is valid until an element moves or
// is deleted.
#pragma once

#include <span>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// An ending of a sequence that can go on, in integers, and where its path ends.
struct KnownSuffix {
  int length = 0;
  int handle = -1;
};

class ZQKnownSuffixes {
 public:
  /// Goes from the shortest ending to longer ones, up to `longestSearched` integers. An unknown ending, or one that nothing
  /// follows, ends the search: it doesn't jump to a longer one. This is the only place that knows how endings are looked up.
  KnownSuffix findLongest(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);

 private:
  /// Where an ending stands.
  struct Place {
    long long fieldBegin;    ///< of the field of what follows it
    long long firstInField;  ///< position, or -1
    int position;            ///< of its last element
    bool isWritten;
  };
  using Places = std::span<Place>;

  bool isContinuedBy(const ZQMatrixBase& matrix, const int* sequence, int length) const;
  KnownSuffix oneItemFurther(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);
  KnownSuffix fromTheRoot(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched);
  void enterRoot(const ZQMatrixBase& matrix);
  bool addPlace(const ZQMatrixBase& matrix, int position);
  void remember(const ZQMatrixBase& matrix, const int* context, int length, bool isComplete);

  ZQArray<int> items_;
  ZQArray<Place> places_;     // of the root first, then of the endings, shortest first
  ZQArray<Place> newPlaces_;  // of the present search
  int root_ = -1;
  int coordinateDimension_ = 0;
  unsigned layoutVersion_ = 0;
};

}  // namespace zmatrix
