// Reads the bytes of a music file.
#pragma once

#include <cstddef>
#include <memory>

namespace zmatrix {

struct ScoreFile {
  bool isReadable = false;  ///< false if it can't be opened or is no regular file
  std::unique_ptr<unsigned char[]> bytes;
  size_t size = 0;
};

/// Reads a whole regular file. `path` may be null. Throws std::bad_alloc if memory runs out.
ScoreFile readScoreFile(const char* path);

}  // namespace zmatrix
