// The tracks of one kern file: the one that the reader fills, and those that a feed or a conversion makes from it, one per
// channel. The list owns its tracks.
#pragma once

#include "music/kern/ZQKernObjectTrack.h"

namespace zmatrix {

class ZQKernTrackList {
 public:
  static constexpr int firstCapacity = 4;

  ZQKernTrackList() = default;
  ~ZQKernTrackList() { deleteAllKernObjectTracks(); }

  /// Makes a first, empty track, without releasing tracks in the list. False if memory runs out.
  bool init();
  /// Appends a track and takes ownership; null is ignored. False if memory runs out; then the caller keeps the track.
  bool addKernObjectTrack(ZQKernObjectTrack* track) { return track == nullptr || tracks_.add(track); }
  int getNumberOfKernObjectTracks() const { return tracks_.getCount(); }
  /// Null outside the range.
  ZQKernObjectTrack* getKernObjectTrackAtIndex(int index) const { return tracks_.at(index); }
  /// Releases the track at `index` with its objects. For an index below the range the first track is removed, for one above it
  /// the last, without releasing it, as in a track of objects.
  void deleteKernObjectTrackAtIndex(int index);
  /// The same without releasing the objects of the track.
  void deleteKernObjectTrackAtIndexOnlyReferences(int index);
  void deleteAllKernObjectTracks();
  /// The index of the first track with this channel, or -1.
  int getKernTrackIDForChannel(int channel) const;

  /// The first meter of track 0. Result: 0 without a signature, or without a track, where `nom` and `denom` are unchanged; else
  /// 1, plus one for each signature that differs from the first.
  int getKernTimeSignatureFromTrackList(int* nom, int* denom) const;

  /// Writes a MIDI file with one event track per track, in the order of its objects. Result: 1, or 0 if the file can't be
  /// written.
  int writeToMidiFile(const char* path) const;

  ZQKernObjectTrack** getKernObjectTrackList() const { return tracks_.begin(); }
  void setKernObjectTrackList(ZQKernObjectTrack** list) { tracks_.setArray(list); }
  void setNumberOfKernObjectTracks(int number) { tracks_.setCount(number); }
  void setInternalNumberOfKernObjectTracks(int number) { tracks_.setCapacity(number); }

 private:
  void closeGapAt(int index);

  ZQPointerArray<ZQKernObjectTrack> tracks_{firstCapacity};
};

/// A list without tracks, or null if memory runs out.
ZQKernTrackList* createZQKernTrackList();
/// Releases the list, its tracks and their objects; null is ignored.
void deleteZQKernTrackList(ZQKernTrackList* list);

}  // namespace zmatrix
