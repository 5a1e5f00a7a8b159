// What the tellings shared by all tiers need to know of the base tier. A derived tier has the same names with its own meaning:
// what it does differently reads in its file alone.
#pragma once

#include "store/ZQMatrixBase.h"
#include "store/ZQMatrixFileTexts.h"
#include "store/ZQVerificationTexts.h"

namespace zmatrix {

struct ZQBaseTier {
  using Matrix = ZQMatrixBase;
  using Element = ZQMatrixBaseElement;
  using Info = ZQMatrixBaseInfo;
  using Verification = NoAdditionalVerification;
  static constexpr int infoType = 0;
  static constexpr bool reportsMissingSlot = false;  ///< says "hier ist der Fehler1" where no free slot was found

  // --- the matrix file
  static constexpr const MatrixFileTexts& fileTexts = baseFileTexts;
  static constexpr bool announcesMoreMatrices = false;  ///< says so when a file has more sub-matrices than the object
  static void reportOccupiedSlot(int position) { dbPrintf(0, fileTexts.slotIsOccupied, position); }
  /// The records of a file have been read: what they say of each other is made sound.
  static int checkLoadedRecords(Matrix&) { return 0; }

  /// What a write brings besides its value.
  struct WriteFlags {};

  /// A write has reached its element and its value is set: counts it there.
  static void onWritten(Matrix&, Info&, Element& element, const WriteFlags&) { element.incrementWriteCount(); }
  /// An element is about to move by `offset` slots with its field.
  static void onMoving(Matrix&, Element&, int) {}
  /// A written inner element loses its write and stays as a path.
  static void onUnwritten(Matrix&, Info&, Element&) {}

  /// Reads of a vector for a test that knows its value.
  static long long readBack(Matrix& matrix, const int* vector, int length, int* existCode, int* writeCount) {
    return matrix.readMatrixData(vector, length, existCode, writeCount);
  }
  static long long readBack32(Matrix& matrix, const int* items, int length, int* existCode, int* writeCount) {
    return matrix.readMatrixData32(items, length, existCode, writeCount);
  }
  static long long readBack64(Matrix& matrix, const long long* items, int length, int* existCode, int* writeCount) {
    return matrix.readMatrixData64(items, length, existCode, writeCount);
  }
};

}  // namespace zmatrix
