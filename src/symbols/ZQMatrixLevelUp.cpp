// The step from letters to words: a sequence that the basic level has learned becomes a sequence of symbols, which another
// sub-matrix learns. A failure here doesn't change the basic level, which is the current one again at the end.
#include <cstdio>

#include "frame/ZQProgress.h"
#include "frame/ZQSentence.h"
#include "frame/ZQSystemOwned.h"
#include "store/ZQKeepCurrentMatrixID.h"
#include "symbols/ZQMatrix.h"

using zmatrix::KeepCurrentMatrixID;
using zmatrix::SystemOwned;

/// The result of a walk over a sequence: symbols, or the handles of their phrases.
struct zmatrix::DerivedSymbols {
  SystemOwned<int> entries;
  int count = 0;
  int numberOfUnknown = 0;
  int numberOfPredefined = 0;
};

using zmatrix::DerivedSymbols;

int ZQMatrix::updateSymbolDownLinkHandlesForSymbols(const int* symbols, const int* handles, int count) {
  snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "updateSymbolDownlinkHandlesForSymbols");
  for (int i = 0; i < count; ++i) {
    int position;
    auto* element = getMatrixElementFromElementVector(&symbols[i], 1, &position);
    if (element == nullptr) {
      dbPrintf(0, "insertSymbolHandlesForSymbols(): error: element not found for symbol %d with handle %d\n", symbols[i],
               handles[i]);
    } else {
      if (handles[i] < 0) {
        dbPrintf(0, "warning: insertSymbolHandlesForSymbols(): symbol %d has illegal handle %d\n", symbols[i], handles[i]);
      }
      element->setSymbolDownLinkHandle(handles[i]);
    }
    matrixProgressDisplay(i, count);
  }
  return 1;
}

/// The ID of the sub-matrix for the symbols of the current one: the one linked to it, or a free one; -1, with a message, if there
/// is none.
int ZQMatrix::provideLevelUp() {
  int levelUp = getMatrixInfo()->getCurrentMatrixIDLevelUp();
  const bool isNew = levelUp == -1;
  if (isNew) {
    levelUp = getNextFreeMatrixID();
    if (levelUp < 0) {
      dbPrintf(0, "Cannot create next level matrix with id %d. Max. number of matrices exceeded\n", levelUp);
      return -1;
    }
  }
  // The basic level itself is found as free if its record was reset while it still has elements.
  if (levelUp < 0 || levelUp >= getMaxNumberOfMatrices() || levelUp == currentMatrixId_) {
    dbPrintf(0, "updateMatrixFromBasicLevel: warning symbolLevel found is illegal\n");
    return -1;
  }
  if (isNew) dbPrintf(2, "updateMatrixFromBasicLevel: new symbol matrix prepared\n");
  if (levelUp >= getNumberOfMatrices()) {
    setNumberOfMatrices(levelUp + 1);
    dbPrintf(1, "updateMatrixFromBasicLevel: number of matrices increased to %d\n", levelUp + 1);
  }
  return levelUp;
}

/// Sets the current sub-matrix up for the symbols of the basic level: from the symbol level's block if that fits, else with the
/// defaults.
void ZQMatrix::setUpSymbolLevel(int basicID, const char* nameOfUpdateFile) {
  ZQMatrixInfo& info = *getMatrixInfo();
  if (info.getNumberOfWriteElements() > 0) {
    dbPrintf(2, "updating next level symbol-matrix with id %d (is not empty)\n", currentMatrixId_);
  }
  info.setCurrentMatrixIDLevelDown(basicID);
  if (checkGlobalSymbolMatrixPropertiesForSymbols() == 1) {
    applyGlobalSymbolMatrixProperties();
    info.setNameOfUpdateFile(nameOfUpdateFile);
    info.addNameOfUpdateFile(nameOfUpdateFile);
  } else {
    dbPrintf(0,
             "updateMatrixFromBasicLevel: checkGlobalMatrixPropertiesForSymbols() failed. Applying default "
             "values\n");
    setDefaultMatrixPropertiesForSymbols(nameOfUpdateFile);
  }
}

int ZQMatrix::enterLevelUp() {
  const int levelUp = provideLevelUp();
  if (levelUp < 0) return -1;
  const int basicID = currentMatrixId_;
  getMatrixInfo()->setCurrentMatrixIDLevelUp(levelUp);
  const char* nameOfUpdateFile = getNameOfUpdateFile();
  setCurrentMatrixID(levelUp);
  setUpSymbolLevel(basicID, nameOfUpdateFile);
  return levelUp;
}

/// Looks up the handles of the phrases after learning, which moves phrases, and stores them in the symbol level.
int ZQMatrix::refreshSymbolDownLinkHandles(const int* sequence, int length, int levelUp, const DerivedSymbols& symbols,
                                           int updateResult) {
  DerivedSymbols handles;
  handles.entries.reset(getNextLevelSymbolHandlesFromOriginalObjects(sequence, length, &handles.count, &handles.numberOfUnknown,
                                                                     &handles.numberOfPredefined));
  setCurrentMatrixID(levelUp);
  bool agree = true;
  const auto compare = [&agree](int ofHandles, int ofSymbols, const zmatrix::ZQSentence<int, int>& message) {
    if (ofHandles == ofSymbols) return;
    dbPrintf(0, message, ofHandles, ofSymbols);
    agree = false;
  };
  compare(handles.count, symbols.count,
          "updateMatrixFromBasicLevel: numberOfSymbolHandles(%d) != numberOfSymbols (%d)unexpected\n");
  compare(handles.numberOfUnknown, symbols.numberOfUnknown,
          "numberOfUnknownSymbolHandles(%d) != numberOfUnknownSymbols unexpected(%d)\n");
  compare(handles.numberOfPredefined, symbols.numberOfPredefined,
          "numberOfPredefinedSymbolHandles(%d) != numberOfPredefinedSymbols unexpected(%d)\n");
  if (!agree) return updateResult;
  if (symbols.numberOfUnknown > 0) {
    dbPrintf(0, "warning:  getSymbolsFromLongANSISequence: numberOfUnknownSymbols = %d\n", symbols.numberOfUnknown);
  }
  if (handles.entries == nullptr) return updateResult;
  updateSymbolDownLinkHandlesForSymbols(symbols.entries.get(), handles.entries.get(), symbols.count);
  return 1;
}

int ZQMatrix::updateMatrixFromBasicLevel(const int* sequence, int length) {
  const int basicID = currentMatrixId_;
  const KeepCurrentMatrixID<ZQMatrix> keep(this);
  if (getMatrixAILevel() != 1) {
    dbPrintf(0, "updateMatrixFromBasicLevel: matrixAILevel %d unexpected.\n", getMatrixAILevel());
    return 0;
  }
  if (getIsPhraseMatrix() != 1) {
    dbPrintf(0, "updateMatrixFromBasicLevel: cannot process a non-phrase matrix\n");
    return 0;
  }
  DerivedSymbols symbols;
  symbols.entries.reset(getNextLevelSymbolsFromOriginalObjects(sequence, length, &symbols.count, &symbols.numberOfUnknown,
                                                               &symbols.numberOfPredefined));
  dbPrintf(3, "updateMatrixFromBasicLevel: numberOfSymbols: %d, numberOfUnknownSymbols: %d, numberOfPredefinedSymbols: %d\n",
           symbols.count, symbols.numberOfUnknown, symbols.numberOfPredefined);
  if (symbols.numberOfUnknown > 0) {
    dbPrintf(0,
             "####warning: updateMatrixFromBasicLevel: getSymbols..(): numberOfUnknownSymbols = %d (maxSeqLentgh too small "
             ")###########\n",
             symbols.numberOfUnknown);
  }
  if (symbols.entries == nullptr) return 0;

  const int levelUp = enterLevelUp();
  if (levelUp < 0) return 0;
  const int result = updateMatrixWithLongINTSequenceExt(symbols.entries.get(), symbols.count, ZQMatrixTypeIntegerSeries, 1,
                                                        ZQPreProcessingTypeNone, 0);
  if (result < 1) return result;
  setCurrentMatrixID(basicID);
  return refreshSymbolDownLinkHandles(sequence, length, levelUp, symbols, result);
}
