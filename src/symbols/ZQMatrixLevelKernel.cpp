// Sets the kernels of all levels from one start: each level gets the symbols derived from the start of the level below.
#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQKernel.h"
#include "store/ZQKeepCurrentMatrixID.h"
#include "symbols/ZQMatrix.h"

using zmatrix::KeepCurrentMatrixID;
using zmatrix::KernelSetting;
using zmatrix::SystemOwned;

namespace {

constexpr int highestAILevel = 1;

}  // namespace

int ZQMatrix::initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int flag) {
  if (getMatrixAILevel() > highestAILevel) {
    dbPrintf(0, "initializeKernelSequenceWithOriginalSequence: error: version does not allow AI level > %d!\n", highestAILevel);
    return -1;
  }
  const int startID = currentMatrixId_;
  int level = getActualAILevelIndex();
  const int targetLevel = flag == 1 ? getMatrixAILevel() : level;
  if (level > targetLevel) return getLengthOfKernelOriginalSequence();

  const int highest = getHighestOccupiedMatrixID();
  const KeepCurrentMatrixID<ZQMatrix> keep(this);
  SystemOwned<int> symbols;
  int id = startID;
  while (id <= highest) {
    if (id != startID) {
      symbols.reset(deriveSymbolsOfStart(sequence, length, &length));
      sequence = symbols.get();
      setCurrentMatrixID(id);
    }
    // A reset sets the kernel to the root of the level at which the call began, also in the levels above.
    const KernelSetting setting = zmatrix::ZQKernel(*this).setFromOriginal(sequence, length, {startID, flag, true});
    if (!setting.followsSequence) return setting.result;
    id = getMatrixInfo()->getCurrentMatrixIDLevelUp();
    if (id < 0 || level >= targetLevel) return getMatrixInfo(startID)->getLengthOfKernelOriginalSequence();
    ++level;
  }
  dbPrintf(0,
           "initializeKernelSequenceWithOriginalSequence: error: matrix does not contain symbol sub-matrix with id %d for level "
           "%d!\n",
           id, level);
  return -1;
}

int* ZQMatrix::deriveSymbolsOfStart(const int* sequence, int length, int* numberOfSymbols) {
  int numberOfUnknown = 0, numberOfPredefined = 0;
  int* symbols = deriveSymbols(sequence, length, numberOfSymbols, &numberOfUnknown, &numberOfPredefined);
  if (numberOfUnknown > 0) {
    dbPrintf(0, "initializeKernelWithOriginalSequence: numberOfUnknown Symbols: %d\n", numberOfUnknown);
  }
  if (numberOfPredefined > 0) {
    dbPrintf(0, "initializeKernelWithOriginalSequence: numberOfPredefined Symbols: %d\n", numberOfPredefined);
  }
  return symbols;
}
