#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

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
