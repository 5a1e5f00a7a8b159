// What a load has found, as hosts ask for it.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

inline int getLoadReport(const ZQMatrixBase* matrix, zqLoadReport* report) {
  const zqLoadReport& found = matrix->getLoadReport();
  if (report != nullptr) *report = found;
  return found.state == zqLoadWhole ? 1 : found.state == zqLoadRepaired ? 0 : -1;
}

}  // namespace zmatrix
