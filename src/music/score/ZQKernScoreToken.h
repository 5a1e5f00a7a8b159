// One note, rest or other sub-token of a kern token, with its duration as an exact fraction.
#pragma once

#include <string_view>

#include "music/score/ZQScoreTime.h"

namespace zmatrix {

enum class KernScoreKind : unsigned char {
  unreadable,  ///< neither pitch nor rest nor duration, letters of several pitches, or a null token in a chord
  note,
  rest,
  unpitched,  ///< only a duration
};

struct KernScoreToken {
  ScoreTime duration;  ///< 0 without a duration, and for a grace note
  KernScoreKind kind = KernScoreKind::unreadable;
  bool hasDuration = false;  ///< for a grace note only if it is written; it takes no time even then
  bool isRounded = false;
  bool isOutOfRange = false;
  bool isGrace = false;       ///< q or Q
  bool continuesTie = false;  ///< _ or ]
  bool opensTie = false;      ///< [ or _
  bool opensPhrase = false;
  bool closesPhrase = false;
  bool isMovedByOctaves = false;  ///< the written note is outside 0 to 127
  unsigned char pitch = 0;        ///< 0 to 127
};

/// `text` is a token without blanks.
KernScoreToken parseKernScoreToken(std::string_view text);

/// Reads the digits at the begin of `text` and removes them. Numbers above 2^40 become 2^40.
long long scanKernNumber(std::string_view& text);

}  // namespace zmatrix
