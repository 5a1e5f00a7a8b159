// Arranges a kern file that was read as one track into tracks by channel, for the feed and for the conversion to MIDI.
#pragma once

#include "music/kern/ZQKernTrackList.h"

namespace zmatrix {

/// A new list, filled from a kern file, or null if memory runs out. Messages begin with the name of the caller.
ZQKernTrackList* readKernTrackList(const char* fileName, const char* caller);

/// Moves the notes and note-offs of track 0 to one track per channel, made when the channel's first note comes, and makes track 0
/// begin with a tempo and a time signature at time 0. `channelFilter`: null, or 16 values; the notes of a channel whose value is
/// not 0 stay in track 0. False if memory runs out.
[[nodiscard]] bool arrangeKernTracks(ZQKernTrackList* list, const unsigned char* channelFilter, const char* caller);

/// Appends a track with all objects of the tracks from 1 on, in order of time: for `trackAnalyze` 1 it replaces these tracks, for
/// 2 it holds copies and is added, also to a single track. Other values change nothing. False if memory runs out.
[[nodiscard]] bool mergeKernTracks(ZQKernTrackList* list, int trackAnalyze);

}  // namespace zmatrix
