// Whether pruning spares symbols: what the full tier sets along with the profile of a sub-matrix that a music feed makes. The
// medium tier has no symbols and sets nothing.
#pragma once

#include "symbols/ZQMatrix.h"

namespace zmatrix {

/// True if the global block passes what the tier checks beyond the profile.
inline bool keepSymbolsIsLegal(ZQMatrixMedium*) {
  return true;
}
inline bool keepSymbolsIsLegal(ZQMatrix* matrix) {
  const int keep = matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements();
  return keep == 0 || keep == 1;
}

/// Sets the current sub-matrix: as the global block says, or to 1.
inline void setKeepSymbols(ZQMatrixMedium*, bool) {
}
inline void setKeepSymbols(ZQMatrix* matrix, bool fromGlobalBlock) {
  matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(
      fromGlobalBlock ? matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements() : 1);
}

}  // namespace zmatrix
