// Makes one allocation fail: the n-th of all that the library asks for, of the C heap, of operator new or of a stream. The
// program is linked so that they all pass here (see CMakeLists.txt); what the test itself allocates goes through while nothing is
// armed.
#pragma once

namespace zmatrix {

class FailingMemory {
 public:
  /// From now on the n-th allocation fails, counted from 1, and all behind it too if `lasting`.
  FailingMemory(long n, bool lasting);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
};

/// True if the last FailingMemory has made an allocation fail, false if there were too few.
bool anAllocationHasFailed();

}  // namespace zmatrix
