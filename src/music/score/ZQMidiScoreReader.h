// The exact reading of Standard MIDI Files: every note with its time as a fraction, whatever the division of the file. The format
// is Standard MIDI Files 1.0, in a RIFF wrapping too. What files leave open or get wrong is decided so:
//
// - A part is a channel of a track. Notes are paired within their track, the first note-on of a channel and key with the first
//   note-off.
// - A channel has one program at a time, whichever track sets it: the latest change counts, and of those at one time the own
//   track's. The tracks of format 2 are pieces of their own, which follow each other.
// - Seconds (a division in frames) are written down at 120 quarter notes a minute; tempi say nothing there.
// - Running status goes on behind meta and system events, where the format ends it: some writers count on that.
// - A track chunk that is longer than the file ends with its end-of-track event. Everything else keeps to the length of its
// chunk.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

zq_Score* createScoreFromMidiFile(const char* path);
zq_Score* createScoreFromMidiData(const unsigned char* bytes, long long numberOfBytes);

}  // namespace zmatrix
