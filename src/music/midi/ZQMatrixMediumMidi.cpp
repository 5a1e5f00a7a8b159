// MIDI methods of the medium tier: instances of the shared templates.
#include "music/midi/ZQMidiFeed.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

template <>
struct MidiTier<ZQMatrixMedium> {
  static constexpr const MidiFeedTexts& texts = mediumMidiFeedTexts;
  static constexpr bool reportsBatch = true;

  static void reportNoFreeMatrix(const char*, int nom, int denom) {
    dbPrintf(0, "updateMatrixWithMidiFile: could not find a free matrixID for timeSignature %d/%d\n", nom, denom);
  }

  /// Adds the track and the name of its file to the history of the sub-matrix.
  static void addFileName(ZQMatrixMediumInfo* info, const NameOfLearnedTrack& entry, const char* fileName) {
    addNameOfLearnedTrack(info, entry, fileName);
  }

  static int updateWithSequence(ZQMatrixMedium* matrix, const int* sequence, int length, const int*) {
    const auto* info = matrix->getMatrixInfo();
    int numberOfProcessedVectors = 0, numberOfOverwrites = 0;
    return matrix->updateMatrixWithCombinedSequenceDebug(sequence, length, info->getMatrixType(), info->getCoordinateDimension(),
                                                         info->getPreProcessingType(), 0, &numberOfProcessedVectors,
                                                         &numberOfOverwrites, nullptr, nullptr, nullptr);
  }
};

}  // namespace zmatrix

int ZQMatrixMedium::updateMatrixWithMIDIFile(const char* fileName, int* numberOfNotes) {
  return zmatrix::updateMatrixWithMIDIFileIn(this, fileName, numberOfNotes);
}

int ZQMatrixMedium::updateMatrixWithMIDIFiles(const char* path, int recursive, int* numberOfNotes) {
  return zmatrix::updateMatrixWithMIDIFilesIn(this, path, recursive, numberOfNotes);
}

int ZQMatrixMedium::updateMatrixWithLongMIDISequence(const int* sequence, int numberOfItems) {
  return zmatrix::updateMatrixWithLongMIDISequenceIn(this, sequence, numberOfItems, nullptr);
}

int ZQMatrixMedium::quantizeNoteOnQuantaTime(int quanta) {
  return zmatrix::noteOnOnGrid(quanta, getMidiNoteOnQuantization());
}

int ZQMatrixMedium::quantizeDurationQuantaTime(int quanta) {
  return zmatrix::durationOnGrid(quanta, getMidiDurationQuantization());
}

int ZQMatrixMedium::getMatrixIDForMidiTimeSignature(int type, int nom, int denom) {
  return zmatrix::getMatrixIDForMidiIn(this, type, nom, denom, 0, 0, 0);
}

int ZQMatrixMedium::getMatrixIDForMidiTimeSignatureAndSubType(int type, int nom, int denom, int subType) {
  return zmatrix::getMatrixIDForMidiIn(this, type, nom, denom, subType, 0, 0);
}

int ZQMatrixMedium::getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyle(int type, int nom, int denom, int subType,
                                                                           ZQMatrixMusicStyle style) {
  return zmatrix::getMatrixIDForMidiIn(this, type, nom, denom, subType, style, 0);
}

int ZQMatrixMedium::getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyleAndSoundID(int type, int nom, int denom, int subType,
                                                                                     ZQMatrixMusicStyle style,
                                                                                     ZQMatrixSoundID sound) {
  return zmatrix::getMatrixIDForMidiIn(this, type, nom, denom, subType, style, sound);
}
