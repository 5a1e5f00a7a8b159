// Checks scores that hosts have made.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// True if a score is valid: no array missing, parts that divide the notes among them, notes of each part by onset, all values in
/// range, no negative time. Bar lines and findings are not checked. `refusedNote` gets the index of the first invalid note, or
/// -1.
bool isScoreValid(const zq_Score* score, long long* refusedNote);

}  // namespace zmatrix
