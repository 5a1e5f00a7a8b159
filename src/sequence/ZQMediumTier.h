// The medium tier's part of the operations shared by all tiers: an element counts the writes with a successor and those without a
// predecessor, and the record counts the elements that began a sequence.
#pragma once

#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQMediumVerification.h"
#include "store/ZQMatrixFileTexts.h"

namespace zmatrix {

struct ZQMediumTier {
  using Matrix = ZQMatrixMedium;
  using Element = ZQMatrixMediumElement;
  using Info = ZQMatrixMediumInfo;
  using Verification = ZQMediumVerification;
  static constexpr int infoType = 1;
  static constexpr bool reportsMissingSlot = true;

  static constexpr const zmatrix::MatrixFileTexts& fileTexts = zmatrix::mediumFileTexts;
  static constexpr bool announcesMoreMatrices = true;
  static void reportOccupiedSlot(int position) { dbPrintf(0, fileTexts.slotIsOccupied, position); }
  static int checkLoadedRecords(Matrix&) { return 0; }

  struct WriteFlags {
    char startFlag = 0;  ///< not 0: the path begins a sequence
    char endFlag = 0;    ///< not 0: the path ends a sequence
  };

  static void onWritten(Matrix&, Info& info, Element& element, const WriteFlags& flags) {
    element.incrementWriteCount();
    if (flags.endFlag == 0) element.incrementWriteCountWithSuccessor();
    if (flags.startFlag == 0) return;
    element.incrementWriteCountWithoutPredecessor();
    if (element.getWriteCountWithoutPredecessor() == 1) info.incrementNumberOfStartElements();
  }

  // Only the full tier has symbols.
  static void markPhrase(WriteFlags&, const int*, int) {}
  static int* deriveMarkers(Matrix&, const int*, int) { return nullptr; }
  static bool derivesMarkers(const Matrix&) { return false; }
  static bool sparesSymbols(const Info&) { return false; }
  static bool carriesSymbol(const Element&) { return false; }

  static void onMoving(Matrix&, Element&, int) {}

  static void onUnwritten(Matrix&, Info& info, Element& element) {
    element.setWriteCountWithSuccessor(0);
    if (element.getWriteCountWithoutPredecessor() > 0) info.decrementNumberOfStartElements();
    element.setWriteCountWithoutPredecessor(0);
  }

  /// Reads a vector without its two further counts, for ZQReadBackTest.
  static long long readBack(Matrix& matrix, const int* vector, int length, int* existCode, int* writeCount) {
    int withSuccessor = 0, withoutPredecessor = 0;
    return matrix.readMatrixData(vector, length, existCode, writeCount, &withSuccessor, &withoutPredecessor);
  }
  static long long readBack32(Matrix& matrix, const int* items, int length, int* existCode, int* writeCount) {
    int withSuccessor = 0, withoutPredecessor = 0;
    return matrix.readMatrixData32(items, length, existCode, writeCount, &withSuccessor, &withoutPredecessor);
  }
  static long long readBack64(Matrix& matrix, const long long* items, int length, int* existCode, int* writeCount) {
    int withSuccessor = 0, withoutPredecessor = 0;
    return matrix.readMatrixData64(items, length, existCode, writeCount, &withSuccessor, &withoutPredecessor);
  }
};

}  // namespace zmatrix
