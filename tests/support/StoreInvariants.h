// Checks the invariants of the store on a whole block. Returns an empty string, or the position and name of the first broken
// invariant.
#pragma once

#include <string>

class ZQMatrixBase;

namespace zmatrix {

std::string brokenInvariant(ZQMatrixBase& matrix);

}  // namespace zmatrix
