#include "sequence/ZQKnownSuffixes.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

namespace {

bool isChildAt(const ZQMatrixBaseElement* element, long long position, int parent) {
  return element != nullptr && element->getOffsetToElementInPrevDimension() != 0 &&
         position + element->getOffsetToElementInPrevDimension() == parent;
}

/// The position of the first child, or -1.
long long firstChildOf(const ZQMatrixBaseElement* element, long long position) {
  const int offset = element->getOffsetToElementInNextDimension();
  return offset != 0 ? position + offset : -1;
}

/// False, and a message for a position that can't be, if nothing follows what stands there.
bool hasSuccessors(ZQMatrixBase& matrix, int handle) {
  if (handle > matrix.getMaximalStack()) dbPrintf(0, "initializeKernelSequence: error: handle > maxStackPtr!\n");
  return matrix.hasMatrixHandleSuccessors(handle) >= 1;
}

}  // namespace

KnownSuffix ZQKnownSuffixes::findLongest(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  return isContinuedBy(matrix, sequence, length) ? oneItemFurther(matrix, sequence, length, longestSearched)
                                                 : fromTheRoot(matrix, sequence, length, longestSearched);
}

bool ZQKnownSuffixes::isContinuedBy(const ZQMatrixBase& matrix, const int* sequence, int length) const {
  return root == matrix.getCurrentMatrixID() && layoutVersion == matrix.getLayoutVersion() &&
         coordinateDimension == matrix.getMatrixInfo()->getCoordinateDimension() &&
         static_cast<size_t>(length) == items.size() + static_cast<size_t>(coordinateDimension) &&
         (items.empty() || memcmp(items.begin(), sequence, items.size() * sizeof(int)) == 0);
}

// The endings don't depend on each other: each pass over them asks for what the next one reads, so that their misses overlap.
KnownSuffix ZQKnownSuffixes::oneItemFurther(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  const int c = coordinateDimension;
  const int longestStored = matrix.getMatrixInfo()->getMaxDimOfMatrix() - 1;
  const int longest = std::min({length / c, (longestSearched - 1) / c + 1, longestStored / c});
  size_t number = std::min(static_cast<size_t>(std::max(longest, 0)), places.size() + 1);
  if (!beginSteps(matrix, number)) return fromTheRoot(matrix, sequence, length, longestSearched);
  const int* const item = sequence + (length - c);
  for (int i = 0; i < c; ++i) {
    number = stepDown(matrix, item[i], number);
    if (i + 1 < c) number = enterFields(matrix, number);
  }
  number = countKnown(matrix, number);
  const bool hasRoom = places.makeRoomFor(number) != nullptr;
  for (size_t i = 0; hasRoom && i < number; ++i) places[i] = {steps[i].fieldBegin, steps[i].position};
  KnownSuffix known;
  if (number > 0) known = {static_cast<int>(number) * c, steps[number - 1].position};
  remember(matrix, sequence + (length - known.length), known.length, hasRoom);
  return known;
}

// No item at all ends at the root.
bool ZQKnownSuffixes::beginSteps(const ZQMatrixBase& matrix, size_t number) {
  if (steps.makeRoomFor(std::max(number, size_t{1})) == nullptr) return false;
  const ZQMatrixBaseElement* rootElement = matrix.elementAt(root);
  const long long first = rootElement != nullptr ? firstChildOf(rootElement, root) : -1;
  const ZQMatrixBaseElement* firstElement = matrix.elementAt(first);
  // Without a field there is no child of the root at the position below.
  steps[0] = {firstElement != nullptr ? first - firstElement->getIndexInDimension() : 0, -1, -1,
              firstElement != nullptr ? root : -1};
  for (size_t i = 1; i < number; ++i) steps[i] = {places[i - 1].fieldBegin, -1, -1, places[i - 1].position};
  return true;
}

/// How many of the endings, from the shortest on, have a child for the coordinate.
size_t ZQKnownSuffixes::stepDown(const ZQMatrixBase& matrix, int coordinate, size_t number) {
  const std::span<Step> all(steps.begin(), number);
  for (Step& step : all) {
    step.child = step.fieldBegin + coordinate;
    matrix.prefetchSlot(step.child);
  }
  size_t found = 0;
  for (Step& step : all) {
    const ZQMatrixBaseElement* element = matrix.elementAt(step.child);
    if (!isChildAt(element, step.child, step.position)) break;
    step.position = static_cast<int>(step.child);
    step.firstBelow = firstChildOf(element, step.child);
    matrix.prefetchSlot(step.firstBelow);
    ++found;
  }
  return found;
}

/// How many of the endings, from the shortest on, have a field below them.
size_t ZQKnownSuffixes::enterFields(const ZQMatrixBase& matrix, size_t number) {
  for (size_t i = 0; i < number; ++i) {
    const ZQMatrixBaseElement* first = matrix.elementAt(steps[i].firstBelow);
    if (first == nullptr) return i;
    steps[i].fieldBegin = steps[i].firstBelow - first->getIndexInDimension();
  }
  return number;
}

/// How many of the endings, from the shortest on, are written and can go on.
size_t ZQKnownSuffixes::countKnown(ZQMatrixBase& matrix, size_t number) {
  const int maximalStack = matrix.getMaximalStack();
  for (size_t i = 0; i < number; ++i) {
    Step& step = steps[i];
    if (step.firstBelow >= 0 && matrix.elementAt(step.position)->getWriteCount() <= 0) return i;
    const ZQMatrixBaseElement* first = matrix.elementAt(step.firstBelow);
    const bool isFollowed =
        first != nullptr && first->getWriteCount() > 0 && coordinateDimension == 1 && step.position <= maximalStack;
    if (!isFollowed && !hasSuccessors(matrix, step.position)) return i;
    if (first == nullptr) return i;
    step.fieldBegin = step.firstBelow - first->getIndexInDimension();
  }
  return number;
}

KnownSuffix ZQKnownSuffixes::fromTheRoot(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  const int c = matrix.getMatrixInfo()->getCoordinateDimension();
  bool isComplete = true;
  places.clear();
  KnownSuffix known;
  for (int suffixLength = c; suffixLength <= length; suffixLength += c) {
    const int handle = matrix.getMatrixHandleFromElementVector(sequence + (length - suffixLength), suffixLength);
    if (handle < 0 || !hasSuccessors(matrix, handle)) break;
    known = {suffixLength, handle};
    isComplete = isComplete && addPlace(matrix, handle);
    if (suffixLength >= longestSearched) break;
  }
  remember(matrix, sequence + (length - known.length), known.length, isComplete);
  return known;
}

bool ZQKnownSuffixes::addPlace(const ZQMatrixBase& matrix, int position) {
  const long long first = firstChildOf(matrix.elementAt(position), position);
  const ZQMatrixBaseElement* firstElement = matrix.elementAt(first);
  return firstElement != nullptr && places.add({first - firstElement->getIndexInDimension(), position});
}

/// Keeps what the search has found, with the context that it ended at; without room for all of it, nothing.
void ZQKnownSuffixes::remember(const ZQMatrixBase& matrix, const int* context, int length, bool isComplete) {
  const bool isKept = isComplete && items.copyFrom(std::span<const int>(context, static_cast<size_t>(length)));
  root = isKept ? matrix.getCurrentMatrixID() : -1;
  layoutVersion = matrix.getLayoutVersion();
  coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
}

}  // namespace zmatrix
