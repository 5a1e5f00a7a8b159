// Sorting of tracks by a numeric key of each element, in linear time. Most tracks consist of a few ascending runs, which are
// merged; other tracks are sorted by the digits of their keys. The sort is stable, so that results don't depend on the system's
// library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace zmatrix {

/// Maps a time to an unsigned number so that the order is kept.
constexpr uint64_t sortableBits(int time) {
  return static_cast<uint32_t>(time) ^ 0x80000000u;
}

template <class Element>
struct KeyedPointer {
  uint64_t key;
  Element* element;
};

/// Radix sort by keys below 2 to the 48, eight bits at a time from the lowest.
template <class Element>
void sortKeyedPointers(KeyedPointer<Element>* from, KeyedPointer<Element>* to, size_t count, Element** sorted) {
  constexpr int digits = 6, values = 256;
  size_t occurrences[digits][values] = {};
  for (size_t i = 0; i < count; i++) {
    for (int digit = 0; digit < digits; digit++) occurrences[digit][from[i].key >> (8 * digit) & 0xff]++;
  }
  for (int digit = 0; digit < digits; digit++) {
    size_t* places = occurrences[digit];
    if (places[from[0].key >> (8 * digit) & 0xff] == count) continue;  // all keys have the same digit here
    size_t place = 0;
    for (int value = 0; value < values; value++) {
      const size_t number = places[value];
      places[value] = place;
      place += number;
    }
    for (size_t i = 0; i < count; i++) to[places[from[i].key >> (8 * digit) & 0xff]++] = from[i];
    std::swap(from, to);
  }
  for (size_t i = 0; i < count; i++) sorted[i] = from[i].element;
}

/// Finds the ascending runs of an array, as their ends; returns 0 if there are more than `mostRuns`.
template <class Element>
size_t findRuns(const KeyedPointer<Element>* keyed, size_t count, size_t mostRuns, size_t* ends) {
  size_t runs = 0;
  for (size_t i = 1; i <= count; i++) {
    if (i < count && keyed[i - 1].key <= keyed[i].key) continue;
    if (runs == mostRuns) return 0;
    ends[runs++] = i;
  }
  return runs;
}

/// Merges neighbouring runs until one is left; `ends` holds the ends of the runs.
template <class Element>
void mergeRuns(KeyedPointer<Element>* from, KeyedPointer<Element>* to, size_t count, size_t* ends, size_t runs,
               Element** sorted) {
  const auto isLess = [](const KeyedPointer<Element>& a, const KeyedPointer<Element>& b) { return a.key < b.key; };
  while (runs > 1) {
    size_t begin = 0, merged = 0;
    for (size_t run = 0; run < runs; run += 2) {
      const size_t middle = ends[run], end = run + 1 < runs ? ends[run + 1] : middle;
      std::merge(from + begin, from + middle, from + middle, from + end, to + begin, isLess);
      begin = ends[merged++] = end;
    }
    runs = merged;
    std::swap(from, to);
  }
  for (size_t i = 0; i < count; i++) sorted[i] = from[i].element;
}

/// Insertion sort. Gives up, with all elements still in the array, when an element has to move far or all together need more than
/// a few steps per element.
template <class Element, class KeyOf>
[[nodiscard]] bool sortNearlySorted(Element** elements, size_t count, KeyOf keyOf) {
  constexpr size_t mostStepsOfElement = 32;
  size_t stepsLeft = 4 * count;
  uint64_t previousKey = keyOf(elements[0]);
  for (size_t i = 1; i < count; i++) {
    Element* element = elements[i];
    const uint64_t key = keyOf(element);
    if (previousKey <= key) {
      previousKey = key;
      continue;
    }
    const size_t lowestPlace = i - std::min({i, mostStepsOfElement, stepsLeft});
    size_t place = i;
    for (; place > lowestPlace && keyOf(elements[place - 1]) > key; place--) elements[place] = elements[place - 1];
    elements[place] = element;
    stepsLeft -= i - place;
    if (place == lowestPlace && place > 0) return false;
  }
  return true;
}

/// Sorts by `keyOf(element)`, a number below 2 to the 48. Most tracks are nearly in order.
template <class Element, class KeyOf>
void sortPointersByKey(Element** elements, int numberOfElements, KeyOf keyOf) {
  if (elements == nullptr || numberOfElements < 2) return;
  const size_t count = static_cast<size_t>(numberOfElements);
  if (sortNearlySorted(elements, count, keyOf)) return;
  using Keyed = KeyedPointer<Element>;
  const std::unique_ptr<Keyed[]> keyed(new (std::nothrow) Keyed[2 * count]);
  if (keyed == nullptr) {
    std::sort(elements, elements + count, [&](Element* a, Element* b) { return keyOf(a) < keyOf(b); });
    return;
  }
  for (size_t i = 0; i < count; i++) keyed[i] = {keyOf(elements[i]), elements[i]};
  constexpr size_t mostRuns = 16;  // with more runs the radix sort is faster
  size_t ends[mostRuns];
  const size_t runs = findRuns(keyed.get(), count, mostRuns, ends);
  if (runs > 0) return mergeRuns(keyed.get(), keyed.get() + count, count, ends, runs, elements);
  sortKeyedPointers(keyed.get(), keyed.get() + count, count, elements);
}

}  // namespace zmatrix
