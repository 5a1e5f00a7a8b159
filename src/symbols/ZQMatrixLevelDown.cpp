// From a symbol to the phrase that it stands for.
#include "frame/ZQCharacterTables.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQObjexBlock.h"
#include "store/ZQKeepCurrentMatrixID.h"
#include "symbols/ZQMatrix.h"

using zmatrix::KeepCurrentMatrixID;
using zmatrix::ObjexBlock;
using zmatrix::SystemOwned;

/// The handle of the symbol's phrase in the level below; -1, with a message, if the level or the handle is out of range.
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
    // The level below stays the current one, since hosts depend on it.
    dbPrintf(0, "createPreviousLevelObjexsFromOriginalSymbol: numberOfElements(%d) is not a multiple of coordDimension (%d)\n",
             length, coordinateDimension);
    return nullptr;
  }
  setCurrentMatrixID(symbolID);
  ObjexBlock items = zmatrix::newObjexBlockFrom(phrase.get(), length, coordinateDimension);
  if (items != nullptr) *count = length / coordinateDimension;
  return items.release();
}

/// Prints the phrase item by item, in the form of the level below.
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

// The second argument is not used: the settings give the number of coordinates.
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
