// Which slots of the block are free: one bit a slot, summaries above it, a count for each region of 4096 slots, and the filter
// of the distances that a region can serve. It answers the three questions of placement without walking the packed block: the
// nearest free slot, the n-th free slot, and the nearest shift at which a whole field fits. Only the places that fill or empty a
// slot keep it.
#pragma once

#include <bit>
#include <cstdint>

#include "store/ZQPairFilter.h"

namespace zmatrix {

class ZQFreeSlotIndex {
 public:
  static constexpr int none = -1;

  /// Sets the number of slots. New slots are free, slots above a smaller size are forgotten. False if there is no room.
  [[nodiscard]] bool resize(int newNumberOfSlots) noexcept;

  void clear();

  int getNumberOfSlots() const { return numberOfSlots_; }

  bool isFree(int slot) const { return (freeSlots_[static_cast<size_t>(slot) >> 6] >> (slot & 63)) & 1; }

  /// Marks a slot as occupied; an occupied one stays so.
  void fill(int slot);

  /// Marks those of 64 slots as occupied whose bit is set: bit i is the slot 64 * word + i.
  void fillWord(size_t word, uint64_t occupied);

  /// Marks a slot as free; a free one stays so.
  void release(int slot);

  /// Marks a slot as free for the time of one search: the filter isn't told. It must be filled again.
  void lend(int slot) {
    if (!isFree(slot)) markFree(slot);
  }

  /// The lowest free slot at or above `from`, or none.
  int nextFree(long long from) const;

  /// The highest free slot at or below `from`, or none.
  int previousFree(long long from) const;

  /// The highest free slot in `lowest` .. `from`, or none; it doesn't look below `lowest`.
  int previousFree(long long from, long long lowest) const;

  /// Occupied slots among 64: bit i is the slot 64 * word + i.
  uint64_t occupiedInWord(int word) const { return ~freeSlots_[static_cast<size_t>(word)]; }

  /// The free slot nearest to `centre` but not `centre` itself, at equal distances the lower one, if it is one of the 64 on
  /// either side and these all lie in the block; else none.
  int nearestWithinWord(int centre) const {
    if (centre < 64 || centre >= numberOfSlots_ - 64) return none;
    const int below = std::countl_zero(slotsFrom(centre - 64LL)) + 1;
    const int above = std::countr_zero(slotsFrom(centre + 1LL)) + 1;
    if (below > 64 && above > 64) return none;
    return below <= above ? centre - below : centre + above;
  }

  /// The free slot at or above `from` that comes after `skip` others, or none.
  int nthFree(int from, long long skip) const;

 private:
  friend class ZQShiftSearch;

  static constexpr int regionLog2 = ZQPairFilter::slotsOfRegionLog2;
  static constexpr int manyFreeOfRegion = 256;  // of 4096: enough for a pair of each distance, which is then told at once

  /// 64 slots from `slot` on, which need not be a multiple of 64; slots behind the end read as occupied.
  uint64_t slotsFrom(long long slot) const {
    const size_t word = static_cast<size_t>(slot >> 6);
    if (word >= numberOfWords_) return 0;
    const int shift = static_cast<int>(slot & 63);
    return shift == 0 ? freeSlots_[word] : (freeSlots_[word] >> shift) | (freeSlots_[word + 1] << (64 - shift));
  }

  void markFree(int slot);
  /// True if the summaries tell of a word what it holds.
  bool isInStep(size_t word) const {
    const size_t region = word >> 6;
    return ((wordsWithFree_[region] >> (word & 63)) & 1) == (freeSlots_[word] != 0) &&
           ((regionsWithFree_[region >> 6] >> (region & 63)) & 1) == (wordsWithFree_[region] != 0) &&
           (numberOfFreeInRegion_[region] != 0) == (wordsWithFree_[region] != 0);
  }
  void admitPairsOf(int slot);

  int numberOfSlots_ = 0;
  size_t numberOfWords_ = 0;
  ZQArray<uint64_t> freeSlots_;        // a bit a slot, and two words of none behind the end
  ZQArray<uint64_t> wordsWithFree_;    // a bit a word of freeSlots: one entry is one region
  ZQArray<uint64_t> regionsWithFree_;  // a bit a region
  ZQArray<uint16_t> numberOfFreeInRegion_;
  ZQPairFilter pairs_;
};

}  // namespace zmatrix
