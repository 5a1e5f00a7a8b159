// The types, constants and hooks by which the templates over a tier work on the base tier. ZQMediumTier and ZQFullTier have the
// same names: all differences between the tiers stand in these three structs.
#pragma once

#include "store/ZQMatrixBase.h"
#include "store/ZQMatrixFileTexts.h"
#include "store/ZQVerificationTexts.h"

namespace zmatrix {

struct ZQBaseTier {
  using Matrix = ZQMatrixBase;
  using Element = ZQMatrixBaseElement;
  using Info = ZQMatrixBaseInfo;
  using Verification = zmatrix::NoAdditionalVerification;
  static constexpr int infoType = 0;
  static constexpr bool reportsMissingSlot = false;  ///< prints "hier ist der Fehler1" if there is no free slot

  // --- the matrix file
  static constexpr const zmatrix::MatrixFileTexts& fileTexts = zmatrix::baseFileTexts;
  static constexpr bool announcesMoreMatrices = false;  ///< prints a message if a file has more sub-matrices than the object
  static void reportOccupiedSlot(int position) { dbPrintf(0, fileTexts.slotIsOccupied, position); }
  /// Called after the info records of a file are read: removes links between records that lead nowhere. The number of links
  /// removed, or a negative value if memory has run out.
  static int checkLoadedRecords(Matrix&) { return 0; }

  /// Parameters of a write besides its value.
  struct WriteFlags {};

  /// Counts a write at its element, after the value is set.
  static void onWritten(Matrix&, Info&, Element& element, const WriteFlags&) { element.incrementWriteCount(); }
  /// Called before an element moves by `offset` slots with its field.
  static void onMoving(Matrix&, Element&, int) {}
  /// Called when a written inner element is unwritten: it stays as part of longer paths.
  static void onUnwritten(Matrix&, Info&, Element&) {}

  // The reads of the second memory test.
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
