// Where does a whole field fit? A shift is an offset by which every position of the field lands on a free slot. The search goes
// region by region, skips those where the filter rules out some of the field's distances, and finds all fits of the others at
// once. The field's own slots are lent to it while it runs, since they move too.
#pragma once

#include <climits>
#include <span>

#include "store/ZQFreeSlotIndex.h"
#include "store/ZQRegionFits.h"

namespace zmatrix {

class ZQShiftSearch {
 public:
  static constexpr long long none = LLONG_MAX;

  /// `positions` ascend; all of them must land on free slots. `own` are the slots of the field, lent to the search.
  ZQShiftSearch(ZQFreeSlotIndex& index, std::span<const int> positions, std::span<const int> own);

  /// The smallest fitting offset in `from` .. `to`, or none.
  long long nextFit(long long from, long long to);

  /// The largest fitting offset in `to` .. `from`, or none.
  long long previousFit(long long from, long long to);

  struct Nearest {
    long long left = none;   ///< distance of the nearest fit below 0, if no nearer one lies above
    long long right = none;  ///< distance of the nearest fit above 0, if none as near lies below
  };

  /// The fit of the smallest distance with offsets in `lowest` .. -1 and 1 .. `highest`; at equal distances the lower one counts.
  Nearest nearest(long long lowest, long long highest);

 private:
  static constexpr int mostTrackedDistances = 12;
  static constexpr int mostFreeToCrossOff = 512;  // where more slots of a region are free, all pairs occur
  static constexpr int regionLog2 = ZQPairFilter::slotsOfRegionLog2;
  static constexpr long long noRegion = -1;

  /// The regions that may serve on one side, from near to far. 64 are filtered at once.
  struct Candidates {
    long long region = noRegion;  // the nearest one
    long long word = 0;
    uint64_t regionsLeft = 0;  // of the word, behind the nearest one
  };

  bool isSingle() const { return positions_.size() == 1; }
  long long nextFreeOffset(long long from, long long to) const;
  long long previousFreeOffset(long long from, long long to) const;
  uint64_t candidateRegions(size_t word) const;
  Candidates candidatesFrom(long long region, long long last) const;
  Candidates candidatesBackFrom(long long region, long long first) const;
  void advance(Candidates& candidates, long long last) const;
  void goBack(Candidates& candidates, long long first) const;
  long long fitInRegion(long long region, long long lowest, long long highest, bool ascending);
  void findFits(size_t region);
  void findFitsAtEnd(size_t region);
  void crossOff(size_t region);
  bool hasPair(size_t region, long long distance) const;
  bool reachesEnd(size_t region, long long distance) const {
    return (region + 1) * wordsOfRegion + static_cast<size_t>(distance >> 6) >= index_.numberOfWords_;
  }

  ZQFreeSlotIndex& index_;
  const std::span<const int> positions_;
  const long long anchor_;
  int numberOfTracked_;
  long long distances_[mostTrackedDistances];
  int rows_[mostTrackedDistances];  // of the filter, for the first distances; -1 for one that has none
  long long firstLent_ = 0;         // regions in which the field's own slots may serve
  long long lastLent_ = -1;
  long long regionOfFits_ = noRegion;  // the region that was looked at last
  ZQRegionFits fits_;
};

}  // namespace zmatrix
