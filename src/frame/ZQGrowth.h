// The growth rule of all growing arrays.
#pragma once

#include <climits>

namespace zmatrix {

constexpr double growthFactor = 1.618;

/// The capacity after a growth: 1.618 times the old one, computed in double and truncated, and limited to the range of int.
constexpr int grownCapacity(int capacity) {
  const double grown = capacity * growthFactor;
  return grown >= INT_MAX ? INT_MAX : grown <= INT_MIN ? INT_MIN : static_cast<int>(grown);
}

}  // namespace zmatrix
