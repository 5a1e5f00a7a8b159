#include "store/ZQShiftSearch.h"

#include <algorithm>
#include <bit>

namespace zmatrix {

ZQShiftSearch::ZQShiftSearch(ZQFreeSlotIndex& indexOfBlock, const std::vector<int>& positionsToPlace)
    : index(indexOfBlock), positions(positionsToPlace), anchor(positionsToPlace.front()) {
  numberOfTracked = static_cast<int>(std::min<size_t>(positions.size() - 1, mostTrackedDistances));
  for (int j = 0; j < numberOfTracked; ++j) rows[j] = index.pairs.rowOf(positions[static_cast<size_t>(j) + 1] - anchor);
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
      if (down(left, lowest, found)) result.left = -found;
    } else if (up(right, highest, found)) {
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

// 64 regions that have a free slot and, as far as the filter knows, serve every distance of the field.
uint64_t ZQShiftSearch::candidateRegions(size_t word) const {
  uint64_t regions = index.regionsWithFree[word];
  for (int j = 0; j < numberOfTracked; ++j) {
    if (rows[j] >= 0) regions &= index.pairs.word(rows[j], word);
  }
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

// The slot in `lowest` .. `highest` of the region where the field's first position fits, or -1. A region that turns out to have
// no pair of some distance at all is crossed off for that distance.
long long ZQShiftSearch::fitInRegion(long long region, long long lowest, long long highest, bool ascending) {
  uint64_t pairsSeen[mostTrackedDistances] = {};
  uint64_t words = index.wordsWithFree[static_cast<size_t>(region)];
  while (words != 0) {
    const int bit = ascending ? std::countr_zero(words) : 63 - std::countl_zero(words);
    words &= ~(uint64_t{1} << bit);
    const long long firstSlot = (region * 64 + bit) * 64;
    uint64_t fits = fitsOfWord(firstSlot, index.freeSlots[static_cast<size_t>(firstSlot >> 6)], pairsSeen);
    if (fits == 0 || firstSlot + 63 < lowest || firstSlot > highest) continue;
    if (firstSlot < lowest) fits &= ~uint64_t{0} << (lowest - firstSlot);
    if (firstSlot + 63 > highest) fits &= ~uint64_t{0} >> (63 - (highest - firstSlot));
    if (fits != 0) return firstSlot + (ascending ? std::countr_zero(fits) : 63 - std::countl_zero(fits));
  }
  for (int j = 0; j < numberOfTracked; ++j) {
    if (pairsSeen[j] != 0) continue;
    if (rows[j] < 0) rows[j] = index.pairs.rowOfOrNew(positions[static_cast<size_t>(j) + 1] - anchor);
    if (rows[j] >= 0) index.pairs.setNo(rows[j], static_cast<size_t>(region));
  }
  return -1;
}

uint64_t ZQShiftSearch::fitsOfWord(long long firstSlot, uint64_t freeSlots, uint64_t* pairsSeen) const {
  uint64_t fits = freeSlots;
  const int numberOfDistances = static_cast<int>(positions.size()) - 1;
  for (int j = 0; j < numberOfDistances; ++j) {
    const bool isTracked = j < numberOfTracked;
    if (fits == 0 && !isTracked) break;
    if (fits == 0 && pairsSeen[j] != 0) continue;
    const uint64_t pairs = freeSlots & index.slotsFrom(firstSlot + (positions[static_cast<size_t>(j) + 1] - anchor));
    if (isTracked) pairsSeen[j] |= pairs;
    fits &= pairs;
  }
  return fits;
}

}  // namespace zmatrix
