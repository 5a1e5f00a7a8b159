#include "music/score/ZQScoreTempo.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace zmatrix {

namespace {

constexpr std::string_view endOfEntry = "): ";
constexpr std::string_view exactMark = ", exact";
constexpr std::string_view tempoUnit = " quarters a minute";
constexpr int mostTempi = 1000;            // of a run; more are sampled
constexpr double highestTempo = 60000000;  // one quarter per microsecond

double wholeNotes(const ScoreTime& time) {
  return static_cast<double>(time.numerator) / time.denominator;
}

ScoreTime onsetOf(const zq_ScoreTempo& tempo) {
  return {tempo.onset, tempo.onsetDenominator};
}

/// The tempo as a text like "96.00", in every locale.
std::string textOfTempo(double quartersPerMinute) {
  const long long hundredths = std::llround(std::clamp(quartersPerMinute, 0.01, highestTempo) * 100);
  const std::string fraction = std::to_string(hundredths % 100);
  return std::to_string(hundredths / 100) + (fraction.size() < 2 ? ".0" : ".") + fraction;
}

/// The tempo in such a text, 0 for any other text.
double tempoOfText(std::string_view text) {
  if (text.size() < 4 || text.size() > 12 || text[text.size() - 3] != '.') return 0;
  long long hundredths = 0;
  for (const char sign : text) {
    if (sign == '.') continue;
    if (sign < '0' || sign > '9') return 0;
    hundredths = 10 * hundredths + (sign - '0');
  }
  return static_cast<double>(hundredths) / 100;
}

/// The median of the tempi at equidistant times, for scores with very many tempi.
double sampledTempo(const zq_Score& score, double begin, double end) {
  const auto isBehind = [](double time, const zq_ScoreTempo& tempo) { return time < wholeNotes(onsetOf(tempo)); };
  std::vector<double> samples;
  for (int i = 0; i < mostTempi; ++i) {
    const double time = begin + (end - begin) * i / mostTempi;
    const zq_ScoreTempo* const next = std::upper_bound(score.tempi, score.tempi + score.numberOfTempi, time, isBehind);
    samples.push_back(next == score.tempi ? next->quartersPerMinute : next[-1].quartersPerMinute);
  }
  std::nth_element(samples.begin(), samples.begin() + mostTempi / 2, samples.end());
  return samples[mostTempi / 2];
}

}  // namespace

double tempoBetween(const zq_Score& score, const ScoreTime& begin, const ScoreTime& end) {
  struct Span {
    double tempo, length;
  };
  const zq_ScoreTempo* const last = score.tempi + score.numberOfTempi;
  const auto isBehind = [](const ScoreTime& time, const zq_ScoreTempo& tempo) { return time < onsetOf(tempo); };
  const auto isBefore = [](const zq_ScoreTempo& tempo, const ScoreTime& time) { return onsetOf(tempo) < time; };
  const zq_ScoreTempo* tempo = std::upper_bound(score.tempi, last, begin, isBehind);
  if (tempo != score.tempi) --tempo;
  const zq_ScoreTempo* const behind = std::lower_bound(tempo, last, end, isBefore);
  if (behind - tempo > mostTempi) return sampledTempo(score, wholeNotes(begin), wholeNotes(end));
  std::vector<Span> spans;
  double total = 0;
  for (; tempo != last && (spans.empty() || onsetOf(*tempo) < end); ++tempo) {
    const double from = std::max(wholeNotes(onsetOf(*tempo)), wholeNotes(begin));
    const double to = tempo + 1 == last ? wholeNotes(end) : std::min(wholeNotes(onsetOf(tempo[1])), wholeNotes(end));
    spans.push_back({tempo->quartersPerMinute, std::max(to - from, 0.0)});
    total += spans.back().length;
  }
  if (spans.empty()) return 0;
  std::stable_sort(spans.begin(), spans.end(), [](const Span& one, const Span& other) { return one.tempo < other.tempo; });
  double passed = 0;
  for (const Span& span : spans) {
    passed += span.length;
    if (passed * 2 >= total && (span.length > 0 || total <= 0)) return span.tempo;
  }
  return spans.back().tempo;
}

std::string entryOfExactReading(const char* entry, double quartersPerMinute) {
  std::string text(entry);
  const size_t end = text.rfind(endOfEntry);
  text.resize(end == std::string::npos ? text.size() : end);
  text += exactMark;
  if (quartersPerMinute > 0) text.append(", ").append(textOfTempo(quartersPerMinute)).append(tempoUnit);
  return text.append(endOfEntry);
}

LearnedReadings readingsOf(const char* namesOfUpdateFiles) {
  LearnedReadings readings;
  std::vector<double> tempi;
  std::string_view rest(namesOfUpdateFiles != nullptr ? namesOfUpdateFiles : "");
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.empty()) continue;
    const std::string_view head = line.substr(0, std::min(line.find(endOfEntry), line.size()));
    const size_t mark = head.find(exactMark);
    if (line.rfind("MatID", 0) != 0 || head.size() == line.size() || mark == std::string_view::npos) {
      readings.hasClassic = true;
      continue;
    }
    readings.hasExact = true;
    const std::string_view behind = head.substr(mark + exactMark.size());
    if (behind.size() < 2 + tempoUnit.size()) continue;
    const double tempo = tempoOfText(behind.substr(2, behind.size() - 2 - tempoUnit.size()));
    if (tempo > 0) tempi.push_back(tempo);
  }
  if (tempi.empty()) return readings;
  std::sort(tempi.begin(), tempi.end());
  readings.medianTempo = (tempi[(tempi.size() - 1) / 2] + tempi[tempi.size() / 2]) / 2;
  return readings;
}

}  // namespace zmatrix
