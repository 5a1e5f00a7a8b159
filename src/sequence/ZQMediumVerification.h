// The medium tier's part of the self-tests: recounts the rules, and compares the depth, the kernel and the number of start
// elements.
#pragma once

#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQSuffixLinks.h"
#include "store/ZQVerificationTexts.h"

namespace zmatrix {

class ZQMediumVerification {
 public:
  static constexpr bool namesMatrixID = true;
  static constexpr bool correctsEndElements = true;

  /// Sets the counts of rules to 0.
  ZQMediumVerification(ZQMatrixMedium& matrix, const zmatrix::VerificationTexts&);
  /// True if look() needs the path of the element; otherwise the path may be null.
  bool needsPath(int position) const { return !links_.isKnown(position); }
  /// Counts a written element. False for a fault.
  bool look(int position, const ZQMatrixMediumElement& element, const int* path, int length);
  // Called after the walk: the first before, the second after the comparison of the store's counts. False for a fault.
  bool compareDepthAndKernel(int deepest);
  bool compareCounts();

 protected:
  /// Counts a written element, and its rule; false if its path is not a rule.
  bool countRule(int position, const ZQMatrixMediumElement& element, const int* path, int length);
  bool isPhraseMatrix() const { return matrix_.getMatrixInfo()->getIsPhraseMatrix() == 1; }

  ZQMatrixMedium& matrix_;

 private:
  ZQSuffixLinks links_;
  int numberOfStarts_ = 0;
};

}  // namespace zmatrix
