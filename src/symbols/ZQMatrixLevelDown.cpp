// From a symbol back to the phrase that it stands for.
#include "frame/ZQCharacterTables.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQObjexBlock.h"
#include "store/ZQKeepCurrentMatrixID.h"
#include "symbols/ZQMatrix.h"

using zmatrix::KeepCurrentMatrixID;
using zmatrix::ObjexBlock;
using zmatrix::SystemOwned;

/// Where the symbol's phrase ends in the level below, or -1, with a message if the level or the handle is none.
int ZQMatrix::getSymbolDownLinkHandleToExpand(int symbol, int levelDown) {
  if (levelDown < 0 || levelDown >= getMaxNumberOfMatrices()) {
    dbPrintf(0, "getPreviousLevelObjectsFromOriginalSymbol: illegal levelDownID: %d\n", levelDown);
    return -1;
  }
  const int handle = getSymbolDownLinkHandleFromSymbol(symbol);
  if (handle >= 1 && handle <= getMaximalStack()) return handle;
  dbPrintf(0, "getPreviousLevelObjectsFromOriginalSymbol: illegal handle: %d\n", handle);
  return -1;
}

int* ZQMatrix::createPreviousLevelElementsFromOriginalSymbol(int symbol, int* length) {
  *length = 0;
  const int levelDown = getMatrixInfo()->getCurrentMatrixIDLevelDown();
  const int handle = getSymbolDownLinkHandleToExpand(symbol, levelDown);
  if (handle < 0) return nullptr;
  const KeepCurrentMatrixID<ZQMatrix> keep(this);
  setCurrentMatrixID(levelDown);
  return getIndexVectorFromMatrixHandle(handle, length);
}

int** ZQMatrix::createPreviousLevelObjexsFromOriginalSymbol(int symbol, int* count) {
  *count = 0;
  const int symbolID = currentMatrixId_;
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  const int levelDown = getMatrixInfo()->getCurrentMatrixIDLevelDown();
  const int handle = getSymbolDownLinkHandleToExpand(symbol, levelDown);
  if (handle < 0) return nullptr;
  setCurrentMatrixID(levelDown);
  int length = 0;
  const SystemOwned<int> phrase(getIndexVectorFromMatrixHandle(handle, &length));
  if (phrase != nullptr && (coordinateDimension < 1 || length % coordinateDimension != 0)) {
    // The level below stays the current one: hosts depend on it.
    dbPrintf(0, "createPreviousLevelObjexsFromOriginalSymbol: numberOfElements(%d) is not a multiple of coordDimension (%d)\n",
             length, coordinateDimension);
    return nullptr;
  }
  setCurrentMatrixID(symbolID);
  ObjexBlock items = zmatrix::newObjexBlockFrom(phrase.get(), length, coordinateDimension);
  if (items != nullptr) *count = length / coordinateDimension;
  return items.release();
}

/// The phrase item by item, as the level below prints its own items.
void ZQMatrix::printPhraseOfSymbol(int symbol) {
  dbPrintf(0, "(%d:) ", symbol);
  int length = 0;
  const SystemOwned<int> phrase(createPreviousLevelElementsFromOriginalSymbol(symbol, &length));
  if (phrase == nullptr) return;
  const KeepCurrentMatrixID<ZQMatrix> keep(this);
  setCurrentMatrixID(getMatrixInfo()->getCurrentMatrixIDLevelDown());
  const int matrixType = getMatrixInfo()->getMatrixType();
  if (matrixType < ZQMatrixTypeUndefined || matrixType > ZQMatrixTypeMIDIGMQuadruple_NDMTS) {
    dbPrintf(0, "matrixtype %d for downlevel matrix from AILevel %d unexpected\n", matrixType, 1);
    return;
  }
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  for (int i = 0; coordinateDimension > 0 && i + coordinateDimension <= length; i += coordinateDimension) {
    ZQMatrixMedium::dbPrintSuccessorObjex(phrase.get() + i);
  }
}

// The sub-matrix knows how many coordinates an item has; the second argument is not used.
void ZQMatrix::dbPrintSuccessorObjex(const int* objex, int) {
  const int level = getActualAILevelIndex();
  if (level > 1) {
    dbPrintf(0, "####### error dbPrintSuccessorObjex: cannot print Objex for AILevel %d\n", level);
  } else if (level == 1 && objex != nullptr) {
    printPhraseOfSymbol(objex[0]);
  } else {
    ZQMatrixMedium::dbPrintSuccessorObjex(objex);
  }
}
