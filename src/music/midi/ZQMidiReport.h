// The report on a MIDI file: the reader, the pairing and the feed's judgement of tracks, run without a matrix.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// Null if memory has run out. The caller releases it with deleteMidiReport.
zq_MidiReport* createMidiReport(const char* path, int preProcessingType, int noteOnQuantization, int midiTrackAnalyze,
                                const unsigned char* channelFilter);
void deleteMidiReport(zq_MidiReport* report);

/// A few words; empty for a number that isn't one.
const char* textOfMidiEnd(int end);
const char* textOfMidiVerdict(int verdict);

}  // namespace zmatrix
