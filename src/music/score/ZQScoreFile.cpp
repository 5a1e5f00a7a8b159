#include "music/score/ZQScoreFile.h"

#include <cstdio>

#include "file/ZQFileStream.h"
#include "frame/ZQOwnedFile.h"

namespace zmatrix {

ScoreFile readScoreFile(const char* path) {
  ScoreFile content;
  const OwnedFile file(openRegularFile(path));
  const long long size = file != nullptr ? sizeOfFile(file.get()) : -1;
  if (size < 0) return content;
  setvbuf(file.get(), nullptr, _IONBF, 0);
  content.isReadable = true;
  content.bytes.reset(new unsigned char[static_cast<size_t>(size) + 1]);
  content.size = fread(content.bytes.get(), 1, static_cast<size_t>(size), file.get());
  return content;
}

}  // namespace zmatrix
