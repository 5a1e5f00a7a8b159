// Markers of the begin and the end of each word of a text, by which learning assigns symbols to words.
#include <algorithm>
#include <cstdio>

#include "frame/ZQMemory.h"
#include "frame/ZQProgress.h"
#include "frame/ZQTextCharacters.h"
#include "symbols/ZQMatrix.h"
#include "symbols/ZQWordMarkers.h"

using zmatrix::isWhiteCharacter;

int* ZQMatrix::getSymbolMarkersFromPreProcessedCombinedSequence(const int* sequence, int length, int* numberOfSymbols) {
  *numberOfSymbols = 0;
  if (getMatrixInfo()->getMatrixType() != ZQMatrixTypeANSIText) {
    dbPrintf(5,
             "matrixID %d: getSymbolMarkersFromPreProcessedCombinedSequence: currently only available for matrixType 3 (ANSI)\n",
             currentMatrixId_);
    return nullptr;
  }
  if (sequence == nullptr || length < 1) return nullptr;
  int* markers = systemMallocArray<int>(length);
  if (markers == nullptr) return nullptr;
  std::fill_n(markers, length, 0);
  snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "%s",
           "getSymbolMarkersFromPreProcessedCombinedSequence");
  for (int i = 0; i < length; ++i) {
    if (isWhiteCharacter(sequence[i])) continue;
    markers[i] |= zmatrix::beginsWord;
    while (i + 1 < length && !isWhiteCharacter(sequence[i + 1])) ++i;
    markers[i] |= zmatrix::endsWord;
    ++*numberOfSymbols;
    matrixProgressDisplay(i, length);
  }
  return markers;
}
