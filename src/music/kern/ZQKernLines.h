// A kern file line by line, in the pieces that a buffer of a given size would get: a line that doesn't fit comes in several
// pieces, and each counts as a line of its own. Both passes over a file read it this way, with buffers of different sizes.
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

namespace zmatrix {

class KernLines {
 public:
  /// Opens a regular file; false for anything else. A pipe can't be read twice, and a directory has no lines.
  bool open(const char* path);
  /// Back to the first line.
  void rewind();

  /// Takes the next piece: at most `bufferSize` - 1 bytes, up to a line feed and with it. False if there is none.
  bool next(int bufferSize);

  /// The piece, with its line feed if it has one, up to the first NUL byte: what stands behind that is never seen.
  std::string_view text() const { return text_; }
  /// The end of the file came before a line feed did.
  bool reachedEnd() const { return reachedEnd_; }
  /// The number, from 1, of the line in the file that the piece belongs to.
  int lineNumber() const { return lineNumber_; }
  /// The number, from 1, of the piece in its line.
  int pieceOfLine() const { return pieceOfLine_; }

 private:
  void fill();

  static constexpr size_t bytesAtOnce = 1 << 16;
  struct CloseFile {
    void operator()(FILE* file) const { fclose(file); }
  };

  std::unique_ptr<FILE, CloseFile> file_;
  std::unique_ptr<char[]> bytes_;
  size_t begin_ = 0, end_ = 0;  // what of the bytes isn't taken yet
  bool isDrained_ = false;
  std::string_view text_;
  bool reachedEnd_ = false;
  int lineNumber_ = 0;
  int pieceOfLine_ = 0;
  bool endedLine_ = true;  // the piece before ended with a line feed
};

}  // namespace zmatrix
