#include "music/midi/ZQMidiTrackJudge.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

const MidiFeedTexts mediumMidiFeedTexts = {
    0,
    "Producer: %d-Bit Mac OS, (CPP-Version), MIDI Data read fromFile ***************",
    "updateMatrixWithMIDIFile: warning: suspicious coordDimension, should 2 be 3!: %d\n",
    true,
    "updateMatrixMIDIKernFile: illegal coordDimension, should be 3!: %d\n",
    "updateMatrixMIDIKernFile: illegal coordDimension, should be 4!: %d\n",
};

const MidiFeedTexts fullMidiFeedTexts = {
    1,
    "Producer: %d-Bit Mac Intel OS, (CPP-Version), MIDI Data read fromFile ***************",
    "updateMatrixWithMIDIFile: warning: suspicious preprocessingType: %d\n",
    false,
    "updateMatrixMIDIFile: illegal coordDimension, should be 3!: %d\n",
    "updateMatrixMIDIFile: illegal coordDimension, should be 4!: %d\n",
};

int coordinatesOfNote(int preProcessingType) {
  if (preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS) return 4;
  return preProcessingType == ZQPreProcessingTypeMidiTriple_NDMT ? 3 : 2;
}

MidiFeedSettings midiSettingsFor(int preProcessingType) {
  const int coordinates = coordinatesOfNote(preProcessingType);
  const int matrixType = coordinates == 4   ? ZQMatrixTypeMIDIGMQuadruple_NDMTS
                         : coordinates == 3 ? ZQMatrixTypeMIDITriple_NDMT
                                            : ZQMatrixTypeMIDINoteAndQuanta;
  return {preProcessingType, coordinates, matrixType};
}

MidiTrackJudge::MidiTrackJudge(const ZQMidiTrackList& list, const MidiFeedSettings& startSettings, int threshold,
                               const char* fileName, const MidiFeedTexts& texts)
    : start(startSettings), present(startSettings), chordThreshold(threshold), file(fileName), sentences(texts) {
  signatures = list.getMidiTimeSignatureFromTrackList(&nom, &denom);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool MidiTrackJudge::findLength() {
  const int type = present.preProcessingType, dimension = present.coordinateDimension;
  const bool isPair = type == 1 || type == ZQPreProcessingTypeMidiNoteAndModQuanta;
  const bool isKnown = isPair || type == ZQPreProcessingTypeMidiTriple_NDMT || type == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
  if (!isKnown) {
    dbPrintf(0, sentences.suspiciousSettings, sentences.suspiciousSettingsShowDimension ? dimension : type);
    return true;
  }
  if (dimension != coordinatesOfNote(type)) {
    static constexpr ZQSentence<int> dimensionIsNotTwo = "updateMatrixWithMIDIFile: illegal coordDimension, should be 2!: %d\n";
    dbPrintf(0,
             isPair                                       ? dimensionIsNotTwo
             : type == ZQPreProcessingTypeMidiTriple_NDMT ? sentences.dimensionIsNotThree
                                                          : sentences.dimensionIsNotFour,
             dimension);
    return false;
  }
  length = static_cast<long long>(notes) * dimension;
  return true;
}

bool MidiTrackJudge::isToBeUpgraded() const {
  return percussion == 1 && start.preProcessingType != ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

bool MidiTrackJudge::isToBeDowngraded() const {
  return sounds <= 1 && sound != drumSound && start.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

MidiTrackVerdict MidiTrackJudge::takeUp(const ZQMidiObjectTrack* nextTrack, int index) {
  track = nextTrack;
  trackIndex = index;
  notes = track == nullptr ? 0 : static_cast<int>(std::count_if(track->begin(), track->end(), [](const ZQMidiObject* object) {
    return object != nullptr && object->isNote();
  }));
  sounds = mainSound = sound = percussion = 0;
  if (notes < 2) return MidiTrackVerdict::tooFewNotes;
  if (!findLength()) return MidiTrackVerdict::wrongDimension;
  mainSound = track->getMidiSoundIDFromMidiObjectTrack(&sounds, &percussion);
  sound = sounds == 1 ? mainSound : ZQMatrixSoundUndefined;
  if (sound == ZQMatrixSoundPercussive || sound == ZQMatrixSoundEffects) {
    dbPrintf(1, "discarding track with ID %d (contains only percussion notes)\n", trackIndex);
    return MidiTrackVerdict::onlyPercussionSound;
  }
  if (isToBeUpgraded()) {
    dbPrintf(1, "upgrade track with ID %d to ZQMatrixTypeMIDIGMQuadruple_NDMTS\n", trackIndex);
    present = quadrupleSettings;
    length = 4LL * notes;
  }
  if (isToBeDowngraded()) {
    dbPrintf(1, "downgrade track with ID %d to ZQMatrixTypeMIDITriple_NDMT\n", trackIndex);
    present = tripleSettings;
    length = 3LL * notes;
  }
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict MidiTrackJudge::findMeter() {
  bool hasMeter;
  if (signatures == 0) {
    subTypeOfTrack = track->getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(&nom, &denom, chordThreshold, &percussion);
    hasMeter = nom != 0 && denom != 0;
  } else {
    int chordSize = 0;
    subTypeOfTrack = track->getMidiSubTypeFromMidiObjectTrack(&chordSize, chordThreshold, &percussion);
    hasMeter = signatures == 1;
  }
  if (!hasMeter) {
    dbPrintf(0, "updateMatrixWithMIDIFile: error: ambigous or no time signature in Midi file detected (%d items).\n", signatures);
    dbPrintf(0, "discarding track %d of file %s\n", trackIndex, file);
    return signatures == 0 ? MidiTrackVerdict::noMeter : MidiTrackVerdict::severalMeters;
  }
  signatures = 1;
  if (denom >= 2 && denom <= 16) return MidiTrackVerdict::taken;
  dbPrintf(0, "updateMatrixWithMidiFile: suspicious signature %d/%d in file %s (discarded)\n", nom, denom, file);
  dbPrintf(0, "discarding track %d of file %s\n", trackIndex, file);
  return MidiTrackVerdict::meterOutOfRange;
}

void MidiTrackJudge::finish() {
  if (isToBeUpgraded()) {
    present.preProcessingType = start.preProcessingType;
    present.matrixType = start.matrixType;
    if (start.preProcessingType == ZQPreProcessingTypeMidiTriple_NDMT) {
      present.coordinateDimension = 3;
    } else if (start.preProcessingType == ZQPreProcessingTypeMidiNoteAndModQuanta) {
      present.coordinateDimension = 2;
    } else {
      dbPrintf(0, "updateMatrixWithMidiFile: unexpected preprocessingType\n");
    }
  }
  if (isToBeDowngraded()) present = quadrupleSettings;
}

}  // namespace zmatrix
