#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

const MusicProfileTexts midiProfileTexts = {
    "updateMatrixWithMidiFile",
    {"checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta",
     "checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta",
     "checkGlobalMatrixPropertiesForMIDIElementsTriple_NDMT", "checkGlobalMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS"},
    false,
};

NameOfLearnedTrack nameOfLearnedTrack(int matrixID, const LearnedTrack& track, int style) {
  NameOfLearnedTrack name;
  snprintf(name.text, sizeof name.text, "MatID%d: %d/%d, %s, %s, %s (track%d): ", matrixID, track.nom, track.denom,
           nameOfMidiSubType(track.subType), nameOfMusicStyle(style), nameOfSoundID(track.sound), track.index);
  return name;
}

bool dimensionFitsMidi(int preProcessingType, int coordinateDimension) {
  switch (preProcessingType) {
    case 1:
    case ZQPreProcessingTypeMidiNoteAndModQuanta:
    case ZQPreProcessingTypeMidiTriple_NDMT:
    case ZQPreProcessingTypeMidiGMQuadruple_NDMTS:
      return coordinateDimension == coordinatesOfNote(preProcessingType);
    default:
      return true;
  }
}

}  // namespace zmatrix
