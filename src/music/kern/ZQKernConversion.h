// Kern as MIDI: the conversion of a file.
#pragma once

namespace zmatrix {

/// Converts a kern file; faults are told by messages alone. A file that is refused gives one of a tempo and a time signature
/// without notes. Result: 0 if a name is null, else 1.
int convertKernFileToMidiFile(const char* kernFile, const char* midiFile);

}  // namespace zmatrix
