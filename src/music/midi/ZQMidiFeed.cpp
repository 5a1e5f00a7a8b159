#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

namespace {

constexpr const char* namesOfSubTypes[] = {"Undefined", "Monophon", "Polyphon", "Percussion", "Multichannel"};
constexpr const char* namesOfStyles[] = {"Undefined", "Rock", "Pop", "Jazz", "Classic"};
constexpr int numberOfNames = 5;

}  // namespace

const char* nameOfMidiSubType(int subType) {
  return subType >= 0 && subType < numberOfNames ? namesOfSubTypes[subType] : "";
}

const char* nameOfMusicStyle(int style) {
  return style >= 0 && style < numberOfNames ? namesOfStyles[style] : "";
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
