// A filter for the placement of whole fields, with a bit for each region of 4096 slots and each distance d up to 256. A clear bit
// means that no slot x of the region is free together with x + d, so that the search skips the region; a set bit means that there
// may be such a pair. A search that found no fit in a region clears bits, a slot that becomes free sets the bits of its pairs
// with other free slots, and filling a slot changes nothing.
//
// Wider distances, as between note times, have no bits: searching a region costs less than keeping the bits up to date.
#pragma once

#include <cstdint>

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQPairFilter {
 public:
  static constexpr int slotsOfRegionLog2 = 12;
  static constexpr int numberOfDistances = 256;

  /// Sets the number of regions; all bits of new regions are set. False if memory has run out.
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

  /// Clears a bit.
  void ruleOut(int row, size_t region) {
    bits_[static_cast<size_t>(row) * wordsOfRow_ + (region >> 6)] &= ~(uint64_t{1} << (region & 63));
    rulesOut_[region] = 1;
    rowsRulingOut_[row >> 6] |= uint64_t{1} << (row & 63);
  }

  /// The rows in which a bit was ever cleared, among 64: bit i is distance 64 * word + i + 1.
  uint64_t rowsRulingOut(size_t word) const { return rowsRulingOut_[word]; }

  /// False if all bits of the region are set: then nothing needs to be set for a slot that becomes free.
  bool rulesOutAnyIn(size_t region) const { return rulesOut_[region] != 0; }

  /// Sets all bits of the regions from `first` on.
  void setAllFrom(size_t first);

  /// Sets all bits of a region.
  void setAllOf(size_t region) {
    if (!rulesOutAnyIn(region)) return;
    for (int row = 0; row < numberOfDistances; ++row) set(row, region);
    rulesOut_[region] = 0;
  }

 private:
  uint64_t rowsRulingOut_[numberOfDistances / 64] = {};
  size_t numberOfRegions_ = 0;
  size_t wordsOfRow_ = 0;
  ZQArray<uint64_t> bits_;
  ZQArray<uint8_t> rulesOut_;
};

}  // namespace zmatrix
