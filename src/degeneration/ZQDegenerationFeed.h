// Learning which ocrons stand for the same number, shared by the tiers that learn. The host passes the forms of each number, the
// degenerate ocrons. Each form is paired with each form up to the last one that is as long as the first form; pairs are learned
// as sequences, with an end symbol behind each form, in sub-matrix 0, and those with a shorter second form in sub-matrix 1 as
// well. A run can take days: the matrix is saved every twenty minutes, and the run stops after the number at which a signal file
// is found.
//
// DegenerationTier<Matrix> has:
//   markEndOfForm           called after a pair was learned: the full tier gives the end of the first form a new symbol
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <span>
#include <string_view>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

template <class Matrix>
struct DegenerationTier;

/// The text that is learned: one or two forms, each followed by the end of an ocron.
class DegenerationText {
 public:
  explicit DegenerationText(const char* endOfOcron) : endOfOcron_(endOfOcron) {}

  int length() const { return length_; }
  bool isFull() const { return length_ >= mostCharacters; }
  char endSymbol() const { return endOfOcron_.empty() ? '\0' : endOfOcron_.front(); }
  void cutTo(int length) { length_ = length; }

  /// Appends a form and the end of an ocron. False, with a message and nothing appended, if there is no room for both.
  [[nodiscard]] bool add(const char* form) {
    const std::string_view text(form);
    if (text.size() + endOfOcron_.size() > static_cast<size_t>(mostCharacters - length_)) {
      complainOfLength();
      return false;
    }
    append(text);
    append(endOfOcron_);
    return true;
  }

  /// The characters as integers, valid until the text changes.
  std::span<const int> integers() const { return {integers_, static_cast<size_t>(length_)}; }

  static void complainOfLength() { dbPrintf(0, "feedMatrixWithDegenerationOcronData: ocron length exceeds 1024\n"); }

 private:
  static constexpr int mostCharacters = 1023;

  void append(std::string_view text) {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): characters are learned as signed values
    for (const char character : text) integers_[length_++] = static_cast<signed char>(character);
  }

  std::string_view endOfOcron_;
  int integers_[mostCharacters + 1] = {};
  int length_ = 0;
};

/// Prints the forms of the first numbers.
void showDegenerationForms(const int* degenerationLevels, int arrayLength, const char* const* const* degenerationOcrons);

/// Reports the progress through the channel and, if `fileName` isn't null, in a file.
void reportDegenerationProgress(int number, int level, const char* fileName);

/// True, with a message, if the signal file is there.
bool isDegenerationTerminated();

template <class Matrix>
class DegenerationFeed {
 public:
  DegenerationFeed(Matrix* matrix, const char* endOfOcron, bool isDryRun)
      : matrix_(matrix), text_(endOfOcron), isDryRun_(isDryRun) {}

  /// Learns the forms of one number. A null form is skipped with a message; if the first form is null, so are all forms of the
  /// number.
  void feedNumber(int number, const char* const* forms, int level) {
    if (forms == nullptr || forms[0] == nullptr) {
      reportMissing(number, forms);
      return;
    }
    compareLengths(number, forms, level);
    if (level == 1)
      feedSingleForm(forms[0]);
    else
      for (int a = 0; a < level; a++) feedPairs(forms, a);
  }

 private:
  static void reportMissing(int number, const char* const* forms) {
    if (forms == nullptr)
      dbPrintf(0, "degenerationOcrons[%d] = NULL\n", number);
    else
      dbPrintf(0, "degenerationOcrons[%d][%d] = NULL\n", number, 0);
  }

  void compareLengths(int number, const char* const* forms, int level) {
    firstLength_ = strlen(forms[0]);
    for (int j = 0; j < level; j++) {
      if (forms[j] == nullptr)
        dbPrintf(0, "degenerationOcrons[%d][%d] = NULL\n", number, j);
      else if (strlen(forms[j]) == firstLength_)
        lastEqual_ = j;
    }
  }

  void feedSingleForm(const char* form) {
    text_.cutTo(0);
    if (!text_.add(form)) return;
    feed(0, text_.length());
    feed(1, text_.length());
  }

  /// Learns form `a` together with each form up to the last one that is as long as the first form.
  void feedPairs(const char* const* forms, int a) {
    if (text_.isFull()) {
      DegenerationText::complainOfLength();
      return;
    }
    text_.cutTo(0);
    if (forms[a] == nullptr || !text_.add(forms[a])) return;
    const int firstPart = text_.length();
    for (int b = 0; b <= lastEqual_; b++) {
      text_.cutTo(firstPart);
      if (b == a)
        feedAlone();
      else if (forms[b] != nullptr && text_.add(forms[b]))
        feedPair(firstPart);
    }
  }

  void feedPair(int firstPart) {
    feed(0, firstPart);
    if (text_.length() < 2 * firstPart) feed(1, firstPart);
  }

  /// Learns the form alone, if it is as long as the first form and the end of an ocron has one character.
  void feedAlone() {
    if (static_cast<size_t>(text_.length()) != firstLength_ + 1) return;
    feed(1, text_.length());
    if (lastEqual_ == 0) feed(0, text_.length());
  }

  /// Learns the text in a sub-matrix. The first `markedLength` integers are the form whose end the tier marks.
  void feed(int matrixID, int markedLength) {
    if (isDryRun_ || matrixID >= matrix_->getMaxNumberOfMatrices()) return;
    matrix_->setCurrentMatrixID(matrixID);
    const std::span<const int> integers = text_.integers();
    if (integers.empty() || integers.back() != text_.endSymbol())
      dbPrintf(0, "feedMatrixWithDegenerationOcronData: error ocron for matrix feed has no EOO symbol\n");
    const int coordinateDimension = std::max(matrix_->getMatrixInfo()->getCoordinateDimension(), 1);
    matrix_->updateMatrixWithLongINTSequence(integers.data(), text_.length() / coordinateDimension);
    DegenerationTier<Matrix>::markEndOfForm(matrix_, integers.first(static_cast<size_t>(markedLength)));
  }

  Matrix* matrix_;
  DegenerationText text_;
  bool isDryRun_;
  size_t firstLength_ = 0;
  int lastEqual_ = 0;
};

/// Saves the matrix at the first number, and at the first number 1201 seconds or more after the last save.
template <class Matrix>
class DegenerationAutoSave {
 public:
  explicit DegenerationAutoSave(Matrix* matrix) : matrix_(matrix) {}

  void saveIfDue(int number, int level) {
    const time_t now = time(nullptr);
    if (now < lastSave_ + secondsBetweenSaves) return;
    dbPrintf(0, "feedMatrixWithDegenerationOcronData: autoSaved\n");
    matrix_->saveMatrixToDisk("autoSave.phr");
    reportDegenerationProgress(number, level, "autoSave.txt");
    lastSave_ = now;
  }

 private:
  static constexpr time_t secondsBetweenSaves = 1201;

  Matrix* matrix_;
  time_t lastSave_ = 0;
};

/// Returns 1, or -1 for a refused call.
template <class Matrix>
int feedMatrixWithDegenerationOcronDataIn(Matrix* matrix, const int* degenerationLevels, int arrayLength,
                                          const char* const* const* degenerationOcrons, int ocronType, const char* endOfOcron,
                                          int lastGoodIndex, int dryRun, int autoSave, int* numberFed) {
  *numberFed = 0;
  if (degenerationLevels == nullptr || degenerationOcrons == nullptr || endOfOcron == nullptr) return -1;
  if (matrix->isValidOcronType(ocronType) == 0) {
    dbPrintf(0, "feedMatrixWithDegenerationOcronData: wrong ocronType %d\n", ocronType);
    return -1;
  }
  if (lastGoodIndex > arrayLength) {
    dbPrintf(0, "feedMatrixWithDegenerationOcronData: lastGoodIndex > arrayLength %d\n", arrayLength);
    return -1;
  }
  if (matrix->getNumberOfMatrices() < 2) {
    dbPrintf(0, "feedMatrixWithDegenerationOcronData: warning number of Matrices too small, set to 2...\n");
    matrix->setNumberOfMatrices(2);
  }
  dbPrintf(1, "*feeding matrix with degenerated ocrons up to level up to %d\n", lastGoodIndex);
  *numberFed = arrayLength;
  if (arrayLength < 1) return 1;
  showDegenerationForms(degenerationLevels, arrayLength, degenerationOcrons);

  DegenerationFeed<Matrix> feed(matrix, endOfOcron, dryRun != 0);
  DegenerationAutoSave<Matrix> autoSaver(matrix);
  for (int i = 0; i < arrayLength; i++) {
    const int level = degenerationLevels[i];
    dbPrintf(1, "number: %d, degen-level: %d\n", i, level);
    if (level > 0) feed.feedNumber(i, degenerationOcrons[i], level);
    if (autoSave != 0) autoSaver.saveIfDue(i, level);
    if (isDegenerationTerminated()) {
      reportDegenerationProgress(i, level, nullptr);
      *numberFed = i + 1;
      return 1;
    }
    fflush(stdout);
  }
  return 1;
}

}  // namespace zmatrix
