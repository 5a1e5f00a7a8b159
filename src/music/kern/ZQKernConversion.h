// Conversion of a kern file to a MIDI file.
#pragma once

namespace zmatrix {

/// Converts a kern file; faults are only reported as messages. A refused file gives a MIDI file with a tempo and a time signature
/// but no notes. Result: 0 if a name is null, else 1.
int convertKernFileToMidiFile(const char* kernFile, const char* midiFile);

}  // namespace zmatrix
