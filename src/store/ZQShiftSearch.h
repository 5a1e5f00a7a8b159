// Finds an offset at which every position of a field lands on a free slot. The search goes region by region, skips the regions
// where the filter rules out one of the field's distances, and finds all fits of another region at once. The caller lends the
// field's own slots while it runs, since they will be free after the move.
#pragma once

#include <climits>
#include <span>

#include "store/ZQFreeSlotIndex.h"
#include "store/ZQRegionFits.h"

namespace zmatrix {

class ZQShiftSearch {
 public:
  static constexpr long long none = LLONG_MAX;

  /// `positions` ascend; all of them must land on free slots. `own` are the field's slots, which the caller has lent.
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
  static constexpr int mostFreeToRuleOut = 512;  // with more free slots in a region, nearly all distances occur
  static constexpr int regionLog2 = ZQPairFilter::slotsOfRegionLog2;
  static constexpr long long noRegion = -1;

  /// The candidate regions on one side, from near to far. 64 are filtered at once.
  struct Candidates {
    long long region = noRegion;  // the nearest one
    long long word = 0;
    uint64_t regionsLeft = 0;  // the farther ones of this word of 64 regions
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
  void ruleOutDistances(size_t region);
  bool hasPair(size_t region, long long distance) const;
  bool reachesEnd(size_t region, long long distance) const {
    return (region + 1) * wordsOfRegion + static_cast<size_t>(distance >> 6) >= index_.numberOfWords_;
  }

  ZQFreeSlotIndex& index_;
  const std::span<const int> positions_;
  const long long anchor_;
  int numberOfTracked_;
  long long distances_[mostTrackedDistances];
  int rows_[mostTrackedDistances];  // of the filter, for these distances; -1 for one that has none
  long long firstLent_ = 0;         // first and last region whose fits can use the field's own slots
  long long lastLent_ = -1;
  long long regionOfFits_ = noRegion;  // the region that was searched last
  ZQRegionFits fits_;
};

}  // namespace zmatrix
