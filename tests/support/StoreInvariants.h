// Checks the invariants of the store on a whole block. Returns an empty string, or the position and name of the first broken
// invariant.
#pragma once

#include <string>

class ZQMatrixBase;

namespace zmatrix {

/// With checksCounters the number of elements in each record must be right too, which a file can have wrong.
std::string brokenInvariant(ZQMatrixBase& matrix, bool checksCounters = true);

}  // namespace zmatrix
