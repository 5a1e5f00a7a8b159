// Makes the n-th allocation of the program fail, of the C heap, of operator new or of a stream. The linker redirects them all to
// this file (see CMakeLists.txt); while no FailingMemory exists they succeed.
#pragma once

namespace zmatrix {

class FailingMemory {
 public:
  /// The n-th allocation from now on fails, counted from 1, and all later ones too if `lasting`.
  FailingMemory(long n, bool lasting);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
};

/// Whether the last FailingMemory has made an allocation fail; false if there were fewer than n.
bool anAllocationHasFailed();

}  // namespace zmatrix
