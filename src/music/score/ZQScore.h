// The exact content of a file of music: one model for MIDI and kern, a plain structure for hosts.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

void deleteScore(zq_Score* score);

/// A short text; empty for a number that is no zq_ScoreFindingKind.
const char* textOfScoreFinding(int kind);

}  // namespace zmatrix
