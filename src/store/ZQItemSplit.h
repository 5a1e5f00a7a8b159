// Splits items that are wider than a coordinate: a 32-bit item into two coordinates, a 64-bit item into four, by truncating
// division by maximalMatrixIndex, so that every coordinate of a negative item is negative or 0.
#pragma once

#include <climits>
#include <iterator>
#include <memory>
#include <new>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// A value that doesn't fit an int becomes the nearest int. It only occurs if maximalMatrixIndex is small, so that a write then
/// refuses the coordinate.
inline int coordinateOf(long long value) {
  return value > INT_MAX ? INT_MAX : value < -INT_MAX ? -INT_MAX : static_cast<int>(value);
}

inline void splitItem(int item, long long m, int* coordinates) {
  coordinates[0] = coordinateOf(item / m);
  coordinates[1] = coordinateOf(item % m);
}

inline void splitItem(long long item, long long m, int* coordinates) {
  const long long m2 = m * m;
  const bool cubeFits = m <= 2097151;  // the cube root of the largest 64-bit value
  const long long rest1 = cubeFits ? item % (m2 * m) : item;
  const long long rest2 = rest1 % m2;
  coordinates[0] = cubeFits ? coordinateOf(item / (m2 * m)) : 0;
  coordinates[1] = coordinateOf(rest1 / m2);
  coordinates[2] = coordinateOf(rest2 / m);
  coordinates[3] = coordinateOf(rest2 % m);
}

/// Memory for the coordinates of split items: up to 64 coordinates need no heap.
class SplitRoom {
 public:
  /// Null if memory has run out.
  int* provide(size_t length) {
    if (length <= std::size(onStack_)) return onStack_;
    onHeap_.reset(new (std::nothrow) int[length]);
    return onHeap_.get();
  }

 private:
  int onStack_[64];
  std::unique_ptr<int[]> onHeap_;
};

/// Runs an operation of the plain interface on the split items. `refused` is the result if the coordinate dimension is wrong or
/// memory has run out.
template <class Item, class Result, class Operation>
Result withSplitItems(ZQMatrixBase& matrix, const Item* items, int length, Result refused, const char* name,
                      Operation operation) {
  constexpr int coordinatesOfItem = sizeof(Item) == sizeof(int) ? 2 : 4;
  const ZQMatrixBaseInfo* info = matrix.getMatrixInfo();
  if (info->getCoordinateDimension() != coordinatesOfItem) {
    dbPrintf(0, "error from %s: illegal coordinate dimension. Please set to %d!\n", name, coordinatesOfItem);
    return refused;
  }
  const long long splitLength = static_cast<long long>(length) * coordinatesOfItem;
  // The operation handles such a length, or a null vector, without reading the vector.
  if (length < 1 || splitLength > info->getMaxDimOfMatrix() || items == nullptr) {
    static constexpr int placeholder = 0;
    const int* vector = items == nullptr ? nullptr : &placeholder;
    return operation(vector, static_cast<int>(splitLength > INT_MAX ? INT_MAX : splitLength < 0 ? -1 : splitLength));
  }
  const long long m = info->getMaximalMatrixIndex();
  SplitRoom room;
  int* const vector = room.provide(static_cast<size_t>(splitLength));
  if (vector == nullptr || m < 1) return refused;
  for (int i = 0; i < length; ++i) splitItem(items[i], m, vector + static_cast<size_t>(i) * coordinatesOfItem);
  return operation(vector, static_cast<int>(splitLength));
}

/// The element of a vector, null for an exist code below 1. `existCode` may be null.
inline ZQMatrixBaseElement* readElement(ZQMatrixBase& matrix, const int* indexVector, int length, int* existCode) {
  const FoundPath found = matrix.find(indexVector, length);
  if (existCode != nullptr) *existCode = found.code;
  return matrix.elementAt(found.position);
}

}  // namespace zmatrix
