// Whether pruning keeps symbols: a setting of the full tier that a music feed sets together with the profile of a sub-matrix. The
// medium tier has no symbols and no such setting.
#pragma once

#include "symbols/ZQMatrix.h"

namespace zmatrix {

/// True if the setting in the global block is legal; the profile checks the rest.
inline bool keepSymbolsIsLegal(ZQMatrixMedium*) {
  return true;
}
inline bool keepSymbolsIsLegal(ZQMatrix* matrix) {
  const int keep = matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements();
  return keep == 0 || keep == 1;
}

/// Sets the current sub-matrix to the value of the global block, or to 1.
inline void setKeepSymbols(ZQMatrixMedium*, bool) {
}
inline void setKeepSymbols(ZQMatrix* matrix, bool fromGlobalBlock) {
  matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(
      fromGlobalBlock ? matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements() : 1);
}

}  // namespace zmatrix
