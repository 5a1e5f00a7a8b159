// The one rule by which growing arrays grow.
#pragma once

#include <climits>

namespace zmatrix {

constexpr double growthFactor = 1.618;

/// The capacity after a growth: 1.618 times the old one, computed in double and truncated. At the ends of int it stops growing.
constexpr int grownCapacity(int capacity) {
  const double grown = capacity * growthFactor;
  return grown >= INT_MAX ? INT_MAX : grown <= INT_MIN ? INT_MIN : static_cast<int>(grown);
}

}  // namespace zmatrix
