// Sorting of arrays of pointers by a host's compare function, as all lists of this folder do it.
#pragma once

#include <cstdlib>

namespace zmatrix {

/// Compares what two pointers to elements point to: below 0, 0, or above 0.
using ZQCompareFunction = int (*)(const void*, const void*);

/// Sorts the pointers. An array that is in order already, which is the common case, costs one pass and stays as it is; of one
/// that isn't, elements that compare equal may change places.
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
