#include "numbers/ZQOcronParameters.h"

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

namespace {

constexpr gocronParametersTag defaults = {4, 10, 0, 0, 0, 0, 1, 2, 3, 4};

constinit thread_local gocronParametersTag gGocronPars = defaults;

constexpr int endOfTypes = 11, endOfAlgorithms = 11, endOfNumberBases = 257;

void repair(int* parameter, bool isIllegal, int standard, const char* name) {
  if (!isIllegal) return;
  dbPrintf(0, "err: setGlobalGocronParameters: illegal %s %d, set to default\n", name, *parameter);
  *parameter = standard;
}

}  // namespace

gocronParametersTag* getGlobalGocronParameters() {
  return &gGocronPars;
}

void setGlobalGocronParameters(const gocronParametersTag* parameters) {
  gGocronPars = *parameters;
  gocronParametersTag& set = gGocronPars;
  repair(&set.ocronType, static_cast<unsigned>(set.ocronType) >= endOfTypes, defaults.ocronType, "type");
  repair(&set.ocronAlgorithm, set.ocronAlgorithm >= endOfAlgorithms, defaults.ocronAlgorithm, "ocron algorithm");
  repair(&set.gocronAlgorithm, set.gocronAlgorithm >= endOfAlgorithms, defaults.gocronAlgorithm, "gocron algorithm");
  repair(&set.gocronNumberBase, set.gocronNumberBase >= endOfNumberBases, defaults.gocronNumberBase, "gocron number base");
}

void setGlobalGocronParametersToDefaults() {
  gGocronPars = defaults;
}

}  // namespace zmatrix
