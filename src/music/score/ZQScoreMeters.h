// The meters of a score as learning has them: stretches of one meter each, whose bars are counted from where the meter begins.
#pragma once

#include <map>
#include <vector>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// A meter with bars of whole quanta, that a record and a MIDI file can hold: 1 to 255 beats of a whole note to its 32nd.
struct BarMeter {
  int numerator = 0;  ///< 0: there is none
  int denominator = 0;
};

/// The meter itself, or the one that joins as few of its bars as make one of these; every bar line of it is then one of the
/// meter.
BarMeter barMeterFor(int numerator, int denominator);

struct MeterStretch {
  ScoreTime begin;
  int numerator = 4;  ///< as the file has it
  int denominator = 4;
  bool isAssumed = false;  ///< the file gives no meter here
  BarMeter bars;
  /// To be added to a time of the score, so that bar lines come to multiples of the bar: the stretch begins at 0, or, where its
  /// first bar line comes early, so far within a bar as is left of it.
  ScoreTime shift;

  long long barLengthInQuanta() const { return bars.denominator > 0 ? bars.numerator * 12288LL / bars.denominator : 12288; }
};

using MeterStretches = std::vector<MeterStretch>;

/// The meters of a score by part. A part without a meter of its own has those of all parts, else those of the first part that has
/// any. Where none is given the meter is 4/4. A meter that is given again on one of its own bar lines begins no stretch.
class ScoreMeters {
 public:
  /// The score has to live as long.
  explicit ScoreMeters(const zq_Score& score);

  /// Those of a part, or of all parts together (-1), by their begin; at least one, of which the first holds from the very start.
  const MeterStretches& stretchesOf(int part) const;
  /// The one that holds at a time.
  static size_t indexAt(const MeterStretches& stretches, const ScoreTime& time);

 private:
  std::map<int, MeterStretches> ofParts;
};

}  // namespace zmatrix
