// A score while a reader makes it.
#pragma once

#include <string_view>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// Collects what a reader finds. Throws std::bad_alloc where memory runs out.
class ScoreBuilder {
 public:
  explicit ScoreBuilder(zq_ScoreFormat format);
  ~ScoreBuilder();
  ScoreBuilder(const ScoreBuilder&) = delete;
  ScoreBuilder& operator=(const ScoreBuilder&) = delete;

  /// What is not collected is set here: `midiFormat`, `division`, `state`.
  zq_Score& score();

  /// Room for so many notes at once. More may come.
  void reserveNotes(long long count);
  /// Notes come in any order; the index of one stays until finish(). `part` is an index that addPart() gave.
  long long addNote(const zq_ScoreNote& note);
  zq_ScoreNote& noteAt(long long index);
  long long numberOfNotes() const;
  /// Returns its index. A part that gets no note is left out of the score, and the others move up.
  int addPart(int track, int channel);
  void setNameOfPart(int part, std::string_view name);
  void setChannelOfPart(int part, int channel);
  void addMeter(const ScoreTime& onset, long long place, int part, int numerator, int denominator);
  void addKey(const ScoreTime& onset, int part, int fifths, bool isMinor);
  void addTempo(const ScoreTime& onset, double quartersPerMinute);
  void addBarLine(const ScoreTime& onset, long long place);
  /// Counts the finding, and lists it while there are few.
  void addFinding(zq_ScoreFindingKind kind, long long place, int column, std::string_view token = {});

  /// Puts notes part after part, by onset and in the order in which they came, and everything else by onset. The caller owns the
  /// score; the builder is empty from then on.
  zq_Score* finish();

 private:
  struct OwnedScore;
  friend void deleteScore(zq_Score* score);

  void sortNotes();
  void dropEmptyParts();

  OwnedScore* owned;
};

}  // namespace zmatrix
