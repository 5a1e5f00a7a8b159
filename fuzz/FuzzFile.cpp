// Loads arbitrary bytes as a matrix file, into a matrix of each tier, and uses the result: see UseMatrix.h. Good seeds are the
// files that make_seeds writes and those of tests/data/matrices.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "flat/ZQMatrixCreators.h"
#include "support/UseMatrix.h"

namespace {

constexpr std::size_t offsetOfBlockSize = 536;
constexpr int largestBlockSize = 1 << 18;  // larger ones are legal but slow

template <class Matrix>
void loadAndUse(Matrix* matrix, void (*destroy)(Matrix*), const std::string& path) {
  if (matrix->readAndInitMatrixFromDisk(path.c_str(), -1) != 1) {
    // A matrix must be usable after a refused load too.
    matrix->readAndInitMatrixFromDisk("", -1);
  }
  zmatrix::useMatrix(*matrix, path);
  destroy(matrix);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size >= offsetOfBlockSize + sizeof(std::int32_t)) {
    std::int32_t blockSize;
    memcpy(&blockSize, data + offsetOfBlockSize, sizeof blockSize);
    if (blockSize > largestBlockSize) return 0;
  }
  static const std::string path = "/dev/shm/zmatrix-fuzz-" + std::to_string(getpid());
  for (int tier = 0; tier < 3; ++tier) {
    FILE* file = fopen(path.c_str(), "wb");
    if (file == nullptr) return 0;
    fwrite(data, 1, size, file);
    fclose(file);
    if (tier == 0) loadAndUse(createAndInitMatrixBase(), deleteMatrixBase, path);
    if (tier == 1) loadAndUse(createAndInitMatrixMedium(), deleteMatrixMedium, path);
    if (tier == 2) loadAndUse(createAndInitMatrix(), deleteMatrix, path);
  }
  remove(path.c_str());
  return 0;
}
