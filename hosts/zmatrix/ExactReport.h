// The report on an exact reading: parts, findings, what is learned and what is left out.
#pragma once

#include "MusicReport.h"
#include "Reading.h"
#include "Scores.h"

/// What feeding the score with these settings would learn. Throws a Failure if memory runs out.
FeedReport planOf(const zq_Score& score, const Matrix::MusicSettings& settings, bool leavesOutPercussion);

Json exactReportOf(const zq_Score& score, const zq_ScoreFeedReport& plan);

/// The report as tables: similar runs are added up, and only the first 20 findings are listed.
std::string exactTableOf(Json report);

/// A key that is equal for runs which share a sub-matrix: meter, subtype, sound and preprocessing.
std::string kindOf(const zq_ScoreRun& run);

/// How many notes are left out, by cause.
std::vector<std::pair<std::string, long long>> leftOutOf(const zq_ScoreFeedReport& plan);
