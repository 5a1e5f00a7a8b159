// A file that is replaced as a whole or not at all. The bytes go to a neighbour of a name of its own, reach the disk, and only
// then take the target's place, so that a crash, a full disk or a kill leaves what was there. A link is followed to what it
// names. What cannot be replaced by renaming (a device, a pipe, a file in a folder without write access) is written straight.
//
// A neighbour is locked while its process lives. One that nobody holds is what a killed process has left: the next save in the
// folder removes it.
#pragma once

#include <cstdio>
#include <string>

namespace zmatrix {

class ZQSafeFile {
 public:
  ZQSafeFile() = default;
  /// Drops what was not committed.
  ~ZQSafeFile();
  ZQSafeFile(const ZQSafeFile&) = delete;
  ZQSafeFile& operator=(const ZQSafeFile&) = delete;

  /// False if the path can't be written to.
  bool open(const char* path);
  /// Where the bytes go; positions can be sought in it.
  FILE* getStream() { return stream; }
  /// Makes the bytes the target's content. False if they could not all be stored; then an old target stands, unless it had to be
  /// written straight.
  bool commit();

 private:
  bool openTarget(const char* path);
  /// 0, or the error number of what has failed.
  int openNeighbour(int modeOfTarget, long long owner, long long group);
  int takeNeighbour(int descriptor, int modeOfTarget, long long owner, long long group);
  bool closeStream();
  bool copyToTarget();

  std::string target;
  std::string folder;     ///< of the target
  std::string neighbour;  ///< empty if there is none
  FILE* stream = nullptr;
  bool isSpool = false;  ///< the stream is an unnamed file, to be copied to the target
};

}  // namespace zmatrix
