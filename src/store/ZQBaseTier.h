// What the tellings shared by all tiers need to know of the base tier. A derived tier has the same names with its own meaning:
// what it does differently reads in its file alone.
#pragma once

#include "store/ZQMatrixBase.h"

struct ZQBaseTier {
  using Matrix = ZQMatrixBase;
  using Element = ZQMatrixBaseElement;
  using Info = ZQMatrixBaseInfo;
  static constexpr int infoType = 0;
  static constexpr bool reportsMissingSlot = false;  ///< says "hier ist der Fehler1" where no free slot was found

  /// What a write brings besides its value.
  struct WriteFlags {};

  /// A write has reached its element and its value is set: counts it there.
  static void onWritten(Matrix&, Info&, Element& element, const WriteFlags&) { element.incrementWriteCount(); }
  /// An element is about to move by `offset` slots with its field.
  static void onMoving(Matrix&, Element&, int) {}
  /// A written inner element loses its write and stays as a path.
  static void onUnwritten(Matrix&, Info&, Element&) {}
};
