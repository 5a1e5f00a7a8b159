// Buffered writer and reader of a matrix file. Numbers are little-endian on any host. The reader has the number of bytes left and
// a limit of memory for a file of its size: lengths and capacities are checked against both before they are used.
#pragma once

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <type_traits>

namespace zmatrix {

template <class Number>
void putLittleEndian(char* to, Number value) {
  if constexpr (std::endian::native == std::endian::little) {
    memcpy(to, &value, sizeof value);
    return;
  }
  const auto bits = static_cast<std::make_unsigned_t<Number>>(value);
  for (size_t byte = 0; byte < sizeof(Number); ++byte) to[byte] = static_cast<char>((bits >> (8 * byte)) & 0xff);
}

template <class Number>
Number getLittleEndian(const char* from) {
  if constexpr (std::endian::native == std::endian::little) {
    Number number;
    memcpy(&number, from, sizeof number);
    return number;
  } else {
    unsigned long long bits = 0;
    for (size_t byte = 0; byte < sizeof(Number); ++byte) {
      bits |= static_cast<unsigned long long>(static_cast<unsigned char>(from[byte])) << (8 * byte);
    }
    return static_cast<Number>(bits);
  }
}

constexpr size_t largestFilePiece = 64;  ///< bytes that can be claimed or taken at once

class ZQFileWriter {
 public:
  /// Without a file the bytes are only counted.
  explicit ZQFileWriter(FILE* stream);

  /// From now on each full buffer is written to the disk at once, in the background: for a file that is synced at the end.
  void writeBackAtOnce() { writesBackAtOnce_ = true; }

  /// Room for `size` bytes, at most largestFilePiece, which the caller fills.
  char* claim(size_t size) {
    if (used_ + size > capacity_) flush();
    char* room = bytes_ + used_;
    used_ += size;
    return room;
  }
  void write(const void* from, size_t size);
  template <class Number>
  void put(Number value) {
    putLittleEndian(claim(sizeof value), value);
  }
  long long getPosition() const { return flushedBytes_ + static_cast<long long>(used_); }
  /// Overwrites an int at a position; later bytes are still appended.
  void patch(long long position, int value);
  /// Writes the buffer to the file. False if any write has failed.
  bool flush();

 private:
  FILE* file_;
  std::unique_ptr<char[]> buffer_;
  char smallBuffer_[largestFilePiece];  ///< without a file or without memory for a buffer
  char* bytes_ = smallBuffer_;
  size_t capacity_ = sizeof smallBuffer_;
  size_t used_ = 0;
  long long flushedBytes_ = 0;
  bool writesBackAtOnce_ = false;
  bool hasFailed_ = false;
};

class ZQFileReader {
 public:
  /// Begins at the file's current position.
  explicit ZQFileReader(FILE* stream);

  /// The next `size` bytes, at most largestFilePiece. If there are fewer, null, and the reader is at the end of the file.
  const char* take(size_t size) {
    const char* bytes = peek(size);
    if (bytes != nullptr) {
      next_ += size;
    } else {
      endHere();
    }
    return bytes;
  }
  /// As take, but without advancing; null if there are fewer bytes.
  const char* peek(size_t size) { return end_ - next_ >= size || refill(size) ? buffer_.get() + next_ : nullptr; }
  /// Advances past bytes that were returned by peek.
  void advance(size_t size) { next_ += size; }
  /// Reads the next bytes and fills missing ones with zeros. False if some are missing.
  bool read(void* to, size_t size);
  /// The next number, or 0 at the end of the file.
  template <class Number>
  Number get() {
    const char* bytes = take(sizeof(Number));
    return bytes != nullptr ? getLittleEndian<Number>(bytes) : 0;
  }
  void skip(long long size);
  void seek(long long position);
  long long getPosition() const { return positionOfBuffer_ + static_cast<long long>(next_); }
  long long getBytesLeft() const { return fileSize_ - getPosition(); }
  long long getFileSize() const { return fileSize_; }
  /// True after a request for more bytes than there are.
  [[nodiscard]] bool isAtEnd() const noexcept { return hasEnded_; }
  /// Grants memory for data that the file describes, in total up to 16 MB and 64 times the file's size. False beyond that.
  [[nodiscard]] bool grants(long long bytes);
  /// Returns isAllocated, and remembers a failed allocation, so that a lack of memory is not reported as a bad file.
  [[nodiscard]] bool hasRoom(bool isAllocated) noexcept {
    isOutOfMemory_ = isOutOfMemory_ || !isAllocated;
    return isAllocated;
  }
  [[nodiscard]] bool hasRunOutOfMemory() const noexcept { return isOutOfMemory_; }

 private:
  bool refill(size_t size);
  void endHere();

  FILE* file_;
  std::unique_ptr<char[]> buffer_;
  size_t next_ = 0;
  size_t end_ = 0;
  long long positionOfBuffer_ = 0;
  long long fileSize_ = 0;
  long long bytesGranted_ = 0;
  bool hasEnded_ = false;
  bool isOutOfMemory_ = false;
};

/// Opens a regular file for reading; null for anything else. Opening a pipe doesn't block.
[[nodiscard]] FILE* openRegularFile(const char* path);

/// True if openRegularFile opens it.
[[nodiscard]] bool canBeOpened(const char* path);

/// An unnamed temporary file, removed when it is closed; null if there can't be one.
[[nodiscard]] FILE* newTemporaryFile(long long size);
/// The same in memory, with room for `size` bytes.
[[nodiscard]] FILE* newFileInMemory(long long size);

/// Copies `from` from its current position to its end. False if it could not be read.
[[nodiscard]] bool copyRest(FILE* from, ZQFileWriter& to);

}  // namespace zmatrix
