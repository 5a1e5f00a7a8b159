#include "music/score/ZQScoreMeters.h"

#include <algorithm>

namespace zmatrix {

namespace {

constexpr int mostBeats = 255;  // one byte in a MIDI file
constexpr int smallestBeat = 32;

ScoreTime onsetOf(const zq_ScoreMeter& meter) {
  return {meter.onset, meter.onsetDenominator};
}

bool isOnBarLine(const ScoreTime& time, const MeterStretch& stretch) {
  const ScoreTime within = sumOf(time, stretch.shift).time;
  const auto bars = static_cast<__int128>(within.numerator) * stretch.denominator;
  return bars % (static_cast<__int128>(within.denominator) * stretch.numerator) == 0;
}

/// The length that a first bar lacks if its bar line comes early, else 0.
ScoreTime missingInFirstBar(const zq_Score& score, const ScoreTime& begin, const ScoreTime& barLength) {
  const zq_ScoreBarLine* const end = score.barLines + score.numberOfBarLines;
  const auto isBehind = [](const ScoreTime& time, const zq_ScoreBarLine& line) {
    return time < ScoreTime{line.onset, line.onsetDenominator};
  };
  const zq_ScoreBarLine* const first = std::upper_bound(score.barLines, end, begin, isBehind);
  if (first == end) return {};
  const ScoreTime length = differenceOf({first->onset, first->onsetDenominator}, begin).time;
  return length < barLength ? differenceOf(barLength, length).time : ScoreTime{};
}

MeterStretch stretchOf(const zq_Score& score, const ScoreTime& begin, int numerator, int denominator, bool isAssumed) {
  MeterStretch stretch{begin, numerator, denominator, isAssumed, barMeterFor(numerator, denominator), {}};
  const ScoreTime missing = missingInFirstBar(score, begin, scoreTime(numerator, denominator).time);
  stretch.shift = differenceOf(missing, begin).time;
  return stretch;
}

MeterStretches stretchesOf(const zq_Score& score, const std::vector<zq_ScoreMeter>& meters) {
  MeterStretches stretches;
  if (meters.empty() || ScoreTime{} < onsetOf(meters.front())) stretches.push_back(stretchOf(score, {}, 4, 4, true));
  for (const zq_ScoreMeter& meter : meters) {
    const ScoreTime begin = onsetOf(meter);
    if (!stretches.empty()) {
      MeterStretch& last = stretches.back();
      const bool isSame = last.numerator == meter.numerator && last.denominator == meter.denominator;
      if (isSame && isOnBarLine(begin, last)) {
        last.isAssumed = false;
        continue;
      }
      if (begin == last.begin) stretches.pop_back();  // of several meters at the same time the last one is used
    }
    stretches.push_back(stretchOf(score, begin, meter.numerator, meter.denominator, false));
  }
  return stretches;
}

}  // namespace

BarMeter barMeterFor(int numerator, int denominator) {
  const auto isPowerOfTwo = [](int number) { return (number & (number - 1)) == 0; };
  if (numerator < 1 || denominator < 1) return {};
  if (isPowerOfTwo(denominator) && denominator <= smallestBeat && numerator <= mostBeats) return {numerator, denominator};
  const int divisor = std::gcd(numerator, denominator);
  numerator /= divisor;
  denominator /= divisor;
  // Joins as many bars as make the denominator a power of two that is not too large.
  denominator = std::min(denominator & -denominator, smallestBeat);
  return numerator <= mostBeats ? BarMeter{numerator, denominator} : BarMeter{};
}

ScoreMeters::ScoreMeters(const zq_Score& score) {
  std::map<int, std::vector<zq_ScoreMeter>> meters;
  for (int i = 0; i < score.numberOfMeters; ++i) meters[score.meters[i].part].push_back(score.meters[i]);
  if (meters.empty()) meters[-1];
  for (auto& [part, list] : meters) {
    std::stable_sort(list.begin(), list.end(), [](const auto& one, const auto& other) { return onsetOf(one) < onsetOf(other); });
    ofParts_[part] = zmatrix::stretchesOf(score, list);
  }
}

const MeterStretches& ScoreMeters::stretchesOf(int part) const {
  const auto own = ofParts_.find(part);
  return own == ofParts_.end() ? ofParts_.begin()->second : own->second;
}

size_t ScoreMeters::indexAt(const MeterStretches& stretches, const ScoreTime& time) {
  const auto isBehind = [](const ScoreTime& when, const MeterStretch& stretch) { return when < stretch.begin; };
  const auto next = std::upper_bound(stretches.begin() + 1, stretches.end(), time, isBehind);
  return static_cast<size_t>(next - stretches.begin()) - 1;
}

}  // namespace zmatrix
