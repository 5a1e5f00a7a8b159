// The two directions in which a table of fields is gone through: a describing function names each field once, and what it is
// given decides whether the field is written or read. A reader that meets something illegal takes no more bytes from there on.
#pragma once

#include <cstring>

#include "file/ZQFileStream.h"

namespace zmatrix {

/// What stands in the file for a number of this type: 4 bytes, or 8 for the widest.
template <class T>
using NumberInFile = std::conditional_t<sizeof(T) == 8, int64_t, int32_t>;

class ZQFieldWriter {
 public:
  static constexpr bool reads = false;

  explicit ZQFieldWriter(ZQFileWriter& aFile) : file(aFile) {}

  template <class T>
  void number(const T& value) {
    file.put(static_cast<NumberInFile<T>>(value));
  }
  /// All fields exist in what is written.
  template <class T>
  void number(const T& value, int, T) {
    number(value);
  }
  /// A text in a field of its own; what lies behind its end goes out as zeros.
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

  explicit ZQFieldReader(ZQFileReader& aFile) : file(aFile), start(aFile.getPosition()) {}

  template <class T>
  void number(T& value) {
    if (isSound()) value = static_cast<T>(file.get<NumberInFile<T>>());
  }
  /// A field that files have from version `since` on, and its value in the older ones.
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
  /// Behind each part of a record: the sum of the lengths reached, which its writer has made its size.
  void endPart() { sumOfLengths += static_cast<unsigned>(getPosition() - start); }
  unsigned getSumOfLengths() const { return sumOfLengths; }
  /// False once something illegal, or the end of the file, was met.
  bool isSound() const { return !isRefused && !file.isAtEnd(); }

  ZQFileReader& file;

 private:
  long long start;
  unsigned sumOfLengths = 0;
  int version = 0;
  bool isRefused = false;
};

}  // namespace zmatrix
