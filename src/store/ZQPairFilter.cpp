#include "store/ZQPairFilter.h"

#include <cstring>

namespace zmatrix {

bool ZQPairFilter::resize(size_t newNumberOfRegions) noexcept {
  const size_t neededWords = (newNumberOfRegions + 63) / 64;
  if (!hasNo.resize(newNumberOfRegions)) return false;
  if (neededWords > wordsOfRow) {
    const size_t newWordsOfRow = neededWords + neededWords / 2;
    if (!bits.resize(numberOfDistances * newWordsOfRow, ~uint64_t{0})) return false;
    for (size_t row = numberOfDistances; row-- > 0;) {  // spread the rows, last first, each to its new begin
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
  hasNo.reset();
  numberOfRegions = wordsOfRow = 0;
  memset(rowsWithNoBits, 0, sizeof rowsWithNoBits);
}

void ZQPairFilter::setAllFrom(size_t first) {
  for (int row = 0; row < numberOfDistances; ++row) {
    for (size_t region = first; region < numberOfRegions; ++region) set(row, region);
  }
  for (size_t region = first; region < numberOfRegions; ++region) hasNo[region] = 0;
}

}  // namespace zmatrix
