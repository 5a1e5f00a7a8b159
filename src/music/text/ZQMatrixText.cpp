// Text methods of the full tier: instances of the shared templates. Where symbols are in use, a learned file is learned a second
// time as words, and a sub-matrix of symbols writes the words of its symbols.
#include "frame/ZQSystemOwned.h"
#include "music/text/ZQCharacterFeed.h"
#include "music/text/ZQTextFeed.h"
#include "music/text/ZQTextWriter.h"
#include "symbols/ZQMatrix.h"

using zmatrix::dbPrintf;

namespace zmatrix {

template <>
struct TextTier<ZQMatrix> {
  static constexpr ZQSentence<int> updateDescription =
      "Producer: %d-Bit Mac OS Intel, (CPP-Version), ANSI text read fromFile ***************";

  static int updateLevelAbove(ZQMatrix* matrix, const int* text, int length, int result) {
    return result > 0 && matrix->getMatrixAILevel() > 0 ? matrix->updateMatrixFromBasicLevel(text, length) : result;
  }
};

}  // namespace zmatrix

namespace {

/// The same at the basic level; the phrases of symbols, with a blank behind each, at the level above.
class TextOutput {
 public:
  explicit TextOutput(ZQMatrix* matrix) : matrix_(matrix), characters_(matrix), level_(matrix->getActualAILevelIndex()) {}

  int check() const {
    if (level_ == 0) return characters_.check();
    if (level_ > 1) {
      dbPrintf(0, "### error readAnsiObjexsAndWriteToAnsiFile: cannot write Objex for AILevel %d\n", level_);
      return -1;
    }
    const int levelDown = matrix_->getMatrixInfo()->getCurrentMatrixIDLevelDown();
    if (level_ == 1 && (levelDown >= matrix_->getMaxNumberOfMatrices() || levelDown == matrix_->getCurrentMatrixID())) {
      dbPrintf(0, "error: readAnsiObjexsAndWriteToAnsiFile: symbol has invalid downlink ID: %d\n", levelDown);
      return -1;
    }
    return 1;
  }

  /// Writes a character, or, on a level of symbols, the phrase of the symbol and a blank. A symbol without a phrase writes
  /// nothing.
  void write(int item, FILE* file) const {
    if (level_ == 0) {
      characters_.write(item, file);
      return;
    }
    int length = 0;
    const zmatrix::SystemOwned<int> phrase(matrix_->createPreviousLevelElementsFromOriginalSymbol(item, &length));
    if (phrase == nullptr) return;
    for (const int character : std::span(phrase.get(), static_cast<size_t>(length))) fputc(character, file);
    fputc(' ', file);
  }

  bool isLegal(int item) const {
    if (level_ == 0) return characters_.isLegal(item);
    if (item >= 0) return true;
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: illegal symbol value: %d\n", item);
    return false;
  }

 private:
  ZQMatrix* matrix_;
  zmatrix::CharacterOutput characters_;
  int level_;
};

}  // namespace

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
  return zmatrix::readAnsiObjexsAndWriteToAnsiFileIn<TextOutput>(this, numberOfObjex, fileName);
}
