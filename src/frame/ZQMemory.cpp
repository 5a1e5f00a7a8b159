#include "frame/ZQMemory.h"

#include <cstdint>
#include <cstdlib>

namespace zmatrix {

size_t largestAllocation = PTRDIFF_MAX;

}  // namespace zmatrix

void* systemMalloc(size_t size) noexcept {
  if (size > zmatrix::largestAllocation) return nullptr;
  return std::malloc(size);
}

void* systemCalloc(size_t count, size_t size) noexcept {
  if (size > 0 && count > zmatrix::largestAllocation / size) return nullptr;
  return std::calloc(count, size);
}

void* systemRealloc(void* pointer, size_t size) noexcept {
  if (size > zmatrix::largestAllocation) return nullptr;
  return std::realloc(pointer, size);
}

void* systemAlignedMalloc(size_t alignment, size_t size) {
  if (size > zmatrix::largestAllocation) return nullptr;
  void* memory = nullptr;  // unlike aligned_alloc, this takes any size everywhere
  return posix_memalign(&memory, alignment, size) == 0 ? memory : nullptr;
}

void systemFree(void* pointer) noexcept {
  std::free(pointer);
}
