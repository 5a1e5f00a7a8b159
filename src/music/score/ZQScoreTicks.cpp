#include "music/score/ZQScoreTicks.h"

#include <algorithm>
#include <numeric>

namespace zmatrix {

namespace {

constexpr int largestDivision = 32767;
constexpr int usualDivision = 480;
constexpr int smallestDivision = 96;  // a smaller one is too coarse for editing
constexpr int richDivision = 30240;   // 2^5 * 3^3 * 5 * 7

/// Calls the visitor with each time of a score until it returns false.
template <class Visitor>
bool allTimes(const zq_Score& score, Visitor visit) {
  const auto allOnsets = [&](const auto* entries, long long number) {
    return std::all_of(entries, entries + number, [&](const auto& entry) { return visit(entry.onset, entry.onsetDenominator); });
  };
  for (long long i = 0; i < score.numberOfNotes; ++i) {
    const zq_ScoreNote& note = score.notes[i];
    if (!visit(note.onset, note.onsetDenominator) || !visit(note.duration, note.durationDenominator)) return false;
  }
  return allOnsets(score.meters, score.numberOfMeters) && allOnsets(score.keys, score.numberOfKeys) &&
         allOnsets(score.tempi, score.numberOfTempi);
}

bool fits(const zq_Score& score, int division) {
  int last = 0;
  return allTimes(score, [&](long long, int denominator) {
    const bool isWhole = denominator == last || 4 * division % denominator == 0;
    last = denominator;
    return isWhole;
  });
}

/// The smallest division that represents all times, or 0 if it is too large. `looksAtNumerators`: reduces the fractions first,
/// which is slower.
int smallestDivisionFor(const zq_Score& score, bool looksAtNumerators) {
  long long division = 1;
  int last = 0;
  const bool isFound = allTimes(score, [&](long long numerator, int denominator) {
    if (denominator == last || 4 * division % denominator == 0) return true;
    if (!looksAtNumerators) last = denominator;
    const long long reduced = denominator / (looksAtNumerators ? std::gcd(numerator, static_cast<long long>(denominator)) : 1);
    division = std::lcm(division, reduced / std::gcd(reduced, 4LL));
    return division <= largestDivision;
  });
  return isFound ? static_cast<int>(division) : 0;
}

int usualMultipleOf(int division) {
  if (usualDivision % division == 0) return usualDivision;
  return division * std::max(1, (smallestDivision + division - 1) / division);
}

int divisionFor(const zq_Score& score) {
  if (score.division > 0 && score.division <= largestDivision && fits(score, score.division)) return score.division;
  for (const bool looksAtNumerators : {false, true}) {
    if (const int division = smallestDivisionFor(score, looksAtNumerators)) return usualMultipleOf(division);
  }
  return richDivision;
}

}  // namespace

ScoreTicks::ScoreTicks(const zq_Score& score) : ticksOfWhole_(4 * divisionFor(score)) {
}

long long ScoreTicks::tickOf(long long numerator, int denominator) {
  return isWhole(denominator) ? numerator * ticksOfUnit_ : nearestTick(numerator, denominator);
}

ScoreTicks::Span ScoreTicks::exactSpanOf(const zq_ScoreNote& note) {
  const long long onset = tickOf(note.onset, note.onsetDenominator);
  const bool isOnsetWhole = ticksOfUnit_ > 0;
  if (isWhole(note.durationDenominator) && isOnsetWhole) return {onset, onset + note.duration * ticksOfUnit_};
  const __int128 end =
      static_cast<__int128>(note.onset) * note.durationDenominator + static_cast<__int128>(note.duration) * note.onsetDenominator;
  return {onset, nearestTick(end, static_cast<__int128>(note.onsetDenominator) * note.durationDenominator)};
}

/// Numerators are below 2^93, so that the products fit 128 bits.
long long ScoreTicks::nearestTick(__int128 numerator, __int128 denominator) {
  const __int128 exact = numerator * ticksOfWhole_;
  const auto tick = static_cast<long long>((2 * exact + denominator) / (2 * denominator));
  const __int128 rest = tick * denominator - exact;
  if (rest == 0) return tick;
  ++timesMoved_;
  largestMove_ =
      std::max(largestMove_, static_cast<double>(rest < 0 ? -rest : rest) / static_cast<double>(denominator) / ticksOfWhole_);
  return tick;
}

}  // namespace zmatrix
