#include "frame/ZQProgress.h"

#include <algorithm>

namespace zmatrix {

constinit thread_local progressCallBackData_tag globalProgressData = {};
constinit thread_local matrixProgressCallBackFunction updateProgressBarCallBackFunction = nullptr;

constinit thread_local ProgressThrottle progressThrottle;

namespace {

void callHost(int item, int itemCount) {
  progressThrottle.nextItem = static_cast<long long>(item) + progressThrottle.step;
  progressThrottle.lastReportedItem = item;
  globalProgressData.progressItem = item;
  globalProgressData.progressItemCount = itemCount;
  if (updateProgressBarCallBackFunction != nullptr) updateProgressBarCallBackFunction(&globalProgressData);
}

}  // namespace

void reportProgress(int item, int itemCount) {
  if (item < progressThrottle.lastReportedItem || itemCount != progressThrottle.itemCountOfOperation) {
    progressThrottle.nextItem = -1;
    progressThrottle.step = std::max(itemCount / 100, 1);
    progressThrottle.itemCountOfOperation = itemCount;
  }
  // The last item is always reported, even right after the one before it.
  if (progressThrottle.nextItem < item || item == itemCount) callHost(item, itemCount);
}

}  // namespace zmatrix

void setMatrixProgressDisplayFunction(matrixProgressCallBackFunction callBack) {
  zmatrix::updateProgressBarCallBackFunction = callBack;
}
