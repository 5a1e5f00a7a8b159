#include "store/ZQFreeSlotIndex.h"

#include <bit>
#include <initializer_list>

namespace zmatrix {

namespace {

constexpr size_t paddingWords = 2;

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

uint64_t reversed(uint64_t bits) {
  bits = ((bits >> 1) & 0x5555555555555555) | ((bits & 0x5555555555555555) << 1);
  bits = ((bits >> 2) & 0x3333333333333333) | ((bits & 0x3333333333333333) << 2);
  bits = ((bits >> 4) & 0x0F0F0F0F0F0F0F0F) | ((bits & 0x0F0F0F0F0F0F0F0F) << 4);
  bits = ((bits >> 8) & 0x00FF00FF00FF00FF) | ((bits & 0x00FF00FF00FF00FF) << 8);
  bits = ((bits >> 16) & 0x0000FFFF0000FFFF) | ((bits & 0x0000FFFF0000FFFF) << 16);
  return (bits >> 32) | (bits << 32);
}

}  // namespace

bool ZQFreeSlotIndex::resize(int newNumberOfSlots) noexcept {
  const int oldNumberOfSlots = numberOfSlots;
  for (int slot = newNumberOfSlots; slot < oldNumberOfSlots; ++slot) fill(slot);
  const size_t newNumberOfWords = (static_cast<size_t>(newNumberOfSlots) + 63) / 64;
  const size_t newNumberOfRegions = (newNumberOfWords + 63) / 64;
  if (!freeSlots.resize(newNumberOfWords + paddingWords) || !wordsWithFree.resize(newNumberOfRegions) ||
      !regionsWithFree.resize((newNumberOfRegions + 63) / 64) || !numberOfFreeInRegion.resize(newNumberOfRegions) ||
      !pairs.resize(newNumberOfRegions) || !triples.resize(newNumberOfRegions)) {
    return false;
  }
  numberOfWords = newNumberOfWords;
  numberOfSlots = newNumberOfSlots;
  for (int slot = oldNumberOfSlots; slot < newNumberOfSlots;) {
    if ((slot & 63) == 0 && newNumberOfSlots - slot >= 64) {
      freeSlots[static_cast<size_t>(slot) >> 6] = ~uint64_t{0};
      const size_t region = static_cast<size_t>(slot) >> regionLog2;
      numberOfFreeInRegion[region] = static_cast<uint16_t>(numberOfFreeInRegion[region] + 64);
      wordsWithFree[region] |= uint64_t{1} << ((slot >> 6) & 63);
      regionsWithFree[region >> 6] |= uint64_t{1} << (region & 63);
      slot += 64;
    } else {
      markFree(slot++);
    }
  }
  // The old end's regions now reach into new slots.
  if (newNumberOfSlots > oldNumberOfSlots) {
    int reach = ZQPairFilter::numberOfNarrowDistances;
    for (int index = 0; index < pairs.getNumberOfWideDistances(); ++index) {
      if (pairs.getWideDistance(index) > reach) reach = pairs.getWideDistance(index);
    }
    pairs.setAllFrom(static_cast<size_t>(oldNumberOfSlots > reach ? oldNumberOfSlots - reach : 0) >> regionLog2);
    const int reachOfTriples = ZQTripleFilter::widest;
    const int firstTouched = oldNumberOfSlots > reachOfTriples ? oldNumberOfSlots - reachOfTriples : 0;
    for (int region = firstTouched >> regionLog2; region <= oldNumberOfSlots >> regionLog2; ++region) {
      triples.forget(static_cast<size_t>(region));
    }
  }
  return true;
}

void ZQFreeSlotIndex::clear() {
  numberOfSlots = 0;
  numberOfWords = 0;
  freeSlots.reset();
  wordsWithFree.reset();
  regionsWithFree.reset();
  numberOfFreeInRegion.reset();
  pairs.clear();
  triples.clear();
}

void ZQFreeSlotIndex::fill(int slot) {
  ZQ_ASSERT(slot >= 0 && slot < numberOfSlots);
  const size_t word = static_cast<size_t>(slot) >> 6;
  const uint64_t bit = uint64_t{1} << (slot & 63);
  if ((freeSlots[word] & bit) == 0) return;
  const size_t region = word >> 6;
  --numberOfFreeInRegion[region];
  if ((freeSlots[word] &= ~bit) != 0) return;
  wordsWithFree[region] &= ~(uint64_t{1} << (word & 63));
  if (wordsWithFree[region] == 0) regionsWithFree[region >> 6] &= ~(uint64_t{1} << (region & 63));
  ZQ_ASSERT(isInStep(word));
}

void ZQFreeSlotIndex::fillWord(size_t word, uint64_t occupied) {
  const size_t region = word >> 6;
  const int filled = std::popcount(freeSlots[word] & occupied);
  numberOfFreeInRegion[region] = static_cast<uint16_t>(numberOfFreeInRegion[region] - filled);
  freeSlots[word] &= ~occupied;
  if (freeSlots[word] != 0) return;
  wordsWithFree[region] &= ~(uint64_t{1} << (word & 63));
  if (wordsWithFree[region] == 0) regionsWithFree[region >> 6] &= ~(uint64_t{1} << (region & 63));
  ZQ_ASSERT(isInStep(word));
}

void ZQFreeSlotIndex::markFree(int slot) {
  ZQ_ASSERT(slot >= 0 && slot < numberOfSlots);
  const size_t word = static_cast<size_t>(slot) >> 6;
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  freeSlots[word] |= uint64_t{1} << (slot & 63);
  ++numberOfFreeInRegion[region];
  wordsWithFree[region] |= uint64_t{1} << (word & 63);
  regionsWithFree[region >> 6] |= uint64_t{1} << (region & 63);
  ZQ_ASSERT(isInStep(word));
}

void ZQFreeSlotIndex::release(int slot) {
  if (isFree(slot)) return;
  markFree(slot);
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  if (numberOfFreeInRegion[region] == manyFreeOfRegion) pairs.setAllNarrowOf(region);
  admitPairsOf(slot);
  admitTriplesOf(slot);
}

// Sets the filter's bits of the pairs that a newly free slot makes with free slots above and below it.
void ZQFreeSlotIndex::admitPairsOf(int slot) {
  constexpr int narrow = ZQPairFilter::numberOfNarrowDistances;
  const size_t region = static_cast<size_t>(slot) >> regionLog2;
  if (pairs.hasNarrowNoIn(region)) {
    for (int base = 1; base <= narrow; base += 64) {
      const uint64_t asked = pairs.rowsWithNo(static_cast<size_t>(base >> 6));
      for (uint64_t bits = slotsFrom(static_cast<long long>(slot) + base) & asked; bits != 0; bits &= bits - 1) {
        pairs.set(base + std::countr_zero(bits) - 1, region);
      }
    }
  }
  const int lowest = slot > narrow ? slot - narrow : 0;
  if (pairs.hasNarrowNoIn(region) || pairs.hasNarrowNoIn(static_cast<size_t>(lowest) >> regionLog2)) {
    if (slot >= narrow) {
      for (int base = 0; base < narrow; base += 64) {  // bit 63 - i is the slot base + i + 1 below
        const uint64_t asked = pairs.rowsWithNo(static_cast<size_t>(base >> 6));
        if (asked == 0) continue;
        for (uint64_t bits = slotsFrom(static_cast<long long>(slot) - base - 64); bits != 0;) {
          const int i = std::countl_zero(bits);
          bits &= ~(uint64_t{1} << (63 - i));
          if (((asked >> i) & 1) != 0) pairs.set(base + i, static_cast<size_t>(slot - base - i - 1) >> regionLog2);
        }
      }
    } else {
      for (int other = previousFree(slot - 1, lowest); other != none; other = previousFree(other - 1, lowest)) {
        pairs.set(static_cast<int>(slot - other) - 1, static_cast<size_t>(other) >> regionLog2);
      }
    }
  }
  for (int index = 0; index < pairs.getNumberOfWideDistances(); ++index) {
    const int distance = pairs.getWideDistance(index);
    const int row = narrow + index;
    if (slot < numberOfSlots - distance && isFree(slot + distance)) pairs.set(row, region);
    if (slot >= distance && isFree(slot - distance)) pairs.set(row, static_cast<size_t>(slot - distance) >> regionLog2);
  }
}

// Where many slots are free each triple occurs, and telling them one by one isn't worth the time.
void ZQFreeSlotIndex::admitTriplesOf(int slot) {
  constexpr int width = 128;  // two words
  for (const int reached : {slot, slot > width ? slot - width : 0}) {
    const size_t region = static_cast<size_t>(reached) >> regionLog2;
    if (numberOfFreeInRegion[region] > ZQTripleFilter::mostFreeOfRegion) triples.forget(region);
  }
  const uint64_t above[2] = {slotsFrom(slot + 1LL), slotsFrom(slot + 65LL)};
  if (slot < width) {  // too near to the begin for the words below: it happens to the first few slots only
    triples.forget(0);
    return;
  }
  const uint64_t below[2] = {reversed(slotsFrom(slot - 64LL)), reversed(slotsFrom(slot - 128LL))};
  triples.admit(slot, above, below);
}

int ZQFreeSlotIndex::nextFree(long long from) const {
  if (from < 0) from = 0;
  if (from >= numberOfSlots) return none;
  const size_t word = static_cast<size_t>(from >> 6);
  if (const uint64_t bits = freeSlots[word] >> (from & 63); bits != 0) return static_cast<int>(from) + std::countr_zero(bits);
  size_t region = word >> 6;
  uint64_t words = (word & 63) == 63 ? 0 : wordsWithFree[region] & (~uint64_t{0} << ((word & 63) + 1));
  if (words == 0) {
    const long long next = nextSetBit(regionsWithFree, region + 1);
    if (next < 0) return none;
    region = static_cast<size_t>(next);
    words = wordsWithFree[region];
  }
  const size_t found = region * 64 + static_cast<size_t>(std::countr_zero(words));
  return static_cast<int>(found * 64) + std::countr_zero(freeSlots[found]);
}

int ZQFreeSlotIndex::previousFree(long long from) const {
  if (from >= numberOfSlots) from = numberOfSlots - 1;
  if (from < 0) return none;
  const size_t word = static_cast<size_t>(from >> 6);
  if (const uint64_t bits = freeSlots[word] << (63 - (from & 63)); bits != 0) {
    return static_cast<int>(from) - std::countl_zero(bits);
  }
  size_t region = word >> 6;
  uint64_t words = wordsWithFree[region] & ((uint64_t{1} << (word & 63)) - 1);
  if (words == 0) {
    const long long previous = region == 0 ? -1 : previousSetBit(regionsWithFree, region - 1);
    if (previous < 0) return none;
    region = static_cast<size_t>(previous);
    words = wordsWithFree[region];
  }
  const size_t found = region * 64 + 63 - static_cast<size_t>(std::countl_zero(words));
  return static_cast<int>(found * 64) + 63 - std::countl_zero(freeSlots[found]);
}

int ZQFreeSlotIndex::previousFree(long long from, long long lowest) const {
  if (lowest < 0) lowest = 0;
  if (from >= numberOfSlots) from = numberOfSlots - 1;
  constexpr int farWords = 8;
  for (int i = 0; i < farWords; ++i) {
    if (from < lowest) return none;
    const uint64_t bits = freeSlots[static_cast<size_t>(from >> 6)] << (63 - (from & 63));
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
  if (from >= numberOfSlots || skip < 0) return none;
  size_t word = static_cast<size_t>(from) >> 6;
  uint64_t bits = freeSlots[word] & (~uint64_t{0} << (from & 63));
  for (;;) {
    const int count = std::popcount(bits);
    if (count > skip) break;
    skip -= count;
    if (++word == numberOfWords) return none;
    if ((word & 63) == 0) {  // at a region's begin, whole regions are passed over
      size_t region = word >> 6;
      while (region < numberOfFreeInRegion.size() && numberOfFreeInRegion[region] <= skip) skip -= numberOfFreeInRegion[region++];
      if (region == numberOfFreeInRegion.size()) return none;
      word = region << 6;
    }
    bits = freeSlots[word];
  }
  while (skip-- > 0) bits &= bits - 1;
  return static_cast<int>(word * 64) + std::countr_zero(bits);
}

}  // namespace zmatrix
