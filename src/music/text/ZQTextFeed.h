// Learning from text, shared by the tiers that learn: files and directories of files, the choice of a sub-matrix by language, and
// the update phrase by phrase. A tier's methods are one line each; TextTier<Matrix> holds what differs between tiers. Methods are
// called through the static type of the matrix, so that a tier's own methods, which hide those of its base, are found.
//
// TextTier<Matrix> has:
//   updateDescription       format, with one int, of the sub-matrix's description after a file was fed
//   updateLevelAbove        called after a file was learned; its result is that of the file
#pragma once

#include <algorithm>
#include <cstdio>
#include <span>

#include "frame/ZQCharacterTables.h"
#include "frame/ZQSentence.h"
#include "music/ZQFileNameList.h"
#include "music/text/ZQTextFile.h"
#include "music/text/ZQTextPhrases.h"
#include "settings/ZQMatrixEnumerations.h"
#include "store/ZQKeepCurrentMatrixID.h"

namespace zmatrix {

template <class Matrix>
struct TextTier;

// --- update of one sub-matrix

/// Prints a phrase before it is learned, on standard output and in the debug file as the debug device says.
void showTextPhrase(std::span<const int> phrase);

/// Learns one phrase and returns the result of the sequence update.
template <class Matrix>
int updateWithPhrase(Matrix* matrix, std::span<const int> phrase, int preProcessingType) {
  return matrix->updateMatrixWithCombinedSequence(phrase.data(), static_cast<int>(phrase.size()), ZQMatrixTypeANSIText, 1,
                                                  preProcessingType, 0);
}

/// Learns phrases until one fails, and returns the last result.
template <class Matrix>
int updateWithTextPhrases(Matrix* matrix, std::span<const int> text, int preProcessingType) {
  const int length = static_cast<int>(text.size());
  int result = 1;
  for (int position = 0; position < length && result >= 1;) {
    const TextPhrase phrase = nextTextPhrase(text, position);
    const std::span<const int> values =
        text.subspan(static_cast<size_t>(phrase.start), static_cast<size_t>(phrase.end - phrase.start));
    if (ZQDebugChannel::globalDebugLevel >= 1) showTextPhrase(values);
    if (!values.empty()) result = updateWithPhrase(matrix, values, preProcessingType);
    position = phrase.end;
  }
  return result;
}

template <class Matrix>
void warnAboutTextSettings(Matrix* matrix) {
  const auto* info = matrix->getMatrixInfo();
  if (info->getUseEndOfSequence() != 1)
    dbPrintf(0, "warning from updateMatrixWithLongANSISequence: useEndOfSequence(%d) is not 1\n", info->getUseEndOfSequence());
  if (info->getUseStartOfSequence() != 1)
    dbPrintf(0, "warning from updateMatrixWithLongANSISequence: useStartOfSequence(%d) is not 1\n",
             info->getUseStartOfSequence());
  if (info->getPreProcessingType() != ZQPreProcessingTypeANSIText)
    dbPrintf(0, "warning from updateMatrixWithLongANSISequence: preProcessingType(%d) is not 1000\n",
             info->getPreProcessingType());
}

/// 0 for a sub-matrix that is not of the type text, else the result of the last phrase: 1 on success, also for an empty text.
template <class Matrix>
int updateMatrixWithLongANSISequenceIn(Matrix* matrix, const int* sequence, int length) {
  auto* info = matrix->getMatrixInfo();
  if (info->getMatrixType() != ZQMatrixTypeANSIText) {
    dbPrintf(0, "error from updateMatrixWithLongANSISequence: matrixType (%d) is not 3\n", info->getMatrixType());
    return 0;
  }
  if (sequence == nullptr && length > 0) return 0;
  warnAboutTextSettings(matrix);
  const int preProcessingType = info->getPreProcessingType();
  const std::span<const int> text(sequence, static_cast<size_t>(std::max(length, 0)));
  if (info->getAddUpdateInfo() == 1) info->generateUpdateInfoSequence(text.data(), static_cast<int>(text.size()));

  int result = 1;
  if (info->getUsePhrasesForUpdateMatrixWithLongANSIText() == 1)
    result = updateWithTextPhrases(matrix, text, preProcessingType);
  else if (!text.empty())
    result = updateWithPhrase(matrix, text, preProcessingType);
  if (result >= 1) matrix->countUpdate();
  return result;
}

// --- files

/// The first of all reserved sub-matrices with this type, language and preprocessing, or -1.
template <class Matrix>
int getMatrixIDForLanguageIn(Matrix* matrix, int matrixType, int language, int preProcessingType) {
  const KeepCurrentMatrixID<Matrix> keep(matrix);
  for (int matrixID = 0; matrixID < matrix->getMaxNumberOfMatrices(); matrixID++) {
    matrix->setCurrentMatrixID(matrixID);
    const auto* info = matrix->getMatrixInfo();
    if (info->getMatrixType() == matrixType && info->getLanguage() == language &&
        info->getPreProcessingType() == preProcessingType)
      return matrixID;
  }
  return -1;
}

/// The ID of the sub-matrix that learns a file: one of its language, else a free one, else -1.
template <class Matrix>
int matrixIDForTextFile(Matrix* matrix, const char* fileName, int language) {
  const int found = matrix->getMatrixIDForLanguage(matrix->getGlobalMatrixType(), language, matrix->getGlobalPreProcessingType());
  if (found >= 0) return found;
  const int free = matrix->getNextFreeMatrixID();
  if (free < 0) {
    dbPrintf(0, "updateMatrixWithANSIFile (%s): could not find a free matrixID for languageID %d\n", fileName, language);
    dbPrintf(0, "please restart and set maxNumberOfMatrices to a value > %d!\n", matrix->getMaxNumberOfMatrices());
    return -1;
  }
  matrix->setNumberOfMatrices(free + 1);
  return free;
}

/// Sets up the current sub-matrix for this file.
template <class Matrix>
void applyTextProperties(Matrix* matrix, const char* fileName, int language) {
  if (matrix->checkGlobalMatrixPropertiesForANSIText() == 1) {
    matrix->applyGlobalMatrixProperties();
  } else {
    dbPrintf(0, "updateMatrixWithANSIFile: checkGlobalMatrixPropertiesForAnsiText() failed. Applying default values\n");
    matrix->setDefaultMatrixPropertiesForANSIText(fileName);
  }
  auto* info = matrix->getMatrixInfo();
  info->setLanguage(language);
  info->setNameOfUpdateFile(fileName);
  info->addNameOfUpdateFile(fileName);
  char description[256];
  printInto(description, sizeof description, TextTier<Matrix>::updateDescription, 64);
  matrix->setMatrixDescription(description);
}

/// Makes the sub-matrix for a text of this language current and sets it up. Returns its ID, or -1 if there is none.
template <class Matrix>
int chooseMatrixForText(Matrix* matrix, const char* fileName, int language) {
  const int matrixID = matrixIDForTextFile(matrix, fileName, language);
  if (matrixID < 0) return -1;
  matrix->setCurrentMatrixID(matrixID);
  applyTextProperties(matrix, fileName, language);
  return matrixID;
}

template <class Matrix>
int prepareMatrixForTextIn(Matrix* matrix, const int* characters, int length, const char* name) {
  const int language = matrix->getGlobalLanguage();
  const std::span<const int> text(characters, static_cast<size_t>(characters != nullptr ? std::max(length, 0) : 0));
  return chooseMatrixForText(matrix, name != nullptr ? name : "",
                             language != ZQLanguageUndefined ? language : languageOfText(text));
}

template <class Matrix>
int updateMatrixWithANSIFileIn(Matrix* matrix, const char* fileName, int* length, int maxLength) {
  const TextOfFile text = textOfFile(fileName, maxLength);
  if (!text.isReadable) {
    dbPrintf(0, "updateMatrixWithANSI: cannot open %s...\n", fileName != nullptr ? fileName : "");
    if (length != nullptr) *length = 0;
    return 0;
  }
  if (length != nullptr) *length = text.length;
  if (text.values == nullptr) return 0;

  const KeepCurrentMatrixID<Matrix> keep(matrix);
  matrix->setCurrentMatrixID(0);
  int language = matrix->getGlobalLanguage();
  if (language == ZQLanguageUndefined) language = matrix->getLanguageIDFromAnsiFile(fileName);
  if (chooseMatrixForText(matrix, fileName, language) < 0) return 0;
  const int result = matrix->updateMatrixWithLongANSISequence(text.values.get(), text.length);
  return TextTier<Matrix>::updateLevelAbove(matrix, text.values.get(), text.length, result);
}

/// Learns every text file of a directory in alphabetical order. A file that fails doesn't end the run.
template <class Matrix>
int updateMatrixWithANSIFilesIn(Matrix* matrix, const char* path, int recursive, int* length) {
  const int maxLength = length != nullptr ? *length : 0;
  ZQFileNameList* names = ZQFileNameList().getTextFilesInFilePath(path, recursive, nullptr);
  const int sumOfLengths = sumOverFiles(names, [matrix, maxLength](const char* name) {
    int lengthOfFile = 0;
    matrix->updateMatrixWithANSIFile(name, &lengthOfFile, maxLength);
    return lengthOfFile;
  });
  if (length != nullptr) *length = sumOfLengths;
  return 1;
}

}  // namespace zmatrix
