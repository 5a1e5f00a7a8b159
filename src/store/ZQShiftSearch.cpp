#include "store/ZQShiftSearch.h"

#include <algorithm>
#include <bit>
#include <cstring>

// A second version of a function for processors with vectors of 32 bytes, chosen when the library is loaded, which is too early
// for the thread sanitizer.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_THREAD__)
#define ZMATRIX_WITH_AVX2_TOO __attribute__((target_clones("avx2", "default")))
#else
#define ZMATRIX_WITH_AVX2_TOO
#endif

namespace zmatrix {

namespace {

constexpr size_t wordsOfVector = 4;
using FourWords [[gnu::vector_size(wordsOfVector * sizeof(uint64_t))]] = uint64_t;

struct [[gnu::packed, gnu::may_alias]] UnalignedWords {
  FourWords words;
};

const UnalignedWords* wordsFrom(const uint64_t* first) {
  return reinterpret_cast<const UnalignedWords*>(first);
}

}  // namespace

ZQShiftSearch::ZQShiftSearch(ZQFreeSlotIndex& indexOfBlock, std::span<const int> positionsToPlace, std::span<const int> own)
    : index(indexOfBlock), positions(positionsToPlace), anchor(positionsToPlace.front()) {
  const long long width = positions.back() - anchor;
  if (!own.empty()) {
    firstLent = std::max(own.front() - width, 0LL) >> regionLog2;
    lastLent = own.back() >> regionLog2;
  }
  numberOfTracked = static_cast<int>(std::min<size_t>(positions.size() - 1, mostTrackedDistances));
  for (int j = 0; j < numberOfTracked; ++j) {
    distances[j] = positions[static_cast<size_t>(j) + 1] - anchor;
    rows[j] = index.pairs.rowOf(distances[j]);
    if (distances[j] <= ZQTripleFilter::widest && j < mostTripledDistances) numberOfTripled = j + 1;
  }
}

long long ZQShiftSearch::nextFit(long long from, long long to) {
  long long found;
  while (from <= to) {
    if (up(from, to, found)) return found;
  }
  return none;
}

long long ZQShiftSearch::previousFit(long long from, long long to) {
  long long found;
  while (from >= to) {
    if (down(from, to, found)) return found;
  }
  return none;
}

ZQShiftSearch::Nearest ZQShiftSearch::nearest(long long lowest, long long highest) {
  Nearest result;
  long long left = -1;
  long long right = 1;
  for (;;) {
    const bool goesLeft = result.left == none && left >= lowest && -left <= result.right;
    const bool goesRight = result.right == none && right <= highest && right < result.left;
    if (!goesLeft && !goesRight) return result;
    long long found;
    if (goesLeft && (!goesRight || -left <= right)) {
      if (down(left, result.right == none ? lowest : std::max(lowest, -result.right), found)) result.left = -found;
    } else if (up(right, result.left == none ? highest : std::min(highest, result.left - 1), found)) {
      result.right = found;
    }
  }
}

// Looks at one region from `offset` upward; else moves `offset` behind what it has ruled out.
bool ZQShiftSearch::up(long long& offset, long long limit, long long& found) {
  const long long first = anchor + offset;
  if (positions.size() == 1) {
    const int slot = index.nextFree(first);
    found = slot - anchor;
    offset = limit + 1;
    return slot != ZQFreeSlotIndex::none && found <= limit;
  }
  const long long region = nextCandidate(first >> regionLog2);
  if (region < 0) {
    offset = limit + 1;
    return false;
  }
  if (region != first >> regionLog2) {
    offset = (region << regionLog2) - anchor;
    return false;
  }
  const long long last = std::min(((region + 1) << regionLog2) - 1, anchor + limit);
  const long long slot = fitInRegion(region, first, last, true);
  found = slot - anchor;
  offset = last + 1 - anchor;
  return slot >= 0;
}

bool ZQShiftSearch::down(long long& offset, long long limit, long long& found) {
  const long long first = anchor + offset;
  if (positions.size() == 1) {
    const int slot = index.previousFree(first);
    found = slot - anchor;
    offset = limit - 1;
    return slot != ZQFreeSlotIndex::none && found >= limit;
  }
  const long long region = previousCandidate(first >> regionLog2);
  if (region < 0) {
    offset = limit - 1;
    return false;
  }
  if (region != first >> regionLog2) {
    offset = ((region + 1) << regionLog2) - 1 - anchor;
    return false;
  }
  const long long last = std::max(region << regionLog2, anchor + limit);
  const long long slot = fitInRegion(region, last, first, false);
  found = slot - anchor;
  offset = last - 1 - anchor;
  return slot >= 0;
}

// 64 regions that have a free slot and, as far as the filter knows, serve every distance of the field. Where the field's own
// slots come into it, which are only lent, the filter doesn't know.
uint64_t ZQShiftSearch::candidateRegions(size_t word) const {
  uint64_t regions = index.regionsWithFree[word];
  for (int j = 0; j < numberOfTracked; ++j) {
    if (rows[j] >= 0) regions &= index.pairs.word(rows[j], word);
  }
  for (int farther = 1; farther < numberOfTripled && regions != 0; ++farther) {
    for (int nearer = 0; nearer < farther; ++nearer) {
      regions &= ~index.triples.word(ZQTripleFilter::rowOf(distances[nearer], distances[farther]), word);
    }
  }
  const long long first = std::max(firstLent - static_cast<long long>(word) * 64, 0LL);
  const long long last = std::min(lastLent - static_cast<long long>(word) * 64, 63LL);
  if (first <= last) regions |= index.regionsWithFree[word] & (~uint64_t{0} << first) & (~uint64_t{0} >> (63 - last));
  return regions;
}

long long ZQShiftSearch::nextCandidate(long long region) const {
  const size_t numberOfWords = index.regionsWithFree.size();
  size_t word = static_cast<size_t>(region >> 6);
  if (word >= numberOfWords) return -1;
  uint64_t regions = candidateRegions(word) & (~uint64_t{0} << (region & 63));
  while (regions == 0) {
    if (++word == numberOfWords) return -1;
    regions = candidateRegions(word);
  }
  return static_cast<long long>(word * 64) + std::countr_zero(regions);
}

long long ZQShiftSearch::previousCandidate(long long region) const {
  if (region < 0) return -1;
  size_t word = static_cast<size_t>(region >> 6);
  uint64_t regions = candidateRegions(word) & (~uint64_t{0} >> (63 - (region & 63)));
  while (regions == 0) {
    if (word-- == 0) return -1;
    regions = candidateRegions(word);
  }
  return static_cast<long long>(word * 64) + 63 - std::countl_zero(regions);
}

// The slot in `lowest` .. `highest` of the region where the field's first position fits, or -1. Only words that have a free slot
// are looked at, from the end that is asked for; what they gave is kept for a search from the other end.
long long ZQShiftSearch::fitInRegion(long long region, long long lowest, long long highest, bool ascending) {
  if (region != regionOfFits) {
    regionOfFits = region;
    wordsToTell = index.wordsWithFree[static_cast<size_t>(region)];
    wordsOfFits = 0;
    hasFirstPair = false;
    if (index.numberOfFreeInRegion[static_cast<size_t>(region)] > mostFreeOfPackedRegion) findFits(region);
  }
  const long long firstSlot = region << regionLog2;
  const int low = static_cast<int>(std::max(lowest - firstSlot, 0LL));
  const int high = static_cast<int>(std::min(highest - firstSlot, (1LL << regionLog2) - 1));
  if (low > high) return -1;
  const int from = low >> 6;
  const int to = high >> 6;
  uint64_t words = (wordsToTell | wordsOfFits) & (~uint64_t{0} << from) & (~uint64_t{0} >> (63 - to));
  if (words == 0) return -1;
  while (words != 0) {
    const int word = ascending ? std::countr_zero(words) : 63 - std::countl_zero(words);
    const uint64_t bitOfWord = uint64_t{1} << word;
    words &= ~bitOfWord;
    uint64_t bits = (wordsToTell & bitOfWord) != 0 ? fitsInWord(region, word) : fits[word];
    if (word == from) bits &= ~uint64_t{0} << (low & 63);
    if (word == to) bits &= ~uint64_t{0} >> (63 - (high & 63));
    if (bits != 0) return firstSlot + word * 64 + (ascending ? std::countr_zero(bits) : 63 - std::countl_zero(bits));
  }
  if ((wordsToTell | wordsOfFits) == 0) crossOff(static_cast<size_t>(region));
  return -1;
}

// Which slots of the region the first position fits at: so many words at once as a processor holds, one distance after the other,
// until nothing is left of them. This is the way for a region with many free slots, where a word keeps some for long.
void ZQShiftSearch::findFits(long long region) {
  wordsToTell = 0;
  const size_t begin = static_cast<size_t>(region) * wordsOfRegion;
  const size_t reach = static_cast<size_t>((positions.back() - anchor) >> 6) + wordsOfRegion;
  if (begin + reach >= index.numberOfWords) {
    findFitsAtEnd(region);
    return;
  }
  for (size_t first = 0; first < wordsOfRegion; first += wordsAtOnce) {
    if (keepFits(&index.freeSlots[begin + first], &fits[first])) hasFirstPair = true;
    for (size_t i = first; i < first + wordsAtOnce; ++i) wordsOfFits |= static_cast<uint64_t>(fits[i] != 0) << i;
  }
  if (wordsOfFits == 0) crossOff(static_cast<size_t>(region));
}

// True if the first distance has left something. Sixteen words stay in registers from the first distance to the last.
ZMATRIX_WITH_AVX2_TOO bool ZQShiftSearch::keepFits(const uint64_t* slots, uint64_t* kept) const {
  static_assert(wordsAtOnce == 4 * wordsOfVector);
  FourWords bits0 = wordsFrom(slots)[0].words, bits1 = wordsFrom(slots)[1].words;
  FourWords bits2 = wordsFrom(slots)[2].words, bits3 = wordsFrom(slots)[3].words;
  bool hasPair = false;
  for (size_t j = 1; j < positions.size(); ++j) {
    const int distance = positions[j] - static_cast<int>(anchor);
    const int shift = distance & 63;
    const UnalignedWords* low = wordsFrom(slots + (distance >> 6));
    const UnalignedWords* high = wordsFrom(slots + (distance >> 6) + 1);
    bits0 &= (low[0].words >> shift) | ((high[0].words << 1) << (63 - shift));
    bits1 &= (low[1].words >> shift) | ((high[1].words << 1) << (63 - shift));
    bits2 &= (low[2].words >> shift) | ((high[2].words << 1) << (63 - shift));
    bits3 &= (low[3].words >> shift) | ((high[3].words << 1) << (63 - shift));
    const FourWords any = (bits0 | bits1) | (bits2 | bits3);
    if ((any[0] | any[1] | any[2] | any[3]) == 0) break;
    hasPair = true;
  }
  const FourWords bits[] = {bits0, bits1, bits2, bits3};
  memcpy(kept, bits, sizeof bits);
  return hasPair;
}

// The same where the field reaches beyond the block's end.
void ZQShiftSearch::findFitsAtEnd(long long region) {
  copyFree(static_cast<size_t>(region), fits);
  for (size_t j = 1; j < positions.size(); ++j) {
    if (keepPairs(static_cast<size_t>(region), positions[j] - anchor, fits) == 0) {
      crossOff(static_cast<size_t>(region));
      return;
    }
    hasFirstPair = true;
  }
  for (size_t i = 0; i < wordsOfRegion; ++i) wordsOfFits |= static_cast<uint64_t>(fits[i] != 0) << i;
}

// Which slots of a word of the region the first position fits at.
uint64_t ZQShiftSearch::fitsInWord(long long region, int word) {
  const size_t number = static_cast<size_t>(region) * wordsOfRegion + static_cast<size_t>(word);
  const long long first = static_cast<long long>(number * 64);
  wordsToTell &= ~(uint64_t{1} << word);
  uint64_t bits = index.freeSlots[number];
  for (size_t j = 1; j < positions.size(); ++j) {
    bits &= index.slotsFrom(first + (positions[j] - anchor));
    if (bits == 0) return 0;
    hasFirstPair = true;
  }
  fits[word] = bits;
  wordsOfFits |= uint64_t{1} << word;
  return bits;
}

// A region that has no pair of some distance at all is crossed off for that distance. A search that goes on and on looks at the
// triples as well, which is more work; where many slots are free all triples occur.
void ZQShiftSearch::crossOff(size_t region) {
  for (int j = 0; j < numberOfTracked; ++j) {
    if (j == 0 ? hasFirstPair : hasPair(region, distances[j])) continue;
    if (rows[j] < 0) rows[j] = index.pairs.rowOfOrNew(distances[j]);
    if (rows[j] >= 0) index.pairs.setNo(rows[j], region);
  }
  if (++regionsInVain > vainRegionsOfShortSearch && index.numberOfFreeInRegion[region] <= ZQTripleFilter::mostFreeOfRegion)
    crossOffTriples(region);
}

bool ZQShiftSearch::hasPair(size_t region, long long distance) const {
  for (uint64_t words = index.wordsWithFree[region]; words != 0; words &= words - 1) {
    const size_t word = region * wordsOfRegion + static_cast<size_t>(std::countr_zero(words));
    if ((index.freeSlots[word] & index.slotsFrom(static_cast<long long>(word * 64) + distance)) != 0) return true;
  }
  return false;
}

void ZQShiftSearch::crossOffTriples(size_t region) {
  uint64_t pairs[mostTripledDistances][wordsOfRegion];
  for (int j = 0; j < numberOfTripled; ++j) {
    copyFree(region, pairs[j]);
    keepPairs(region, distances[j], pairs[j]);
  }
  for (int farther = 1; farther < numberOfTripled; ++farther) {
    for (int nearer = 0; nearer < farther; ++nearer) {
      uint64_t any = 0;
      for (size_t i = 0; i < wordsOfRegion; ++i) any |= pairs[nearer][i] & pairs[farther][i];
      if (any == 0) index.triples.setNone(ZQTripleFilter::rowOf(distances[nearer], distances[farther]), region);
    }
  }
}

void ZQShiftSearch::copyFree(size_t region, uint64_t* slots) const {
  const size_t first = region * wordsOfRegion;
  for (size_t i = 0; i < wordsOfRegion; ++i) slots[i] = first + i < index.numberOfWords ? index.freeSlots[first + i] : 0;
}

// Of the slots in `slots`, which stand for a region's, those stay that have a free slot `distance` above them; not 0 if any do.
ZMATRIX_WITH_AVX2_TOO uint64_t ZQShiftSearch::keepPairs(size_t region, long long distance, uint64_t* slots) const {
  const size_t begin = region * wordsOfRegion + static_cast<size_t>(distance >> 6);
  const int shift = static_cast<int>(distance & 63);
  const size_t within = begin < index.numberOfWords ? std::min(index.numberOfWords - begin, wordsOfRegion) : 0;
  const uint64_t* shifted = &index.freeSlots[0] + (within > 0 ? begin : 0);
  uint64_t any = 0;
  if (shift == 0) {
    for (size_t i = 0; i < within; ++i) any |= slots[i] &= shifted[i];
  } else {
    for (size_t i = 0; i < within; ++i) any |= slots[i] &= (shifted[i] >> shift) | (shifted[i + 1] << (64 - shift));
  }
  for (size_t i = within; i < wordsOfRegion; ++i) slots[i] = 0;
  return any;
}

}  // namespace zmatrix
