// Sequences of integers in tests, and copies of the arrays that the library returns.
#pragma once

#include <string>
#include <vector>

#include "frame/ZQSystemOwned.h"

namespace zmatrix {

using Vector = std::vector<int>;

/// The bytes of a text, 0 to 255 each.
inline Vector valuesOf(const std::string& text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), reinterpret_cast<const unsigned char*>(text.data()) + text.size()};
}

/// Copies an array from the library and frees it; null gives an empty vector. `length` is a reference because the call that makes
/// the array sets it.
template <class Number>
std::vector<Number> taken(Number* array, const int& length) {
  const SystemOwned<Number> owned(array);
  return array != nullptr ? std::vector<Number>(array, array + length) : std::vector<Number>();
}

}  // namespace zmatrix
