// Music of the full tier: the shared telling, instantiated. Symbols are not derived here; whether pruning spares them is set
// along with the profile.
#include "music/midi/ZQMidiFeed.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct MidiTier<ZQMatrix> {
  static constexpr const MidiFeedTexts& texts = fullMidiFeedTexts;
  static constexpr bool batchSpeaks = false;

  static bool keepSymbolsIsLegal(ZQMatrix* matrix) {
    const int keep = matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements();
    return keep == 0 || keep == 1;
  }

  static void keepSymbols(ZQMatrix* matrix, bool fromGlobalBlock) {
    const int keep = fromGlobalBlock ? matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements() : 1;
    matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(keep);
  }

  static void tellNoFreeMatrix(const char* fileName, int nom, int denom) {
    dbPrintf(0, "updateMatrixWithMidiFile (%s): could not find a free matrixID for timeSignature %d/%d\n", fileName, nom, denom);
  }

  static void addFileName(ZQMatrixInfo* info, const char*, const char* fileName) { info->addNameOfUpdateFile(fileName); }

  static int updateWithSequence(ZQMatrix* matrix, const int* sequence, int length, const int* symbolMarkers) {
    const auto* info = matrix->getMatrixInfo();
    return matrix->updateMatrixWithCombinedSequenceDebug(sequence, length, info->getMatrixType(), info->getCoordinateDimension(),
                                                         info->getPreProcessingType(), 0, symbolMarkers, nullptr, nullptr,
                                                         nullptr, nullptr, nullptr);
  }
};

}  // namespace zmatrix

int ZQMatrix::updateMatrixWithMIDIFile(const char* fileName, int* numberOfNotes) {
  return zmatrix::updateMatrixWithMIDIFileIn(this, fileName, numberOfNotes);
}

int ZQMatrix::updateMatrixWithMIDIFiles(const char* path, int recursive, int* numberOfNotes) {
  return zmatrix::updateMatrixWithMIDIFilesIn(this, path, recursive, numberOfNotes);
}

int ZQMatrix::updateMatrixWithLongMIDISequence(const int* sequence, int numberOfItems, const int* symbolMarkers) {
  return zmatrix::updateMatrixWithLongMIDISequenceIn(this, sequence, numberOfItems, symbolMarkers);
}
