// The tempo of music that is learned: found in the score, kept in the history of the sub-matrix, read from there.
#pragma once

#include <string>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// The tempo that half of the time between two onsets is slower than, in quarter notes a minute; 0 where the score says none.
double tempoBetween(const zq_Score& score, const ScoreTime& begin, const ScoreTime& end);

/// The entry of a classic feed, "MatID0: 4/4, Monophon, Undefined, Piano (track1): ", as one of an exact reading:
/// "... (track1, exact, 96.00 quarters a minute): ". A tempo of 0 is left out.
std::string entryOfExactReading(const char* entry, double quartersPerMinute);

/// What the entries in the history of a sub-matrix say, a line each.
struct LearnedReadings {
  bool hasClassic = false;
  bool hasExact = false;
  double medianTempo = 0;  ///< 0 for none
};
LearnedReadings readingsOf(const char* namesOfUpdateFiles);

}  // namespace zmatrix
