// What interpretations of kern say about meter, key and tempo.
#pragma once

#include <string_view>

namespace zmatrix {

struct KernMeter {
  int numerator = 0, denominator = 0;
  bool operator==(const KernMeter&) const = default;
};

/// True for *M and a digit or sign: a meter, or what is meant as one.
bool isKernMeter(std::string_view token);
/// *M3/4; *M3/3%2, whose beat is two thirds of a whole note, is 6/3. False if it is no meter from 1/1 to 65535/65535.
bool parseKernMeter(std::string_view token, KernMeter& meter);

/// *MM and a digit or sign. *MM[Allegro] is no number.
bool isKernTempo(std::string_view token);
/// *MM60, or *MM60-80 for the mean. False if that is not above 0 and at most 10000 quarter notes a minute.
bool parseKernTempo(std::string_view token, double& quartersPerMinute);

/// *k[f#c#]: the sharps less the flats, -7 to 7.
int fifthsOfKernSignature(std::string_view token);

/// *G: or *e:, whatever mode stands behind the colon. False for any other token.
bool parseKernKey(std::string_view token, int& fifths, bool& isMinor);

}  // namespace zmatrix
