// Text of the full tier: the shared telling, instantiated. A learned file is learned once more as words where symbols are in
// use, and a sub-matrix of symbols writes the words that they stand for.
#include "frame/ZQSystemOwned.h"
#include "music/text/ZQCharacterFeed.h"
#include "music/text/ZQTextFeed.h"
#include "music/text/ZQTextWriter.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct TextTier<ZQMatrix> {
  static constexpr ZQSentence<int> updateDescription =
      "Producer: %d-Bit Mac OS Intel, (CPP-Version), ANSI text read fromFile ***************";

  static int updateWithPhrase(ZQMatrix* matrix, std::span<const int> phrase, int preProcessingType) {
    return matrix->updateMatrixWithCombinedSequence(phrase.data(), static_cast<int>(phrase.size()), ZQMatrixTypeANSIText, 1,
                                                    preProcessingType, 0);
  }

  static int updateLevelAbove(ZQMatrix* matrix, const int* text, int length, int result) {
    return result > 0 && matrix->getMatrixAILevel() > 0 ? matrix->updateMatrixFromBasicLevel(text, length) : result;
  }
};

template <>
class TextOutput<ZQMatrix> {
 public:
  explicit TextOutput(ZQMatrix* matrix) : matrix_(matrix), level_(matrix->getActualAILevelIndex()) {}

  int check() const {
    const auto* info = matrix_->getMatrixInfo();
    if (level_ > 1) {
      dbPrintf(0, "### error readAnsiObjexsAndWriteToAnsiFile: cannot write Objex for AILevel %d\n", level_);
      return -1;
    }
    if (level_ == 0 && info->getMatrixType() != ZQMatrixTypeANSIText) {
      dbPrintf(0, "error: readAnsiObjexsAndWriteToAnsiFile: matrix is not ANSI type: %d\n", info->getMatrixType());
      return -1;
    }
    const int levelDown = info->getCurrentMatrixIDLevelDown();
    if (level_ == 1 && (levelDown >= matrix_->getMaxNumberOfMatrices() || levelDown == matrix_->getCurrentMatrixID())) {
      dbPrintf(0, "error: readAnsiObjexsAndWriteToAnsiFile: symbol has invalid downlink ID: %d\n", levelDown);
      return -1;
    }
    return 1;
  }

  /// A character; or the phrase of a symbol with a blank behind, nothing for a symbol without one.
  void write(int item, FILE* file) const {
    if (level_ == 0) {
      fputc(item, file);
      return;
    }
    int length = 0;
    const SystemOwned<int> phrase(matrix_->createPreviousLevelElementsFromOriginalSymbol(item, &length));
    if (phrase == nullptr) return;
    for (const int character : std::span(phrase.get(), static_cast<size_t>(length))) fputc(character, file);
    fputc(' ', file);
  }

  bool isLegal(int item) const {
    if (level_ == 0 ? static_cast<unsigned>(item) < 256 : item >= 0) return true;
    dbPrintf(0,
             level_ == 0 ? "readAnsiObjexsAndWriteToAnsiFile: illegal value: %d\n"
                         : "readAnsiObjexsAndWriteToAnsiFile: illegal symbol value: %d\n",
             item);
    return false;
  }

 private:
  ZQMatrix* matrix_;
  int level_;
};

}  // namespace zmatrix

int zmatrix::prepareMatrixForText(ZQMatrix* matrix, const int* characters, int length, const char* name) {
  return prepareMatrixForTextIn(matrix, characters, length, name);
}

int ZQMatrix::updateMatrixWithANSIFile(const char* fileName, int* length, int maxLength) {
  return zmatrix::updateMatrixWithANSIFileIn(this, fileName, length, maxLength);
}

int ZQMatrix::updateMatrixWithANSIFiles(const char* path, int recursive, int* length) {
  return zmatrix::updateMatrixWithANSIFilesIn(this, path, recursive, length);
}

int ZQMatrix::updateMatrixWithLongANSISequence(const int* sequence, int length) {
  return zmatrix::updateMatrixWithLongANSISequenceIn(this, sequence, length);
}

int ZQMatrix::readAnsiObjexsAndWriteToAnsiFile(int numberOfObjex, const char* fileName) {
  return zmatrix::readAnsiObjexsAndWriteToAnsiFileIn(this, numberOfObjex, fileName);
}
