// Sequences of objex as hosts get them: one block of systemMalloc with a table of pointers followed by the items.
#pragma once

#include <algorithm>
#include <climits>

#include "frame/ZQSystemOwned.h"

namespace zmatrix {

using ObjexBlock = SystemOwned<int*>;

/// A block of items that are all 0; 0 items are allowed. Null for sizes out of range or if memory runs out.
inline ObjexBlock newObjexBlock(long long numberOfItems, int coordinateDimension) {
  if (numberOfItems < 0 || numberOfItems > INT_MAX || coordinateDimension < 1) return nullptr;
  const long long numberOfIntegers = numberOfItems * coordinateDimension;
  if (numberOfIntegers > INT_MAX) return nullptr;
  const size_t items = static_cast<size_t>(numberOfItems), integers = static_cast<size_t>(numberOfIntegers);
  const unsigned long long size = 1ULL * items * sizeof(int*) + 1ULL * integers * sizeof(int);
  auto* block = static_cast<int**>(systemMalloc(std::max(bytesOf(size, 1), sizeof(int*))));
  if (block == nullptr) return nullptr;
  int* const values = reinterpret_cast<int*>(block + items);
  std::fill_n(values, integers, 0);
  for (size_t i = 0; i < items; i++) block[i] = values + i * static_cast<size_t>(coordinateDimension);
  return ObjexBlock(block);
}

/// A block with the items of a flat sequence; integers at the end that don't fill an item are dropped. Null for an empty sequence
/// or if memory runs out.
inline ObjexBlock newObjexBlockFrom(const int* flat, int length, int coordinateDimension) {
  if (flat == nullptr || length < 1 || coordinateDimension < 1) return nullptr;
  const int numberOfItems = length / coordinateDimension;
  ObjexBlock block = newObjexBlock(numberOfItems, coordinateDimension);
  if (block != nullptr && numberOfItems > 0) std::copy_n(flat, numberOfItems * coordinateDimension, block[0]);
  return block;
}

/// The items one after the other in a new array; null if there are none or memory runs out.
inline SystemOwned<int> flatSequenceOfObjex(const int* const* objex, int numberOfItems, int coordinateDimension) {
  const long long length = static_cast<long long>(numberOfItems) * coordinateDimension;
  if (objex == nullptr || numberOfItems < 1 || coordinateDimension < 1 || length > INT_MAX) return nullptr;
  SystemOwned<int> flat(systemMallocArray<int>(length));
  if (flat == nullptr) return nullptr;
  for (int i = 0; i < numberOfItems; i++)
    std::copy_n(objex[i], coordinateDimension, flat.get() + static_cast<long long>(i) * coordinateDimension);
  return flat;
}

}  // namespace zmatrix
