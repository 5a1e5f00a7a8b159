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

ZQFileWriter::ZQFileWriter(FILE* stream) : file(stream) {
  if (file == nullptr) return;
  setvbuf(file, nullptr, _IONBF, 0);
  const off_t position = ftello(file);
  flushedBytes = position > 0 ? position : 0;
  buffer.reset(new (std::nothrow) char[bufferSize]);
  if (buffer == nullptr) return;
  bytes = buffer.get();
  capacity = bufferSize;
}

bool ZQFileWriter::flush() {
  if (file != nullptr && used > 0 && !hasFailed) {
    hasFailed = fwrite(bytes, 1, used, file) != used;
#if defined(__linux__) && defined(SYNC_FILE_RANGE_WRITE)
    // Starts the writing only; errors are reported when the file is synced.
    if (writesBackAtOnce) sync_file_range(fileno(file), flushedBytes, static_cast<off_t>(used), SYNC_FILE_RANGE_WRITE);
#endif
  }
  flushedBytes += static_cast<long long>(used);
  used = 0;
  return !hasFailed;
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
  if (!flush() || file == nullptr) return;
  hasFailed = fseeko(file, position, SEEK_SET) != 0 || fwrite(number, 1, sizeof number, file) != sizeof number ||
              fseeko(file, flushedBytes, SEEK_SET) != 0;
}

ZQFileReader::ZQFileReader(FILE* stream) : file(stream), buffer(new (std::nothrow) char[bufferSize]) {
  if (!hasRoom(buffer != nullptr)) return;  // reads as an empty file
  const off_t start = ftello(file);
  if (start < 0 || fseeko(file, 0, SEEK_END) != 0) return;
  fileSize = ftello(file);
  positionOfBuffer = start;
  fseeko(file, start, SEEK_SET);
}

// Moves the remaining bytes to the front of the buffer and fills it up behind them.
bool ZQFileReader::refill(size_t size) {
  if (buffer == nullptr || getBytesLeft() < static_cast<long long>(size)) return false;
  const size_t left = end - next;
  memmove(buffer.get(), buffer.get() + next, left);
  positionOfBuffer += static_cast<long long>(next);
  next = 0;
  end = left + fread(buffer.get() + left, 1, bufferSize - left, file);
  if (end >= size) return true;
  fileSize = positionOfBuffer + static_cast<long long>(end);  // the file was shortened while it was read
  return false;
}

void ZQFileReader::endHere() {
  next = end;
  fileSize = getPosition();
  hasEnded = true;
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
      hasEnded = true;
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
  positionOfBuffer = std::clamp(position, 0LL, fileSize);
  next = end = 0;
  hasEnded = position > fileSize || fseeko(file, positionOfBuffer, SEEK_SET) != 0;
}

void ZQFileReader::skip(long long size) {
  seek(size > getBytesLeft() ? fileSize + 1 : getPosition() + size);
}

bool ZQFileReader::grants(long long bytes) {
  if (bytes < 0 || bytes > PTRDIFF_MAX || bytes > memoryForAnyFile + memoryForByteOfFile * fileSize - bytesGranted) return false;
  bytesGranted += bytes;
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
