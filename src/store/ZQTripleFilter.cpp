#include "store/ZQTripleFilter.h"

#include <bit>

namespace zmatrix {

namespace {

constexpr int mostNeighbours = 2 * ZQTripleFilter::widest;

// The distances of the set bits, ascending; how many there are.
int distancesOf(const uint64_t mask[2], int* distances) {
  int count = 0;
  for (int word = 0; word < 2; ++word) {
    for (uint64_t bits = mask[word]; bits != 0; bits &= bits - 1) {
      const int distance = word * 64 + std::countr_zero(bits) + 1;
      if (distance <= ZQTripleFilter::widest) distances[count++] = distance;
    }
  }
  return count;
}

}  // namespace

bool ZQTripleFilter::resize(size_t numberOfRegions) noexcept {
  regions = numberOfRegions;
  if (bits.empty()) return true;
  const size_t neededWords = (regions + 63) / 64;
  if (!known.resize(regions)) return false;
  if (neededWords <= wordsOfRow) return true;
  const size_t newWordsOfRow = neededWords + neededWords / 2;
  if (!bits.resize(numberOfRows * newWordsOfRow)) return false;
  for (size_t row = numberOfRows; row-- > 0;) {  // spread the rows, last first, each to its new begin
    uint64_t* to = &bits[row * newWordsOfRow];
    memmove(to, &bits[row * wordsOfRow], wordsOfRow * sizeof(uint64_t));
    memset(to + wordsOfRow, 0, (newWordsOfRow - wordsOfRow) * sizeof(uint64_t));
  }
  wordsOfRow = newWordsOfRow;
  return true;
}

void ZQTripleFilter::clear() {
  bits.reset();
  known.reset();
  regions = wordsOfRow = 0;
}

// Without the memory nothing is known, which is slow and never wrong.
bool ZQTripleFilter::provideRows() {
  if (!bits.empty()) return true;
  wordsOfRow = (regions + 63) / 64;
  if (known.resize(regions) && bits.resize(numberOfRows * wordsOfRow)) return true;
  known.reset();
  bits.reset();
  return false;
}

void ZQTripleFilter::setNone(int row, size_t region) {
  if (!provideRows()) return;
  bits[static_cast<size_t>(row) * wordsOfRow + (region >> 6)] |= uint64_t{1} << (region & 63);
  known[region] = 1;
}

void ZQTripleFilter::admit(int slot, const uint64_t above[2], const uint64_t below[2]) {
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  const size_t lowestRegion = static_cast<size_t>(slot > widest ? slot - widest : 0) >> regionLog2;
  if (!isKnown(region) && !isKnown(lowestRegion)) return;
  int up[mostNeighbours], down[mostNeighbours];
  const int numberUp = distancesOf(above, up);
  const int numberDown = distancesOf(below, down);
  for (int farther = 1; farther < numberUp; ++farther) {  // the slot is the lowest of the three
    for (int nearer = 0; nearer < farther; ++nearer) clearBit(rowOf(up[nearer], up[farther]), region);
  }
  for (int i = 0; i < numberDown; ++i) {
    const size_t regionBelow = static_cast<size_t>(slot - down[i]) >> regionLog2;
    for (int nearer = 0; nearer < i; ++nearer) clearBit(rowOf(down[i] - down[nearer], down[i]), regionBelow);  // the highest
    for (int j = 0; j < numberUp && down[i] + up[j] <= widest; ++j) {                                          // the middle one
      clearBit(rowOf(down[i], down[i] + up[j]), regionBelow);
    }
  }
}

void ZQTripleFilter::forget(size_t region) {
  if (!isKnown(region)) return;
  for (int row = 0; row < numberOfRows; ++row) clearBit(row, region);
  known[region] = 0;
}

}  // namespace zmatrix
