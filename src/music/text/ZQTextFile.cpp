#include "music/text/ZQTextFile.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <string_view>

#include "file/ZQFileStream.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQOwnedFile.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

namespace {

/// Reads up to `capacity` bytes into one int each, and returns their number.
int readBytes(FILE* file, int* values, int capacity) {
  static constexpr size_t bytesAtOnce = 1 << 14;
  unsigned char bytes[bytesAtOnce];
  int length = 0;
  while (length < capacity) {
    const size_t wanted = std::min(bytesAtOnce, static_cast<size_t>(capacity - length));
    const size_t count = fread(bytes, 1, wanted, file);
    if (count == 0) break;
    std::copy_n(bytes, count, values + length);
    length += static_cast<int>(count);
  }
  return length;
}

/// Counts the occurrences of a word with its blanks. The search goes on behind the second blank, so that a repeated word counts
/// once.
template <class Text>
int occurrences(const Text& text, std::string_view word) {
  int count = 0;
  for (auto at = text.begin(); (at = std::search(at, text.end(), word.begin(), word.end())) != text.end(); count++)
    at += static_cast<std::ptrdiff_t>(word.size());
  return count;
}

template <class Text>
int languageOf(const Text& text) {
  const int german = occurrences(text, " ist "), english = occurrences(text, " is ");
  if (german > english) return ZQLanguageGerman;
  return english > german ? ZQLanguageEnglish : ZQLanguageUndefined;
}

}  // namespace

TextOfFile textOfFile(const char* fileName, int maxLength) {
  TextOfFile text;
  const OwnedFile file(openRegularFile(fileName));
  long long length = file != nullptr ? sizeOfFile(file.get()) : -1;
  if (maxLength >= 1) length = std::min<long long>(length, maxLength);
  if (length < 0 || length > INT_MAX - 2) return text;
  text.isReadable = true;
  text.values.reset(systemMallocArray<int>(length + 2));
  if (text.values == nullptr) return text;
  dbPrintf(1, "***************ANSI inputFile (reading 1 byte values) ***************\n");
  text.length = readBytes(file.get(), text.values.get(), static_cast<int>(length));
  return text;
}

int languageOfTextFile(const char* fileName) {
  const OwnedFile file(openRegularFile(fileName));
  const long long size = file != nullptr ? sizeOfFile(file.get()) : -1;
  if (size < 0) return ZQLanguageUndefined;
  const SystemOwned<char> bytes(systemMallocArray<char>(size + 1));
  if (bytes == nullptr) return ZQLanguageUndefined;
  bytes[fread(bytes.get(), 1, static_cast<size_t>(size), file.get())] = 0;
  // The language is judged by the text before its first zero byte.
  return languageOf(std::string_view(bytes.get()));
}

int languageOfText(std::span<const int> text) {
  return languageOf(text.first(static_cast<size_t>(std::find(text.begin(), text.end(), 0) - text.begin())));
}

}  // namespace zmatrix
