#include "store/ZQShiftSearch.h"

#include <algorithm>
#include <bit>

namespace zmatrix {

ZQShiftSearch::ZQShiftSearch(ZQFreeSlotIndex& indexOfBlock, std::span<const int> positionsToPlace, std::span<const int> own)
    : index_(indexOfBlock), positions_(positionsToPlace), anchor_(positionsToPlace.front()) {
  const long long width = positions_.back() - anchor_;
  if (!own.empty()) {
    firstLent_ = std::max(own.front() - width, 0LL) >> regionLog2;
    lastLent_ = own.back() >> regionLog2;
  }
  numberOfTracked_ = static_cast<int>(std::min<size_t>(positions_.size() - 1, mostTrackedDistances));
  for (int j = 0; j < numberOfTracked_; ++j) {
    distances_[j] = positions_[static_cast<size_t>(j) + 1] - anchor_;
    rows_[j] = ZQPairFilter::rowOf(distances_[j]);
  }
}

long long ZQShiftSearch::nextFit(long long from, long long to) {
  if (from > to) return none;
  if (isSingle()) return nextFreeOffset(from, to);
  const long long last = (anchor_ + to) >> regionLog2;
  for (Candidates above = candidatesFrom((anchor_ + from) >> regionLog2, last); above.region != noRegion; advance(above, last)) {
    const long long slot = fitInRegion(above.region, anchor_ + from, anchor_ + to, true);
    if (slot >= 0) return slot - anchor_;
  }
  return none;
}

long long ZQShiftSearch::previousFit(long long from, long long to) {
  if (from < to) return none;
  if (isSingle()) return previousFreeOffset(from, to);
  const long long first = (anchor_ + to) >> regionLog2;
  for (Candidates below = candidatesBackFrom((anchor_ + from) >> regionLog2, first); below.region != noRegion;
       goBack(below, first)) {
    const long long slot = fitInRegion(below.region, anchor_ + to, anchor_ + from, false);
    if (slot >= 0) return slot - anchor_;
  }
  return none;
}

// Searches the nearer of the next candidate regions on both sides, until a fit on one side is nearer than the candidates left on
// the other.
ZQShiftSearch::Nearest ZQShiftSearch::nearest(long long lowest, long long highest) {
  Nearest result;
  if (isSingle()) {
    result.right = nextFreeOffset(1, highest);
    const long long left = previousFreeOffset(-1, result.right == none ? lowest : std::max(lowest, -result.right));
    if (left != none) result.left = -left;
    return result;
  }
  Candidates below, above;
  if (lowest <= -1) below = candidatesBackFrom((anchor_ - 1) >> regionLog2, (anchor_ + lowest) >> regionLog2);
  if (highest >= 1) above = candidatesFrom((anchor_ + 1) >> regionLog2, (anchor_ + highest) >> regionLog2);
  for (;;) {
    long long toBelow = below.region == noRegion ? none : std::max(anchor_ - ((below.region + 1) << regionLog2) + 1, 1LL);
    long long toAbove = above.region == noRegion ? none : std::max((above.region << regionLog2) - anchor_, 1LL);
    if (toBelow > -lowest) toBelow = none;
    if (toAbove > highest) toAbove = none;
    if (toBelow == none && toAbove == none) return result;
    if (toBelow <= toAbove) {
      const long long slot = fitInRegion(below.region, anchor_ + lowest, anchor_ - 1, false);
      if (slot < 0) {
        goBack(below, (anchor_ + lowest) >> regionLog2);
      } else {
        result.left = anchor_ - slot;
        highest = std::min(highest, result.left - 1);
        below.region = noRegion;
      }
    } else {
      const long long slot = fitInRegion(above.region, anchor_ + 1, anchor_ + highest, true);
      if (slot < 0) {
        advance(above, (anchor_ + highest) >> regionLog2);
      } else {
        result.right = slot - anchor_;
        lowest = std::max(lowest, -result.right);
        above.region = noRegion;
      }
    }
  }
}

long long ZQShiftSearch::nextFreeOffset(long long from, long long to) const {
  const int slot = from <= to ? index_.nextFree(anchor_ + from) : ZQFreeSlotIndex::none;
  return slot != ZQFreeSlotIndex::none && slot - anchor_ <= to ? slot - anchor_ : none;
}

long long ZQShiftSearch::previousFreeOffset(long long from, long long to) const {
  const int slot = from >= to ? index_.previousFree(anchor_ + from, anchor_ + to) : ZQFreeSlotIndex::none;
  return slot != ZQFreeSlotIndex::none ? slot - anchor_ : none;
}

// The candidates among 64 regions: those that have a free slot and that the filter doesn't rule out for any of the field's
// distances. Regions that the field's own slots can affect are always candidates, since the filter is not updated for lent slots.
uint64_t ZQShiftSearch::candidateRegions(size_t word) const {
  uint64_t regions = index_.regionsWithFree_[word];
  for (int j = 0; j < numberOfTracked_; ++j) {
    if (rows_[j] >= 0) regions &= index_.pairs_.word(rows_[j], word);
  }
  const long long first = std::max(firstLent_ - static_cast<long long>(word) * 64, 0LL);
  const long long last = std::min(lastLent_ - static_cast<long long>(word) * 64, 63LL);
  if (first <= last) regions |= index_.regionsWithFree_[word] & (~uint64_t{0} << first) & (~uint64_t{0} >> (63 - last));
  return regions;
}

ZQShiftSearch::Candidates ZQShiftSearch::candidatesFrom(long long region, long long last) const {
  Candidates candidates;
  candidates.word = region >> 6;
  if (candidates.word >= static_cast<long long>(index_.regionsWithFree_.size())) return candidates;
  candidates.regionsLeft = candidateRegions(static_cast<size_t>(candidates.word)) & (~uint64_t{0} << (region & 63));
  advance(candidates, last);
  return candidates;
}

ZQShiftSearch::Candidates ZQShiftSearch::candidatesBackFrom(long long region, long long first) const {
  Candidates candidates;
  candidates.word = region >> 6;
  candidates.regionsLeft = candidateRegions(static_cast<size_t>(candidates.word)) & (~uint64_t{0} >> (63 - (region & 63)));
  goBack(candidates, first);
  return candidates;
}

void ZQShiftSearch::advance(Candidates& candidates, long long last) const {
  const long long lastWord = std::min(last >> 6, static_cast<long long>(index_.regionsWithFree_.size()) - 1);
  candidates.region = noRegion;
  while (candidates.regionsLeft == 0) {
    if (++candidates.word > lastWord) return;
    candidates.regionsLeft = candidateRegions(static_cast<size_t>(candidates.word));
  }
  candidates.region = candidates.word * 64 + std::countr_zero(candidates.regionsLeft);
  candidates.regionsLeft &= candidates.regionsLeft - 1;
}

void ZQShiftSearch::goBack(Candidates& candidates, long long first) const {
  candidates.region = noRegion;
  while (candidates.regionsLeft == 0) {
    if (--candidates.word < first >> 6) return;
    candidates.regionsLeft = candidateRegions(static_cast<size_t>(candidates.word));
  }
  const int bit = 63 - std::countl_zero(candidates.regionsLeft);
  candidates.region = candidates.word * 64 + bit;
  candidates.regionsLeft &= ~(uint64_t{1} << bit);
}

// The first slot of the region within `lowest` .. `highest`, from below if `ascending`, else from above, at which the field's
// first position fits; -1 if there is none.
long long ZQShiftSearch::fitInRegion(long long region, long long lowest, long long highest, bool ascending) {
  if (region != regionOfFits_) {
    regionOfFits_ = region;
    findFits(static_cast<size_t>(region));
  }
  if (fits_.wordsWithFit == 0) return -1;
  const long long firstSlot = region << regionLog2;
  const int low = static_cast<int>(std::max(lowest - firstSlot, 0LL));
  const int high = static_cast<int>(std::min(highest - firstSlot, (1LL << regionLog2) - 1));
  if (low > high) return -1;
  const int from = low >> 6;
  const int to = high >> 6;
  uint64_t words = fits_.wordsWithFit & (~uint64_t{0} << from) & (~uint64_t{0} >> (63 - to));
  while (words != 0) {
    const int word = ascending ? std::countr_zero(words) : 63 - std::countl_zero(words);
    words &= ~(uint64_t{1} << word);
    uint64_t bits = fits_.words[word];
    if (word == from) bits &= ~uint64_t{0} << (low & 63);
    if (word == to) bits &= ~uint64_t{0} >> (63 - (high & 63));
    if (bits != 0) return firstSlot + word * 64 + (ascending ? std::countr_zero(bits) : 63 - std::countl_zero(bits));
  }
  return -1;
}

void ZQShiftSearch::findFits(size_t region) {
  if (reachesEnd(region, positions_.back() - anchor_)) {
    findFitsAtEnd(region);
  } else {
    fits_.find(&index_.freeSlots_[region * wordsOfRegion], positions_);
  }
  if (fits_.wordsWithFit == 0) ruleOutDistances(region);
}

// The slower search for a region from which the field reaches beyond the end of the block.
void ZQShiftSearch::findFitsAtEnd(size_t region) {
  fits_.wordsWithFit = 0;
  fits_.numberTested = mostTrackedDistances;
  for (uint64_t words = index_.wordsWithFree_[region]; words != 0; words &= words - 1) {
    const int word = std::countr_zero(words);
    const size_t number = region * wordsOfRegion + static_cast<size_t>(word);
    uint64_t bits = index_.freeSlots_[number];
    for (size_t j = 1; j < positions_.size() && bits != 0; ++j) {
      bits &= index_.slotsFrom(static_cast<long long>(number * 64) + (positions_[j] - anchor_));
    }
    fits_.words[word] = bits;
    if (bits != 0) fits_.wordsWithFit |= uint64_t{1} << word;
  }
}

// Rules out the distances of which a region without a fit has no pair, among those that were tested.
void ZQShiftSearch::ruleOutDistances(size_t region) {
  if (index_.numberOfFreeInRegion_[region] > mostFreeToRuleOut) return;
  const int number = std::min(fits_.numberTested, numberOfTracked_);
  for (int j = 0; j < number; ++j) {
    if (rows_[j] < 0 || (fits_.numberTested > 1 && hasPair(region, distances_[j]))) continue;
    index_.pairs_.ruleOut(rows_[j], region);
  }
}

bool ZQShiftSearch::hasPair(size_t region, long long distance) const {
  if (!reachesEnd(region, distance)) return regionHasPair(&index_.freeSlots_[region * wordsOfRegion], distance);
  for (uint64_t words = index_.wordsWithFree_[region]; words != 0; words &= words - 1) {
    const size_t word = region * wordsOfRegion + static_cast<size_t>(std::countr_zero(words));
    if ((index_.freeSlots_[word] & index_.slotsFrom(static_cast<long long>(word * 64) + distance)) != 0) return true;
  }
  return false;
}

}  // namespace zmatrix
