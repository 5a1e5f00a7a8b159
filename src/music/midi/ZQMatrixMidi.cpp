// MIDI methods of the full tier: instances of the shared templates. No symbols are derived from music.
#include "music/midi/ZQMidiFeed.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct MidiTier<ZQMatrix> {
  static constexpr const MidiFeedTexts& texts = fullMidiFeedTexts;
  static constexpr bool reportsBatch = false;

  static void reportNoFreeMatrix(const char* fileName, int nom, int denom) {
    dbPrintf(0, "updateMatrixWithMidiFile (%s): could not find a free matrixID for timeSignature %d/%d\n", fileName, nom, denom);
  }

  static void addFileName(ZQMatrixInfo* info, const NameOfLearnedTrack&, const char* fileName) {
    info->addNameOfUpdateFile(fileName);
  }

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
