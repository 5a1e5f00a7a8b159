// Times of a score: exact fractions of a whole note with a bounded denominator.
#pragma once

#include <compare>
#include <cstdlib>
#include <numeric>

namespace zmatrix {

/// A fraction of a whole note. The denominator is 1 to `largestDenominator`, the value at most `latest` whole notes either way,
/// so that products of two of these numbers fit 128 bits.
struct ScoreTime {
  long long numerator = 0;
  int denominator = 1;

  static constexpr int largestDenominator = 1 << 30;
  static constexpr long long latest = 2147483647;
  static constexpr int gridSteps = 12288;  ///< of a whole note: where a time goes that has no denominator within the bound

  friend std::strong_ordering operator<=>(const ScoreTime& one, const ScoreTime& other) {
    return static_cast<__int128>(one.numerator) * other.denominator <=> static_cast<__int128>(other.numerator) * one.denominator;
  }
  friend bool operator==(const ScoreTime& one, const ScoreTime& other) { return (one <=> other) == 0; }
};

/// What a calculation with times gives.
struct ScoreTimeResult {
  ScoreTime time;
  bool isRounded = false;     ///< the exact value has no denominator within the bound: the nearest step of the grid
  bool isOutOfRange = false;  ///< the value is beyond the latest time, which stands for it
};

/// The reduced fraction; the denominator is above 0.
ScoreTimeResult scoreTime(__int128 numerator, __int128 denominator);
ScoreTimeResult sumOf(const ScoreTime& one, const ScoreTime& other);
ScoreTimeResult differenceOf(const ScoreTime& one, const ScoreTime& other);
ScoreTimeResult productOf(const ScoreTime& one, const ScoreTime& other);
/// The nearest number of steps of a grid of `steps` to the whole note; half a step goes up.
long long onScoreGrid(const ScoreTime& time, long long steps);

}  // namespace zmatrix
