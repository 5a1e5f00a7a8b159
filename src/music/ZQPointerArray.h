// A growable array of pointers, used by event tracks, object tracks and lists of tracks. It owns the array but not the elements.
// The array is allocated with the first element, so that the many empty tracks that a file can announce cost nothing.
#pragma once

#include <algorithm>
#include <cstring>

#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"

namespace zmatrix {

template <class Element>
class ZQPointerArray {
 public:
  explicit ZQPointerArray(int capacity) : internalNumberOfElements(capacity) {}
  ~ZQPointerArray() { systemFree(elements); }
  ZQPointerArray(const ZQPointerArray&) = delete;
  ZQPointerArray& operator=(const ZQPointerArray&) = delete;

  int getCount() const { return numberOfElements; }
  bool holds(int index) const { return index >= 0 && index < numberOfElements; }
  Element* at(int index) const { return holds(index) ? elements[index] : nullptr; }
  Element** begin() const { return elements; }
  Element** end() const { return elements + numberOfElements; }

  /// Appends an element; false, with nothing changed, if memory runs out.
  [[nodiscard]] bool add(Element* element) {
    if ((elements == nullptr || numberOfElements >= internalNumberOfElements) && !grow()) return false;
    elements[numberOfElements++] = element;
    return true;
  }

  /// Appends all elements of another array; room must have been reserved.
  void append(const ZQPointerArray& other) {
    std::copy(other.begin(), other.end(), end());
    numberOfElements += other.numberOfElements;
  }

  /// Makes room for a total of `count` elements; false if memory runs out.
  [[nodiscard]] bool reserve(int count) {
    if (elements != nullptr && count <= internalNumberOfElements) return true;
    return resize(std::max(count, internalNumberOfElements));
  }

  /// Removes the pointer at `index`; those behind it move up.
  void removeAt(int index) {
    if (!holds(index)) return;
    std::memmove(elements + index, elements + index + 1, sizeof(Element*) * static_cast<size_t>(numberOfElements - index - 1));
    numberOfElements--;
  }

  /// Removes all pointers for which `isRemoved` returns true, in one pass; the predicate may release the element.
  template <class Predicate>
  void removeIf(Predicate isRemoved) {
    numberOfElements = static_cast<int>(std::remove_if(begin(), end(), isRemoved) - begin());
  }

  void setArray(Element** array) { elements = array; }
  void setCount(int count) { numberOfElements = count; }
  void setCapacity(int capacity) { internalNumberOfElements = capacity; }
  int getCapacity() const { return internalNumberOfElements; }

 private:
  [[nodiscard]] bool grow() {
    if (elements == nullptr && internalNumberOfElements > 0) return resize(internalNumberOfElements);
    const int capacity = std::max(grownCapacity(internalNumberOfElements), internalNumberOfElements + 1);
    return resize(capacity);
  }

  [[nodiscard]] bool resize(int capacity) {
    const size_t size = sizeof(Element*) * static_cast<size_t>(capacity);
    auto* resized = static_cast<Element**>(systemRealloc(elements, size));
    if (resized == nullptr) return false;
    std::fill(resized + numberOfElements, resized + capacity, nullptr);
    elements = resized;
    internalNumberOfElements = capacity;
    return true;
  }

  int numberOfElements = 0;
  int internalNumberOfElements;
  Element** elements = nullptr;
};

}  // namespace zmatrix
