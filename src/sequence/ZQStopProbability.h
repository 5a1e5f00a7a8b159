// How often a sequence ended where it could have gone on.
#pragma once

#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// The share of the occurrences of an element at which a sequence ended. Not a number for an element that was never written: such
/// a value differs from none by more than the tolerance.
inline double stopProbabilityOf(const ZQMatrixMediumElement& element) {
  return (static_cast<double>(element.getWriteCount()) - element.getWriteCountWithSuccessor()) / element.getWriteCount();
}

constexpr double stopProbabilityTolerance = 1e-9;  ///< within which two stop probabilities are one

}  // namespace zmatrix
