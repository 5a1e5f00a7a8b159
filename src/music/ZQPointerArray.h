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
  explicit ZQPointerArray(int capacity) : internalNumberOfElements_(capacity) {}
  ~ZQPointerArray() { systemFree(elements_); }
  ZQPointerArray(const ZQPointerArray&) = delete;
  ZQPointerArray& operator=(const ZQPointerArray&) = delete;

  int getCount() const { return numberOfElements_; }
  bool holds(int index) const { return index >= 0 && index < numberOfElements_; }
  Element* at(int index) const { return holds(index) ? elements_[index] : nullptr; }
  Element** begin() const { return elements_; }
  Element** end() const { return elements_ + numberOfElements_; }

  /// Appends an element; false, with nothing changed, if memory runs out.
  [[nodiscard]] bool add(Element* element) {
    if ((elements_ == nullptr || numberOfElements_ >= internalNumberOfElements_) && !grow()) return false;
    elements_[numberOfElements_++] = element;
    return true;
  }

  /// Appends all elements of another array; room must have been reserved.
  void append(const ZQPointerArray& other) {
    std::copy(other.begin(), other.end(), end());
    numberOfElements_ += other.numberOfElements_;
  }

  /// Makes room for a total of `count` elements; false if memory runs out.
  [[nodiscard]] bool reserve(int count) {
    if (elements_ != nullptr && count <= internalNumberOfElements_) return true;
    return resize(std::max(count, internalNumberOfElements_));
  }

  /// Removes the pointer at `index`; those behind it move up.
  void removeAt(int index) {
    if (!holds(index)) return;
    std::memmove(elements_ + index, elements_ + index + 1, sizeof(Element*) * static_cast<size_t>(numberOfElements_ - index - 1));
    numberOfElements_--;
  }

  /// Removes all pointers for which `isRemoved` returns true, in one pass; the predicate may release the element.
  template <class Predicate>
  void removeIf(Predicate isRemoved) {
    numberOfElements_ = static_cast<int>(std::remove_if(begin(), end(), isRemoved) - begin());
  }

  void setArray(Element** array) { elements_ = array; }
  void setCount(int count) { numberOfElements_ = count; }
  void setCapacity(int capacity) { internalNumberOfElements_ = capacity; }
  int getCapacity() const { return internalNumberOfElements_; }

 private:
  [[nodiscard]] bool grow() {
    if (elements_ == nullptr && internalNumberOfElements_ > 0) return resize(internalNumberOfElements_);
    const int capacity = std::max(grownCapacity(internalNumberOfElements_), internalNumberOfElements_ + 1);
    return resize(capacity);
  }

  [[nodiscard]] bool resize(int capacity) {
    const size_t size = sizeof(Element*) * static_cast<size_t>(capacity);
    auto* resized = static_cast<Element**>(systemRealloc(elements_, size));
    if (resized == nullptr) return false;
    std::fill(resized + numberOfElements_, resized + capacity, nullptr);
    elements_ = resized;
    internalNumberOfElements_ = capacity;
    return true;
  }

  int numberOfElements_ = 0;
  int internalNumberOfElements_;
  Element** elements_ = nullptr;
};

}  // namespace zmatrix
