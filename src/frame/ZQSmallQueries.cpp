#include "frame/ZQSmallQueries.h"

int getExpectedMatrixMemory(int coordinateDimension, int numberOfItems, int phraseLength, int numberOfSymbols) {
  constexpr int initialBlockSize = 64000;
  if (coordinateDimension < 1 || numberOfItems < 1 || phraseLength < 1 || numberOfSymbols < 0) return 0;
  return initialBlockSize;
}

int sGetNumberOriginalItemsToRestoreFromPreprocessed(int preProcessingType) {
  if (preProcessingType < 0) return 0;
  if (preProcessingType <= 999) return preProcessingType;  // a difference of this order
  return preProcessingType >= 1002 && preProcessingType <= 1004 ? 1 : 0;
}
