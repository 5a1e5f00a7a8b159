// The report on a MIDI file: reader, pairing and track judge of the feed, run without a matrix.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// Null if memory runs out. The caller releases the report with deleteMidiReport.
[[nodiscard]] zq_MidiReport* createMidiReport(const char* path, int preProcessingType, int noteOnQuantization,
                                              int midiTrackAnalyze, const unsigned char* channelFilter);
void deleteMidiReport(zq_MidiReport* report);

/// A short text; empty for an undefined number.
const char* textOfMidiEnd(int end);
const char* textOfMidiVerdict(int verdict);

}  // namespace zmatrix
