#include "music/score/ZQScoreTime.h"

namespace zmatrix {

namespace {

__int128 greatestCommonDivisor(__int128 one, __int128 other) {
  while (other != 0) {
    const __int128 rest = one % other;
    one = other;
    other = rest;
  }
  return one < 0 ? -one : one;
}

__int128 nearestMultiple(__int128 numerator, __int128 denominator, __int128 steps) {
  const __int128 doubled = 2 * numerator * steps + denominator;
  const __int128 divisor = 2 * denominator;
  const __int128 quotient = doubled / divisor;
  return doubled % divisor < 0 ? quotient - 1 : quotient;
}

}  // namespace

ScoreTimeResult scoreTime(__int128 numerator, __int128 denominator) {
  constexpr auto latest = static_cast<__int128>(ScoreTime::latest);
  if (numerator > latest * denominator || numerator < -latest * denominator) {
    return {{numerator < 0 ? -ScoreTime::latest : ScoreTime::latest, 1}, false, true};
  }
  const __int128 divisor = greatestCommonDivisor(denominator, numerator);
  numerator /= divisor;
  denominator /= divisor;
  if (denominator <= ScoreTime::largestDenominator) {
    return {{static_cast<long long>(numerator), static_cast<int>(denominator)}};
  }
  ScoreTimeResult rounded = scoreTime(nearestMultiple(numerator, denominator, ScoreTime::gridSteps), ScoreTime::gridSteps);
  rounded.isRounded = true;
  return rounded;
}

ScoreTimeResult sumOf(const ScoreTime& one, const ScoreTime& other) {
  // Most sums have a common denominator within the bound. They aren't reduced: the next sum mostly has the same denominator.
  const long long common =
      one.denominator == other.denominator
          ? one.denominator
          : static_cast<long long>(one.denominator) / std::gcd(one.denominator, other.denominator) * other.denominator;
  if (common <= ScoreTime::largestDenominator) {
    const long long sum = one.numerator * (common / one.denominator) + other.numerator * (common / other.denominator);
    if (sum <= ScoreTime::latest * common && sum >= -ScoreTime::latest * common) return {{sum, static_cast<int>(common)}};
  }
  return scoreTime(
      static_cast<__int128>(one.numerator) * other.denominator + static_cast<__int128>(other.numerator) * one.denominator,
      static_cast<__int128>(one.denominator) * other.denominator);
}

ScoreTimeResult differenceOf(const ScoreTime& one, const ScoreTime& other) {
  return sumOf(one, {-other.numerator, other.denominator});
}

ScoreTimeResult productOf(const ScoreTime& one, const ScoreTime& other) {
  return scoreTime(static_cast<__int128>(one.numerator) * other.numerator,
                   static_cast<__int128>(one.denominator) * other.denominator);
}

long long onScoreGrid(const ScoreTime& time, long long steps) {
  return static_cast<long long>(nearestMultiple(time.numerator, time.denominator, steps));
}

}  // namespace zmatrix
