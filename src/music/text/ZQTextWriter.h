// Writes generated text into a file, shared by the tiers that generate. On the basic level the low byte of each item is a
// character; Output says what a tier does with its items: check, write and isLegal, as CharacterOutput has them.
#pragma once

#include <cstdio>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "frame/ZQTextCharacters.h"
#include "sequence/ZQMatrixMedium.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

/// Output of a sub-matrix of characters.
class CharacterOutput {
 public:
  explicit CharacterOutput(const ZQMatrixMedium* matrix) : matrix_(matrix) {}

  /// 1 if the type of the current sub-matrix can be written, else the error code of the operation.
  int check() const {
    const int matrixType = matrix_->getMatrixInfo()->getMatrixType();
    if (matrixType == ZQMatrixTypeANSIText) return 1;
    dbPrintf(0, "error: readAnsiObjexsAndWriteToAnsiFile: matrix is not ANSI type: %d\n", matrixType);
    return -1;
  }

  void write(int item, FILE* file) const { fputc(item, file); }

  /// False, with a message, for an item that is no character.
  bool isLegal(int item) const {
    if (static_cast<unsigned>(item) < numberOfCharacters) return true;
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: illegal value: %d\n", item);
    return false;
  }

 private:
  const ZQMatrixMedium* matrix_;
};

/// 1 if the current sub-matrix can generate text, else the error code of the operation.
template <class Matrix>
int checkMatrixForTextOutput(Matrix* matrix) {
  const auto* info = matrix->getMatrixInfo();
  if (info->getNumberOfWriteElements() == 0) {
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: matrix is empty!\n");
    return -2;
  }
  const int preProcessingType = info->getPreProcessingType();
  if (preProcessingType != ZQPreProcessingTypeNone && preProcessingType != ZQPreProcessingTypeANSIText) {
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: matrix has wrong preProcessingType: %d\n", preProcessingType);
    return -3;
  }
  if (info->getAllowLargeIndices() != 0 || info->getIsPhraseMatrix() != 1 || matrix->getNumberOfMatrices() == 0 ||
      info->getSuccessorMethod() < ZQSuccessorMethodMostProbable || info->getSuccessorMethod() > ZQSuccessorMethodRandom ||
      info->getCoordinateDimension() != 1) {
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: matrix is corrupted!\n");
    return -4;
  }
  return 1;
}

/// Writes the text that the generated text continues.
template <class Output, class Matrix>
void writeContextOfText(Matrix* matrix, const Output& output, FILE* file) {
  int numberOfObjex = 0, coordinateDimension = 0;
  int** objex =
      matrix->getMatrixInfo()->createKernelOriginalSequenceInitialValuesObjexVector(&numberOfObjex, &coordinateDimension);
  if (objex == nullptr) return;
  for (int i = 0; i < numberOfObjex; i++) output.write(objex[i][0], file);
  systemFree(objex);
}

/// Generates one item and writes it. A failed read and an item that is no character write a line feed instead; the run goes on.
template <class Output, class Matrix>
void writeNextItem(Matrix* matrix, const Output& output, FILE* file) {
  double probability = 0, stopProbability = 0;
  const int* objex = matrix->readObjexFromMatrix(&probability, &stopProbability);
  if (objex == nullptr) {
    fputc('\n', file);
    return;
  }
  const int item = objex[0];
  output.write(item, file);
  if (output.isLegal(item)) return;
  matrix->getMatrixInfo()->resetKernelSequence(matrix->getCurrentMatrixID(), 0);
  fputc('\n', file);
}

template <class Output, class Matrix>
int readAnsiObjexsAndWriteToAnsiFileIn(Matrix* matrix, int numberOfObjex, const char* fileName) {
  if (matrix == nullptr || matrix->getCurrentMatrixID() < 0 || matrix->getCurrentMatrixID() >= matrix->getMaxNumberOfMatrices())
    return 0;
  const Output output(matrix);
  const int isOfKind = output.check();
  if (isOfKind != 1) return isOfKind;
  const int isFit = checkMatrixForTextOutput(matrix);
  if (isFit != 1) return isFit;
  FILE* file = fileName != nullptr ? fopen(fileName, "wb") : nullptr;
  if (file == nullptr) {
    dbPrintf(0, "readAnsiObjexsAndWriteToAnsiFile: could not open ansifile %s for writing\n",
             fileName != nullptr ? fileName : "");
    return -5;
  }
  const auto* info = matrix->getMatrixInfo();
  if (info->getSkillOutputLevel() < 2) dbPrintf(1, "readAnsiObjexsAndWriteToAnsiFile: Warning: very low skill outputlevel\n");
  if (info->getLengthOfKernelPreProcessedSequence() == 0)
    dbPrintf(1, "readAnsiObjexsAndWriteToAnsiFile: Warning: empty kernel sequence, initializing from root\n");
  writeContextOfText(matrix, output, file);
  for (int i = 0; i < numberOfObjex; i++) writeNextItem(matrix, output, file);
  fclose(file);
  return 1;
}

}  // namespace zmatrix
