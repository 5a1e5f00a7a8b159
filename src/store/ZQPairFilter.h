// For each region of 4096 slots and each distance d up to 256: may a slot x of the region be free together with x + d? A clear
// bit says no for certain, so that the search for a place that a whole field fits passes the region by. A search that walked a
// region in vain clears the bit, a slot that becomes free sets the bits of its free neighbours, and filling a slot never touches
// it.
//
// Wider distances, as note times have, are not remembered: to look at a region costs less than to keep them up to date.
#pragma once

#include <cstdint>

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQPairFilter {
 public:
  static constexpr int slotsOfRegionLog2 = 12;
  static constexpr int numberOfDistances = 256;

  /// Sets the number of regions; all bits of new regions are set. False if there is no room.
  [[nodiscard]] bool resize(size_t newNumberOfRegions) noexcept;

  void clear();

  /// The row of a distance, or -1 if it has none.
  static int rowOf(long long distance) {
    return distance >= 1 && distance <= numberOfDistances ? static_cast<int>(distance) - 1 : -1;
  }

  /// 64 regions of a row: bit i is region 64 * word + i.
  uint64_t word(int row, size_t wordIndex) const { return bits_[static_cast<size_t>(row) * wordsOfRow_ + wordIndex]; }

  void set(int row, size_t region) {
    bits_[static_cast<size_t>(row) * wordsOfRow_ + (region >> 6)] |= uint64_t{1} << (region & 63);
  }

  void setNo(int row, size_t region) {
    bits_[static_cast<size_t>(row) * wordsOfRow_ + (region >> 6)] &= ~(uint64_t{1} << (region & 63));
    hasNo_[region] = 1;
    rowsWithNoBits_[row >> 6] |= uint64_t{1} << (row & 63);
  }

  /// 64 rows: bit i is distance 64 * word + i + 1. A clear bit: no region has ever been crossed off for that distance.
  uint64_t rowsWithNo(size_t word) const { return rowsWithNoBits_[word]; }

  /// True if some distance of the region has a clear bit; while it has none, a freed slot there has nothing to set.
  bool hasNoIn(size_t region) const { return hasNo_[region] != 0; }

  /// Sets all bits of the regions from `first` on.
  void setAllFrom(size_t first);

  /// Sets all bits of a region.
  void setAllOf(size_t region) {
    if (!hasNoIn(region)) return;
    for (int row = 0; row < numberOfDistances; ++row) set(row, region);
    hasNo_[region] = 0;
  }

 private:
  uint64_t rowsWithNoBits_[numberOfDistances / 64] = {};
  size_t numberOfRegions_ = 0;
  size_t wordsOfRow_ = 0;
  ZQArray<uint64_t> bits_;
  ZQArray<uint8_t> hasNo_;
};

}  // namespace zmatrix
