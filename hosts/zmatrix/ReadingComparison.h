// Both readings of a file side by side: what each gives and learns, and what the classic one loses or shifts.
#pragma once

#include "Inputs.h"
#include "MusicReport.h"
#include "Scores.h"

/// A line for the file and for each reading, with its notes.
Json comparisonOf(const InputFile& input, const zq_Score& score, const zq_ScoreFeedReport& plan, const MusicReport& classic);
