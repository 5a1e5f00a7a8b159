// Compares both readings of a file.
#pragma once

#include "Inputs.h"
#include "MusicReport.h"
#include "Scores.h"

/// A row per reading: notes read, notes at another time, notes learned and not learned.
Json comparisonOf(const InputFile& input, const zq_Score& score, const zq_ScoreFeedReport& plan, const MusicReport& classic);
