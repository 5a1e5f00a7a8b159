// The meters of a score for learning: stretches of one meter each, whose bars are counted from the begin of the meter.
#pragma once

#include <map>
#include <vector>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// A meter with bars of whole quanta, suitable for an info record and a MIDI file: 1 to 255 beats of a whole note to a 32nd.
struct BarMeter {
  int numerator = 0;  ///< 0 for no meter
  int denominator = 0;
};

/// The meter itself if it is suitable, else the suitable meter that joins the fewest of its bars; every bar line of the result is
/// one of the meter.
BarMeter barMeterFor(int numerator, int denominator);

struct MeterStretch {
  ScoreTime begin;
  int numerator = 4;  ///< as written in the file
  int denominator = 4;
  bool isAssumed = false;  ///< the file gives no meter here
  BarMeter bars;
  /// Added to a time of the score so that bar lines become multiples of the bar: the stretch begins at 0, or, if its first bar
  /// line comes early, at the distance that makes the first bar end on a multiple.
  ScoreTime shift;

  long long barLengthInQuanta() const { return bars.denominator > 0 ? bars.numerator * 12288LL / bars.denominator : 12288; }
};

using MeterStretches = std::vector<MeterStretch>;

/// The meters of a score by part. A part without meters has those for all parts, else those of the first part that has any. Where
/// there is none the meter is 4/4. A repeated meter on one of its own bar lines begins no stretch.
class ScoreMeters {
 public:
  /// The score must outlive this object.
  explicit ScoreMeters(const zq_Score& score);

  /// The stretches of a part, or of all parts together (-1), by their begin; at least one. The first also covers the time before
  /// its begin.
  const MeterStretches& stretchesOf(int part) const;
  /// The index of the stretch at a time.
  static size_t indexAt(const MeterStretches& stretches, const ScoreTime& time);

 private:
  std::map<int, MeterStretches> ofParts_;
};

}  // namespace zmatrix
