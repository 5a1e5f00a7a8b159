// A score as the runs that are learned of it: the notes of a part, or of all parts merged, as long as a meter holds, on the grid.
// It knows no matrix, so that what is learned and what a report promises are the same.
#pragma once

#include <vector>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreMeters.h"

namespace zmatrix {

struct NoteOnGrid {
  long long note;  ///< index in the score
  int start;       ///< quanta from the begin of the run's meter; whole bars of long rests are left out
  int duration;    ///< quanta, at least one step of the grid
};

/// What a run needs of a matrix. Runs of one kind share a sub-matrix.
struct KindOfRun {
  int preProcessingType;
  int numerator;
  int denominator;
  int subType;
  int soundID;

  auto operator<=>(const KindOfRun&) const = default;
};

struct PlannedRun {
  zq_ScoreRun told{};
  size_t first = 0;  ///< of the plan's notes
  size_t count = 0;
  /// A note that stands before the first: the last one of the run before, for a run of one note, which would else have no step.
  /// Or the only note of the run before, which is learned here then.
  NoteOnGrid leading{-1, 0, 0};
  bool learnsLeading = false;

  bool hasLeading() const { return leading.note >= 0; }
  KindOfRun kind() const { return {told.preProcessingType, told.numerator, told.denominator, told.subType, told.soundID}; }
};

struct ScorePlan {
  std::vector<NoteOnGrid> notes;
  std::vector<PlannedRun> runs;
  /// For each note of the score why it isn't in any run, or zq_ScoreLearned.
  std::vector<unsigned char> causes;
  long long shortenedRests = 0;
  long long onsetsMoved = 0, durationsMoved = 0, notesMeasured = 0, notesWithoutDuration = 0;
  double largestOnsetMove = 0, sumOfOnsetMoves = 0, largestDurationMove = 0, sumOfDurationMoves = 0;

  /// The run as integers: number and start of each note, then duration and sound as far as its preprocessing has them.
  std::vector<int> sequenceOf(const zq_Score& score, const PlannedRun& run) const;
};

/// True for settings that notes can be learned by.
bool isMusicSetting(const zq_ScoreFeedSettings& settings);

/// Throws std::bad_alloc where memory runs out.
ScorePlan planScore(const zq_Score& score, const zq_ScoreFeedSettings& settings);

/// The sound that a note is learned with: drums have one that no program has.
int learnedSoundOf(const zq_ScoreNote& note);

}  // namespace zmatrix
