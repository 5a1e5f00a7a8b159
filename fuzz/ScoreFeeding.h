// Feeds a score that was read from arbitrary bytes: the report must cover every note as planned, and music must be composed from
// the result.
#pragma once

#include <cstdlib>

#include "MusicFile.h"
#include "music/score/ZQGeneratedScore.h"
#include "music/score/ZQScoreFeed.h"
#include "sequence/ZQMatrixMedium.h"

inline long long notesOf(const zq_ScoreFeedReport& report) {
  long long notes = report.notesLearned;
  for (const long long leftOut : report.leftOut) notes += leftOut;
  return notes;
}

/// `choice`, 0 to 23, selects coding, merging of tracks and percussion.
inline void feedScore(const zq_Score& score, int choice) {
  constexpr int types[] = {1, 1002, 1003, 1004};
  const zq_ScoreFeedSettings settings{types[choice % 4], 16, 16, choice / 4 % 3, choice / 12, {}};
  zq_ScoreFeedReport* const plan = zmatrix::createScoreFeedPlan(&score, &settings);
  if (plan == nullptr || notesOf(*plan) != score.numberOfNotes) abort();
  ZQMatrixMedium* const matrix = createAndInitMatrixMedium();
  setMusicBlock(matrix, choice % 4, 2);
  matrix->setGlobalMidiTrackAnalyze(settings.midiTrackAnalyze);
  zq_ScoreFeedReport* const report = zmatrix::updateMatrixWithScore(matrix, &score, "fuzz", settings.leavesOutPercussion);
  if (report == nullptr || notesOf(*report) != score.numberOfNotes || report->notesLearned > plan->notesLearned) abort();
  for (int id = 0; id < matrix->getNumberOfMatrices() && id < 3; ++id) {
    matrix->setCurrentMatrixID(id);
    zmatrix::deleteScore(zmatrix::createGeneratedScore(matrix, 5, 0, nullptr));
  }
  zmatrix::deleteScoreFeedReport(report);
  zmatrix::deleteScoreFeedReport(plan);
  deleteMatrixMedium(matrix);
}
