// For each region of 4096 slots and each distance d: may a slot x of the region be free together with x + d? A clear bit says no
// for certain, so that the search for a place that a whole field fits passes the region by. A search that walked a region in vain
// clears the bit, a slot that becomes free sets the bits of its free neighbours, and filling a slot never touches it.
//
// Distances up to 256 have a row each, which serves text and other narrow fields. Wider ones, as note times have, get a row when
// a search in vain first asks for one, up to a limit: those that a matrix uses are few.
#pragma once

#include <cstdint>

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQPairFilter {
 public:
  static constexpr int slotsOfRegionLog2 = 12;
  static constexpr int numberOfNarrowDistances = 256;
  static constexpr int mostWideDistances = 256;

  /// Sets the number of regions; all bits of new regions are set. False if there is no room.
  [[nodiscard]] bool resize(size_t newNumberOfRegions) noexcept;

  void clear();

  /// The row of a distance, or -1 if it has none.
  int rowOf(long long distance) const {
    if (distance >= 1 && distance <= numberOfNarrowDistances) return static_cast<int>(distance) - 1;
    return distance > numberOfNarrowDistances ? rowOfWideDistance(distance) : -1;
  }

  /// The row of a distance, made if it has none yet and there is room; else -1.
  int rowOfOrNew(long long distance);

  /// 64 regions of a row: bit i is region 64 * word + i.
  uint64_t word(int row, size_t wordIndex) const { return bits[static_cast<size_t>(row) * wordsOfRow + wordIndex]; }

  bool maybe(int row, size_t region) const { return (word(row, region >> 6) >> (region & 63)) & 1; }

  void set(int row, size_t region) {
    bits[static_cast<size_t>(row) * wordsOfRow + (region >> 6)] |= uint64_t{1} << (region & 63);
  }

  void setNo(int row, size_t region) {
    bits[static_cast<size_t>(row) * wordsOfRow + (region >> 6)] &= ~(uint64_t{1} << (region & 63));
    if (row >= numberOfNarrowDistances) return;
    hasNarrowNo[region] = 1;
    narrowRowsWithNo[row >> 6] |= uint64_t{1} << (row & 63);
  }

  /// 64 narrow rows: bit i is distance 64 * word + i + 1. A clear bit: no region has ever been crossed off for that distance.
  uint64_t rowsWithNo(size_t word) const { return narrowRowsWithNo[word]; }

  /// True if some narrow distance of the region has a clear bit; while it has none, a freed slot there has nothing to set.
  bool hasNarrowNoIn(size_t region) const { return hasNarrowNo[region] != 0; }

  /// Sets all bits of the regions from `first` on.
  void setAllFrom(size_t first);

  /// Sets all narrow bits of a region.
  void setAllNarrowOf(size_t region) {
    if (!hasNarrowNoIn(region)) return;
    for (int row = 0; row < numberOfNarrowDistances; ++row) set(row, region);
    hasNarrowNo[region] = 0;
  }

  int getNumberOfWideDistances() const { return numberOfWideDistances; }
  int getWideDistance(int index) const { return wideDistances[index]; }
  size_t getNumberOfRegions() const { return numberOfRegions; }

 private:
  static constexpr int slotsOfHash = 1024;  // four times mostWideDistances, so that probing stays short

  int rowOfWideDistance(long long distance) const;
  static int hashOf(int distance) { return static_cast<int>((static_cast<uint32_t>(distance) * 2654435761u) >> 22); }

  uint64_t narrowRowsWithNo[numberOfNarrowDistances / 64] = {};
  size_t numberOfRegions = 0;
  size_t wordsOfRow = 0;
  int numberOfWideDistances = 0;
  int wideDistances[mostWideDistances] = {};
  int16_t rowsByHash[slotsOfHash] = {};  // row of a wide distance, 0 for none: row 0 is a narrow one
  ZQArray<uint64_t> bits;
  ZQArray<uint8_t> hasNarrowNo;
};

}  // namespace zmatrix
