// One large piece of memory that is all 0 where nothing was written, and that can change its size. Where the system can, growth
// moves pages, not bytes, asks for no more address space than the difference, and what was never touched takes no memory.
// Elsewhere the content is copied to a new piece: both together are the most that it asks for.
#pragma once

#include <cstddef>

namespace zmatrix {

class ZQZeroedMemory {
 public:
  ZQZeroedMemory() = default;
  ~ZQZeroedMemory() { clear(); }
  ZQZeroedMemory(const ZQZeroedMemory&) = delete;
  ZQZeroedMemory& operator=(const ZQZeroedMemory&) = delete;

  /// Null while there is none. A resize can change it.
  char* getBegin() const { return begin; }
  /// All that the system has given for it, in bytes: what may be asked for pages as one piece.
  size_t getWholeSize() const;

  /// Sets the size in bytes; the content stays as far as the new size reaches. False, and nothing changed, if there is no room.
  [[nodiscard]] bool resize(size_t newSize) noexcept;

  void clear() noexcept;

 private:
  char* begin = nullptr;
  size_t size = 0;
};

}  // namespace zmatrix
