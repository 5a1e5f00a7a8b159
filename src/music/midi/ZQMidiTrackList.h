// The tracks of one MIDI file: as events in file order, and as objects made from them. Event track 0 holds the meta events of the
// whole file; the others hold channel events, each at the index of its track in the file. The list owns all its tracks.
#pragma once

#include "music/midi/ZQMidiEventTrack.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

struct MidiPairingFindings;

/// Which object tracks are kept: `midiTrackAnalyze`.
enum ZQMidiTrackAnalyze : int {
  ZQMidiTrackAnalyzeSingle = 0,          ///< each track separately
  ZQMidiTrackAnalyzeMerged = 1,          ///< all tracks merged into one
  ZQMidiTrackAnalyzeSingleAndMerged = 2  ///< both; a file with one track of notes has that one only
};

class ZQMidiTrackList {
 public:
  static constexpr int firstCapacity = 4;
  static constexpr int numberOfStatuses = 8;
  static constexpr int numberOfChannels = 16;

  ZQMidiTrackList() = default;
  ~ZQMidiTrackList();

  /// Empties the list without releasing its tracks.
  void init();
  /// Append a track and take ownership; null is ignored. False if memory runs out; then the caller keeps the track.
  bool addMidiEventTrack(ZQMidiEventTrack* track) { return track == nullptr || eventTracks_.add(track); }
  bool addMidiObjectTrack(ZQMidiObjectTrack* track) { return track == nullptr || objectTracks_.add(track); }
  /// Appends empty event tracks until `index` is in range; false if memory runs out.
  bool extendEventTracksTo(int index);
  int getNumberOfMidiEventTracks() const { return eventTracks_.getCount(); }
  int getNumberOfMidiObjectTracks() const { return objectTracks_.getCount(); }
  /// Null outside the range.
  ZQMidiEventTrack* getMidiEventTrackAtIndex(int index) const { return eventTracks_.at(index); }
  ZQMidiObjectTrack* getMidiObjectTrackAtIndex(int index) const { return objectTracks_.at(index); }
  /// Release the track at `index` with its elements. For an index below the range the first track is removed, for one above it
  /// the last, without releasing it, as in an object track.
  void deleteMidiEventTrackAtIndex(int index);
  void deleteMidiObjectTrackAtIndex(int index);
  /// The same without releasing the objects of the track.
  void deleteMidiObjectTrackAtIndexOnlyReferences(int index);
  void deleteAllMidiEventTracks();
  void deleteAllMidiObjectTracks();

  /// Makes new object tracks from the event tracks: pairs each track, gives each note the sound of its channel, and merges as
  /// `midiTrackAnalyze` says. An event is dropped if the filter entry of its status or channel is not 0. `statusFilter`: 8
  /// values; `channelFilter`: 16. `findings`, if not null, gets one entry per event track. False if memory runs out.
  bool updateMIDIObjectTracksFromMIDIEventTracks(const int* statusFilter, const unsigned char* channelFilter,
                                                 int midiTrackAnalyze, MidiPairingFindings* findings = nullptr);
  /// The object track of one event track, in order of start. `nom` and `denom` get the first time signature, if there is one.
  /// Null if memory runs out.
  ZQMidiObjectTrack* createMIDIObjectTrackFromMidiEventTrack(const ZQMidiEventTrack* track, const int* statusFilter,
                                                             const unsigned char* channelFilter, int* numberOfChannels,
                                                             int* hasPercussion, int* nom, int* denom,
                                                             MidiPairingFindings* findings = nullptr) const;
  /// The first time signature of event track 0. Result: 0 without a signature, or without a track, where `nom` and `denom` are
  /// unchanged; else 1, plus one for each signature that differs from the first.
  int getMidiTimeSignatureFromTrackList(int* nom, int* denom) const;

  ZQMidiEventTrack** getMidiEventTrackList() const { return eventTracks_.begin(); }
  ZQMidiObjectTrack** getMidiObjectTrackList() const { return objectTracks_.begin(); }
  void setMidiEventTrackList(ZQMidiEventTrack** list) { eventTracks_.setArray(list); }
  void setMidiObjectTrackList(ZQMidiObjectTrack** list) { objectTracks_.setArray(list); }
  void setNumberOfMidiEventTracks(int number) { eventTracks_.setCount(number); }
  void setNumberOfMidiObjectTracks(int number) { objectTracks_.setCount(number); }
  void setInternalNumberOfMidiEventTracks(int number) { eventTracks_.setCapacity(number); }
  void setInternalNumberOfMidiObjectTracks(int number) { objectTracks_.setCapacity(number); }

 private:
  bool pairAllTracks(const int* statusFilter, const unsigned char* channelFilter, MidiPairingFindings* findings);
  bool collectObjects(ZQMidiObjectTrack* merged) const;
  bool replaceByMergedTrack(ZQMidiObjectTrack* merged);
  bool appendCopyOfMergedTrack(ZQMidiObjectTrack* merged);

  ZQPointerArray<ZQMidiEventTrack> eventTracks_{firstCapacity};
  ZQPointerArray<ZQMidiObjectTrack> objectTracks_{firstCapacity};
};

/// An empty list, or null if memory runs out.
ZQMidiTrackList* createZQMidiTrackList();
/// Releases the list, its tracks and their elements; null is ignored.
void deleteZQMidiTrackList(ZQMidiTrackList* list);

/// Replaces the notes and program changes of an event track by those of an object track: each note's channel is its sound, and
/// each used channel gets a program change at time 0. Sounds 14 and 15 keep their channel, and channel 0 gets no program. False,
/// with an incomplete event track, if memory runs out.
bool updateEventTrackFromObjectTrack(ZQMidiEventTrack* events, ZQMidiObjectTrack* objects);

}  // namespace zmatrix
