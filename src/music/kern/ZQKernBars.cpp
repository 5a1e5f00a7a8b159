#include "music/kern/ZQKernBars.h"

#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernTokens.h"
#include "music/midi/MIDIFILE.h"

namespace zmatrix {

namespace {

/// The time within a bar, with the sign of `time`; 0 for a bar of length 0.
int timeInBar(int time, int barLength) {
  return barLength != 0 ? static_cast<int>(static_cast<long long>(time) % barLength) : 0;
}

}  // namespace

bool KernBars::sawSignature(int numerator, int denominator) {
  // A signature counts as new only if both numbers differ: 6/4 after 3/4 does not.
  const bool isNew = numerator != timeSignatureNom_ && denominator != timeSignatureDenom_;
  if (isNew) timeSignatureFound_++;
  // While there is one signature, its last form is used, including a 6/4 after 3/4.
  if (timeSignatureFound_ == 1) {
    timeSignatureNom_ = numerator;
    timeSignatureDenom_ = denominator;
    const long long wholeNotes = static_cast<long long>(numerator) * quantaPerWholeNote;
    clockTicksPerBarFromTimeSignature_ = denominator != 0 ? static_cast<int>(wholeNotes / denominator) : 0;
  }
  return isNew;
}

void KernBars::measureBar(int time) {
  if (!firstBarLineFound_) {
    absTimeOfFirstBarLine_ = time;
    firstBarLineFound_ = true;
    return;
  }
  const int distance = wrappingDifference(time, absTimeOfFirstBarLine_);
  if (secondBarLineFound_ || distance <= 0) return;
  secondBarLineFound_ = true;
  clockTicksPerBarFromBarLines_ = distance;
  const int rest = timeInBar(time, distance);
  barOffsetFromBarLines_ = rest == 0 ? 0 : distance - rest;
}

void KernBars::sawBarLine(int time, bool isDouble) {
  measureBar(time);
  if (timeSignatureFound_ > 0)
    correctOffset(time, clockTicksPerBarFromTimeSignature_, isDouble, "time signature", barOffsetFromTimeSignature_);
  if (!secondBarLineFound_) return;
  correctOffset(time, clockTicksPerBarFromBarLines_, isDouble, "barline detection", barOffsetFromBarLines_);
  if (timeSignatureFound_ != 0 && barOffsetFromBarLines_ != barOffsetFromTimeSignature_) {
    dbPrintf(2, "bar offset derived from barlines differs from bar offset derived from time signature %d <-> %d\n",
             barOffsetFromBarLines_, barOffsetFromTimeSignature_);
    // getOffset prefers the bar lines, although the message says otherwise.
    dbPrintf(2, "bar offset taken from first time signature found...\n");
  }
}

void KernBars::correctOffset(int time, int barLength, bool isDouble, const char* origin, int& offset) {
  const int rest = timeInBar(time, barLength);
  if (rest == 0) return;
  const int found = wrappingDifference(barLength, rest);
  if (offset == 0) {
    offset = found;
    dbPrintf(3, "bar line at (from %s) unexpected position found. Correction offset %d will be applied later\n", origin, offset);
  } else if (offset != found && !isDouble) {
    dbPrintf(
        2,
        "bar line at (from %s) unexpected position found. Correction offset differs from previous detected value %d. It will "
        "not be applied later\n",
        origin, offset);
  }
}

int KernBars::getOffset() const {
  return barOffsetFromBarLines_ != 0 ? barOffsetFromBarLines_ : barOffsetFromTimeSignature_;
}

}  // namespace zmatrix
