#include "music/kern/ZQKernTrackJudge.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

namespace {

constexpr MeterTexts meterTexts = {
    "updateMatrixWithKernFile: error: ambigous or no time signature in kern file detected (%d items).\n",
    "discarding track %d in file %s\n",
    "updateMatrixWithKernFile: suspicious signature %d/%d in file %s (discarded)\n",
};

void warnAboutQuadruples() {
  dbPrintf(1, "warning: updateMatrixWithKernFile: preProcessingType is ZQPreProcessingTypeMidiGMQuadruple_NDMTS!\n");
  dbPrintf(1, "         channelIDs are interpreted as soundIDs; The sound IDs will not ne correct.\n");
  dbPrintf(1, "         do not feed the matrix this way with more than 1 kernfile, because different instruments\n");
  dbPrintf(1, "         (and thus matrixIDs) would be mixed up. Solution: Parsing the proper instrument from tghe file\n");
}

}  // namespace

const KernFeedTexts mediumKernFeedTexts = {
    "Producer: %d-Bit Mac OS, (CPP-Version), KERN Data read fromFile ***************",
    {"updateMatrixWithKernFile: warning: suspicious coordDimension, should 2 be 3!: %d\n", true},
    "Please restart lattix01 and set maxnumber of matrices to > %d!",
};

const KernFeedTexts fullKernFeedTexts = {
    "Producer: %d-Bit Mac OS Intel, (CPP-Version), KERN Data read fromFile ***************",
    {"updateMatrixWithKernFile: warning: suspicious preprocessingType: %d\n", false},
    "Please restart and set maxnumber of matrices to > %d!",
};

KernTrackJudge::KernTrackJudge(const ZQKernTrackList& list, const MidiFeedSettings& startSettings, const char* fileName,
                               const KernFeedTexts& texts)
    : TrackJudge(startSettings, fileName, texts.suspiciousSettings, meterTexts) {
  signatures_ = list.getKernTimeSignatureFromTrackList(&nom_, &denom_);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool KernTrackJudge::findLength() {
  if (!isOfNotes()) return true;
  const int type = present_.preProcessingType;
  if (type == ZQPreProcessingTypeMidiGMQuadruple_NDMTS) warnAboutQuadruples();
  if (!hasDimensionOfNotes()) {
    dbPrintf(0, "updateMatrixWithKernFile: illegal coordDimension, should be %d!: %d\n", coordinatesOfNote(type),
             present_.coordinateDimension);
    return false;
  }
  setLength();
  return true;
}

bool KernTrackJudge::isToBeDowngraded() const {
  return sounds_ <= 1 && startsWithQuadruples();
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
  if (isToBeDowngraded()) switchTo(tripleSettings);
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict KernTrackJudge::findMeter() {
  if (signatures_ == 0) {
    dbPrintf(1, "updateMatrixWithKernFile: warning: no time signature detected from kernFile %s\n", file_);
    subTypeOfTrack_ = track_->getKernTimeSignatureAndSubTypeFromKernObjectTrack(&nom_, &denom_);
  } else {
    int chordSize = 0;
    subTypeOfTrack_ = track_->getMidiSubTypeFromKernObjectTrack(&chordSize);
  }
  return judgeMeter();
}

void KernTrackJudge::finish() {
  if (isToBeDowngraded()) present_ = quadrupleSettings;
}

}  // namespace zmatrix
