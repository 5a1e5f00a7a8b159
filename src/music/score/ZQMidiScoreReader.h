// The exact reading of Standard MIDI Files: every note with its time as a fraction, for any division of the file. The format is
// Standard MIDI Files 1.0, also inside RIFF. Decisions where files are ambiguous or faulty:
//
// - A part is a channel of a track. Notes are paired within their track, the first note-on of a channel and key with the first
//   note-off.
// - A channel has one program at a time, set by any track: the latest change applies, and of several at the same time that of the
//   note's own track. The tracks of format 2 are separate pieces, one after the other.
// - With a division in frames, seconds are converted at 120 quarter notes per minute; tempi are ignored.
// - Running status continues behind meta and system events, where the format ends it: some writers depend on that.
// - A track chunk that is longer than the file ends with its end-of-track event. All other chunks end by their length.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

[[nodiscard]] zq_Score* createScoreFromMidiFile(const char* path);
[[nodiscard]] zq_Score* createScoreFromMidiData(const unsigned char* bytes, long long numberOfBytes);

}  // namespace zmatrix
