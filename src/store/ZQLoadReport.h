// What a load has found, as hosts ask for it.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

inline int getLoadReport(const ZQMatrixBase* matrix, zq_loadReport* report) {
  const zq_loadReport& found = matrix->getLoadReport();
  if (report != nullptr) *report = found;
  return found.state == zq_loadWhole ? 1 : found.state == zq_loadRepaired ? 0 : -1;
}

}  // namespace zmatrix
