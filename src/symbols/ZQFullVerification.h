// The full tier's part of the self-tests: follows each symbol to the level above and back, and each link down to its
// phrase.
#pragma once

#include "sequence/ZQMediumVerification.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

class ZQFullVerification : public ZQMediumVerification {
 public:
  ZQFullVerification(ZQMatrix& matrix, const zmatrix::VerificationTexts& texts);
  bool look(int position, const ZQMatrixElement& element, const int* path, int length);
  bool compareCounts();

 private:
  bool leadsToPhrase(int position, int symbol) const;
  bool leadsToSymbol(const ZQMatrixElement& element) const;
  bool isLevel(int level) const { return level >= 0 && level < full_.getMaxNumberOfMatrices(); }
  bool isPosition(int handle) const { return handle >= full_.getMaxNumberOfMatrices() && handle <= full_.getMaximalStack(); }
  bool belongsToCurrentRoot(int handle) const;

  ZQMatrix& full_;
  const int id_;
  int numberOfSymbols_ = 0;
};

}  // namespace zmatrix
