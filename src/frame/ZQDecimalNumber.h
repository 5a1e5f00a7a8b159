// Reads numbers with a decimal point from texts by std::from_chars. The standard library of WebAssembly's compiler has it for
// integers only: there strtod and strtof read the number, with the same result, since the locale "C" is never changed.
#pragma once

#include <charconv>

namespace zmatrix {

/// As std::from_chars for chars_format fixed and general, by a copy of the number's characters. Throws std::bad_alloc.
std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, double& value, std::chars_format format);
std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, float& value, std::chars_format format);

/// std::from_chars, or copiedDecimalFromChars where the standard library lacks it.
template <class Number>
std::from_chars_result decimalFromChars(const char* first, const char* last, Number& value, std::chars_format format) {
#ifdef __cpp_lib_to_chars
  return std::from_chars(first, last, value, format);
#else
  return copiedDecimalFromChars(first, last, value, format);
#endif
}

}  // namespace zmatrix
