#include "music/midi/ZQMidiTrackJudge.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

const MidiFeedTexts mediumMidiFeedTexts = {
    0,
    "Producer: %d-Bit Mac OS, (CPP-Version), MIDI Data read fromFile ***************",
    {"updateMatrixWithMIDIFile: warning: suspicious coordDimension, should 2 be 3!: %d\n", true},
    "updateMatrixMIDIKernFile: illegal coordDimension, should be 3!: %d\n",
    "updateMatrixMIDIKernFile: illegal coordDimension, should be 4!: %d\n",
};

const MidiFeedTexts fullMidiFeedTexts = {
    1,
    "Producer: %d-Bit Mac Intel OS, (CPP-Version), MIDI Data read fromFile ***************",
    {"updateMatrixWithMIDIFile: warning: suspicious preprocessingType: %d\n", false},
    "updateMatrixMIDIFile: illegal coordDimension, should be 3!: %d\n",
    "updateMatrixMIDIFile: illegal coordDimension, should be 4!: %d\n",
};

namespace {

constexpr MeterTexts meterTexts = {
    "updateMatrixWithMIDIFile: error: ambigous or no time signature in Midi file detected (%d items).\n",
    "discarding track %d of file %s\n",
    "updateMatrixWithMidiFile: suspicious signature %d/%d in file %s (discarded)\n",
};

}  // namespace

MidiTrackJudge::MidiTrackJudge(const ZQMidiTrackList& list, const MidiFeedSettings& startSettings, int threshold,
                               const char* fileName, const MidiFeedTexts& texts)
    : TrackJudge(startSettings, fileName, texts.suspiciousSettings, meterTexts), chordThreshold_(threshold), sentences_(texts) {
  signatures_ = list.getMidiTimeSignatureFromTrackList(&nom_, &denom_);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool MidiTrackJudge::findLength() {
  if (!isOfNotes()) return true;
  if (!hasDimensionOfNotes()) {
    static constexpr ZQSentence<int> dimensionIsNotTwo = "updateMatrixWithMIDIFile: illegal coordDimension, should be 2!: %d\n";
    const int coordinates = coordinatesOfNote(present_.preProcessingType);
    dbPrintf(0,
             coordinates == 2   ? dimensionIsNotTwo
             : coordinates == 3 ? sentences_.dimensionIsNotThree
                                : sentences_.dimensionIsNotFour,
             present_.coordinateDimension);
    return false;
  }
  setLength();
  return true;
}

bool MidiTrackJudge::isToBeUpgraded() const {
  return percussion_ == 1 && !startsWithQuadruples();
}

bool MidiTrackJudge::isToBeDowngraded() const {
  return sounds_ <= 1 && sound_ != drumSound && startsWithQuadruples();
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
  if (isToBeUpgraded()) switchTo(quadrupleSettings);
  if (isToBeDowngraded()) switchTo(tripleSettings);
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict MidiTrackJudge::findMeter() {
  if (signatures_ == 0) {
    subTypeOfTrack_ = track_->getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(&nom_, &denom_, chordThreshold_, &percussion_);
  } else {
    int chordSize = 0;
    subTypeOfTrack_ = track_->getMidiSubTypeFromMidiObjectTrack(&chordSize, chordThreshold_, &percussion_);
  }
  return judgeMeter();
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
