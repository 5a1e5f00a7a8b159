// Heap allocation of everything that a host receives to keep: it is allocated here and released through systemFree. The functions
// are those of the C heap, with a size limit that a test can lower to simulate a lack of memory.
#pragma once

#include <cstddef>
#include <cstdint>

/// Allocates `size` bytes, or returns null.
[[nodiscard]] void* systemMalloc(size_t size) noexcept;

/// As systemMalloc, for `count` times `size` bytes, all 0. Pages of a large allocation cost nothing before their first use.
[[nodiscard]] void* systemCalloc(size_t count, size_t size) noexcept;

/// Resizes an allocation of systemMalloc. If there is no memory it returns null and the old allocation is unchanged.
[[nodiscard]] void* systemRealloc(void* pointer, size_t size) noexcept;

/// As systemMalloc, at an address that is a multiple of `alignment`, a power of two from the size of a pointer on.
void* systemAlignedMalloc(size_t alignment, size_t size);

/// Releases an allocation; null is ignored.
void systemFree(void* pointer) noexcept;

/// Allocates room for `count` values of T, or returns null; a count below 1 gives room for one.
template <class T>
[[nodiscard]] T* systemMallocArray(long long count) noexcept {
  if (count < 1) count = 1;
  if (static_cast<unsigned long long>(count) > static_cast<size_t>(-1) / 2 / sizeof(T)) return nullptr;
  return static_cast<T*>(systemMalloc(static_cast<size_t>(count) * sizeof(T)));
}

namespace zmatrix {

/// The largest single allocation that is allowed, in bytes: PTRDIFF_MAX unless a test sets it before it starts threads.
extern size_t largestAllocation;

/// The bytes of `count` values of `size` bytes. If they exceed size_t, as they can with 32 bits: SIZE_MAX, which no allocation
/// has.
constexpr size_t bytesOf(unsigned long long count, size_t size) {
  return count > SIZE_MAX / size ? SIZE_MAX : static_cast<size_t>(count) * size;
}

}  // namespace zmatrix
