#include "music/midi/ZQTrackJudge.h"

namespace zmatrix {

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

bool TrackJudge::isOfNotes() const {
  const int type = present_.preProcessingType;
  if (type == 1 || (type >= ZQPreProcessingTypeMidiNoteAndModQuanta && type <= ZQPreProcessingTypeMidiGMQuadruple_NDMTS))
    return true;
  dbPrintf(0, suspiciousSettings_.text, suspiciousSettings_.showsDimension ? present_.coordinateDimension : type);
  return false;
}

void TrackJudge::switchTo(const MidiFeedSettings& settings) {
  const bool isUpgrade = settings.coordinateDimension == quadrupleSettings.coordinateDimension;
  dbPrintf(1,
           isUpgrade ? "upgrade track with ID %d to ZQMatrixTypeMIDIGMQuadruple_NDMTS\n"
                     : "downgrade track with ID %d to ZQMatrixTypeMIDITriple_NDMT\n",
           trackIndex_);
  present_ = settings;
  setLength();
}

MidiTrackVerdict TrackJudge::judgeMeter() {
  const bool hasMeter = signatures_ == 0 ? nom_ != 0 && denom_ != 0 : signatures_ == 1;
  if (!hasMeter) {
    dbPrintf(0, meterTexts_.ambiguous, signatures_);
    dbPrintf(0, meterTexts_.discardedForAmbiguity, trackIndex_, file_);
    return signatures_ == 0 ? MidiTrackVerdict::noMeter : MidiTrackVerdict::severalMeters;
  }
  signatures_ = 1;
  if (denom_ >= 2 && denom_ <= 16) return MidiTrackVerdict::taken;
  dbPrintf(0, meterTexts_.suspicious, nom_, denom_, file_);
  dbPrintf(0, "discarding track %d of file %s\n", trackIndex_, file_);
  return MidiTrackVerdict::meterOutOfRange;
}

}  // namespace zmatrix
