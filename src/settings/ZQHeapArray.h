// Arrays of plain values on the C heap whose sizes may come from outside: they say no instead of throwing, and keep what they
// hold when there is no room. The info records own theirs through these, and hand out the bare pointers.
#pragma once

#include <climits>
#include <cstring>

#include "frame/ZQMemory.h"

namespace zmatrix {

template <class T>
class HeapArray {
 public:
  HeapArray() = default;
  ~HeapArray() { release(); }
  HeapArray(const HeapArray&) = delete;
  HeapArray& operator=(const HeapArray&) = delete;

  T* data() { return values; }
  const T* data() const { return values; }
  int size() const { return numberOfValues; }
  T& operator[](int index) { return values[index]; }
  const T& operator[](int index) const { return values[index]; }

  /// Keeps the entries that fit; new ones get `fill`. False, and nothing changed, if there is no room. Making it smaller never
  /// fails.
  bool resize(long long newSize, T fill) {
    if (newSize < 0 || newSize > INT_MAX) return false;
    T* newValues = static_cast<T*>(systemRealloc(values, static_cast<size_t>(newSize > 0 ? newSize : 1) * sizeof(T)));
    if (newValues == nullptr && (values == nullptr || newSize > numberOfValues)) return false;
    if (newValues != nullptr) values = newValues;
    const int oldSize = numberOfValues;
    numberOfValues = static_cast<int>(newSize);
    fillFrom(oldSize, fill);
    return true;
  }

  /// As resize, but all entries get `fill`.
  bool assign(long long newSize, T fill) {
    if (!resize(newSize, fill)) return false;
    fillFrom(0, fill);
    return true;
  }

  void fillFrom(int first, T fill) {
    for (int i = first; i < numberOfValues; ++i) values[i] = fill;
  }

  void release() {
    systemFree(values);
    values = nullptr;
    numberOfValues = 0;
  }

 private:
  T* values = nullptr;
  int numberOfValues = 0;
};

}  // namespace zmatrix
