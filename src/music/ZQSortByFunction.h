// Sorting of arrays of pointers by a host's compare function, for all lists in `music`.
#pragma once

#include <cstdlib>

namespace zmatrix {

/// Compares the elements that two pointers to elements point to: below 0, 0, or above 0.
using ZQCompareFunction = int (*)(const void*, const void*);

/// Sorts the pointers. An array that is already in order, the common case, costs one pass and is unchanged. Otherwise the sort is
/// not stable.
template <class Element>
void sortPointersByFunction(Element** elements, int numberOfElements, ZQCompareFunction compare) {
  if (elements == nullptr || compare == nullptr) return;
  for (int i = 1; i < numberOfElements; i++) {
    if (compare(&elements[i - 1], &elements[i]) <= 0) continue;
    std::qsort(elements, static_cast<size_t>(numberOfElements), sizeof(Element*), compare);
    return;
  }
}

}  // namespace zmatrix
