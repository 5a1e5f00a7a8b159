#include "symbols/ZQWordsUpdate.h"

#include "frame/ZQSystemOwned.h"
#include "sequence/ZQUpdateWorker.h"
#include "symbols/ZQFullTier.h"

namespace zmatrix {

namespace {

constexpr int firstItemOfWord = 1;
constexpr int lastItemOfWord = 2;

/// Learns each word of a preprocessed text as a run of its own, so that no phrase crosses a word's end. A word's markers, cut out
/// with it, give it its symbol.
int learnEachWord(ZQMatrix& matrix, const int* items, const int* markers, int numberOfItems) {
  int result = 1;
  for (int first = 0; first < numberOfItems && result == 1; ++first) {
    if ((markers[first] & firstItemOfWord) == 0) continue;
    int last = first;
    while (last + 1 < numberOfItems && (markers[last] & lastItemOfWord) == 0) ++last;
    result = learnPreProcessed(matrix, items + first, last - first + 1, {}, markers + first);
    first = last;
  }
  return result;
}

bool takesWords(ZQMatrix& matrix) {
  const ZQMatrixInfo& info = *matrix.getMatrixInfo();
  return info.getMatrixType() == ZQMatrixTypeANSIText && info.getCoordinateDimension() == 1 && matrix.getMatrixAILevel() == 1;
}

/// What a learned text leaves in the record and the header.
void keepBooks(ZQMatrix& matrix) {
  ZQMatrixInfo& info = *matrix.getMatrixInfo();
  info.setHasBeenChanged(1);
  info.incrementUpdateIndex();
  matrix.getMatrixFileHeader()->incrementNumberOfMatrixUpdates();
  if (info.getAddUpdateInfo() == 1) matrix.updateNumberOfAppendedMatrices();
}

}  // namespace

int updateMatrixWithWordsOfLongANSISequence(ZQMatrix* matrix, const int* sequence, int length) {
  if (sequence == nullptr || length < 1 || !takesWords(*matrix)) return 0;
  ZQMatrixInfo& info = *matrix->getMatrixInfo();
  if (matrix->checkSettingsForUpdateMatrixWithSequence(1, info.getPreProcessingType(), info.getAllowLargeIndices(),
                                                       ZQMatrixTypeANSIText) < 1) {
    return 0;
  }
  if (info.getAddUpdateInfo() == 1) info.generateUpdateInfoSequence(sequence, length);
  int numberOfItems = 0, numberOfWords = 0;
  const SystemOwned<int> items(matrix->getPreProcessedSequenceFromOriginalSequence(sequence, length, &numberOfItems));
  if (items == nullptr) return givesSequence({info.getPreProcessingType(), 1}, length) ? -2 : 0;
  const SystemOwned<int> markers(
      matrix->getSymbolMarkersFromPreProcessedCombinedSequence(items.get(), numberOfItems, &numberOfWords));
  if (markers == nullptr) return numberOfItems > 0 ? -2 : 0;
  const int result = learnEachWord(*matrix, items.get(), markers.get(), numberOfItems);
  if (result < 1) return result;
  keepBooks(*matrix);
  return matrix->updateMatrixFromBasicLevel(sequence, length);
}

}  // namespace zmatrix
