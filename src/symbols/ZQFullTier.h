// The full tier's part of the operations shared by all tiers: a marked write assigns a symbol, a delete removes it, and moving a
// phrase updates the link of its symbol.
#pragma once

#include "sequence/ZQMediumTier.h"
#include "symbols/ZQFullVerification.h"
#include "symbols/ZQMatrix.h"
#include "symbols/ZQWordMarkers.h"

namespace zmatrix {

struct ZQFullTier {
  using Matrix = ZQMatrix;
  using Element = ZQMatrixElement;
  using Info = ZQMatrixInfo;
  using Verification = ZQFullVerification;
  static constexpr int infoType = 2;
  static constexpr bool reportsMissingSlot = true;

  static constexpr const zmatrix::MatrixFileTexts& fileTexts = zmatrix::fullFileTexts;
  static constexpr bool announcesMoreMatrices = false;
  /// Prints on standard output whatever the debug device is, since hosts depend on it.
  static void reportOccupiedSlot(int position) { zmatrix::printTo(stdout, fileTexts.slotIsOccupied, position); }
  /// Cuts links to missing levels and links that form cycles.
  static int checkLoadedRecords(Matrix& matrix) { return matrix._checkLevelLinks(); }

  struct WriteFlags {
    char startFlag = 0;
    char endFlag = 0;
    int symbolMarker = 0;  ///< above 0: the path gets a symbol unless it has one
  };

  static void onWritten(Matrix& matrix, Info& info, Element& element, const WriteFlags& flags) {
    markSymbol(info, element, flags.symbolMarker);
    ZQMediumTier::onWritten(matrix, info, element, {flags.startFlag, flags.endFlag});
  }

  /// The markers of a preprocessed text, or null.
  static int* deriveMarkers(Matrix& matrix, const int* sequence, int length) {
    int numberOfSymbols;
    return matrix.getSymbolMarkersFromPreProcessedCombinedSequence(sequence, length, &numberOfSymbols);
  }

  /// True if every sequence that isn't empty has markers: a null result of deriveMarkers then means that memory has run out.
  static bool derivesMarkers(const Matrix& matrix) { return matrix.getMatrixInfo()->getMatrixType() == ZQMatrixTypeANSIText; }

  /// Marks a phrase that is a whole word: its first item begins a word, its last item ends one, and no item between is marked, as
  /// a host's own markers may do. Two one-letter words with a blank between them are not a word.
  static void markPhrase(WriteFlags& flags, const int* markers, int numberOfItems) {
    const int last = numberOfItems - 1;
    if ((markers[0] & zmatrix::beginsWord) == 0 || (markers[last] & zmatrix::endsWord) == 0) return;
    if (last > 0 && (markers[0] & zmatrix::endsWord) != 0) return;
    for (int i = 1; i < last; ++i) {
      if (markers[i] != 0) return;
    }
    flags.symbolMarker = 1;
  }

  /// True if pruning spares elements for which carriesSymbol() is true: with a symbol, or with the link of a symbol to its
  /// phrase.
  static bool sparesSymbols(const Info& info) { return info.getKeepSymbolsWhenRemoveOverdeterminedElements() == 1; }
  static bool carriesSymbol(const Element& element) { return element.getSymbolID() > 0 || element.getSymbolDownLinkHandle() > 0; }

  /// The element is about to move by `offset` slots.
  static void onMoving(Matrix& matrix, Element& element, int offset) {
    if (element.getSymbolID() >= lowestFollowedSymbol) moveLinkFromLevelAbove(matrix, element.getSymbolID(), offset);
    // The element's own link is shifted like relative links, although it is a position: it is stale until refreshed.
    if (element.getSymbolDownLinkHandle() > 0) element.addOffsetToSymbolDownLinkHandle(-offset);
  }

  static void onUnwritten(Matrix& matrix, Info& info, Element& element) {
    ZQMediumTier::onUnwritten(matrix, info, element);
    if (element.getSymbolID() > 0) {
      element.setSymbolDownLinkHandle(0);
      info.decrementNumberOfSymbols();
    }
    element.setSymbolID(0);
  }

  static constexpr auto readBack = ZQMediumTier::readBack;
  static constexpr auto readBack32 = ZQMediumTier::readBack32;
  static constexpr auto readBack64 = ZQMediumTier::readBack64;

 private:
  static constexpr int lowestFollowedSymbol = 256;  // smaller symbols are bytes, or come from files of a lower tier

  static void markSymbol(Info& info, Element& element, int symbolMarker) {
    if (symbolMarker == 0) return;
    if (symbolMarker > 0 && element.getSymbolID() == 0) {
      info.incrementNewSymbol();
      element.setSymbolID(info.getNewSymbol());
      info.incrementNumberOfSymbols();
    } else if (element.getSymbolID() < 1) {
      dbPrintf(0, "negtive symbolID unexpected\n");
    }
  }

  static void moveLinkFromLevelAbove(Matrix& matrix, int symbol, int offset) {
    const int levelUp = matrix.getMatrixInfo()->getCurrentMatrixIDLevelUp();
    if (levelUp < 0 || levelUp >= matrix.getMaxNumberOfMatrices()) return;
    const int position = matrix.childAt(levelUp, symbol);
    if (position < 0) return;
    auto* symbolElement = static_cast<Element*>(matrix.elementAt(position));
    if (symbolElement->getOffsetToElementInNextDimension() == 0 || symbolElement->getWriteCount() > 0) {
      symbolElement->addOffsetToSymbolDownLinkHandle(offset);
    }
  }
};

}  // namespace zmatrix
