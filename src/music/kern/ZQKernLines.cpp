#include "music/kern/ZQKernLines.h"

#include <algorithm>
#include <cstring>

#include "file/ZQFileStream.h"

namespace zmatrix {

bool KernLines::open(const char* path) {
  file_.reset(openRegularFile(path));
  if (file_ == nullptr) return false;
  setvbuf(file_.get(), nullptr, _IONBF, 0);  // KernLines has a buffer of its own
  bytes_ = std::make_unique<char[]>(bytesAtOnce);
  return true;
}

void KernLines::rewind() {
  std::rewind(file_.get());
  begin_ = end_ = 0;
  isDrained_ = reachedEnd_ = false;
  lineNumber_ = 0;
  endedLine_ = true;
}

void KernLines::fill() {
  std::memmove(bytes_.get(), bytes_.get() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  const size_t count = fread(bytes_.get() + end_, 1, bytesAtOnce - end_, file_.get());
  end_ += count;
  if (count == 0) isDrained_ = true;
}

bool KernLines::next(int bufferSize) {
  const size_t most = static_cast<size_t>(bufferSize - 1);
  while (end_ - begin_ < most && !isDrained_) fill();
  const size_t available = std::min(most, end_ - begin_);
  if (available == 0) {
    reachedEnd_ = true;
    return false;
  }
  const char* piece = bytes_.get() + begin_;
  const void* lineFeed = std::memchr(piece, '\n', available);
  const size_t size = lineFeed != nullptr ? static_cast<size_t>(static_cast<const char*>(lineFeed) - piece) + 1 : available;
  begin_ += size;
  reachedEnd_ = lineFeed == nullptr && size < most;
  pieceOfLine_ = endedLine_ ? 1 : pieceOfLine_ + 1;
  if (endedLine_) lineNumber_++;
  endedLine_ = lineFeed != nullptr;
  const void* zero = std::memchr(piece, 0, size);
  text_ = {piece, zero != nullptr ? static_cast<size_t>(static_cast<const char*>(zero) - piece) : size};
  return true;
}

}  // namespace zmatrix
