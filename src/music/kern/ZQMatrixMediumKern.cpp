// Kern methods of the medium tier: instances of the shared templates.
#include "music/kern/ZQKernConversion.h"
#include "music/kern/ZQKernFeed.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

template <>
struct KernTier<ZQMatrixMedium> {
  static constexpr const KernFeedTexts& texts = mediumKernFeedTexts;
  static constexpr MusicProfileTexts profileTexts = {
      "updateMatrixWithKernFile",
      {"checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta",
       "checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta",
       "checkGlobalMatrixPropertiesForMIDIElementsTriple_NDMT", "checkGlobalMatrixPropertiesForMIDIElementsGMQuadruple"},
      false,
  };
};

}  // namespace zmatrix

int ZQMatrixMedium::updateMatrixWithKERNFile(const char* fileName, int* numberOfNotes) {
  return zmatrix::updateMatrixWithKERNFileIn(this, fileName, numberOfNotes);
}

int ZQMatrixMedium::updateMatrixWithKERNFiles(const char* path, int recursive, int* numberOfNotes) {
  return zmatrix::updateMatrixWithKERNFilesIn(this, path, recursive, numberOfNotes);
}

int ZQMatrixMedium::convertKERNFileToMIDIFile(const char* kernFile, const char* midiFile) {
  return zmatrix::convertKernFileToMidiFile(kernFile, midiFile);
}
