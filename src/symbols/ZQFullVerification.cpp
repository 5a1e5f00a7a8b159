#include "symbols/ZQFullVerification.h"

namespace zmatrix {

ZQFullVerification::ZQFullVerification(ZQMatrix& matrix, const zmatrix::VerificationTexts& texts)
    : ZQMediumVerification(matrix, texts), full_(matrix), id_(matrix.getCurrentMatrixID()) {
}

bool ZQFullVerification::look(int position, const ZQMatrixElement& element, const int* path, int length) {
  bool isSound = countRule(position, element, path, length) || !isPhraseMatrix();
  // A fault as in the medium tier, although the message says "warning".
  if (!isSound)
    dbPrintf(0, "warning: matrixLinear-Test for matrix ID %d: point without rule  unexpected for phrase-Matrix\n", id_);
  if (element.getSymbolID() > 0) {
    ++numberOfSymbols_;
    isSound = leadsToPhrase(position, element.getSymbolID()) && isSound;
  }
  if (element.getSymbolDownLinkHandle() != 0) isSound = leadsToSymbol(element) && isSound;
  return isSound;
}

// Follows a symbol to its element in the level above, and from there back to the phrase.
bool ZQFullVerification::leadsToPhrase(int position, int symbol) const {
  const int levelUp = full_.getMatrixInfo()->getCurrentMatrixIDLevelUp();
  if (!isLevel(levelUp)) {
    dbPrintf(0, "warning performMatrixLinearTest for matrixID %d: symbol %d found but symbol level matrix does not exist\n", id_,
             symbol);
    return true;
  }
  const auto* symbolElement = full_.elementAt(full_.childAt(levelUp, symbol));
  const int downHandle = symbolElement != nullptr ? symbolElement->getSymbolDownLinkHandle() : -1;
  if (!isPosition(downHandle)) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: symbol %d found, but downHandle %d is invalid!\n", id_, symbol,
             downHandle);
    return false;
  }
  if (!belongsToCurrentRoot(downHandle)) {
    dbPrintf(
        0,
        "error performMatrixLinearTest for matrixID %d: symbol %d found, but downHandle %d does not belong to a valid entry in "
        "basic level matrixID %d!\n",
        id_, symbol, downHandle, id_);
    return false;
  }
  if (downHandle != position) {
    dbPrintf(0,
             "error performMatrixLinearTest for matrixID %d: symbol %d found, but downHandle %d does not match addressOfElement "
             "%d!\n",
             id_, symbol, downHandle, position);
    return false;
  }
  return true;
}

bool ZQFullVerification::belongsToCurrentRoot(int handle) const {
  long long position = handle;
  int steps = full_.getMatrixInfo()->getMaxDimOfMatrix();
  for (; position >= full_.getMaxNumberOfMatrices() && steps > 0; --steps) {
    const ZQMatrixBaseElement* element = full_.elementAt(position);
    if (element == nullptr || element->getOffsetToElementInPrevDimension() == 0) return false;
    position += element->getOffsetToElementInPrevDimension();
  }
  return position == id_;
}

bool ZQFullVerification::leadsToSymbol(const ZQMatrixElement& element) const {
  const int handle = element.getSymbolDownLinkHandle();
  if (!isLevel(full_.getMatrixInfo()->getCurrentMatrixIDLevelDown())) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: downlinkHandle %d found basic level matrix does not exist\n", id_,
             handle);
    return false;
  }
  if (!isPosition(handle)) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: downHandle %d is invalid!\n", id_, handle);
    return false;
  }
  const auto* phrase = full_.elementAt(handle);
  if (phrase == nullptr) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: downHandle %d points to NULL element!\n", id_, handle);
    return false;
  }
  if (phrase->getSymbolID() < 1) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: downHandle %d points to element without symbol!\n", id_, handle);
    return false;
  }
  if (phrase->getSymbolID() != element.getIndexInDimension()) {
    dbPrintf(0, "error performMatrixLinearTest for matrixID %d: downHandle %d points to element with invalid symbol %d !\n", id_,
             handle, phrase->getSymbolID());
    return false;
  }
  return true;
}

bool ZQFullVerification::compareCounts() {
  const bool isSound = ZQMediumVerification::compareCounts();
  if (numberOfSymbols_ == full_.getMatrixInfo()->getNumberOfSymbols()) return isSound;
  dbPrintf(0, "error: matrixLinear-Test: numberOfSymbols differs from _numberOfSymbols %d <-> %d\n", numberOfSymbols_,
           full_.getMatrixInfo()->getNumberOfSymbols());
  return false;
}

}  // namespace zmatrix
