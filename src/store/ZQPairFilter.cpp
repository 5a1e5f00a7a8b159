#include "store/ZQPairFilter.h"

#include <climits>

namespace zmatrix {

bool ZQPairFilter::resize(size_t newNumberOfRegions) noexcept {
  const size_t rows = static_cast<size_t>(numberOfNarrowDistances + numberOfWideDistances);
  const size_t neededWords = (newNumberOfRegions + 63) / 64;
  if (!hasNarrowNo.resize(newNumberOfRegions)) return false;
  if (neededWords > wordsOfRow) {
    const size_t newWordsOfRow = neededWords + neededWords / 2;
    if (!bits.resize(rows * newWordsOfRow, ~uint64_t{0})) return false;
    for (size_t row = rows; row-- > 0;) {  // spread the rows, last first, each to its new begin
      uint64_t* to = &bits[row * newWordsOfRow];
      if (wordsOfRow > 0) memmove(to, &bits[row * wordsOfRow], wordsOfRow * sizeof(uint64_t));
      memset(to + wordsOfRow, 0xFF, (newWordsOfRow - wordsOfRow) * sizeof(uint64_t));
    }
    wordsOfRow = newWordsOfRow;
  }
  const size_t oldNumberOfRegions = numberOfRegions;
  numberOfRegions = newNumberOfRegions;
  if (newNumberOfRegions > oldNumberOfRegions) setAllFrom(oldNumberOfRegions);
  return true;
}

void ZQPairFilter::clear() {
  bits.reset();
  hasNarrowNo.reset();
  numberOfRegions = wordsOfRow = 0;
  numberOfWideDistances = 0;
  memset(rowsByHash, 0, sizeof rowsByHash);
  memset(narrowRowsWithNo, 0, sizeof narrowRowsWithNo);
}

void ZQPairFilter::setAllFrom(size_t first) {
  const int rows = numberOfNarrowDistances + numberOfWideDistances;
  for (int row = 0; row < rows; ++row) {
    for (size_t region = first; region < numberOfRegions; ++region) set(row, region);
  }
  for (size_t region = first; region < numberOfRegions; ++region) hasNarrowNo[region] = 0;
}

int ZQPairFilter::rowOfWideDistance(long long distance) const {
  if (distance > INT_MAX) return -1;
  for (int slot = hashOf(static_cast<int>(distance)); rowsByHash[slot] != 0; slot = (slot + 1) % slotsOfHash) {
    if (wideDistances[rowsByHash[slot] - numberOfNarrowDistances] == distance) return rowsByHash[slot];
  }
  return -1;
}

int ZQPairFilter::rowOfOrNew(long long distance) {
  const int row = rowOf(distance);
  if (row >= 0 || distance < 1 || distance > INT_MAX || numberOfWideDistances == mostWideDistances) return row;
  const int newRow = numberOfNarrowDistances + numberOfWideDistances;
  if (!bits.resize(static_cast<size_t>(newRow + 1) * wordsOfRow, ~uint64_t{0})) return -1;
  wideDistances[numberOfWideDistances++] = static_cast<int>(distance);
  int slot = hashOf(static_cast<int>(distance));
  while (rowsByHash[slot] != 0) slot = (slot + 1) % slotsOfHash;
  rowsByHash[slot] = static_cast<int16_t>(newRow);
  return newRow;
}

}  // namespace zmatrix
