#include "store/ZQFreeSlotIndex.h"

#include <bit>

namespace zmatrix {

namespace {

constexpr size_t paddingWords = 2;  // words behind the last one that a shifted read may touch

// The lowest set bit at or above `from` of `words`, or -1.
long long nextSetBit(const ZQArray<uint64_t>& words, size_t from) {
  size_t word = from >> 6;
  if (word >= words.size()) return -1;
  uint64_t bits = words[word] & (~uint64_t{0} << (from & 63));
  while (bits == 0) {
    if (++word == words.size()) return -1;
    bits = words[word];
  }
  return static_cast<long long>(word * 64) + std::countr_zero(bits);
}

// The highest set bit at or below `from` of `words`, or -1.
long long previousSetBit(const ZQArray<uint64_t>& words, size_t from) {
  size_t word = from >> 6;
  uint64_t bits = words[word] & (~uint64_t{0} >> (63 - (from & 63)));
  while (bits == 0) {
    if (word-- == 0) return -1;
    bits = words[word];
  }
  return static_cast<long long>(word * 64) + 63 - std::countl_zero(bits);
}

}  // namespace

bool ZQFreeSlotIndex::resize(int newNumberOfSlots) noexcept {
  const int oldNumberOfSlots = numberOfSlots_;
  for (int slot = newNumberOfSlots; slot < oldNumberOfSlots; ++slot) fill(slot);
  const size_t newNumberOfWords = (static_cast<size_t>(newNumberOfSlots) + 63) / 64;
  const size_t newNumberOfRegions = (newNumberOfWords + 63) / 64;
  if (!freeSlots_.resize(newNumberOfWords + paddingWords) || !wordsWithFree_.resize(newNumberOfRegions) ||
      !regionsWithFree_.resize((newNumberOfRegions + 63) / 64) || !numberOfFreeInRegion_.resize(newNumberOfRegions) ||
      !pairs_.resize(newNumberOfRegions)) {
    return false;
  }
  numberOfWords_ = newNumberOfWords;
  numberOfSlots_ = newNumberOfSlots;
  for (int slot = oldNumberOfSlots; slot < newNumberOfSlots;) {
    if ((slot & 63) == 0 && newNumberOfSlots - slot >= 64) {
      freeSlots_[static_cast<size_t>(slot) >> 6] = ~uint64_t{0};
      const size_t region = static_cast<size_t>(slot) >> regionLog2;
      numberOfFreeInRegion_[region] = static_cast<uint16_t>(numberOfFreeInRegion_[region] + 64);
      wordsWithFree_[region] |= uint64_t{1} << ((slot >> 6) & 63);
      regionsWithFree_[region >> 6] |= uint64_t{1} << (region & 63);
      slot += 64;
    } else {
      markFree(slot++);
    }
  }
  // Slots below the old end now have free slots within the filter's distances above them.
  if (newNumberOfSlots > oldNumberOfSlots) {
    const int reach = ZQPairFilter::numberOfDistances;
    pairs_.setAllFrom(static_cast<size_t>(oldNumberOfSlots > reach ? oldNumberOfSlots - reach : 0) >> regionLog2);
  }
  return true;
}

void ZQFreeSlotIndex::clear() {
  numberOfSlots_ = 0;
  numberOfWords_ = 0;
  freeSlots_.reset();
  wordsWithFree_.reset();
  regionsWithFree_.reset();
  numberOfFreeInRegion_.reset();
  pairs_.clear();
}

void ZQFreeSlotIndex::fill(int slot) {
  ZQ_ASSERT(slot >= 0 && slot < numberOfSlots_);
  const size_t word = static_cast<size_t>(slot) >> 6;
  const uint64_t bit = uint64_t{1} << (slot & 63);
  if ((freeSlots_[word] & bit) == 0) return;
  const size_t region = word >> 6;
  --numberOfFreeInRegion_[region];
  if ((freeSlots_[word] &= ~bit) != 0) return;
  wordsWithFree_[region] &= ~(uint64_t{1} << (word & 63));
  if (wordsWithFree_[region] == 0) regionsWithFree_[region >> 6] &= ~(uint64_t{1} << (region & 63));
  ZQ_ASSERT(isConsistent(word));
}

void ZQFreeSlotIndex::fillWord(size_t word, uint64_t occupied) {
  const size_t region = word >> 6;
  const int filled = std::popcount(freeSlots_[word] & occupied);
  numberOfFreeInRegion_[region] = static_cast<uint16_t>(numberOfFreeInRegion_[region] - filled);
  freeSlots_[word] &= ~occupied;
  if (freeSlots_[word] != 0) return;
  wordsWithFree_[region] &= ~(uint64_t{1} << (word & 63));
  if (wordsWithFree_[region] == 0) regionsWithFree_[region >> 6] &= ~(uint64_t{1} << (region & 63));
  ZQ_ASSERT(isConsistent(word));
}

void ZQFreeSlotIndex::markFree(int slot) {
  ZQ_ASSERT(slot >= 0 && slot < numberOfSlots_);
  const size_t word = static_cast<size_t>(slot) >> 6;
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  freeSlots_[word] |= uint64_t{1} << (slot & 63);
  ++numberOfFreeInRegion_[region];
  wordsWithFree_[region] |= uint64_t{1} << (word & 63);
  regionsWithFree_[region >> 6] |= uint64_t{1} << (region & 63);
  ZQ_ASSERT(isConsistent(word));
}

void ZQFreeSlotIndex::release(int slot) {
  if (isFree(slot)) return;
  markFree(slot);
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  if (numberOfFreeInRegion_[region] == freeSlotsWithAllPairs) pairs_.setAllOf(region);
  setPairsOf(slot);
}

// Sets the filter's bits of the pairs that a newly free slot makes with free slots above and below it.
void ZQFreeSlotIndex::setPairsOf(int slot) {
  constexpr int widest = ZQPairFilter::numberOfDistances;
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  if (pairs_.rulesOutAnyIn(region)) {
    for (int base = 1; base <= widest; base += 64) {
      const uint64_t rows = pairs_.rowsRulingOut(static_cast<size_t>(base >> 6));
      for (uint64_t bits = slotsFrom(static_cast<long long>(slot) + base) & rows; bits != 0; bits &= bits - 1) {
        pairs_.set(base + std::countr_zero(bits) - 1, region);
      }
    }
  }
  const int lowest = slot > widest ? slot - widest : 0;
  if (pairs_.rulesOutAnyIn(region) || pairs_.rulesOutAnyIn(static_cast<size_t>(lowest) >> regionLog2)) {
    if (slot >= widest) {
      for (int base = 0; base < widest; base += 64) {  // bit 63 - i is the slot base + i + 1 below
        const uint64_t rows = pairs_.rowsRulingOut(static_cast<size_t>(base >> 6));
        if (rows == 0) continue;
        for (uint64_t bits = slotsFrom(static_cast<long long>(slot) - base - 64); bits != 0;) {
          const int i = std::countl_zero(bits);
          bits &= ~(uint64_t{1} << (63 - i));
          if (((rows >> i) & 1) != 0) pairs_.set(base + i, static_cast<size_t>(slot - base - i - 1) >> regionLog2);
        }
      }
    } else {
      for (int other = previousFree(slot - 1, lowest); other != none; other = previousFree(other - 1, lowest)) {
        pairs_.set(static_cast<int>(slot - other) - 1, static_cast<size_t>(other) >> regionLog2);
      }
    }
  }
}

int ZQFreeSlotIndex::nextFree(long long from) const {
  if (from < 0) from = 0;
  if (from >= numberOfSlots_) return none;
  const size_t word = static_cast<size_t>(from >> 6);
  if (const uint64_t bits = freeSlots_[word] >> (from & 63); bits != 0) return static_cast<int>(from) + std::countr_zero(bits);
  size_t region = word >> 6;
  uint64_t words = (word & 63) == 63 ? 0 : wordsWithFree_[region] & (~uint64_t{0} << ((word & 63) + 1));
  if (words == 0) {
    const long long next = nextSetBit(regionsWithFree_, region + 1);
    if (next < 0) return none;
    region = static_cast<size_t>(next);
    words = wordsWithFree_[region];
  }
  const size_t found = region * 64 + static_cast<size_t>(std::countr_zero(words));
  return static_cast<int>(found * 64) + std::countr_zero(freeSlots_[found]);
}

int ZQFreeSlotIndex::previousFree(long long from) const {
  if (from >= numberOfSlots_) from = numberOfSlots_ - 1;
  if (from < 0) return none;
  const size_t word = static_cast<size_t>(from >> 6);
  if (const uint64_t bits = freeSlots_[word] << (63 - (from & 63)); bits != 0) {
    return static_cast<int>(from) - std::countl_zero(bits);
  }
  size_t region = word >> 6;
  uint64_t words = wordsWithFree_[region] & ((uint64_t{1} << (word & 63)) - 1);
  if (words == 0) {
    const long long previous = region == 0 ? -1 : previousSetBit(regionsWithFree_, region - 1);
    if (previous < 0) return none;
    region = static_cast<size_t>(previous);
    words = wordsWithFree_[region];
  }
  const size_t found = region * 64 + 63 - static_cast<size_t>(std::countl_zero(words));
  return static_cast<int>(found * 64) + 63 - std::countl_zero(freeSlots_[found]);
}

int ZQFreeSlotIndex::previousFree(long long from, long long lowest) const {
  if (lowest < 0) lowest = 0;
  if (from >= numberOfSlots_) from = numberOfSlots_ - 1;
  constexpr int farWords = 8;
  for (int i = 0; i < farWords; ++i) {
    if (from < lowest) return none;
    const uint64_t bits = freeSlots_[static_cast<size_t>(from >> 6)] << (63 - (from & 63));
    if (bits != 0) {
      const long long slot = from - std::countl_zero(bits);
      return slot >= lowest ? static_cast<int>(slot) : none;
    }
    from = (from & ~63LL) - 1;
  }
  const int slot = previousFree(from);
  return slot >= lowest ? slot : none;
}

int ZQFreeSlotIndex::nthFree(int from, long long skip) const {
  if (from < 0) from = 0;
  if (from >= numberOfSlots_ || skip < 0) return none;
  size_t word = static_cast<size_t>(from) >> 6;
  uint64_t bits = freeSlots_[word] & (~uint64_t{0} << (from & 63));
  for (;;) {
    const int count = std::popcount(bits);
    if (count > skip) break;
    skip -= count;
    if (++word == numberOfWords_) return none;
    if ((word & 63) == 0) {  // at a region's begin, whole regions are passed over
      size_t region = word >> 6;
      while (region < numberOfFreeInRegion_.size() && numberOfFreeInRegion_[region] <= skip)
        skip -= numberOfFreeInRegion_[region++];
      if (region == numberOfFreeInRegion_.size()) return none;
      word = region << 6;
    }
    bits = freeSlots_[word];
  }
  while (skip-- > 0) bits &= bits - 1;
  return static_cast<int>(word * 64) + std::countr_zero(bits);
}

}  // namespace zmatrix
