#include "frame/ZQMemory.h"

#include <cstdlib>

namespace zmatrix {

size_t largestAllocation = static_cast<size_t>(-1);

}  // namespace zmatrix

void* systemMalloc(size_t size) {
  if (size > zmatrix::largestAllocation) return nullptr;
  return std::malloc(size);
}

void* systemRealloc(void* pointer, size_t size) {
  if (size > zmatrix::largestAllocation) return nullptr;
  return std::realloc(pointer, size);
}

void systemFree(void* pointer) {
  std::free(pointer);
}
