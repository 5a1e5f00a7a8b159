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
    : start_(startSettings), present_(startSettings), chordThreshold_(threshold), file_(fileName), sentences_(texts) {
  signatures_ = list.getMidiTimeSignatureFromTrackList(&nom_, &denom_);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool MidiTrackJudge::findLength() {
  const int type = present_.preProcessingType, dimension = present_.coordinateDimension;
  const bool isPair = type == 1 || type == ZQPreProcessingTypeMidiNoteAndModQuanta;
  const bool isKnown = isPair || type == ZQPreProcessingTypeMidiTriple_NDMT || type == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
  if (!isKnown) {
    dbPrintf(0, sentences_.suspiciousSettings, sentences_.suspiciousSettingsShowDimension ? dimension : type);
    return true;
  }
  if (dimension != coordinatesOfNote(type)) {
    static constexpr ZQSentence<int> dimensionIsNotTwo = "updateMatrixWithMIDIFile: illegal coordDimension, should be 2!: %d\n";
    dbPrintf(0,
             isPair                                       ? dimensionIsNotTwo
             : type == ZQPreProcessingTypeMidiTriple_NDMT ? sentences_.dimensionIsNotThree
                                                          : sentences_.dimensionIsNotFour,
             dimension);
    return false;
  }
  length_ = static_cast<long long>(notes_) * dimension;
  return true;
}

bool MidiTrackJudge::isToBeUpgraded() const {
  return percussion_ == 1 && start_.preProcessingType != ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

bool MidiTrackJudge::isToBeDowngraded() const {
  return sounds_ <= 1 && sound_ != drumSound && start_.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

MidiTrackVerdict MidiTrackJudge::takeUp(const ZQMidiObjectTrack* nextTrack, int index) {
  track_ = nextTrack;
  trackIndex_ = index;
  notes_ = track_ == nullptr ? 0 : static_cast<int>(std::count_if(track_->begin(), track_->end(), [](const ZQMidiObject* object) {
    return object != nullptr && object->isNote();
  }));
  sounds_ = mainSound_ = sound_ = percussion_ = 0;
  if (notes_ < 2) return MidiTrackVerdict::tooFewNotes;
  if (!findLength()) return MidiTrackVerdict::wrongDimension;
  mainSound_ = track_->getMidiSoundIDFromMidiObjectTrack(&sounds_, &percussion_);
  sound_ = sounds_ == 1 ? mainSound_ : ZQMatrixSoundUndefined;
  if (sound_ == ZQMatrixSoundPercussive || sound_ == ZQMatrixSoundEffects) {
    dbPrintf(1, "discarding track with ID %d (contains only percussion notes)\n", trackIndex_);
    return MidiTrackVerdict::onlyPercussionSound;
  }
  if (isToBeUpgraded()) {
    dbPrintf(1, "upgrade track with ID %d to ZQMatrixTypeMIDIGMQuadruple_NDMTS\n", trackIndex_);
    present_ = quadrupleSettings;
    length_ = 4LL * notes_;
  }
  if (isToBeDowngraded()) {
    dbPrintf(1, "downgrade track with ID %d to ZQMatrixTypeMIDITriple_NDMT\n", trackIndex_);
    present_ = tripleSettings;
    length_ = 3LL * notes_;
  }
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict MidiTrackJudge::findMeter() {
  bool hasMeter;
  if (signatures_ == 0) {
    subTypeOfTrack_ = track_->getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(&nom_, &denom_, chordThreshold_, &percussion_);
    hasMeter = nom_ != 0 && denom_ != 0;
  } else {
    int chordSize = 0;
    subTypeOfTrack_ = track_->getMidiSubTypeFromMidiObjectTrack(&chordSize, chordThreshold_, &percussion_);
    hasMeter = signatures_ == 1;
  }
  if (!hasMeter) {
    dbPrintf(0, "updateMatrixWithMIDIFile: error: ambigous or no time signature in Midi file detected (%d items).\n",
             signatures_);
    dbPrintf(0, "discarding track %d of file %s\n", trackIndex_, file_);
    return signatures_ == 0 ? MidiTrackVerdict::noMeter : MidiTrackVerdict::severalMeters;
  }
  signatures_ = 1;
  if (denom_ >= 2 && denom_ <= 16) return MidiTrackVerdict::taken;
  dbPrintf(0, "updateMatrixWithMidiFile: suspicious signature %d/%d in file %s (discarded)\n", nom_, denom_, file_);
  dbPrintf(0, "discarding track %d of file %s\n", trackIndex_, file_);
  return MidiTrackVerdict::meterOutOfRange;
}

void MidiTrackJudge::finish() {
  if (isToBeUpgraded()) {
    present_.preProcessingType = start_.preProcessingType;
    present_.matrixType = start_.matrixType;
    if (start_.preProcessingType == ZQPreProcessingTypeMidiTriple_NDMT) {
      present_.coordinateDimension = 3;
    } else if (start_.preProcessingType == ZQPreProcessingTypeMidiNoteAndModQuanta) {
      present_.coordinateDimension = 2;
    } else {
      dbPrintf(0, "updateMatrixWithMidiFile: unexpected preprocessingType\n");
    }
  }
  if (isToBeDowngraded()) present_ = quadrupleSettings;
}

}  // namespace zmatrix
