// Builds a score for a reader.
#pragma once

#include <string_view>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace zmatrix {

/// Collects the notes and entries that a reader finds. Throws std::bad_alloc if memory runs out.
class ScoreBuilder {
 public:
  explicit ScoreBuilder(zq_ScoreFormat format);
  ~ScoreBuilder();
  ScoreBuilder(const ScoreBuilder&) = delete;
  ScoreBuilder& operator=(const ScoreBuilder&) = delete;

  /// The score, for fields that are not collected: `midiFormat`, `division`, `state`.
  zq_Score& score();

  /// Reserves room for `count` notes; more can follow.
  void reserveNotes(long long count);
  /// Adds a note, in any order; its index is valid until finish(). `part` is an index from addPart().
  long long addNote(const zq_ScoreNote& note);
  zq_ScoreNote& noteAt(long long index);
  long long numberOfNotes() const;
  /// Returns the index of the part. Parts without notes are left out of the score; the indices of later parts then decrease.
  int addPart(int track, int channel);
  void setNameOfPart(int part, std::string_view name);
  void setChannelOfPart(int part, int channel);
  void addMeter(const ScoreTime& onset, long long place, int part, int numerator, int denominator);
  void addKey(const ScoreTime& onset, int part, int fifths, bool isMinor);
  void addTempo(const ScoreTime& onset, double quartersPerMinute);
  void addBarLine(const ScoreTime& onset, long long place);
  /// Counts the finding; only the first ones are listed.
  void addFinding(zq_ScoreFindingKind kind, long long place, int column, std::string_view token = {});

  /// Sorts notes by part and onset, keeping the order of equal ones, and everything else by onset. The caller owns the score; the
  /// builder is empty afterwards.
  zq_Score* finish();

 private:
  struct OwnedScore;
  friend void deleteScore(zq_Score* score);

  void sortNotes();
  void dropEmptyParts();

  OwnedScore* owned_;
};

}  // namespace zmatrix
