// The progress report: long operations tell the host how far they are, about a hundred times each whatever their length.
// Record, callback and throttle are the thread's. An operation writes its sentence into globalProgressData.progressText before
// its first call; without a callback a call costs one test.
#pragma once

#include <climits>

/// What the host's callback gets to see.
struct progressCallBackData_tag {
  char progressText[80];  ///< what is going on, terminated
  int progressItem;       ///< the item just reached
  int progressItemCount;  ///< the number of items in the operation
};

using matrixProgressCallBackFunction = void (*)(progressCallBackData_tag*);

extern constinit thread_local progressCallBackData_tag globalProgressData;
extern constinit thread_local matrixProgressCallBackFunction updateProgressBarCallBackFunction;

namespace zmatrix {

/// Decides which items are reported. A loop that wants to ask less often than once an item reads nextItem.
struct ProgressThrottle {
  int step = 1;                        ///< about a hundredth of the operation
  int lastReportedItem = INT_MAX;      ///< an item below this one begins a new operation
  int itemCountOfOperation = INT_MAX;  ///< and so does another count
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

/// The same for a loop with little work per item: it asks once whether there is a callback, since a thread's variables are found
/// by a call where the library is a shared object.
class ProgressOfLoop {
 public:
  void reach(int item, int itemCount) const {
    if (isHeard) reportProgress(item, itemCount);
  }

 private:
  bool isHeard = updateProgressBarCallBackFunction != nullptr;
};

}  // namespace zmatrix
