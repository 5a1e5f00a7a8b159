// Divides a score into the runs that are learned: the notes of one part, or of all parts merged, in a stretch of one meter, on
// the grid. It needs no matrix, so that feed and report give the same result.
#pragma once

#include <vector>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreMeters.h"

namespace zmatrix {

struct NoteOnGrid {
  long long note;  ///< index in the score
  int start;       ///< quanta from the begin of the run's meter, without the whole bars of shortened rests
  int duration;    ///< quanta, at least one step of the grid
};

/// The properties that select a sub-matrix. Runs of one kind share a sub-matrix.
struct KindOfRun {
  int preProcessingType;
  int numerator;
  int denominator;
  int subType;
  int soundID;

  auto operator<=>(const KindOfRun&) const = default;
};

struct PlannedRun {
  zq_ScoreRun reported{};
  size_t first = 0;  ///< index into the plan's notes
  size_t count = 0;
  /// A note in front of the first: the last note of the run before, if this run has a single note and thus no step; or the only
  /// note of the run before, which is then learned here.
  NoteOnGrid leading{-1, 0, 0};
  bool learnsLeading = false;

  bool hasLeading() const { return leading.note >= 0; }
  KindOfRun kind() const {
    return {reported.preProcessingType, reported.numerator, reported.denominator, reported.subType, reported.soundID};
  }
};

struct ScorePlan {
  std::vector<NoteOnGrid> notes;
  std::vector<PlannedRun> runs;
  /// For each note of the score the reason why it is in no run, or zq_ScoreLearned.
  std::vector<unsigned char> causes;
  long long shortenedRests = 0;
  long long onsetsMoved = 0, durationsMoved = 0, notesMeasured = 0, notesWithoutDuration = 0;
  double largestOnsetMove = 0, sumOfOnsetMoves = 0, largestDurationMove = 0, sumOfDurationMoves = 0;

  /// The run as integers: number and start of each note, and duration and sound if its preprocessing has them.
  std::vector<int> sequenceOf(const zq_Score& score, const PlannedRun& run) const;
};

/// True for the settings of a music preprocessing.
bool isMusicSetting(const zq_ScoreFeedSettings& settings);

/// Throws std::bad_alloc if memory runs out.
ScorePlan planScore(const zq_Score& score, const zq_ScoreFeedSettings& settings);

/// The sound under which a note is learned: drums have one that belongs to no program.
int learnedSoundOf(const zq_ScoreNote& note);

}  // namespace zmatrix
