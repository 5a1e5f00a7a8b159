#include "frame/ZQMemory.h"

#include <cstdint>
#include <cstdlib>

namespace zmatrix {

size_t largestAllocation = PTRDIFF_MAX;

void* systemMalloc(size_t size) noexcept {
  if (size > largestAllocation) return nullptr;
  return std::malloc(size);
}

void* systemCalloc(size_t count, size_t size) noexcept {
  if (size > 0 && count > largestAllocation / size) return nullptr;
  return std::calloc(count, size);
}

void* systemRealloc(void* pointer, size_t size) noexcept {
  if (size > largestAllocation) return nullptr;
  return std::realloc(pointer, size);
}

void* systemAlignedMalloc(size_t alignment, size_t size) noexcept {
  if (size > largestAllocation) return nullptr;
  return std::aligned_alloc(alignment, size);
}

void systemFree(void* pointer) noexcept {
  std::free(pointer);
}

}  // namespace zmatrix
