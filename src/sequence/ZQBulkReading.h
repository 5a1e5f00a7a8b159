// Reads many items, or all successors of a context, in one call: for bindings, where each call is expensive.
#pragma once

#include <algorithm>
#include <cstddef>

#include "frame/ZQMemory.h"
#include "frame/ZQSystemOwned.h"
#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// Reads up to `numberOfItems` items and stops at the end of a sequence. Returns the number of items read; the arrays of
/// probabilities may be null.
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

/// Returns the number of items that follow a stored context, or -1 if the context is not stored or memory runs out. The first
/// `capacity` items are written to those arrays that aren't null.
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
    const auto* const element = matrix->getMatrixElementFromMatrixHandle(handles[at]);
    if (item == nullptr || element == nullptr) return -1;
    if (items != nullptr) items = std::copy_n(item, dimension, items);
    if (counts != nullptr) counts[at] = element->getWriteCount();
    if (starts != nullptr) starts[at] = element->getWriteCountWithoutPredecessor();
  }
  return count;
}

/// Finds the items that follow the beginning of a sentence: counts the successors of the phrase anywhere and subtracts the counts
/// of those after each item that precedes the phrase inside a sentence. Returns their number; -1 if the counts don't allow it, as
/// in a pruned matrix, or memory runs out.
template <class Matrix>
int readSentenceStarts(Matrix* matrix, const int* beginning, int length, int capacity, int* items, int* counts) {
  if (matrix->getMatrixInfo()->getCoordinateDimension() != 1 || items == nullptr || counts == nullptr || length < 0) return -1;
  const int followers = readSuccessors(matrix, beginning, length, capacity, items, counts, length == 0 ? counts : nullptr);
  if (followers < 0 || followers > capacity) return followers;
  int kinds = 0;
  const SystemOwned<int> first(length == 0 ? nullptr
                                           : matrix->getSuccessorHandlesFromMatrixHandle(matrix->getCurrentMatrixID(), &kinds));
  const SystemOwned<int> within(static_cast<int*>(systemMalloc((static_cast<std::size_t>(length) + 1) * sizeof(int))));
  if (within == nullptr) return -1;
  if (length > 0) std::copy_n(beginning, length, within.get() + 1);
  for (int kind = 0; kind < kinds; ++kind) {
    within[0] = *matrix->getObjexFromMatrixHandle(first[kind]);
    const int handle = matrix->getMatrixHandleFromElementVector(within.get(), length + 1);
    int count = 0;
    const SystemOwned<int> handles(handle < 0 ? nullptr : matrix->getSuccessorHandlesFromMatrixHandle(handle, &count));
    for (int at = 0; handles != nullptr && at < count; ++at) {
      int* const place = std::find(items, items + followers, *matrix->getObjexFromMatrixHandle(handles[at]));
      if (place == items + followers) return -1;
      int& rest = counts[place - items];
      rest -= matrix->getMatrixElementFromMatrixHandle(handles[at])->getWriteCount();
      if (rest < 0) return -1;
    }
  }
  return followers;
}

}  // namespace zmatrix
