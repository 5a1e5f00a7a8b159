// Rounds the times of a score to a grid of ticks, chosen so that as few times as possible are moved.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// The ticks of one MIDI file. Scores must be valid.
class ScoreTicks {
 public:
  struct Span {
    long long onset, end;
  };

  /// Chooses the division: that of the score, if it has one that fits; else the smallest that represents all times, scaled up to
  /// a usual one; else one with many divisors.
  explicit ScoreTicks(const zq_Score& score);

  int division() const { return ticksOfWhole_ / 4; }
  /// The nearest tick; halves are rounded up.
  long long tickOf(long long numerator, int denominator);
  Span spanOf(const zq_ScoreNote& note) {
    return isWhole(note.onsetDenominator) && note.durationDenominator == note.onsetDenominator
               ? Span{note.onset * ticksOfUnit_, (note.onset + note.duration) * ticksOfUnit_}
               : exactSpanOf(note);
  }

  long long timesMoved() const { return timesMoved_; }
  double largestMove() const { return largestMove_; }  ///< in whole notes

 private:
  /// True if all times of this denominator are whole ticks; `ticksOfUnit_` then is the number of ticks of 1/denominator.
  bool isWhole(int denominator) {
    if (denominator == denominator_) return ticksOfUnit_ > 0;
    denominator_ = denominator;
    ticksOfUnit_ = ticksOfWhole_ % denominator == 0 ? ticksOfWhole_ / denominator : 0;
    return ticksOfUnit_ > 0;
  }
  Span exactSpanOf(const zq_ScoreNote& note);
  long long nearestTick(__int128 numerator, __int128 denominator);

  int ticksOfWhole_;
  int denominator_ = 0;  ///< the denominator of the last call
  long long ticksOfUnit_ = 0;
  long long timesMoved_ = 0;
  double largestMove_ = 0;
};

}  // namespace zmatrix
