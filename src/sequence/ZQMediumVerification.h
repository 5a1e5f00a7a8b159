// What the medium tier adds to the self-tests: recount the rules, and compare the depth, the kernel and the number of
// starts.
#pragma once

#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQSuffixLinks.h"
#include "store/ZQVerificationTexts.h"

namespace zmatrix {

class ZQMediumVerification {
 public:
  static constexpr bool namesMatrixID = true;
  static constexpr bool correctsEndElements = true;

  /// Zeroes the counts of rules.
  ZQMediumVerification(ZQMatrixMedium& matrix, const zmatrix::VerificationTexts&);
  /// True if look() needs the path of the element; else it may be null.
  bool needsPath(int position) const { return !links_.isKnown(position); }
  /// Counts a written element. False for a fault.
  bool look(int position, const ZQMatrixMediumElement& element, const int* path, int length);
  /// After the walk, before and after the store's own counts are compared. False for a fault.
  bool compareDepthAndKernel(int deepest);
  bool compareCounts();

 protected:
  /// Counts the element's rule; false if there is none and should be one.
  bool countRule(int position, const ZQMatrixMediumElement& element, const int* path, int length);
  bool isPhraseMatrix() const { return matrix_.getMatrixInfo()->getIsPhraseMatrix() == 1; }

  ZQMatrixMedium& matrix_;

 private:
  ZQSuffixLinks links_;
  int numberOfStarts_ = 0;
};

}  // namespace zmatrix
