// The report on an exact reading: what the file gives, what the reader found, what is learned of it and what not.
#pragma once

#include "MusicReport.h"
#include "Reading.h"
#include "Scores.h"

/// What feeding a score by these settings gives. Throws a Failure if there is no memory for it.
FeedReport planOf(const zq_Score& score, const Matrix::MusicSettings& settings, bool leavesOutPercussion);

Json exactReportOf(const zq_Score& score, const zq_ScoreFeedReport& plan);

/// The same as tables, runs that are alike in one line, and of many findings the first.
std::string exactTableOf(Json report);

/// What a run needs a sub-matrix for.
std::string kindOf(const zq_ScoreRun& run);

/// How many notes of each cause are left out.
std::vector<std::pair<std::string, long long>> leftOutOf(const zq_ScoreFeedReport& plan);
