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
    : start(startSettings), present(startSettings), file(fileName), sentences(texts) {
  signatures = list.getKernTimeSignatureFromTrackList(&nom, &denom);
}

/// Sets the number of integers of the sequence. With an unknown type the length of the track before is kept.
bool KernTrackJudge::findLength() {
  const int type = present.preProcessingType, dimension = present.coordinateDimension;
  const bool isQuadruple = type == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
  if (type != 1 && type != ZQPreProcessingTypeMidiNoteAndModQuanta && type != ZQPreProcessingTypeMidiTriple_NDMT &&
      !isQuadruple) {
    dbPrintf(0, sentences.suspiciousSettings, sentences.suspiciousSettingsShowDimension ? dimension : type);
    return true;
  }
  if (isQuadruple) warnAboutQuadruples();
  if (dimension != coordinatesOfNote(type)) {
    dbPrintf(0, "updateMatrixWithKernFile: illegal coordDimension, should be %d!: %d\n", coordinatesOfNote(type), dimension);
    return false;
  }
  length = static_cast<long long>(notes) * dimension;
  return true;
}

bool KernTrackJudge::isToBeDowngraded() const {
  return sounds <= 1 && start.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
}

MidiTrackVerdict KernTrackJudge::takeUp(const ZQKernObjectTrack* nextTrack, int index) {
  track = nextTrack;
  trackIndex = index;
  notes = track == nullptr ? 0 : static_cast<int>(std::count_if(track->begin(), track->end(), [](const ZQKernObject* object) {
    return object->isNote();
  }));
  if (notes < 2) return MidiTrackVerdict::tooFewNotes;
  if (!findLength()) return MidiTrackVerdict::wrongDimension;
  // The sound of a kern track is its channel number.
  const int mainSound = track->getMidiSoundIDFromKernObjectTrack(&sounds);
  sound = sounds == 1 ? mainSound : ZQMatrixSoundUndefined;
  if (isToBeDowngraded()) {
    dbPrintf(1, "downgrade track with ID %d to ZQMatrixTypeMIDITriple_NDMT\n", trackIndex);
    present = tripleSettings;
    length = 3LL * notes;
  }
  return MidiTrackVerdict::taken;
}

MidiTrackVerdict KernTrackJudge::findMeter() {
  bool hasMeter;
  if (signatures == 0) {
    dbPrintf(1, "updateMatrixWithKernFile: warning: no time signature detected from kernFile %s\n", file);
    subTypeOfTrack = track->getKernTimeSignatureAndSubTypeFromKernObjectTrack(&nom, &denom);
    hasMeter = nom != 0 && denom != 0;
  } else {
    int chordSize = 0;
    subTypeOfTrack = track->getMidiSubTypeFromKernObjectTrack(&chordSize);
    hasMeter = signatures == 1;
  }
  if (!hasMeter) {
    dbPrintf(0, "updateMatrixWithKernFile: error: ambigous or no time signature in kern file detected (%d items).\n", signatures);
    dbPrintf(0, "discarding track %d in file %s\n", trackIndex, file);
    return signatures == 0 ? MidiTrackVerdict::noMeter : MidiTrackVerdict::severalMeters;
  }
  if (denom >= 2 && denom <= 16) return MidiTrackVerdict::taken;
  dbPrintf(0, "updateMatrixWithKernFile: suspicious signature %d/%d in file %s (discarded)\n", nom, denom, file);
  dbPrintf(0, "discarding track %d of file %s\n", trackIndex, file);
  signatures = 1;
  return MidiTrackVerdict::meterOutOfRange;
}

void KernTrackJudge::finish() {
  signatures = 1;
  if (isToBeDowngraded()) present = quadrupleSettings;
}

}  // namespace zmatrix
