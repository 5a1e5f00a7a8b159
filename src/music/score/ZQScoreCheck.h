// Scores that hosts have made themselves.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// True if a score is as its structures say: no array missing, parts that divide the notes among them, notes of a part by onset,
/// all values in range, no time below 0. Bar lines and findings are not looked at. `refusedNote` gets the index of the first note
/// that is wrong, or -1.
bool isScoreValid(const zq_Score* score, long long* refusedNote);

}  // namespace zmatrix
