// The tempo of learned music: computed from the score, stored in the history of the sub-matrix, and read from there.
#pragma once

#include <string>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// The median tempo over the time between two onsets, in quarter notes per minute; 0 if the score has none.
double tempoBetween(const zq_Score& score, const ScoreTime& begin, const ScoreTime& end);

/// Turns an entry of the classic feed, "MatID0: 4/4, Monophon, Undefined, Piano (track1): ", into one of an exact reading: "...
/// (track1, exact, 96.00 quarters a minute): ". A tempo of 0 is left out.
std::string entryOfExactReading(const char* entry, double quartersPerMinute);

/// The content of the history of a sub-matrix, one entry per line.
struct LearnedReadings {
  bool hasClassic = false;
  bool hasExact = false;
  double medianTempo = 0;  ///< 0 for none
};
LearnedReadings readingsOf(const char* namesOfUpdateFiles);

}  // namespace zmatrix
