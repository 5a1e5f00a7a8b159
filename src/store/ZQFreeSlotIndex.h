// The index of free slots: a bit per slot, per word of 64 slots and per region of 4096, a count per region, and a filter of the
// distances between free slots. With it the nearest free slot, the n-th free slot and the nearest offset at which a whole field
// fits (ZQShiftSearch) are found without reading the block. Code that fills or empties a slot must update the index.
#pragma once

#include <bit>
#include <cstdint>

#include "store/ZQPairFilter.h"

namespace zmatrix {

class ZQFreeSlotIndex {
 public:
  static constexpr int none = -1;

  /// Sets the number of slots. New slots are free, slots above a smaller size are removed. False if memory has run out.
  [[nodiscard]] bool resize(int newNumberOfSlots) noexcept;

  void clear();

  int getNumberOfSlots() const { return numberOfSlots_; }

  bool isFree(int slot) const { return (freeSlots_[static_cast<size_t>(slot) >> 6] >> (slot & 63)) & 1; }

  /// Marks a slot as occupied.
  void fill(int slot);

  /// Marks those of 64 slots as occupied whose bit is set: bit i is the slot 64 * word + i.
  void fillWord(size_t word, uint64_t occupied);

  /// Marks a slot as free.
  void release(int slot);

  /// Marks a slot as free for one search, without updating the filter. The caller must fill the slot again.
  void lend(int slot) {
    if (!isFree(slot)) markFree(slot);
  }

  /// The lowest free slot at or above `from`, or none.
  int nextFree(long long from) const;

  /// The highest free slot at or below `from`, or none.
  int previousFree(long long from) const;

  /// The highest free slot in `lowest` .. `from`, or none.
  int previousFree(long long from, long long lowest) const;

  /// Occupied slots among 64: bit i is the slot 64 * word + i.
  uint64_t occupiedInWord(int word) const { return ~freeSlots_[static_cast<size_t>(word)]; }

  /// The free slot nearest to `centre` without `centre` itself, at equal distances the lower one. Looks at the 64 slots on either
  /// side; none if all are occupied, or if some lie outside the block.
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
  // With so many free slots of 4096, pairs of every distance are likely: all bits of the region's filter are set at once.
  static constexpr int freeSlotsWithAllPairs = 256;

  /// The free slots among the 64 from `slot` on, which need not be a multiple of 64; slots behind the end read as occupied.
  uint64_t slotsFrom(long long slot) const {
    const size_t word = static_cast<size_t>(slot >> 6);
    if (word >= numberOfWords_) return 0;
    const int shift = static_cast<int>(slot & 63);
    return shift == 0 ? freeSlots_[word] : (freeSlots_[word] >> shift) | (freeSlots_[word + 1] << (64 - shift));
  }

  void markFree(int slot);
  /// True if the summaries of a word and its region agree with the words.
  bool isConsistent(size_t word) const {
    const size_t region = word >> 6;
    return ((wordsWithFree_[region] >> (word & 63)) & 1) == (freeSlots_[word] != 0) &&
           ((regionsWithFree_[region >> 6] >> (region & 63)) & 1) == (wordsWithFree_[region] != 0) &&
           (numberOfFreeInRegion_[region] != 0) == (wordsWithFree_[region] != 0);
  }
  void setPairsOf(int slot);

  int numberOfSlots_ = 0;
  size_t numberOfWords_ = 0;
  ZQArray<uint64_t> freeSlots_;        // a bit per slot, and two words of zeros behind the last one
  ZQArray<uint64_t> wordsWithFree_;    // a bit per word of freeSlots_: one entry is one region
  ZQArray<uint64_t> regionsWithFree_;  // a bit per region
  ZQArray<uint16_t> numberOfFreeInRegion_;
  ZQPairFilter pairs_;
};

}  // namespace zmatrix
