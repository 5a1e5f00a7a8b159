// How often a sequence ended where it could have gone on.
#pragma once

#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// The share of the occurrences of an element at which a sequence ended. NaN for an element that was never written, which passes
/// for equal in a test for a difference above the tolerance.
inline double stopProbabilityOf(const ZQMatrixMediumElement& element) {
  return (static_cast<double>(element.getWriteCount()) - element.getWriteCountWithSuccessor()) / element.getWriteCount();
}

constexpr double stopProbabilityTolerance = 1e-9;  ///< two stop probabilities that differ by less are equal

}  // namespace zmatrix
