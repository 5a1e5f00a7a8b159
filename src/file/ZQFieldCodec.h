// Writer and reader of fields with the same interface: a describing function names each field once and runs with either. After
// an illegal value or the end of the file the reader reads nothing more.
#pragma once

#include <cstring>
#include <type_traits>

#include "file/ZQFileStream.h"

namespace zmatrix {

/// The type in the file for a number of type T: 4 bytes, or 8 for the widest.
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
  /// What is written has all fields.
  template <class T>
  void number(const T& value, int, T) {
    number(value);
  }
  /// A text in a field of fixed size; the bytes behind its end are written as zeros.
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

  explicit ZQFieldReader(ZQFileReader& reader) : file(reader), start_(reader.getPosition()) {}

  template <class T>
  void number(T& value) {
    if (isSound()) value = static_cast<T>(file.get<NumberInFile<T>>());
  }
  /// A field that files have from version `since` on, 0 for all, and its value in the older ones.
  template <class T>
  void number(T& value, int since, T valueBefore) {
    if (since == 0 || version_ >= since) {
      number(value);
    } else {
      value = valueBefore;
    }
  }
  void text(char* field, size_t size) { bytes(field, size); }
  void bytes(char* field, size_t size) {
    if (isSound()) file.read(field, size);
  }
  void require(bool condition) { isRefused_ = isRefused_ || !condition; }
  void setVersion(int newVersion) { version_ = newVersion; }
  long long getPosition() const { return file.getPosition(); }
  /// Called at the end of each tier's part of a record: sums up the lengths as the writer does for the record's size.
  void endPart() { sumOfLengths_ += static_cast<unsigned>(getPosition() - start_); }
  unsigned getSumOfLengths() const { return sumOfLengths_; }
  /// False after an illegal value or the end of the file.
  [[nodiscard]] bool isSound() const noexcept { return !isRefused_ && !file.isAtEnd(); }

  ZQFileReader& file;

 private:
  long long start_;
  unsigned sumOfLengths_ = 0;
  int version_ = 0;
  bool isRefused_ = false;
};

}  // namespace zmatrix
