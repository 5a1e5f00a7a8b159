// The report on the last load for hosts.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// 1 if the file was whole, 0 if it was repaired, -1 if nothing was loaded. `report` may be null.
inline int getLoadReport(const ZQMatrixBase* matrix, zq_loadReport* report) {
  const zq_loadReport& found = matrix->getLoadReport();
  if (report != nullptr) *report = found;
  return found.state == zq_loadWhole ? 1 : found.state == zq_loadRepaired ? 0 : -1;
}

}  // namespace zmatrix
