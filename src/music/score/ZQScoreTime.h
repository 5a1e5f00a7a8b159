// Times of a score: exact fractions of a whole note with a bounded denominator.
#pragma once

#include <compare>
#include <cstdlib>
#include <numeric>

namespace zmatrix {

/// A fraction of a whole note. The denominator is 1 to `largestDenominator`, the absolute value at most `latest` whole notes, so
/// that products of two of these numbers fit 128 bits.
struct ScoreTime {
  long long numerator = 0;
  int denominator = 1;

  static constexpr int largestDenominator = 1 << 30;
  static constexpr long long latest = 2147483647;
  static constexpr int gridSteps = 12288;  ///< per whole note: the grid for times without a denominator in range

  friend std::strong_ordering operator<=>(const ScoreTime& one, const ScoreTime& other) {
    return static_cast<__int128>(one.numerator) * other.denominator <=> static_cast<__int128>(other.numerator) * one.denominator;
  }
  friend bool operator==(const ScoreTime& one, const ScoreTime& other) { return (one <=> other) == 0; }
};

/// The result of a calculation with times.
struct ScoreTimeResult {
  ScoreTime time;
  bool isRounded = false;     ///< the exact denominator is out of range: the time is rounded to the grid
  bool isOutOfRange = false;  ///< the value is beyond the latest time and was limited to it
};

/// Reduces a fraction; the denominator is above 0.
ScoreTimeResult scoreTime(__int128 numerator, __int128 denominator);
ScoreTimeResult sumOf(const ScoreTime& one, const ScoreTime& other);
ScoreTimeResult differenceOf(const ScoreTime& one, const ScoreTime& other);
ScoreTimeResult productOf(const ScoreTime& one, const ScoreTime& other);
/// The nearest step on a grid of `steps` per whole note; halves are rounded up.
long long onScoreGrid(const ScoreTime& time, long long steps);

}  // namespace zmatrix
