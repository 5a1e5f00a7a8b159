// Where does a whole field fit? A shift is an offset by which every position of the field lands on a free slot. The search goes
// region by region, skips those whose filters rule out some of the field's distances, and tests 64 shifts at a time in the
// others. The field's own slots are lent to it while it runs, since they move too.
#pragma once

#include <climits>
#include <span>

#include "store/ZQFreeSlotIndex.h"

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
  static constexpr int mostTripledDistances = 5;
  static constexpr int mostFreeOfPackedRegion = 96;
  static constexpr int vainRegionsOfShortSearch = 16;
  static constexpr size_t wordsOfRegion = 64;
  static constexpr size_t wordsAtOnce = 16;
  static constexpr int regionLog2 = ZQPairFilter::slotsOfRegionLog2;

  bool up(long long& offset, long long limit, long long& found);
  bool down(long long& offset, long long limit, long long& found);
  uint64_t candidateRegions(size_t word) const;
  long long nextCandidate(long long region) const;
  long long previousCandidate(long long region) const;
  long long fitInRegion(long long region, long long lowest, long long highest, bool ascending);
  void findFits(long long region);
  void findFitsAtEnd(long long region);
  bool keepFits(const uint64_t* slots, uint64_t* kept) const;
  uint64_t fitsInWord(long long region, int word);
  void crossOff(size_t region);
  void crossOffTriples(size_t region);
  bool hasPair(size_t region, long long distance) const;
  void copyFree(size_t region, uint64_t* slots) const;
  uint64_t keepPairs(size_t region, long long distance, uint64_t* slots) const;

  ZQFreeSlotIndex& index;
  const std::span<const int> positions;
  long long anchor;
  int numberOfTracked;
  int numberOfTripled = 0;  // of these, the first ones that the filter of triples serves
  long long distances[mostTrackedDistances];
  int rows[mostTrackedDistances];  // of the filter, for the first distances; -1 for one that has none
  long long firstLent = 0;         // regions in which the field's own slots may serve
  long long lastLent = -1;
  long long regionOfFits = -1;  // the region that was looked at last, and what fits there
  int regionsInVain = 0;
  uint64_t wordsToTell = 0;   // a bit a word of the region: has a free slot and was not looked at
  uint64_t wordsOfFits = 0;   // a bit a word: fits somewhere, as `fits` tells
  bool hasFirstPair = false;  // some word looked at has a pair of the first distance
  uint64_t fits[wordsOfRegion];
};

}  // namespace zmatrix
