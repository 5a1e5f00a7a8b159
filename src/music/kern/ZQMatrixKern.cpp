// Kern methods of the full tier: instances of the shared templates. No symbols are derived from music; whether pruning keeps
// symbols is set together with the profile, for all four types.
#include "music/kern/ZQKernFeed.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct KernTier<ZQMatrix> {
  static constexpr const KernFeedTexts& texts = fullKernFeedTexts;
  // The last two are not names of methods; hosts expect them so.
  static constexpr MusicProfileTexts profileTexts = {
      "updateMatrixWithKernFile",
      {"checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta",
       "checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta",
       "checkGlobalMatrixPropertiesForMIDIElementsMidiTriple_NDMT",
       "checkGlobalMatrixPropertiesForMIDIElementsMidiGMQuadruple_NDMTs"},
      true,
  };
};

}  // namespace zmatrix

int ZQMatrix::updateMatrixWithKERNFile(const char* fileName, int* numberOfNotes) {
  return zmatrix::updateMatrixWithKERNFileIn(this, fileName, numberOfNotes);
}

int ZQMatrix::updateMatrixWithKERNFiles(const char* path, int recursive, int* numberOfNotes) {
  return zmatrix::updateMatrixWithKERNFilesIn(this, path, recursive, numberOfNotes);
}
