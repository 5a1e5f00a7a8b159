// Reads a kern file line by line through a buffer of a given size: a line that doesn't fit is delivered in several pieces, and
// each piece counts as a line of its own. Both passes over a file use it, with different sizes.
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

#include "frame/ZQOwnedFile.h"

namespace zmatrix {

class KernLines {
 public:
  /// Opens a regular file; false for anything else. A pipe can't be read twice, and a directory has no lines.
  [[nodiscard]] bool open(const char* path);
  /// Goes back to the first line.
  void rewind();

  /// Reads the next piece: at most `bufferSize` - 1 bytes, up to and including a line feed. False at the end of the file.
  [[nodiscard]] bool next(int bufferSize);

  /// The piece, with its line feed if it has one, cut at its first NUL byte.
  std::string_view text() const { return text_; }
  /// True if the file ended before a line feed.
  bool reachedEnd() const { return reachedEnd_; }
  /// The number, from 1, of the file's line that the piece belongs to.
  int lineNumber() const { return lineNumber_; }
  /// The number, from 1, of the piece within its line.
  int pieceOfLine() const { return pieceOfLine_; }

 private:
  void fill();

  static constexpr size_t bytesAtOnce = 1 << 16;

  OwnedFile file_;
  std::unique_ptr<char[]> bytes_;
  size_t begin_ = 0, end_ = 0;  // the bytes of the buffer that were not read yet
  bool isDrained_ = false;
  std::string_view text_;
  bool reachedEnd_ = false;
  int lineNumber_ = 0;
  int pieceOfLine_ = 0;
  bool endedLine_ = true;  // the piece before ended with a line feed
};

}  // namespace zmatrix
