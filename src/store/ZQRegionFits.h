// All slots of a region of 4096 at which a field fits: if its first position lies there, all its positions lie on free slots.
// Many slots are tested at once, with a copy of the code for processors with wider vectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zmatrix {

constexpr size_t wordsOfRegion = 64;

struct ZQRegionFits {
  uint64_t words[wordsOfRegion];  ///< a bit per slot; undefined in words without a fit
  uint64_t wordsWithFit = 0;      ///< a bit per word
  int numberTested = 0;           ///< if there is no fit: the positions after the first that were tested to find that out

  /// `region` is the region's bits of free slots, followed by at least the words that the field's width reaches and one more. The
  /// field's positions ascend.
  void find(const uint64_t* region, std::span<const int> positions);
};

/// True if some slot of the region is free together with the one `distance` above it. `region` is as for ZQRegionFits::find.
bool regionHasPair(const uint64_t* region, long long distance);

}  // namespace zmatrix
