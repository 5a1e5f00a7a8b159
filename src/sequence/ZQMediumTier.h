// What the medium tier adds to the store's shared tellings: an element counts the writes that something followed and those that
// nothing preceded, and the record counts the elements that ever began a sequence.
#pragma once

#include "sequence/ZQMatrixMedium.h"

struct ZQMediumTier {
  using Matrix = ZQMatrixMedium;
  using Element = ZQMatrixMediumElement;
  using Info = ZQMatrixMediumInfo;
  static constexpr int infoType = 1;
  static constexpr bool reportsMissingSlot = true;

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

  /// Symbols are the full tier's.
  static void markPhrase(WriteFlags&, const int*, int) {}
  static int* deriveMarkers(Matrix&, const int*, int) { return nullptr; }
  static bool sparesSymbols(const Info&) { return false; }
  static bool carriesSymbol(const Element&) { return false; }

  static void onMoving(Matrix&, Element&, int) {}

  static void onUnwritten(Matrix&, Info& info, Element& element) {
    element.setWriteCountWithSuccessor(0);
    if (element.getWriteCountWithoutPredecessor() > 0) info.decrementNumberOfStartElements();
    element.setWriteCountWithoutPredecessor(0);
  }
};
