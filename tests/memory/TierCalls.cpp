#include "support/StoreInvariants.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

static ZQMatrixBase& storeOf(void* matrix, int tier) {
  if (tier == 0) return *static_cast<ZQMatrixBase*>(matrix);
  if (tier == 1) return *static_cast<ZQMatrixMedium*>(matrix);
  return *static_cast<ZQMatrix*>(matrix);
}

bool isUsable(void* matrix, int tier) {
  return storeOf(matrix, tier).hasBlock();
}

std::string faultOf(void* matrix, int tier) {
  return brokenInvariant(storeOf(matrix, tier));
}

}  // namespace zmatrix
