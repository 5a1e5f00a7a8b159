// What a file of music says, exactly: one model for MIDI and kern, which hosts see as a plain structure.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

void deleteScore(zq_Score* score);

/// A few words; empty for a number that is no zq_ScoreFindingKind.
const char* textOfScoreFinding(int kind);

}  // namespace zmatrix
