// The tracks of one kern file: the one that the reader fills, and those that a feed or a conversion makes of it, a channel each.
// The list owns its tracks.
#pragma once

#include "music/kern/ZQKernObjectTrack.h"

namespace zmatrix {

class ZQKernTrackList {
 public:
  static constexpr int firstCapacity = 4;

  ZQKernTrackList() = default;
  ~ZQKernTrackList() { deleteAllKernObjectTracks(); }

  /// Makes the first, empty track; tracks that were in the list are not released. False if memory has run out.
  bool init();
  /// Appends a track and takes it over; null is ignored. False, and the track still the caller's, if memory has run out.
  bool addKernObjectTrack(ZQKernObjectTrack* track) { return track == nullptr || tracks.add(track); }
  int getNumberOfKernObjectTracks() const { return tracks.getCount(); }
  /// Null outside the range.
  ZQKernObjectTrack* getKernObjectTrackAtIndex(int index) const { return tracks.at(index); }
  /// Inside the range releases the track and its objects. The count falls by 1 for an index outside the range too, while there is
  /// a track, as it does in a track of objects.
  void deleteKernObjectTrackAtIndex(int index);
  /// As before, but the objects of the track are left to whoever holds them.
  void deleteKernObjectTrackAtIndexOnlyReferences(int index);
  void deleteAllKernObjectTracks();
  /// The index of the first track with this channel, or -1.
  int getKernTrackIDForChannel(int channel) const;

  /// The first meter of track 0. Result: 0 without a track, which leaves both as they are, or without a signature, else 1 and one
  /// more for each that differs from the first.
  int getKernTimeSignatureFromTrackList(int* nom, int* denom) const;

  /// Writes a track of events for each track, in the order of its objects. Result: 1, or 0 if the file can't be written.
  int writeToMidiFile(const char* path) const;

  ZQKernObjectTrack** getKernObjectTrackList() const { return tracks.begin(); }
  void setKernObjectTrackList(ZQKernObjectTrack** list) { tracks.setArray(list); }
  void setNumberOfKernObjectTracks(int number) { tracks.setCount(number); }
  void setInternalNumberOfKernObjectTracks(int number) { tracks.setCapacity(number); }

 private:
  void closeGapAt(int index);

  ZQPointerArray<ZQKernObjectTrack> tracks{firstCapacity};
};

/// A list without a track, or null if memory has run out.
ZQKernTrackList* createZQKernTrackList();
/// Releases the list, its tracks and their objects; null is ignored.
void deleteZQKernTrackList(ZQKernTrackList* list);

}  // namespace zmatrix
