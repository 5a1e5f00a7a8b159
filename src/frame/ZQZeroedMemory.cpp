#include "frame/ZQZeroedMemory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "frame/ZQMemory.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace zmatrix {

#ifdef __linux__

namespace {

constexpr size_t sizeOfPage = 65536;  // a multiple of every page size in use

size_t wholePages(size_t size) {
  return (size + sizeOfPage - 1) / sizeOfPage * sizeOfPage;
}

void* newPages(size_t size) {
  return mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
}

// mremap moves a single mapping only. Memory that consists of several mappings, for example because the host has split it, is
// copied.
void* resizedPages(void* pages, size_t size, size_t newSize) {
  if (pages == nullptr) return newPages(newSize);
  if (size == newSize) return pages;
  if (void* moved = mremap(pages, size, newSize, MREMAP_MAYMOVE); moved != MAP_FAILED) return moved;
  void* copy = newPages(newSize);
  if (copy == MAP_FAILED) return MAP_FAILED;
  memcpy(copy, pages, std::min(size, newSize));
  munmap(pages, size);
  return copy;
}

}  // namespace

size_t ZQZeroedMemory::getWholeSize() const {
  return wholePages(size_);
}

bool ZQZeroedMemory::resize(size_t newSize) noexcept {
  newSize = std::max(newSize, size_t{1});
  if (newSize > largestAllocation || newSize > SIZE_MAX - sizeOfPage) return false;
  void* resized = resizedPages(begin_, wholePages(size_), wholePages(newSize));
  if (resized == MAP_FAILED) return false;
  begin_ = static_cast<char*>(resized);
  // Bytes of the last page behind a smaller size must be cleared: the next growth would show them.
  if (newSize < size_) memset(begin_ + newSize, 0, std::min(wholePages(newSize), size_) - newSize);
  size_ = newSize;
  return true;
}

void ZQZeroedMemory::clear() noexcept {
  if (begin_ != nullptr) munmap(begin_, wholePages(size_));
  begin_ = nullptr;
  size_ = 0;
}

#else

size_t ZQZeroedMemory::getWholeSize() const {
  return size_;
}

bool ZQZeroedMemory::resize(size_t newSize) noexcept {
  newSize = std::max(newSize, size_t{1});
  char* resized = static_cast<char*>(systemRealloc(begin_, newSize));
  if (resized == nullptr) return false;
  if (newSize > size_) memset(resized + size_, 0, newSize - size_);
  begin_ = resized;
  size_ = newSize;
  return true;
}

void ZQZeroedMemory::clear() noexcept {
  systemFree(begin_);
  begin_ = nullptr;
  size_ = 0;
}

#endif

}  // namespace zmatrix
