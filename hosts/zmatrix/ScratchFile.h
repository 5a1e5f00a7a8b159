// An anonymous file in memory. The library writes MIDI to its path; the command then reads the bytes and writes them to an
// Output.
#pragma once

#include <string>

class ScratchFile {
 public:
  /// Throws a Failure if the system can't make one.
  ScratchFile();
  ~ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  /// The path by which this process can open it.
  std::string path() const;
  /// The contents.
  std::string bytes() const;

 private:
  int descriptor_;
};
