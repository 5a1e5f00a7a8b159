#include "frame/ZQMemory.h"

#include <cstdint>
#include <cstdlib>

namespace zmatrix {

size_t largestAllocation = PTRDIFF_MAX;

namespace {

constinit thread_local unsigned failures = 0;

void* counted(void* memory) noexcept {
  if (memory == nullptr) ++failures;
  return memory;
}

}  // namespace

unsigned failedAllocations() noexcept {
  return failures;
}

void* systemMalloc(size_t size) noexcept {
  return counted(size <= largestAllocation ? std::malloc(size) : nullptr);
}

void* systemCalloc(size_t count, size_t size) noexcept {
  return counted(size == 0 || count <= largestAllocation / size ? std::calloc(count, size) : nullptr);
}

void* systemRealloc(void* pointer, size_t size) noexcept {
  return counted(size <= largestAllocation ? std::realloc(pointer, size) : nullptr);
}

void* systemAlignedMalloc(size_t alignment, size_t size) noexcept {
  void* memory = nullptr;  // unlike aligned_alloc, posix_memalign takes any size everywhere
  const bool hasRoom = size <= largestAllocation && posix_memalign(&memory, alignment, size) == 0;
  return counted(hasRoom ? memory : nullptr);
}

void systemFree(void* pointer) noexcept {
  std::free(pointer);
}

}  // namespace zmatrix
