#include "store/ZQPairFilter.h"

#include <cstring>

namespace zmatrix {

bool ZQPairFilter::resize(size_t newNumberOfRegions) noexcept {
  const size_t neededWords = (newNumberOfRegions + 63) / 64;
  if (!rulesOut_.resize(newNumberOfRegions)) return false;
  if (neededWords > wordsOfRow_) {
    const size_t newWordsOfRow = neededWords + neededWords / 2;
    if (!bits_.resize(numberOfDistances * newWordsOfRow, ~uint64_t{0})) return false;
    for (size_t row = numberOfDistances; row-- > 0;) {  // moves the rows apart, the last one first, since they may overlap
      uint64_t* to = &bits_[row * newWordsOfRow];
      if (wordsOfRow_ > 0) memmove(to, &bits_[row * wordsOfRow_], wordsOfRow_ * sizeof(uint64_t));
      memset(to + wordsOfRow_, 0xFF, (newWordsOfRow - wordsOfRow_) * sizeof(uint64_t));
    }
    wordsOfRow_ = newWordsOfRow;
  }
  const size_t oldNumberOfRegions = numberOfRegions_;
  numberOfRegions_ = newNumberOfRegions;
  if (newNumberOfRegions > oldNumberOfRegions) setAllFrom(oldNumberOfRegions);
  return true;
}

void ZQPairFilter::clear() {
  bits_.reset();
  rulesOut_.reset();
  numberOfRegions_ = wordsOfRow_ = 0;
  memset(rowsRulingOut_, 0, sizeof rowsRulingOut_);
}

void ZQPairFilter::setAllFrom(size_t first) {
  for (int row = 0; row < numberOfDistances; ++row) {
    for (size_t region = first; region < numberOfRegions_; ++region) set(row, region);
  }
  for (size_t region = first; region < numberOfRegions_; ++region) rulesOut_[region] = 0;
}

}  // namespace zmatrix
