// The progress report: long operations report their progress to the host, about a hundred times each. Each thread has its own
// record, callback and throttle. An operation writes its text into globalProgressData.progressText before its first call; without
// a callback a call costs one test.
#pragma once

#include <climits>

/// The record that the host's callback receives.
struct progressCallBackData_tag {
  char progressText[80];  ///< what the operation does, terminated
  int progressItem;       ///< the item just reached
  int progressItemCount;  ///< the number of items in the operation
};

using matrixProgressCallBackFunction = void (*)(progressCallBackData_tag*);

extern constinit thread_local progressCallBackData_tag globalProgressData;
extern constinit thread_local matrixProgressCallBackFunction updateProgressBarCallBackFunction;

namespace zmatrix {

/// Decides which items are reported. A loop that doesn't call reportProgress for each item reads nextItem.
struct ProgressThrottle {
  int step = 1;                        ///< about a hundredth of the operation
  int lastReportedItem = INT_MAX;      ///< an item below this one begins a new operation
  int itemCountOfOperation = INT_MAX;  ///< a different count begins one too
  long long nextItem = 0;              ///< the first item above this one is reported
};

extern constinit thread_local ProgressThrottle progressThrottle;

void reportProgress(int item, int itemCount);

}  // namespace zmatrix

/// The host's callback for operations of the calling thread, or null for none.
void setMatrixProgressDisplayFunction(matrixProgressCallBackFunction callBack);

/// Reports `item` of `itemCount` if enough items have passed since the last report, or if it is the last one.
inline void matrixProgressDisplay(int item, int itemCount) {
  if (updateProgressBarCallBackFunction != nullptr) zmatrix::reportProgress(item, itemCount);
}

namespace zmatrix {

/// As matrixProgressDisplay, for a loop with little work per item: whether there is a callback is read once, since in a shared
/// library each access to a thread-local variable is a function call.
class ProgressOfLoop {
 public:
  void reach(int item, int itemCount) const {
    if (hasCallback_) reportProgress(item, itemCount);
  }

 private:
  bool hasCallback_ = updateProgressBarCallBackFunction != nullptr;
};

}  // namespace zmatrix
