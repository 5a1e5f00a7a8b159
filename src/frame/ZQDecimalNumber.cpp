#include "frame/ZQDecimalNumber.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

namespace zmatrix {

namespace {

size_t behindDigits(std::string_view text, size_t at) {
  return std::min(text.find_first_not_of("0123456789", at), text.size());
}

size_t behindMantissa(std::string_view text, size_t at) {
  const size_t behindWhole = behindDigits(text, at);
  if (!text.substr(behindWhole).starts_with('.')) return behindWhole;
  const size_t behindParts = behindDigits(text, behindWhole + 1);
  return behindParts == at + 1 ? at : behindParts;  // a point alone is no number
}

size_t behindExponent(std::string_view text, size_t at) {
  if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) return at;
  const size_t firstDigit = at + 1 + (text.substr(at + 1).starts_with('-') || text.substr(at + 1).starts_with('+'));
  const size_t end = behindDigits(text, firstDigit);
  return end == firstDigit ? at : end;
}

size_t behindName(std::string_view text, size_t at) {
  for (const std::string_view name : {"infinity", "inf", "nan"}) {
    const auto isSame = [](char one, char other) { return one == (other | 0x20); };
    if (std::equal(name.begin(), name.end(), text.begin() + static_cast<ptrdiff_t>(at),
                   text.begin() + static_cast<ptrdiff_t>(std::min(at + name.size(), text.size())), isSame))
      return at + name.size();
  }
  return at;
}

/// The length of the number at the begin of a text; 0 if there is none.
size_t lengthOfNumber(std::string_view text, std::chars_format format) {
  const size_t begin = text.starts_with('-');
  size_t end = behindMantissa(text, begin);
  if (end == begin)
    end = behindName(text, begin);
  else if (format == std::chars_format::general)
    end = behindExponent(text, end);
  return end == begin ? 0 : end;
}

template <class Number>
std::from_chars_result read(const char* first, const char* last, Number& value, std::chars_format format,
                            Number (*convert)(const char*, char**)) {
  const size_t length = lengthOfNumber({first, static_cast<size_t>(last - first)}, format);
  if (length == 0) return {first, std::errc::invalid_argument};
  const std::string number(first, length);
  const Number read = convert(number.c_str(), nullptr);
  const bool hasDigit = behindName(number, number.starts_with('-')) != length;
  const bool isLost =
      hasDigit && (std::isinf(read) || (read == 0 && number.find_first_of("123456789") < number.find_first_of("eE")));
  if (isLost) return {first + length, std::errc::result_out_of_range};
  value = read;
  return {first + length, std::errc()};
}

}  // namespace

std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, double& value, std::chars_format format) {
  return read(first, last, value, format, std::strtod);
}

std::from_chars_result copiedDecimalFromChars(const char* first, const char* last, float& value, std::chars_format format) {
  return read(first, last, value, format, std::strtof);
}

}  // namespace zmatrix
