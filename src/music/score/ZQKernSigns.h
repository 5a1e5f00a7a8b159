// Meter, key and tempo in interpretations of kern.
#pragma once

#include <string_view>

namespace zmatrix {

struct KernMeter {
  int numerator = 0, denominator = 0;
  bool operator==(const KernMeter&) const = default;
};

/// True for *M and a digit or sign: a meter, correct or not.
bool isKernMeter(std::string_view token);
/// Reads *M3/4; *M3/3%2, with beats of two thirds of a whole note, gives 6/3. False if it is no meter from 1/1 to 65535/65535.
[[nodiscard]] bool parseKernMeter(std::string_view token, KernMeter& meter);

/// True for *MM and a digit or sign, but not for *MM[Allegro].
bool isKernTempo(std::string_view token);
/// Reads *MM60, or *MM60-80 as the mean. False if the result is not above 0 or exceeds 10000 quarter notes per minute.
[[nodiscard]] bool parseKernTempo(std::string_view token, double& quartersPerMinute);

/// Reads *k[f#c#]: the number of sharps minus the number of flats, -7 to 7.
int fifthsOfKernSignature(std::string_view token);

/// Reads *G: or *e:, with any mode behind the colon. False for any other token.
[[nodiscard]] bool parseKernKey(std::string_view token, int& fifths, bool& isMinor);

}  // namespace zmatrix
