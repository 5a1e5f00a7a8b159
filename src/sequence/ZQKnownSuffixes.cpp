#include "sequence/ZQKnownSuffixes.h"

#include <algorithm>

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

/// False if the element at a position has no successors. Prints a message for a position above the highest slot in use.
bool hasSuccessors(ZQMatrixBase& matrix, int handle) {
  if (handle > matrix.getMaximalStack()) dbPrintf(0, "initializeKernelSequence: error: handle > maxStackPtr!\n");
  return matrix.hasMatrixHandleSuccessors(handle) >= 1;
}

/// Places don't depend on each other, so each pass prefetches the records that the next one reads and their cache misses overlap.
/// With only a few places the misses overlap without prefetching.
constexpr size_t fewPlaces = 4;

template <class Place>
void fetchChildren(const ZQMatrixBase& matrix, std::span<const Place> places, int coordinate) {
  if (places.size() <= fewPlaces) return;
  for (const Place& place : places) matrix.prefetchSlot(place.fieldBegin + coordinate);
}

template <class Place>
void fetchFields(const ZQMatrixBase& matrix, std::span<const Place> places) {
  if (places.size() <= fewPlaces) return;
  for (const Place& place : places) matrix.prefetchSlot(place.firstInField);
}

/// Steps from places to their children for a coordinate and writes these to `children`, which may be the same array. Returns the
/// number of children before the first missing one.
template <class Place>
size_t stepDown(const ZQMatrixBase& matrix, std::span<const Place> places, int coordinate, Place* children) {
  fetchChildren(matrix, places, coordinate);
  size_t found = 0;
  for (const Place& place : places) {
    const long long position = place.fieldBegin + coordinate;
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    if (!isChildAt(element, position, place.position)) break;
    Place& child = children[found++];
    child.firstInField = firstChildOf(element, position);
    child.position = static_cast<int>(position);
    child.isWritten = element->getWriteCount() > 0;
  }
  fetchFields(matrix, std::span<const Place>(children, found));
  return found;
}

/// Sets fieldBegin of places to the field of their children. Returns the number of places before the first one without children.
template <class Place>
size_t enterFields(const ZQMatrixBase& matrix, std::span<Place> places) {
  size_t entered = 0;
  for (Place& place : places) {
    const ZQMatrixBaseElement* first = matrix.elementAt(place.firstInField);
    if (first == nullptr) break;
    place.fieldBegin = place.firstInField - first->getIndexInDimension();
    ++entered;
  }
  return entered;
}

/// The same, up to the first place that is only a path element or has no successors.
template <class Place>
size_t enterKnownFields(ZQMatrixBase& matrix, std::span<Place> places) {
  const bool isNextDimension = matrix.getMatrixInfo()->getCoordinateDimension() == 1;
  const int maximalStack = matrix.getMatrixFileHeader()->getMaximalStack();
  size_t entered = 0;
  for (Place& place : places) {
    if (!place.isWritten && place.firstInField >= 0) break;
    const ZQMatrixBaseElement* first = matrix.elementAt(place.firstInField);
    const bool isFollowed = isNextDimension && first != nullptr && first->getWriteCount() > 0 && place.position <= maximalStack;
    if (!isFollowed && !hasSuccessors(matrix, place.position)) break;
    place.fieldBegin = place.firstInField - first->getIndexInDimension();
    ++entered;
  }
  return entered;
}

}  // namespace

KnownSuffix ZQKnownSuffixes::findLongest(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  return isContinuedBy(matrix, sequence, length) ? oneItemFurther(matrix, sequence, length, longestSearched)
                                                 : fromTheRoot(matrix, sequence, length, longestSearched);
}

bool ZQKnownSuffixes::isContinuedBy(const ZQMatrixBase& matrix, const int* sequence, int length) const {
  if (root_ != matrix.getCurrentMatrixID() || layoutVersion_ != matrix.getLayoutVersion()) return false;
  if (coordinateDimension_ != matrix.getMatrixInfo()->getCoordinateDimension()) return false;
  if (static_cast<size_t>(length) != items_.size() + static_cast<size_t>(coordinateDimension_)) return false;
  int differences = 0;
  for (size_t i = 0; i < items_.size(); ++i) differences |= items_[i] ^ sequence[i];
  return differences == 0;
}

KnownSuffix ZQKnownSuffixes::oneItemFurther(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  const int c = coordinateDimension_;
  const int longestStored = matrix.getMatrixInfo()->getMaxDimOfMatrix() - 1;
  const int longest = std::max(std::min({length / c, (longestSearched - 1) / c + 1, longestStored / c}), 0);
  size_t number = std::min(static_cast<size_t>(longest), places_.size());
  if (newPlaces_.makeRoomFor(number + 1) == nullptr) return fromTheRoot(matrix, sequence, length, longestSearched);
  enterRoot(matrix);
  Place* const children = newPlaces_.begin() + 1;
  const int* const item = sequence + (length - c);
  number = stepDown<Place>(matrix, {places_.begin(), number}, item[0], children);
  for (int i = 1; i < c; ++i) {
    number = enterFields(matrix, Places(children, number));
    number = stepDown<Place>(matrix, {children, number}, item[i], children);
  }
  number = enterKnownFields(matrix, Places(children, number));
  const KnownSuffix known = number > 0 ? KnownSuffix{static_cast<int>(number) * c, children[number - 1].position} : KnownSuffix{};
  newPlaces_.truncate(number + 1);
  places_.swap(newPlaces_);
  remember(matrix, sequence + (length - known.length), known.length, true);
  return known;
}

/// Sets place 0 to the root, the path of the empty ending. Position -1, for an empty sub-matrix, is no element's parent.
void ZQKnownSuffixes::enterRoot(const ZQMatrixBase& matrix) {
  places_[0] = {0, -1, -1, false};
  const ZQMatrixBaseElement* element = matrix.elementAt(root_);
  if (element == nullptr) return;
  places_[0].firstInField = firstChildOf(element, root_);
  if (enterFields(matrix, Places(places_.begin(), 1)) == 1) places_[0].position = root_;
}

KnownSuffix ZQKnownSuffixes::fromTheRoot(ZQMatrixBase& matrix, const int* sequence, int length, int longestSearched) {
  const int c = matrix.getMatrixInfo()->getCoordinateDimension();
  bool isComplete = places_.makeRoomFor(1) != nullptr;
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
  Place place{0, firstChildOf(matrix.elementAt(position), position), position, true};
  return enterFields(matrix, Places(&place, 1)) == 1 && places_.append(place);
}

/// Keeps the result of a search with the items of its context; keeps nothing if there is no room for all of it.
void ZQKnownSuffixes::remember(const ZQMatrixBase& matrix, const int* context, int length, bool isComplete) {
  const bool isKept = isComplete && items_.copyFrom(std::span<const int>(context, static_cast<size_t>(length)));
  root_ = isKept ? matrix.getCurrentMatrixID() : -1;
  layoutVersion_ = matrix.getLayoutVersion();
  coordinateDimension_ = matrix.getMatrixInfo()->getCoordinateDimension();
}

}  // namespace zmatrix
