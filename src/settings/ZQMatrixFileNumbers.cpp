#include "settings/ZQMatrixFileNumbers.h"

#include <algorithm>

#include "file/ZQFileStream.h"

namespace zmatrix {

namespace {

template <class Number>
size_t writeNumber(const Number* value, FILE* file) {
  char bytes[sizeof(Number)];
  putLittleEndian(bytes, *value);
  return fwrite(bytes, sizeof bytes, 1, file);
}

template <class Number>
size_t readNumber(Number* value, FILE* file) {
  char bytes[sizeof(Number)];
  if (fread(bytes, sizeof bytes, 1, file) != 1) return 0;
  *value = getLittleEndian<Number>(bytes);
  return 1;
}

template <class Number>
void swapBytes(Number* value) {
  char* bytes = reinterpret_cast<char*>(value);
  std::reverse(bytes, bytes + sizeof(Number));
}

}  // namespace

size_t zqFwriteShort(const int16_t* value, FILE* file) {
  return writeNumber(value, file);
}

size_t zqFwriteLong(const int32_t* value, FILE* file) {
  return writeNumber(value, file);
}

size_t zqFwriteLongLong(const int64_t* value, FILE* file) {
  return writeNumber(value, file);
}

size_t zqFreadShort(int16_t* value, FILE* file) {
  return readNumber(value, file);
}

size_t zqFreadLong(int32_t* value, FILE* file) {
  return readNumber(value, file);
}

size_t zqFreadLongLong(int64_t* value, FILE* file) {
  return readNumber(value, file);
}

void zqSwapShort(int16_t* value) {
  swapBytes(value);
}

void zqSwapLong(int32_t* value) {
  swapBytes(value);
}

void zqSwapLongLong(int64_t* value) {
  swapBytes(value);
}

}  // namespace zmatrix
