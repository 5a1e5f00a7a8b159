// Heap allocation as the library hands it across its boundary: whatever a host receives to keep comes from here and goes back
// through systemFree. The three operations are the C heap's own, with one limit that a test can lower to see what a full memory
// does.
#pragma once

#include <cstddef>

/// Allocates `size` bytes, or returns null.
[[nodiscard]] void* systemMalloc(size_t size) noexcept;

/// As systemMalloc, for `count` times `size` bytes, all 0; a large one costs nothing before it is touched.
[[nodiscard]] void* systemCalloc(size_t count, size_t size) noexcept;

/// Resizes an allocation of systemMalloc; null if there is no room, and the old allocation then stands.
[[nodiscard]] void* systemRealloc(void* pointer, size_t size) noexcept;

/// As systemMalloc, at an address that is a multiple of `alignment`, a power of two that divides `size`.
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

/// The largest single allocation that is granted, in bytes. Unlimited unless a test sets it, before it starts threads.
extern size_t largestAllocation;

}  // namespace zmatrix
