// The bytes of a file of music.
#pragma once

#include <cstddef>
#include <memory>

namespace zmatrix {

struct ScoreFile {
  bool isReadable = false;  ///< false for what can't be opened or is no regular file
  std::unique_ptr<unsigned char[]> bytes;
  size_t size = 0;
};

/// Reads a regular file whole. Throws std::bad_alloc where memory runs out. `path` may be null.
ScoreFile readScoreFile(const char* path);

}  // namespace zmatrix
