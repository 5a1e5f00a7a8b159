// A file of the fuzzed bytes, and matrices of both tiers that learn it.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "flat/ZQMatrixCreators.h"
#include "symbols/ZQMatrix.h"

/// The file of the fuzzer's process; removed at the end of each run.
class MusicFile {
 public:
  MusicFile(const char* format, const std::uint8_t* data, std::size_t size)
      : path_("/dev/shm/zmatrix-fuzz-" + std::string(format) + "-" + std::to_string(getpid())) {
    FILE* file = fopen(path_.c_str(), "wb");
    isWritten_ = file != nullptr;
    if (!isWritten_) return;
    fwrite(data, 1, size, file);
    fclose(file);
  }
  ~MusicFile() { remove(path_.c_str()); }
  MusicFile(const MusicFile&) = delete;
  MusicFile& operator=(const MusicFile&) = delete;

  bool isWritten() const { return isWritten_; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  bool isWritten_;
};

/// Sets the header's block for one of the four codings, 0 to 3.
template <class Matrix>
void setMusicBlock(Matrix* matrix, int coding, int phraseLimit) {
  if (coding == 0) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta();
  if (coding == 1) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta();
  if (coding == 2) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  if (coding == 3) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS();
  matrix->setGlobalMaxPhraseLengthForUpdateWithSequence(phraseLimit);
}

/// Calls `feed` with a new matrix of the full tier, or of the medium one.
template <class Feed>
void feedNewMatrix(bool isFull, Feed feed) {
  if (isFull) {
    ZQMatrix* const matrix = createAndInitMatrix();
    feed(matrix);
    deleteMatrix(matrix);
  } else {
    ZQMatrixMedium* const matrix = createAndInitMatrixMedium();
    feed(matrix);
    deleteMatrixMedium(matrix);
  }
}
