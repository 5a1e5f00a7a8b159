// A large allocation that is 0 wherever nothing was written, and that can be resized. On Linux, growth moves pages instead of
// bytes, and pages that were never touched take no memory. Elsewhere an allocation that can't grow in place is copied, so that
// old and new exist together for a moment.
#pragma once

#include <cstddef>

namespace zmatrix {

class ZQZeroedMemory {
 public:
  ZQZeroedMemory() = default;
  ~ZQZeroedMemory() { clear(); }
  ZQZeroedMemory(const ZQZeroedMemory&) = delete;
  ZQZeroedMemory& operator=(const ZQZeroedMemory&) = delete;

  /// Null before the first resize. A resize can change it.
  char* getBegin() const { return begin_; }
  /// The size in bytes with the last page complete: the memory that a ZQPageProvider may provide.
  size_t getWholeSize() const;

  /// Sets the size in bytes and keeps the content up to the smaller of both sizes. False, with nothing changed, if there is no
  /// memory.
  [[nodiscard]] bool resize(size_t newSize) noexcept;

  void clear() noexcept;

 private:
  char* begin_ = nullptr;
  size_t size_ = 0;
};

}  // namespace zmatrix
