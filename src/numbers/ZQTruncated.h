// Conversion from double to 64 bits, defined for every double.
#pragma once

#include <cmath>
#include <limits>

namespace zmatrix {

/// `number` truncated and limited to the range of 64 bits. NaN gives 0.
inline long long truncated(double number) {
  constexpr double end = 9223372036854775808.0;
  if (std::isnan(number)) return 0;
  if (number >= end) return std::numeric_limits<long long>::max();
  if (number < -end) return std::numeric_limits<long long>::min();
  return static_cast<long long>(number);
}

}  // namespace zmatrix
