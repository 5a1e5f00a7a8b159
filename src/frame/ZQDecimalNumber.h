// Numbers with a decimal point in texts. The standard library of WebAssembly's compiler can't read them by std::from_chars, which
// knows no language of the process: there they are read by strtod, to the same result.
#pragma once

#include <charconv>

namespace zmatrix {

/// As std::from_chars for chars_format fixed and general, by a copy of the number's characters. Throws std::bad_alloc.
std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, double& value, std::chars_format format);
std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, float& value, std::chars_format format);

/// std::from_chars, or what stands in for it.
template <class Number>
std::from_chars_result decimalFromChars(const char* first, const char* last, Number& value, std::chars_format format) {
#ifdef __cpp_lib_to_chars
  return std::from_chars(first, last, value, format);
#else
  return copiedDecimalFromChars(first, last, value, format);
#endif
}

}  // namespace zmatrix
