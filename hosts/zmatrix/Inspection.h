// The report of `zmatrix inspect` on one file: a comparison of the readings, and the report on each.
#pragma once

#include "MusicReport.h"
#include "Reading.h"

/// If both readings are reported, `full` has the members of the classic report and "readings", "classic_losses" and "exact".
/// `refusal` is that of the exact reading, unless the options ask for the classic one.
MusicReport inspectionOf(const InputFile& input, const ReadingOptions& options);
