// The stop probability of an element: how often a sequence ended there.
#pragma once

#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// The fraction of the occurrences of an element at which a sequence ended. NaN for an element that was not written; comparisons
/// of a NaN difference with the tolerance are false.
inline double stopProbabilityOf(const ZQMatrixMediumElement& element) {
  return (static_cast<double>(element.getWriteCount()) - element.getWriteCountWithSuccessor()) / element.getWriteCount();
}

constexpr double stopProbabilityTolerance = 1e-9;  ///< stop probabilities that differ by at most this are equal

}  // namespace zmatrix
