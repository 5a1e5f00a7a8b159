// The truths that every operation of the store relies on, checked on a whole block. A test asks after a step; the answer is empty
// or names the first slot where one fails.
#pragma once

#include <string>

class ZQMatrixBase;

namespace zmatrix {

std::string brokenInvariant(ZQMatrixBase& matrix);

}  // namespace zmatrix
