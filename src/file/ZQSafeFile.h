// Atomic replacement of a file: the bytes are written to the neighbour, a temporary file in the target's folder, synced, and
// renamed over the target, so that a crash, a full disk or SIGKILL leaves the old file. Symbolic links are followed. What cannot
// be replaced by renaming (a device, a pipe, a file in a folder without write access) is written directly.
//
// A neighbour is locked while its process lives. Unlocked ones, of killed processes, are removed by the next save in the folder.
#pragma once

#include <cstdio>
#include <string>

namespace zmatrix {

class ZQSafeFile {
 public:
  ZQSafeFile() = default;
  /// Discards what was not committed.
  ~ZQSafeFile();
  ZQSafeFile(const ZQSafeFile&) = delete;
  ZQSafeFile& operator=(const ZQSafeFile&) = delete;

  /// False if the path can't be written to.
  [[nodiscard]] bool open(const char* path);
  /// The stream to write to; it can seek.
  FILE* getStream() { return stream_; }
  /// Replaces the target by what was written. False if not all could be stored; then the old target is unchanged, unless it had
  /// to be written directly.
  [[nodiscard]] bool commit();

 private:
  bool openTarget(const char* path);
  /// Returns 0 or the errno of the failure.
  int openNeighbour(int modeOfTarget, long long owner, long long group);
  int takeNeighbour(int descriptor, int modeOfTarget, long long owner, long long group);
  bool closeStream();
  bool copyToTarget();

  std::string target_;
  std::string folder_;     ///< the target's folder
  std::string neighbour_;  ///< empty if there is none
  FILE* stream_ = nullptr;
  bool isSpool_ = false;  ///< the stream is an unnamed file whose bytes are copied to the target
};

}  // namespace zmatrix
