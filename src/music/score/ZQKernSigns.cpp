#include "music/score/ZQKernSigns.h"

#include <algorithm>
#include <cmath>

#include "frame/ZQDecimalNumber.h"
#include "music/score/ZQKernScoreToken.h"

namespace zmatrix {

namespace {

constexpr size_t sizeOfMeterMark = 2;  // *M
constexpr size_t sizeOfTempoMark = 3;  // *MM

bool beginsNumber(std::string_view text) {
  return !text.empty() && ((text[0] >= '0' && text[0] <= '9') || text[0] == '-' || text[0] == '+' || text[0] == '.');
}

bool skip(std::string_view& text, char character) {
  if (!text.starts_with(character)) return false;
  text.remove_prefix(1);
  return true;
}

bool scanDouble(std::string_view& text, double& number) {
  const auto [end, error] = decimalFromChars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return true;
}

}  // namespace

bool isKernMeter(std::string_view token) {
  return token.starts_with("*M") && beginsNumber(token.substr(sizeOfMeterMark));
}

bool parseKernMeter(std::string_view token, KernMeter& meter) {
  constexpr long long largest = 65535;
  std::string_view text = token.substr(sizeOfMeterMark);
  long long numerator = scanKernNumber(text);
  if (!skip(text, '/')) return false;
  const long long denominator = scanKernNumber(text);
  if (numerator > largest) return false;
  if (skip(text, '%')) numerator *= scanKernNumber(text);
  if (!text.empty() || numerator < 1 || numerator > largest || denominator < 1 || denominator > largest) return false;
  meter = {static_cast<int>(numerator), static_cast<int>(denominator)};
  return true;
}

bool isKernTempo(std::string_view token) {
  return token.starts_with("*MM") && beginsNumber(token.substr(sizeOfTempoMark));
}

bool parseKernTempo(std::string_view token, double& quartersPerMinute) {
  constexpr double fastest = 10000;
  std::string_view text = token.substr(sizeOfTempoMark);
  double tempo = 0, other = 0;
  if (!scanDouble(text, tempo)) return false;
  if (skip(text, '-') && scanDouble(text, other)) tempo = (tempo + other) / 2;
  quartersPerMinute = tempo;
  return tempo > 0 && tempo <= fastest;
}

int fifthsOfKernSignature(std::string_view token) {
  const auto sharps = std::count(token.begin(), token.end(), '#'), flats = std::count(token.begin(), token.end(), '-');
  return static_cast<int>(std::clamp<std::ptrdiff_t>(sharps - flats, -7, 7));
}

bool parseKernKey(std::string_view token, int& fifths, bool& isMinor) {
  static constexpr int fifthsOfLetter[] = {3, 5, 0, 2, 4, -1, 1};  // a to g
  if (token.size() < 3) return false;
  const char letter = token[1];
  isMinor = letter >= 'a' && letter <= 'g';
  if (!isMinor && (letter < 'A' || letter > 'G')) return false;
  std::string_view text = token.substr(2);
  fifths = fifthsOfLetter[letter - (isMinor ? 'a' : 'A')] - (isMinor ? 3 : 0);
  if (skip(text, '#')) {
    fifths += 7;
  } else if (skip(text, '-')) {
    fifths -= 7;
  }
  fifths = std::clamp(fifths, -7, 7);
  return text.starts_with(':');
}

}  // namespace zmatrix
