// Text methods of the medium tier: instances of the shared templates.
#include "music/text/ZQCharacterFeed.h"
#include "music/text/ZQTextFeed.h"
#include "music/text/ZQTextWriter.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

template <>
struct TextTier<ZQMatrixMedium> {
  static constexpr ZQSentence<int> updateDescription =
      "Producer: %d-Bit Mac OS, lattix01.exe (CPP-Version), ANSI teext read fromFile ***************";

  /// The medium tier has no level above.
  static int updateLevelAbove(ZQMatrixMedium*, const int*, int, int result) { return result; }
};

}  // namespace zmatrix

int zmatrix::prepareMatrixForText(ZQMatrixMedium* matrix, const int* characters, int length, const char* name) {
  return prepareMatrixForTextIn(matrix, characters, length, name);
}

int ZQMatrixMedium::updateMatrixWithANSIFile(const char* fileName, int* length, int maxLength) {
  return zmatrix::updateMatrixWithANSIFileIn(this, fileName, length, maxLength);
}

int ZQMatrixMedium::updateMatrixWithANSIFiles(const char* path, int recursive, int* length) {
  return zmatrix::updateMatrixWithANSIFilesIn(this, path, recursive, length);
}

int ZQMatrixMedium::updateMatrixWithLongANSISequence(const int* sequence, int length) {
  return zmatrix::updateMatrixWithLongANSISequenceIn(this, sequence, length);
}

int ZQMatrixMedium::getLanguageIDFromAnsiFile(const char* fileName) {
  return zmatrix::languageOfTextFile(fileName);
}

int ZQMatrixMedium::getMatrixIDForLanguage(int matrixType, int language, int preProcessingType) {
  return zmatrix::getMatrixIDForLanguageIn(this, matrixType, language, preProcessingType);
}

int ZQMatrixMedium::readAnsiObjexsAndWriteToAnsiFile(int numberOfObjex, const char* fileName) {
  return zmatrix::readAnsiObjexsAndWriteToAnsiFileIn<zmatrix::CharacterOutput>(this, numberOfObjex, fileName);
}
