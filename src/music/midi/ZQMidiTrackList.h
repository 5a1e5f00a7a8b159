// The tracks of one MIDI file: as events, as they stand in the file, and as objects, made from them. Event track 0 holds the meta
// events of the whole file; the others hold channel events, each at the index that its track has in the file. The list owns all
// its tracks.
#pragma once

#include "music/midi/ZQMidiEventTrack.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

struct MidiPairingFindings;

/// What becomes of object tracks once they are made: `midiTrackAnalyze`.
enum ZQMidiTrackAnalyze : int {
  ZQMidiTrackAnalyzeSingle = 0,          ///< each track by itself
  ZQMidiTrackAnalyzeMerged = 1,          ///< all tracks as one
  ZQMidiTrackAnalyzeSingleAndMerged = 2  ///< both; of a file with one track of notes that one alone
};

class ZQMidiTrackList {
 public:
  static constexpr int firstCapacity = 4;
  static constexpr int numberOfStatuses = 8;
  static constexpr int numberOfChannels = 16;

  ZQMidiTrackList() = default;
  ~ZQMidiTrackList();

  /// Sets the list up anew; tracks that were in it are not released.
  void init();
  /// Append a track and take it over; null is ignored. False, and the track still the caller's, if memory has run out.
  bool addMidiEventTrack(ZQMidiEventTrack* track) { return track == nullptr || eventTracks.add(track); }
  bool addMidiObjectTrack(ZQMidiObjectTrack* track) { return track == nullptr || objectTracks.add(track); }
  /// Appends empty event tracks until the list holds `index`; false if memory has run out.
  bool extendEventTracksTo(int index);
  int getNumberOfMidiEventTracks() const { return eventTracks.getCount(); }
  int getNumberOfMidiObjectTracks() const { return objectTracks.getCount(); }
  /// Null outside the range.
  ZQMidiEventTrack* getMidiEventTrackAtIndex(int index) const { return eventTracks.at(index); }
  ZQMidiObjectTrack* getMidiObjectTrackAtIndex(int index) const { return objectTracks.at(index); }
  /// Inside the range release the track and its elements. The count falls by 1 for an index outside the range too, while there
  /// is a track, as it does in an object track.
  void deleteMidiEventTrackAtIndex(int index);
  void deleteMidiObjectTrackAtIndex(int index);
  /// As before, but the objects of the track are left to whoever holds them.
  void deleteMidiObjectTrackAtIndexOnlyReferences(int index);
  void deleteAllMidiEventTracks();
  void deleteAllMidiObjectTracks();

  /// Makes the object tracks anew from the event tracks: pairs each track, gives each note the sound of its channel, and merges
  /// as `midiTrackAnalyze` says. A filter drops what its entry, of a status or a channel, is not 0 for. `statusFilter`: 8 values;
  /// `channelFilter`: 16. `findings`, if not null, gets an entry an event track. False if memory has run out.
  bool updateMIDIObjectTracksFromMIDIEventTracks(const int* statusFilter, const unsigned char* channelFilter,
                                                 int midiTrackAnalyze, MidiPairingFindings* findings = nullptr);
  /// One track of it, in order of start. `nom` and `denom` get the first time signature, if there is one. Null if memory has run
  /// out.
  ZQMidiObjectTrack* createMIDIObjectTrackFromMidiEventTrack(const ZQMidiEventTrack* track, const int* statusFilter,
                                                             const unsigned char* channelFilter, int* numberOfChannels,
                                                             int* hasPercussion, int* nom, int* denom,
                                                             MidiPairingFindings* findings = nullptr) const;
  /// The first time signature of event track 0. Result: 0 without a track, which leaves both as they are, or without a
  /// signature, else 1 and one more for each that differs from the first.
  int getMidiTimeSignatureFromTrackList(int* nom, int* denom) const;

  ZQMidiEventTrack** getMidiEventTrackList() const { return eventTracks.begin(); }
  ZQMidiObjectTrack** getMidiObjectTrackList() const { return objectTracks.begin(); }
  void setMidiEventTrackList(ZQMidiEventTrack** list) { eventTracks.setArray(list); }
  void setMidiObjectTrackList(ZQMidiObjectTrack** list) { objectTracks.setArray(list); }
  void setNumberOfMidiEventTracks(int number) { eventTracks.setCount(number); }
  void setNumberOfMidiObjectTracks(int number) { objectTracks.setCount(number); }
  void setInternalNumberOfMidiEventTracks(int number) { eventTracks.setCapacity(number); }
  void setInternalNumberOfMidiObjectTracks(int number) { objectTracks.setCapacity(number); }

 private:
  bool pairAllTracks(const int* statusFilter, const unsigned char* channelFilter, MidiPairingFindings* findings);
  bool collectObjects(ZQMidiObjectTrack* merged) const;
  bool replaceByMergedTrack(ZQMidiObjectTrack* merged);
  bool appendCopyOfMergedTrack(ZQMidiObjectTrack* merged);

  ZQPointerArray<ZQMidiEventTrack> eventTracks{firstCapacity};
  ZQPointerArray<ZQMidiObjectTrack> objectTracks{firstCapacity};
};

/// An empty list, or null if memory has run out.
ZQMidiTrackList* createZQMidiTrackList();
/// Releases the list, its tracks and their elements; null is ignored.
void deleteZQMidiTrackList(ZQMidiTrackList* list);

/// Replaces the notes and program changes of an event track by those of an object track: each note's channel is its sound, and
/// each channel that is used gets a program for it at time 0. Sounds 14 and 15 keep their channel, and channel 0 has no program.
/// False, and the event track incomplete, if memory has run out.
bool updateEventTrackFromObjectTrack(ZQMidiEventTrack* events, ZQMidiObjectTrack* objects);

}  // namespace zmatrix
