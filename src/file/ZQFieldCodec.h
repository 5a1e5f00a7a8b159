// Writes and reads records field by field. A describing function names each field once; called with a ZQFieldWriter it writes the
// fields, called with a ZQFieldReader it reads them. After an illegal value the reader reads no more fields.
#pragma once

#include <cstring>

#include "file/ZQFileStream.h"

namespace zmatrix {

/// The type of a number in the file: 4 bytes, or 8 for 64-bit types.
template <class T>
using NumberInFile = std::conditional_t<sizeof(T) == 8, int64_t, int32_t>;

class ZQFieldWriter {
 public:
  static constexpr bool reads = false;

  explicit ZQFieldWriter(ZQFileWriter& writer) : file(writer) {}

  template <class T>
  void number(const T& value) {
    file.put(static_cast<NumberInFile<T>>(value));
  }
  /// Files are always written in the newest version, so that every field exists.
  template <class T>
  void number(const T& value, int, T) {
    number(value);
  }
  /// Writes a text field of fixed size; bytes behind the terminator are written as zeros.
  void text(const char* field, size_t size) {
    const size_t length = strnlen(field, size);
    file.write(field, length);
    for (size_t i = length; i < size; ++i) file.put<int8_t>(0);
  }
  void bytes(const char* field, size_t size) { file.write(field, size); }
  void require(bool) {}
  void setVersion(int) {}
  long long getPosition() const { return file.getPosition(); }

  ZQFileWriter& file;
};

class ZQFieldReader {
 public:
  static constexpr bool reads = true;

  explicit ZQFieldReader(ZQFileReader& reader) : file(reader), start(reader.getPosition()) {}

  template <class T>
  void number(T& value) {
    if (isSound()) value = static_cast<T>(file.get<NumberInFile<T>>());
  }
  /// Reads a field that files have from version `since` on; it gets `valueBefore` in older files.
  template <class T>
  void number(T& value, int since, T valueBefore) {
    if (version >= since) {
      number(value);
    } else {
      value = valueBefore;
    }
  }
  void text(char* field, size_t size) { bytes(field, size); }
  void bytes(char* field, size_t size) {
    if (isSound()) file.read(field, size);
  }
  void require(bool condition) { isRefused = isRefused || !condition; }
  void setVersion(int newVersion) { version = newVersion; }
  long long getPosition() const { return file.getPosition(); }
  /// Called behind each part of a record: adds the length reached so far. Writers have stored that sum as the size of the record.
  void endPart() { sumOfLengths += static_cast<unsigned>(getPosition() - start); }
  unsigned getSumOfLengths() const { return sumOfLengths; }
  /// False after an illegal value or the end of the file.
  bool isSound() const { return !isRefused && !file.isAtEnd(); }

  ZQFileReader& file;

 private:
  long long start;
  unsigned sumOfLengths = 0;
  int version = 0;
  bool isRefused = false;
};

}  // namespace zmatrix
