#include "music/kern/ZQKernTrackJudge.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

namespace {

void warnAboutQuadruples() {
  dbPrintf(1, "warning: updateMatrixWithKernFile: preProcessingType is ZQPreProcessingTypeMidiGMQuadruple_NDMTS!\n");
  dbPrintf(1, "         channelIDs are interpreted as soundIDs; The sound IDs will not ne correct.\n");
  dbPrintf(1, "         do not feed the matrix this way with more than 1 kernfile, because different instruments\n");
  dbPrintf(1, "         (and thus matrixIDs) would be mixed up. Solution: Parsing the proper instrument from tghe file\n");
}

}  // namespace

const KernFeedTexts mediumKernFeedTexts = {
    "Producer: %d-Bit Mac OS, (CPP-Version), KERN Data read fromFile ***************",
    "updateMatrixWithKernFile: warning: suspicious coordDimension, should 2 be 3!: %d\n",
    true,
    "Please restart lattix01 and set maxnumber of matrices to > %d!",
};

const KernFeedTexts fullKernFeedTexts = {
    "Producer: %d-Bit Mac OS Intel, (CPP-Version), KERN Data read fromFile ***************",
    "updateMatrixWithKernFile: warning: suspicious preprocessingType: %d\n",
    false,
    "Please restart and set maxnumber of matrices to > %d!",
};

KernTrackJudge::KernTrackJudge(const ZQKernTrackList& list, const MidiFeedSettings& startSettings, const char* fileName,
                               const KernFeedTexts& texts)
    : start_(startSettings), present_(startSettings), file_(fileName), sentences_(texts) {
  signatures_ = list.getKernTimeSignatureFromTrackList(&nom_, &denom_);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool KernTrackJudge::findLength() {
  const int type = present_.preProcessingType, dimension = present_.coordinateDimension;
  const bool isQuadruple = type == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
  if (type != 1 && type != ZQPreProcessingTypeMidiNoteAndModQuanta && type != ZQPreProcessingTypeMidiTriple_NDMT &&
      !isQuadruple) {
    dbPrintf(0, sentences_.suspiciousSettings, sentences_.suspiciousSettingsShowDimension ? dimension : type);
    return true;
  }
  if (isQuadruple) warnAboutQuadruples();
  if (dimension != coordinatesOfNote(type)) {
    dbPrintf(0, "updateMatrixWithKernFile: illegal coordDimension, should be %d!: %d\n", coordinatesOfNote(type), dimension);
    return false;
  }
  length_ = static_cast<long long>(notes_) * dimension;
  return true;
}

bool KernTrackJudge::isToBeDowngraded() const {
  return sounds_ <= 1 && start_.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

MidiTrackVerdict KernTrackJudge::takeUp(const ZQKernObjectTrack* nextTrack, int index) {
  track_ = nextTrack;
  trackIndex_ = index;
  notes_ = track_ == nullptr ? 0 : static_cast<int>(std::count_if(track_->begin(), track_->end(), [](const ZQKernObject* object) {
    return object->isNote();
  }));
  if (notes_ < 2) return MidiTrackVerdict::tooFewNotes;
  if (!findLength()) return MidiTrackVerdict::wrongDimension;
  // The sound of a kern track is its channel number.
  const int mainSound = track_->getMidiSoundIDFromKernObjectTrack(&sounds_);
  sound_ = sounds_ == 1 ? mainSound : ZQMatrixSoundUndefined;
  if (isToBeDowngraded()) {
    dbPrintf(1, "downgrade track with ID %d to ZQMatrixTypeMIDITriple_NDMT\n", trackIndex_);
    present_ = tripleSettings;
    length_ = 3LL * notes_;
  }
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict KernTrackJudge::findMeter() {
  bool hasMeter;
  if (signatures_ == 0) {
    dbPrintf(1, "updateMatrixWithKernFile: warning: no time signature detected from kernFile %s\n", file_);
    subTypeOfTrack_ = track_->getKernTimeSignatureAndSubTypeFromKernObjectTrack(&nom_, &denom_);
    hasMeter = nom_ != 0 && denom_ != 0;
  } else {
    int chordSize = 0;
    subTypeOfTrack_ = track_->getMidiSubTypeFromKernObjectTrack(&chordSize);
    hasMeter = signatures_ == 1;
  }
  if (!hasMeter) {
    dbPrintf(0, "updateMatrixWithKernFile: error: ambigous or no time signature in kern file detected (%d items).\n",
             signatures_);
    dbPrintf(0, "discarding track %d in file %s\n", trackIndex_, file_);
    return signatures_ == 0 ? MidiTrackVerdict::noMeter : MidiTrackVerdict::severalMeters;
  }
  if (denom_ >= 2 && denom_ <= 16) return MidiTrackVerdict::taken;
  dbPrintf(0, "updateMatrixWithKernFile: suspicious signature %d/%d in file %s (discarded)\n", nom_, denom_, file_);
  dbPrintf(0, "discarding track %d of file %s\n", trackIndex_, file_);
  signatures_ = 1;
  return MidiTrackVerdict::meterOutOfRange;
}

void KernTrackJudge::finish() {
  signatures_ = 1;
  if (isToBeDowngraded()) present_ = quadrupleSettings;
}

}  // namespace zmatrix
