// Times of a score on a grid of ticks, chosen so that as few of them as can be have to move.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// The ticks of one MIDI file. Scores are valid ones.
class ScoreTicks {
 public:
  struct Span {
    long long onset, end;
  };

  /// The division of the score if it was read from ticks and fits it; else the smallest in which all times are whole, times what
  /// makes a small one usual; else a division that many fractions go into.
  explicit ScoreTicks(const zq_Score& score);

  int division() const { return ticksOfWhole_ / 4; }
  /// The nearest tick; half a tick goes up.
  long long tickOf(long long numerator, int denominator);
  Span spanOf(const zq_ScoreNote& note) {
    return isWhole(note.onsetDenominator) && note.durationDenominator == note.onsetDenominator
               ? Span{note.onset * ticksOfUnit_, (note.onset + note.duration) * ticksOfUnit_}
               : exactSpanOf(note);
  }

  long long timesMoved() const { return timesMoved_; }
  double largestMove() const { return largestMove_; }  ///< in whole notes

 private:
  /// True if all times of this denominator are whole ticks; `ticksOfUnit_` of them then make a unit.
  bool isWhole(int denominator) {
    if (denominator == denominator_) return ticksOfUnit_ > 0;
    denominator_ = denominator;
    ticksOfUnit_ = ticksOfWhole_ % denominator == 0 ? ticksOfWhole_ / denominator : 0;
    return ticksOfUnit_ > 0;
  }
  Span exactSpanOf(const zq_ScoreNote& note);
  long long nearestTick(__int128 numerator, __int128 denominator);

  int ticksOfWhole_;
  int denominator_ = 0;  ///< the last one that was asked for
  long long ticksOfUnit_ = 0;
  long long timesMoved_ = 0;
  double largestMove_ = 0;
};

}  // namespace zmatrix
