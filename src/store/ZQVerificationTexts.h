// The messages that differ between the two self-tests, and the empty Verification of the base tier. The texts are part of the
// interface.
#pragma once

#include "frame/ZQSentence.h"

namespace zmatrix {

/// Reports a sibling link, "Next" or "Previous", that leads out of its field.
inline void reportUnexpectedOffset(const char* direction, int offset) {
  dbPrintf(0, "getNumberOfItemsAndFirstLastElementsInSaneDimension: offsetTo%sElementInDimension: %d is unexpected\n", direction,
           offset);
}

struct VerificationTexts {
  const char* stackUnexpected;
  ZQSentence<int, int> blockReduced;
  ZQSentence<int, int> writeElementsDiffer;
  ZQSentence<int, int> endElementsDiffer;
  ZQSentence<int, int> endElementsCorrected;
};

// The linear test's message on write elements has no line end, and the consistency test calls a reduced block an error.
inline constexpr VerificationTexts linearTestTexts = {
    "matrixLinear-Test: trimmedStack >= _maximalstack unexpected\n",
    "matrixLinear-Test: _matrixBlockSize reduced from %d to %d items\n",
    "error matrixLinear-Test: numberOfWriteElementsInMatrix differs from _numberOfWriteElements %d <-> %d",
    "error matrixLinear-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements %d <-> %d\n",
    "warning:  matrixLinear-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements %d <-> %d\n"};
inline constexpr VerificationTexts consistencyTestTexts = {
    "error matrixConsistency-Test: trimmedStack >= matrix->_matrixFileHeader->_maximalStack unexpected\n",
    "error matrixConsistency-Test: _matrixBlockSize reduced from %d to %d items\n",
    "error matrixConsistency-Test: numberOfWriteElementsInMatrix differs from _numberOfWriteElements %d <-> %d\n",
    "error matrixConsistency-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements %d <-> %d\n",
    "warning:  matrixConsistency-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements %d <-> %d\n"};

/// For a tier that counts nothing besides the base tier's counters.
struct NoAdditionalVerification {
  static constexpr bool namesMatrixID = false;
  static constexpr bool correctsEndElements = false;

  template <class Matrix>
  NoAdditionalVerification(Matrix&, const VerificationTexts&) {}
  static constexpr bool needsPath(int) { return false; }
  template <class Element>
  bool look(int, const Element&, const int*, int) {
    return true;
  }
  bool compareDepthAndKernel(int) { return true; }
  bool compareCounts() { return true; }
};

}  // namespace zmatrix
