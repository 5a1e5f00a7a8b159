// The growing array of plain values that the whole library uses. Its memory comes from systemMalloc; if memory runs out an
// operation returns false and leaves the content unchanged. Its memory can be passed to a host and taken over from one.
#pragma once

#include <algorithm>
#include <climits>
#include <concepts>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

#include "frame/ZQAssert.h"
#include "frame/ZQMemory.h"

namespace zmatrix {

template <class T>
class ZQArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  static constexpr size_t mostValues = INT_MAX;  ///< counts in the host interface are ints

  ZQArray() noexcept = default;
  ~ZQArray() { reset(); }
  ZQArray(ZQArray&& other) noexcept { swap(other); }
  ZQArray& operator=(ZQArray&& other) noexcept {
    swap(other);
    return *this;
  }
  ZQArray(const ZQArray&) = delete;
  ZQArray& operator=(const ZQArray&) = delete;

  size_t size() const noexcept { return numberOfValues_; }
  /// The size as an int.
  int count() const noexcept { return static_cast<int>(numberOfValues_); }
  bool empty() const noexcept { return numberOfValues_ == 0; }

  /// Null before memory was first needed, and after a reset.
  T* data() noexcept { return values_; }
  const T* data() const noexcept { return values_; }
  T* begin() noexcept { return values_; }
  const T* begin() const noexcept { return values_; }
  T* end() noexcept { return values_ + numberOfValues_; }
  const T* end() const noexcept { return values_ + numberOfValues_; }
  const T& front() const noexcept { return (*this)[0]; }
  T& back() noexcept { return (*this)[numberOfValues_ - 1]; }
  const T& back() const noexcept { return (*this)[numberOfValues_ - 1]; }
  template <std::integral Index>
  T& operator[](Index index) noexcept {
    ZQ_ASSERT(static_cast<size_t>(index) < numberOfValues_);
    return values_[index];
  }
  template <std::integral Index>
  const T& operator[](Index index) const noexcept {
    ZQ_ASSERT(static_cast<size_t>(index) < numberOfValues_);
    return values_[index];
  }

  // Each of these returns false, or null, and changes nothing if memory runs out, and for a size below 0 or above mostValues.

  /// Keeps the values that fit; new ones are `fill`. A smaller size frees memory and never fails. A new array of zeros takes no
  /// memory until it is written.
  template <std::integral Size>
  [[nodiscard]] bool resize(Size newSize, T fill = T()) noexcept {
    if (std::cmp_less(newSize, 0) || std::cmp_greater(newSize, mostValues)) return false;
    const size_t wanted = static_cast<size_t>(newSize);
    if (values_ == nullptr && isZero(fill)) return provideZeros(wanted);
    if (!setCapacity(wanted) && (values_ == nullptr || wanted > capacity_)) return false;
    if (wanted > numberOfValues_) std::fill(values_ + numberOfValues_, values_ + wanted, fill);
    numberOfValues_ = wanted;
    return true;
  }
  /// As resize, but all values are `fill`.
  template <std::integral Size>
  [[nodiscard]] bool assign(Size newSize, T fill) noexcept {
    if (!resize(newSize, fill)) return false;
    fillFrom(0, fill);
    return true;
  }
  [[nodiscard]] bool append(const T& value) noexcept {
    const T appended = value;  // `value` may be a reference into this array
    if (numberOfValues_ == capacity_ && !provide(numberOfValues_ + 1)) return false;
    values_[numberOfValues_++] = appended;
    return true;
  }
  [[nodiscard]] bool copyFrom(std::span<const T> source) noexcept {
    if (!provide(source.size())) return false;
    if (!source.empty()) memmove(values_, source.data(), source.size_bytes());
    numberOfValues_ = source.size();
    return true;
  }
  /// Sets the size and keeps the values that fit; new values are undefined and set by the caller.
  [[nodiscard]] T* makeRoomFor(size_t newSize) noexcept {
    if (!provide(std::max<size_t>(newSize, 1))) return nullptr;
    numberOfValues_ = newSize;
    return values_;
  }

  template <std::integral Index>
  void fillFrom(Index first, T fill) noexcept {
    if (static_cast<size_t>(first) < numberOfValues_) std::fill(values_ + first, end(), fill);
  }
  /// Removes the values from `newSize` on and keeps the memory.
  void truncate(size_t newSize) noexcept { numberOfValues_ = std::min(newSize, numberOfValues_); }
  void clear() noexcept { numberOfValues_ = 0; }
  /// Removes all values and frees the memory.
  void reset() noexcept {
    systemFree(values_);
    values_ = nullptr;
    numberOfValues_ = capacity_ = 0;
  }
  /// Takes ownership of memory of systemMalloc that holds `newSize` values.
  void adopt(T* memory, size_t newSize) noexcept {
    if (memory != values_) reset();
    values_ = memory;
    numberOfValues_ = capacity_ = memory == nullptr ? 0 : newSize;
  }
  /// Passes the ownership of the memory to the caller: null, or a block for systemFree.
  [[nodiscard]] T* release() noexcept {
    numberOfValues_ = capacity_ = 0;
    return std::exchange(values_, nullptr);
  }
  /// The same, with the memory reduced to the values' size.
  [[nodiscard]] T* releaseFitted() noexcept {
    if (values_ != nullptr) static_cast<void>(setCapacity(numberOfValues_));  // else the block stays larger
    return release();
  }
  void swap(ZQArray& other) noexcept {
    std::swap(values_, other.values_);
    std::swap(numberOfValues_, other.numberOfValues_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  static constexpr size_t firstRoom = 64;
  static constexpr size_t sizeOfValue = sizeof(T);  // NOLINT(bugprone-sizeof-expression): a value may be a pointer

  static bool isZero(const T& value) noexcept {
    static constexpr char zeros[sizeOfValue] = {};
    return memcmp(&value, zeros, sizeOfValue) == 0;  // NOLINT(bugprone-suspicious-memory-comparison): of bytes, padding too
  }
  [[nodiscard]] bool provideZeros(size_t wanted) noexcept {
    values_ = static_cast<T*>(systemCalloc(std::max<size_t>(wanted, 1), sizeOfValue));
    if (values_ == nullptr) return false;
    numberOfValues_ = capacity_ = wanted;
    return true;
  }
  [[nodiscard]] bool setCapacity(size_t wanted) noexcept {
    if (wanted == capacity_ && values_ != nullptr) return true;
    auto* resized = static_cast<T*>(systemRealloc(values_, bytesOf(std::max<size_t>(wanted, 1), sizeOfValue)));
    if (resized == nullptr) return false;
    values_ = resized;
    capacity_ = wanted;
    return true;
  }
  [[nodiscard]] bool provide(size_t wanted) noexcept {
    if (wanted <= capacity_) return true;
    if (wanted > mostValues) return false;
    return setCapacity(wanted < firstRoom ? firstRoom : std::min(wanted + wanted / 2, mostValues));
  }

  T* values_ = nullptr;
  size_t numberOfValues_ = 0;
  size_t capacity_ = 0;
};

}  // namespace zmatrix
