#include "store/ZQRegionFits.h"

#include <algorithm>
#include <cstring>

// Compiles a function a second time for processors with vectors of 32 bytes. Which version runs is decided when the library is
// loaded, by code that the thread sanitizer can't run that early.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_THREAD__)
#define ZMATRIX_WITH_AVX2_TOO __attribute__((target_clones("avx2", "default")))
#else
#define ZMATRIX_WITH_AVX2_TOO
#endif

namespace zmatrix {

namespace {

constexpr size_t wordsOfVector = 4;
constexpr size_t wordsOfBlock = 16;  // few enough to stay in registers while all positions are tested
using FourWords [[gnu::vector_size(wordsOfVector * sizeof(uint64_t))]] = uint64_t;

struct [[gnu::packed, gnu::may_alias]] UnalignedWords {
  FourWords words;
};

struct Block {
  FourWords part0, part1, part2, part3;
};

const UnalignedWords* wordsFrom(const uint64_t* first) {
  return reinterpret_cast<const UnalignedWords*>(first);
}

[[gnu::always_inline]] inline void load(Block& block, const uint64_t* slots) {
  const UnalignedWords* from = wordsFrom(slots);
  block = {from[0].words, from[1].words, from[2].words, from[3].words};
}

/// Keeps those slots of a block that have a free slot `distance` above them.
[[gnu::always_inline]] inline void keepPairs(Block& block, const uint64_t* slots, long long distance) {
  const int shift = static_cast<int>(distance & 63);
  const UnalignedWords* low = wordsFrom(slots + (distance >> 6));
  if (shift == 0) {
    block.part0 &= low[0].words;
    block.part1 &= low[1].words;
    block.part2 &= low[2].words;
    block.part3 &= low[3].words;
    return;
  }
  const UnalignedWords* high = wordsFrom(slots + (distance >> 6) + 1);
  block.part0 &= (low[0].words >> shift) | (high[0].words << (64 - shift));
  block.part1 &= (low[1].words >> shift) | (high[1].words << (64 - shift));
  block.part2 &= (low[2].words >> shift) | (high[2].words << (64 - shift));
  block.part3 &= (low[3].words >> shift) | (high[3].words << (64 - shift));
}

[[gnu::always_inline]] inline bool isEmpty(const Block& block) {
  const FourWords any = (block.part0 | block.part1) | (block.part2 | block.part3);
  return (any[0] | any[1] | any[2] | any[3]) == 0;
}

/// Keeps the slots at which the whole field fits; returns how many positions after the first were tested. Often few positions
/// leave no slot, so that this is checked after each of the first ones, later only after every eighth.
[[gnu::always_inline]] inline int keepFits(Block& block, const uint64_t* slots, std::span<const int> positions) {
  constexpr int checkedEachTime = 4, positionsBetweenChecks = 8;
  const int* const last = positions.data() + positions.size();
  const long long anchor = positions.front();
  int number = 0;
  for (const int* position = positions.data() + 1; position != last; ++position) {
    keepPairs(block, slots, *position - anchor);
    ++number;
    if ((number < checkedEachTime || number % positionsBetweenChecks == 0) && isEmpty(block)) break;
  }
  return number;
}

}  // namespace

ZMATRIX_WITH_AVX2_TOO void ZQRegionFits::find(const uint64_t* region, std::span<const int> positions) {
  wordsWithFit = 0;
  numberTested = 0;
  for (size_t first = 0; first < wordsOfRegion; first += wordsOfBlock) {
    Block block;
    load(block, region + first);
    numberTested = std::max(numberTested, keepFits(block, region + first, positions));
    if (isEmpty(block)) continue;
    memcpy(words + first, &block, sizeof block);
    for (size_t i = first; i < first + wordsOfBlock; ++i) wordsWithFit |= static_cast<uint64_t>(words[i] != 0) << i;
  }
}

ZMATRIX_WITH_AVX2_TOO bool regionHasPair(const uint64_t* region, long long distance) {
  for (size_t first = 0; first < wordsOfRegion; first += wordsOfBlock) {
    Block block;
    load(block, region + first);
    keepPairs(block, region + first, distance);
    if (!isEmpty(block)) return true;
  }
  return false;
}

}  // namespace zmatrix
