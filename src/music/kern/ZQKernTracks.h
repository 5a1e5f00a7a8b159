// From the one track of a read kern file to a track for each channel: what the feed and the conversion to MIDI have in common.
#pragma once

#include "music/kern/ZQKernTrackList.h"

namespace zmatrix {

/// A new list, filled from a kern file, or null if memory has run out. Messages begin with the name of the caller.
ZQKernTrackList* readKernTrackList(const char* fileName, const char* caller);

/// Moves the notes and note-offs of track 0 to a track for each channel, which is made when its first note comes, and sees to it
/// that track 0 begins with a tempo and a time signature at time 0. `channelFilter`: 16 values, of which one that is not 0 leaves
/// the notes of its channel in track 0; or null. False if memory has run out.
bool arrangeKernTracks(ZQKernTrackList* list, const unsigned char* channelFilter, const char* caller);

/// Appends a track of all objects of tracks 1 upward in order of time: for `trackAnalyze` 1 in their place, for 2 as copies
/// beside them, also if there is one such track alone. Any other value changes nothing. False if memory has run out.
bool mergeKernTracks(ZQKernTrackList* list, int trackAnalyze);

}  // namespace zmatrix
