#include "music/score/ZQKernScoreToken.h"

#include <algorithm>

namespace zmatrix {

namespace {

constexpr long long largestNumber = 1LL << 40;
constexpr int mostDots = 31;   // one more than a denominator can represent, so that a rounding is reported
constexpr int mostZeros = 40;  // beyond the latest representable time

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Skips all leading occurrences of a character; returns their number, at most `most`.
int countLeading(std::string_view& text, char character, int most) {
  const size_t count = std::min(text.find_first_not_of(character), text.size());
  text.remove_prefix(count);
  return static_cast<int>(std::min<size_t>(count, static_cast<size_t>(most)));
}

void takeDuration(std::string_view& text, KernScoreToken& token) {
  const std::string_view digits = text;
  __int128 denominator = scanKernNumber(text);
  __int128 numerator = 1;
  if (denominator == 0) {
    // 0 is a breve, 00 a longa, 000 a maxima.
    std::string_view zeros = digits;
    numerator = static_cast<__int128>(1) << countLeading(zeros, '0', mostZeros);
    denominator = 1;
  }
  if (text.size() > 1 && text[0] == '%' && isDigit(text[1])) {
    text.remove_prefix(1);
    numerator *= scanKernNumber(text);
  }
  const int dots = countLeading(text, '.', mostDots);
  numerator *= (2LL << dots) - 1;
  denominator <<= dots;
  token.hasDuration = true;
  if (numerator < 1 << 20 && denominator < 1 << 20) {
    token.duration = {static_cast<long long>(numerator), static_cast<int>(denominator)};
    return;
  }
  const ScoreTimeResult result = scoreTime(numerator, denominator);
  token.duration = result.time;
  token.isRounded = result.isRounded;
  token.isOutOfRange = result.isOutOfRange;
}

/// The note of the same name in 0 to 127 that is closest to `pitch`.
int movedByOctaves(int pitch) {
  constexpr int lowestOfTopOctave = 116;
  if (pitch < 0) return (pitch % 12 + 12) % 12;
  return pitch > 127 ? lowestOfTopOctave + (pitch - lowestOfTopOctave) % 12 : pitch;
}

bool isLetter(char character) {
  return (character >= 'a' && character <= 'g') || (character >= 'A' && character <= 'G');
}

/// The letters of a token: the letter, its number, and its accidentals.
struct Letters {
  char letter = 0;
  int count = 0;
  int sharps = 0, flats = 0;
  bool areMixed = false;

  /// False for what is no part of a pitch.
  bool take(char character) {
    if (character == '#') {
      sharps++;
    } else if (character == '-') {
      flats++;
    } else if (isLetter(character)) {
      areMixed = areMixed || (count > 0 && character != letter);
      letter = character;
      count++;
    } else {
      return false;
    }
    return true;
  }

  bool areOfOnePitch() const { return count > 0 && !areMixed; }

  int pitch() const {
    static constexpr int stepOfLetter[] = {9, 11, 0, 2, 4, 5, 7};  // a to g
    constexpr int middleC = 60, most = 1000;
    const bool isLow = letter <= 'G';
    const int octave = isLow ? -std::min(count, most) : std::min(count, most) - 1;
    return middleC + stepOfLetter[letter - (isLow ? 'A' : 'a')] + 12 * octave + std::min(sharps, most) - std::min(flats, most);
  }
};

void takeSign(char character, KernScoreToken& token) {
  if (character == '[' || character == '_') token.opensTie = true;
  if (character == ']' || character == '_') token.continuesTie = true;
  if (character == '{') token.opensPhrase = true;
  if (character == '}') token.closesPhrase = true;
  if (character == 'q' || character == 'Q') token.isGrace = true;
}

void takePitch(int pitch, KernScoreToken& token) {
  token.kind = KernScoreKind::note;
  token.pitch = static_cast<unsigned char>(movedByOctaves(pitch));
  token.isMovedByOctaves = token.pitch != pitch;
}

}  // namespace

long long scanKernNumber(std::string_view& text) {
  long long number = 0;
  size_t size = 0;
  for (; size < text.size() && isDigit(text[size]); size++) number = std::min(number * 10 + (text[size] - '0'), largestNumber);
  text.remove_prefix(size);
  return number;
}

KernScoreToken parseKernScoreToken(std::string_view text) {
  KernScoreToken token;
  Letters letters;
  bool isRest = false;
  while (!text.empty()) {
    const char character = text[0];
    if (isDigit(character) && !token.hasDuration) {
      takeDuration(text, token);
      continue;
    }
    text.remove_prefix(1);
    if (character == 'r')
      isRest = true;
    else if (!letters.take(character))
      takeSign(character, token);
  }
  if (token.isGrace) token.duration = {};
  // The letters of a rest give its position on the staff.
  if (isRest)
    token.kind = KernScoreKind::rest;
  else if (letters.areOfOnePitch())
    takePitch(letters.pitch(), token);
  else if (letters.count == 0 && token.hasDuration)
    token.kind = KernScoreKind::unpitched;
  return token;
}

}  // namespace zmatrix
