// Text of the full tier: the shared telling, instantiated.
#include "music/ZQTextFeed.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct TextTier<ZQMatrix> {
  static constexpr const char* updateDescription =
      "Producer: %d-Bit Mac OS Intel, (CPP-Version), ANSI text read fromFile ***************";

  static int updateWithPhrase(ZQMatrix* matrix, std::span<const int> phrase, int preProcessingType) {
    return matrix->updateMatrixWithCombinedSequence(phrase.data(), static_cast<int>(phrase.size()), ZQMatrixTypeANSIText, 1,
                                                    preProcessingType, 0);
  }

  static int updateLevelAbove(ZQMatrix*, const int*, int, int result) { return result; }
};

}  // namespace zmatrix

int ZQMatrix::updateMatrixWithANSIFile(const char* fileName, int* length, int maxLength) {
  return zmatrix::updateMatrixWithANSIFileIn(this, fileName, length, maxLength);
}

int ZQMatrix::updateMatrixWithANSIFiles(const char* path, int recursive, int* length) {
  return zmatrix::updateMatrixWithANSIFilesIn(this, path, recursive, length);
}

int ZQMatrix::updateMatrixWithLongANSISequence(const int* sequence, int length) {
  return zmatrix::updateMatrixWithLongANSISequenceIn(this, sequence, length);
}
