#include "music/score/ZQScoreFile.h"

#include <cstdio>

#include "file/ZQFileStream.h"

namespace zmatrix {

namespace {

struct CloseFile {
  void operator()(FILE* file) const { fclose(file); }
};

/// The size of a file in bytes, or -1.
long long sizeOf(FILE* file) {
  if (fseek(file, 0, SEEK_END) != 0) return -1;
  const long long size = ftell(file);
  rewind(file);
  return size;
}

}  // namespace

ScoreFile readScoreFile(const char* path) {
  ScoreFile content;
  const std::unique_ptr<FILE, CloseFile> file(openRegularFile(path));
  const long long size = file != nullptr ? sizeOf(file.get()) : -1;
  if (size < 0) return content;
  setvbuf(file.get(), nullptr, _IONBF, 0);
  content.isReadable = true;
  content.bytes.reset(new unsigned char[static_cast<size_t>(size) + 1]);
  content.size = fread(content.bytes.get(), 1, static_cast<size_t>(size), file.get());
  return content;
}

}  // namespace zmatrix
