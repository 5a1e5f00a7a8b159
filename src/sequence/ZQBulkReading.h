// Reading many items, and all successors of a context, in one call: what bindings need, to which each call is dear.
#pragma once

#include <algorithm>

#include "frame/ZQSystemOwned.h"
#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// Reads up to `numberOfItems` items, on to where a sequence ends. Probabilities may be null.
template <class Matrix>
int readItems(Matrix* matrix, int numberOfItems, int* items, double* probabilities, double* stopProbabilities) {
  if (items == nullptr) return 0;
  const int dimension = matrix->getMatrixInfo()->getCoordinateDimension();
  int read = 0;
  for (; read < numberOfItems; ++read) {
    double probability = 0, stopProbability = 0;
    const int* const item = matrix->readObjexFromMatrix(&probability, &stopProbability);
    if (item == nullptr) break;
    items = std::copy_n(item, dimension, items);
    if (probabilities != nullptr) probabilities[read] = probability;
    if (stopProbabilities != nullptr) stopProbabilities[read] = stopProbability;
  }
  return read;
}

/// How many items follow a stored context, -1 if it isn't there; the first `capacity` of them go into the arrays that aren't
/// null.
template <class Matrix>
int readSuccessors(Matrix* matrix, const int* context, int length, int capacity, int* items, int* counts, int* starts) {
  const bool isRoot = context == nullptr || length < 1;
  const int handle = isRoot ? matrix->getCurrentMatrixID() : matrix->getMatrixHandleFromElementVector(context, length);
  if (handle < 0) return -1;
  int count = 0;
  const SystemOwned<int> handles(matrix->getSuccessorHandlesFromMatrixHandle(handle, &count));
  if (handles == nullptr) return count > 0 ? -1 : 0;
  const int dimension = matrix->getMatrixInfo()->getCoordinateDimension();
  for (int at = 0; at < std::min(count, capacity); ++at) {
    const int* const item = matrix->getObjexFromMatrixHandle(handles[at]);
    const auto* const element = static_cast<const ZQMatrixMediumElement*>(matrix->getMatrixElementFromMatrixHandle(handles[at]));
    if (item == nullptr || element == nullptr) return -1;
    if (items != nullptr) items = std::copy_n(item, dimension, items);
    if (counts != nullptr) counts[at] = element->getWriteCount();
    if (starts != nullptr) starts[at] = element->getWriteCountWithoutPredecessor();
  }
  return count;
}

}  // namespace zmatrix
