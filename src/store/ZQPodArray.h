// A growing array of plain values on the C heap that says no instead of throwing: what the store's indexes are made of.
#pragma once

#include <cstring>
#include <utility>

#include "frame/ZQMemory.h"

namespace zmatrix {

template <class T>
class ZQPodArray {
 public:
  ZQPodArray() = default;
  ~ZQPodArray() { systemFree(values); }
  ZQPodArray(const ZQPodArray&) = delete;
  ZQPodArray& operator=(const ZQPodArray&) = delete;

  T& operator[](size_t index) { return values[index]; }
  const T& operator[](size_t index) const { return values[index]; }
  size_t size() const { return numberOfValues; }

  /// Sets the size; new entries are all bits `fill` (0 or 0xFF a byte). False, and nothing changed, if there is no room. Making
  /// it smaller never fails. A new array of zeros takes no memory before it is written to.
  bool resize(size_t newSize, int fill) {
    const size_t entries = newSize > 0 ? newSize : 1;
    const bool isNewOfZeros = values == nullptr && fill == 0;
    T* newValues =
        static_cast<T*>(isNewOfZeros ? systemCalloc(entries, sizeof(T)) : systemRealloc(values, bytesOf(entries, sizeof(T))));
    if (newValues == nullptr && (values == nullptr || newSize > numberOfValues)) return false;
    if (newValues != nullptr) values = newValues;
    if (newSize > numberOfValues && !isNewOfZeros) memset(values + numberOfValues, fill, (newSize - numberOfValues) * sizeof(T));
    numberOfValues = newSize;
    return true;
  }

  void swap(ZQPodArray& other) {
    std::swap(values, other.values);
    std::swap(numberOfValues, other.numberOfValues);
  }

  void clear() {
    systemFree(values);
    values = nullptr;
    numberOfValues = 0;
  }

 private:
  T* values = nullptr;
  size_t numberOfValues = 0;
};

}  // namespace zmatrix
