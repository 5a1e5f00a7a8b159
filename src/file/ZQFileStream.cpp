#include "file/ZQFileStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

namespace zmatrix {

namespace {

constexpr size_t bufferSize = size_t{1} << 20;
constexpr long long memoryForAnyFile = 16LL << 20;
constexpr long long memoryForByteOfFile = 64;

}  // namespace

ZQFileWriter::ZQFileWriter(FILE* stream) : file_(stream) {
  if (file_ == nullptr) return;
  setvbuf(file_, nullptr, _IONBF, 0);
  const off_t position = ftello(file_);
  flushedBytes_ = position > 0 ? position : 0;
  buffer_.reset(new (std::nothrow) char[bufferSize]);
  if (buffer_ == nullptr) return;
  bytes_ = buffer_.get();
  capacity_ = bufferSize;
}

bool ZQFileWriter::flush() {
  if (file_ != nullptr && used_ > 0 && !hasFailed_) {
    hasFailed_ = fwrite(bytes_, 1, used_, file_) != used_;
#if defined(__linux__) && defined(SYNC_FILE_RANGE_WRITE)
    // Starts the writing only; errors are reported when the file is synced.
    if (writesBackAtOnce_) sync_file_range(fileno(file_), flushedBytes_, static_cast<off_t>(used_), SYNC_FILE_RANGE_WRITE);
#endif
  }
  flushedBytes_ += static_cast<long long>(used_);
  used_ = 0;
  return !hasFailed_;
}

void ZQFileWriter::write(const void* from, size_t size) {
  const char* piecesFrom = static_cast<const char*>(from);
  while (size > 0) {
    const size_t piece = std::min(size, largestFilePiece);
    memcpy(claim(piece), piecesFrom, piece);
    piecesFrom += piece;
    size -= piece;
  }
}

void ZQFileWriter::patch(long long position, int value) {
  char number[sizeof value];
  putLittleEndian(number, value);
  if (!flush() || file_ == nullptr) return;
  hasFailed_ = fseeko(file_, position, SEEK_SET) != 0 || fwrite(number, 1, sizeof number, file_) != sizeof number ||
               fseeko(file_, flushedBytes_, SEEK_SET) != 0;
}

ZQFileReader::ZQFileReader(FILE* stream) : file_(stream), buffer_(new (std::nothrow) char[bufferSize]) {
  if (!hasRoom(buffer_ != nullptr)) return;  // reads as an empty file
  const off_t start = ftello(file_);
  if (start < 0 || fseeko(file_, 0, SEEK_END) != 0) return;
  fileSize_ = ftello(file_);
  positionOfBuffer_ = start;
  fseeko(file_, start, SEEK_SET);
}

// Moves the remaining bytes to the front of the buffer and fills it up behind them.
bool ZQFileReader::refill(size_t size) {
  if (buffer_ == nullptr || getBytesLeft() < static_cast<long long>(size)) return false;
  const size_t left = end_ - next_;
  memmove(buffer_.get(), buffer_.get() + next_, left);
  positionOfBuffer_ += static_cast<long long>(next_);
  next_ = 0;
  end_ = left + fread(buffer_.get() + left, 1, bufferSize - left, file_);
  if (end_ >= size) return true;
  fileSize_ = positionOfBuffer_ + static_cast<long long>(end_);  // the file was shortened while it was read
  return false;
}

void ZQFileReader::endHere() {
  next_ = end_;
  fileSize_ = getPosition();
  hasEnded_ = true;
}

bool ZQFileReader::read(void* to, size_t size) {
  char* bytes = static_cast<char*>(to);
  while (size > 0) {
    const size_t piece = std::min(size, largestFilePiece);
    const long long left = getBytesLeft();
    if (left < static_cast<long long>(piece)) {
      const size_t rest = left > 0 ? static_cast<size_t>(left) : 0;
      const char* from = rest > 0 ? take(rest) : nullptr;
      if (from != nullptr) memcpy(bytes, from, rest);
      memset(bytes + (from != nullptr ? rest : 0), 0, size - (from != nullptr ? rest : 0));
      hasEnded_ = true;
      return false;
    }
    const char* from = take(piece);
    if (from == nullptr) {
      memset(bytes, 0, size);
      return false;
    }
    memcpy(bytes, from, piece);
    bytes += piece;
    size -= piece;
  }
  return true;
}

void ZQFileReader::seek(long long position) {
  positionOfBuffer_ = std::clamp(position, 0LL, fileSize_);
  next_ = end_ = 0;
  hasEnded_ = position > fileSize_ || fseeko(file_, positionOfBuffer_, SEEK_SET) != 0;
}

void ZQFileReader::skip(long long size) {
  seek(size > getBytesLeft() ? fileSize_ + 1 : getPosition() + size);
}

bool ZQFileReader::grants(long long bytes) {
  if (bytes < 0 || bytes > PTRDIFF_MAX || bytes > memoryForAnyFile + memoryForByteOfFile * fileSize_ - bytesGranted_)
    return false;
  bytesGranted_ += bytes;
  return true;
}

FILE* openRegularFile(const char* path) {
  if (path == nullptr) return nullptr;
  const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  struct stat status;
  FILE* file = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? fdopen(descriptor, "rb") : nullptr;
  if (file == nullptr) close(descriptor);
  return file;
}

bool canBeOpened(const char* path) {
  FILE* file = openRegularFile(path);
  return file != nullptr && fclose(file) == 0;
}

FILE* newTemporaryFile(long long) {
  return tmpfile();
}

FILE* newFileInMemory(long long size) {
  return fmemopen(nullptr, static_cast<size_t>(size) + 1, "w+b");  // room for the terminating zero byte that fmemopen adds
}

bool copyRest(FILE* from, ZQFileWriter& to) {
  char bytes[4096];
  size_t size;
  while ((size = fread(bytes, 1, sizeof bytes, from)) > 0) to.write(bytes, size);
  return ferror(from) == 0;
}

}  // namespace zmatrix
