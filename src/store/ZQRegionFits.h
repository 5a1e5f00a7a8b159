// What fits within one region of 4096 slots: for each of them whether a field's first position may stand there, so that all the
// others land on free slots. Many slots are tested at once, with a copy of the code for processors with wider vectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zmatrix {

constexpr size_t wordsOfRegion = 64;

struct ZQRegionFits {
  uint64_t words[wordsOfRegion];  ///< a bit a slot; only words that have a fit are set
  uint64_t wordsWithFit = 0;      ///< a bit a word
  int numberTested = 0;           ///< so many positions behind the first were looked at until nothing was left, if nothing is

  /// `region` are the bits of the region's free slots, behind which one word more follows than the field is wide. The field's
  /// positions ascend.
  void find(const uint64_t* region, std::span<const int> positions);
};

/// Is some slot of the region free together with the one `distance` above it? The words are as above.
bool regionHasPair(const uint64_t* region, long long distance);

}  // namespace zmatrix
