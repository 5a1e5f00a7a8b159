#include "frame/flat/ZQMatrixCreators.h"

#include "sequence/ZQMediumTier.h"
#include "store/ZQBaseTier.h"
#include "store/ZQTierLife.h"
#include "symbols/ZQFullTier.h"

namespace {

// What a creator without debug parameters uses: no device, and a level at which nothing comes out.
constexpr int silentDevice = 0;
constexpr int silentLevel = -1;

}  // namespace

ZQMatrixBase* createAndInitMatrixBase() {
  return createAndInitMatrixBaseWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrixBase* createAndInitMatrixBaseWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrixBase>(debugOutputDevice, debugLevel, debugDirectory);
}

void deleteMatrixBase(ZQMatrixBase* matrix) {
  zmatrix::deleteMatrixIn(matrix);
}

ZQMatrixMedium* createAndInitMatrixMedium() {
  return createAndInitMatrixMediumWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrixMedium* createAndInitMatrixMediumWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrixMedium>(debugOutputDevice, debugLevel, debugDirectory);
}

void deleteMatrixMedium(ZQMatrixMedium* matrix) {
  zmatrix::deleteMatrixIn(matrix);
}

ZQMatrix* createAndInitMatrix() {
  return createAndInitMatrixWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrix* createAndInitMatrixWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrix>(debugOutputDevice, debugLevel, debugDirectory);
}

void deleteMatrix(ZQMatrix* matrix) {
  zmatrix::deleteMatrixIn(matrix);
}
