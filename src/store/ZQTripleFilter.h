// For each region of 4096 slots and each two distances d < e up to a width: is it known that no slot x of the region is free
// together with x + d and x + e? A set bit says so for certain. Where slots are packed but scattered holes remain, a pair of
// holes at a given distance is common, three that fit are not: it is these bits that keep the search for a larger field from
// looking into one region after the other.
//
// A search that looked at a region in vain sets bits, a slot that becomes free clears those of the triples it makes with its free
// neighbours, filling a slot touches nothing. There is no memory for it before the first bit is set.
#pragma once

#include <cstdint>

#include "store/ZQPairFilter.h"

namespace zmatrix {

class ZQTripleFilter {
 public:
  static constexpr int widest = 127;
  static constexpr int mostFreeOfRegion = 512;  // with more free slots than these a region is left alone: all triples occur

  /// Sets the number of regions; what was known of the others stays. False if there is no room.
  [[nodiscard]] bool resize(size_t numberOfRegions) noexcept;

  void clear();

  /// The row of two distances with 1 <= nearer < farther <= widest.
  static int rowOf(int nearer, int farther) { return (farther - 1) * (farther - 2) / 2 + nearer - 1; }

  /// 64 regions of a row: bit i is region 64 * word + i.
  uint64_t word(int row, size_t wordIndex) const {
    return bits.empty() ? 0 : bits[static_cast<size_t>(row) * wordsOfRow + wordIndex];
  }

  void setNone(int row, size_t region);

  /// A slot has become free. `above` and `below` are its free neighbours: bit i is the slot i + 1 farther, in two words each.
  void admit(int slot, const uint64_t above[2], const uint64_t below[2]);

  /// Forgets what is known of a region.
  void forget(size_t region);

 private:
  static constexpr int regionLog2 = ZQPairFilter::slotsOfRegionLog2;
  static constexpr int numberOfRows = widest * (widest - 1) / 2;

  bool isKnown(size_t region) const { return known.size() > region && known[region] != 0; }
  void clearBit(int row, size_t region) {
    bits[static_cast<size_t>(row) * wordsOfRow + (region >> 6)] &= ~(uint64_t{1} << (region & 63));
  }
  bool provideRows();

  size_t regions = 0;
  size_t wordsOfRow = 0;
  ZQArray<uint64_t> bits;
  ZQArray<uint8_t> known;  // by region: some bit is set
};

}  // namespace zmatrix
