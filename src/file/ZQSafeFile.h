// A file that is replaced as a whole or not at all. The bytes are written to a neighbour, a file of a unique name in the same
// folder, synced, and then renamed to the target, so that a crash, a full disk or a kill leaves the old file in place. A symbolic
// link is followed to its target. A target that cannot be replaced by renaming (a device, a pipe, a file in a folder without
// write access) is overwritten directly.
//
// A neighbour is locked while its process lives. An unlocked neighbour is a leftover of a killed process: the next save in the
// folder removes it.
#pragma once

#include <cstdio>
#include <string>

namespace zmatrix {

class ZQSafeFile {
 public:
  ZQSafeFile() = default;
  /// Discards the bytes if they were not committed.
  ~ZQSafeFile();
  ZQSafeFile(const ZQSafeFile&) = delete;
  ZQSafeFile& operator=(const ZQSafeFile&) = delete;

  /// False if the path can't be written to.
  bool open(const char* path);
  /// The stream to write to; it is seekable.
  FILE* getStream() { return stream; }
  /// Makes the bytes the target's content. False if they could not all be stored; then the old target is unchanged, unless it had
  /// to be overwritten directly.
  bool commit();

 private:
  bool openTarget(const char* path);
  /// Returns 0 or the errno of the failure.
  int openNeighbour(int modeOfTarget, long long owner, long long group);
  int takeNeighbour(int descriptor, int modeOfTarget, long long owner, long long group);
  bool closeStream();
  bool copyToTarget();

  std::string target;
  std::string folder;     ///< the target's folder
  std::string neighbour;  ///< empty if there is none
  FILE* stream = nullptr;
  bool isSpool = false;  ///< the stream is an unnamed file whose bytes are copied to the target
};

}  // namespace zmatrix
