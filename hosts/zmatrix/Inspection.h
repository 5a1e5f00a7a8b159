// All that is told of a file of music: the readings side by side, the report on the exact one, and that on the classic one.
#pragma once

#include "MusicReport.h"
#include "Reading.h"

/// `full` has the members of the classic report, and besides them "readings", "classic_losses" and "exact". The refusal is that
/// of the exact reading, unless the classic one alone is asked for.
MusicReport inspectionOf(const InputFile& input, const ReadingOptions& options);
