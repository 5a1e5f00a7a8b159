// A file without a name, in memory, for what the library writes by a path: so its bytes can be checked, and go where an Output
// puts them, whole or not at all.
#pragma once

#include <string>

class ScratchFile {
 public:
  /// Throws a Failure if there is none to be had.
  ScratchFile();
  ~ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  /// Under which this process can open it.
  std::string path() const;
  /// All that was written to it.
  std::string bytes() const;

 private:
  int descriptor_;
};
