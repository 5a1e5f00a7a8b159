// Blocks of integers as the index vector holds them: from systemMalloc, since hosts hand them in and take them out, with every
// integer defined.
#pragma once

#include <algorithm>
#include <climits>

#include "frame/ZQMemory.h"

namespace zmatrix {

/// Resizes a block to `capacity` integers; the new ones are 0. On failure the block stays and the result is false.
inline bool resizeIntegerBlock(int*& block, int oldCapacity, long long capacity) {
  if (capacity > INT_MAX) return false;
  const size_t wanted = static_cast<size_t>(std::max(capacity, 1LL));
  auto* resized = static_cast<int*>(systemRealloc(block, bytesOf(wanted, sizeof(int))));
  if (resized == nullptr) return false;
  const size_t kept = block == nullptr ? 0 : static_cast<size_t>(std::max(oldCapacity, 0));
  if (kept < wanted) std::fill(resized + kept, resized + wanted, 0);
  block = resized;
  return true;
}

/// A copy of `count` integers with room for `capacity`, the rest of it 0; null if there is nothing to copy or no room.
inline int* copyOfIntegerBlock(const int* block, int count, int capacity) {
  if (block == nullptr) return nullptr;
  int* copy = nullptr;
  if (!resizeIntegerBlock(copy, 0, std::max(count, capacity))) return nullptr;
  std::copy_n(block, std::max(count, 0), copy);
  return copy;
}

}  // namespace zmatrix
