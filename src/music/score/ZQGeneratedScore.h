// Music that a matrix composes, as a score: with the meter, the sounds and the tempo that were learned.
#pragma once

#include "music/score/ZQScore.h"

class ZQMatrix;
class ZQMatrixMedium;

namespace zmatrix {

/// Null, with the negative result in *result, if the current sub-matrix can't generate music. Throws std::bad_alloc if memory
/// runs out.
[[nodiscard]] zq_Score* createGeneratedScore(ZQMatrixMedium* matrix, int numberOfObjex, double quartersPerMinute, int* result);

}  // namespace zmatrix
