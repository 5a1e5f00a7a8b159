// Meter and bar lines of a kern file: the length of a bar, by the signature and by the distance of the first two bar lines, and
// the offset that moves the music so that a pick-up bar ends on a bar line.
#pragma once

#include <string_view>

namespace zmatrix {

class KernBars {
 public:
  /// Takes a signature; true if it counts as a new one.
  bool sawSignature(int numerator, int denominator);
  int getNumberOfSignatures() const { return timeSignatureFound_; }
  int getNumerator() const { return timeSignatureNom_; }
  int getDenominator() const { return timeSignatureDenom_; }

  void sawBarLine(int time, bool isDouble);
  /// The offset to add to the times of the objects, if it is above 0.
  int getOffset() const;

 private:
  void measureBar(int time);
  static void correctOffset(int time, int barLength, bool isDouble, const char* origin, int& offset);

  int timeSignatureFound_ = 0;
  int timeSignatureNom_ = 0, timeSignatureDenom_ = 0;
  int clockTicksPerBarFromTimeSignature_ = 0;
  int clockTicksPerBarFromBarLines_ = 0;
  int barOffsetFromTimeSignature_ = 0;
  int barOffsetFromBarLines_ = 0;
  bool firstBarLineFound_ = false, secondBarLineFound_ = false;
  int absTimeOfFirstBarLine_ = 0;
};

}  // namespace zmatrix
