// The events of one track of a MIDI file, in order. The track owns them, except where an operation says that only references go.
#pragma once

#include "music/ZQPointerArray.h"
#include "music/ZQSortByFunction.h"
#include "music/midi/ZQMidiEvent.h"

namespace zmatrix {

class ZQMidiEventTrack {
 public:
  static constexpr int firstCapacity = 100;

  ZQMidiEventTrack() = default;
  ~ZQMidiEventTrack() { deleteAllMidiEvents(); }

  /// Sets the track up anew; events that were in it are not released.
  void init();
  /// Appends an event and takes it over; null is ignored. False, and the event still the caller's, if memory has run out.
  bool addMidiEvent(ZQMidiEvent* event) { return event == nullptr || events.add(event); }
  int getCount() const { return events.getCount(); }
  /// Null outside the range.
  ZQMidiEvent* getMidiEventAtIndex(int index) const { return events.at(index); }
  /// Both ignore an index outside the range. The second leaves the event to whoever holds it.
  void deleteMidiEventAtIndex(int index);
  void deleteMidiEventAtIndexOnlyReference(int index) { events.removeAt(index); }
  void deleteAllMidiEvents();
  /// Deletes all events for which `isToGo(event)` is true, in one pass.
  template <class Predicate>
  void deleteMidiEventsIf(Predicate isToGo) {
    events.removeIf([&](ZQMidiEvent* event) {
      const bool goes = isToGo(event);
      if (goes) deleteZQMidiEvent(event);
      return goes;
    });
  }
  /// Sorts by a function that compares pointers to two event pointers; null is ignored. A track in order stays as it is.
  void sortByFunction(ZQCompareFunction compare);

  ZQMidiEvent** getMidiEventTrack() const { return events.begin(); }
  void setMidiEventTrack(ZQMidiEvent** array) { events.setArray(array); }
  void setNumberOfMidiEvents(int number) { events.setCount(number); }
  void setInternalNumberOfMidiEvents(int number) { events.setCapacity(number); }
  ZQMidiEvent** begin() const { return events.begin(); }
  ZQMidiEvent** end() const { return events.end(); }

 private:
  ZQPointerArray<ZQMidiEvent> events{firstCapacity};
};

/// An empty track, or null if memory has run out.
ZQMidiEventTrack* createZQMidiEventTrack();
/// Releases the track with its events; null is ignored.
void deleteZQMidiEventTrack(ZQMidiEventTrack* track);
/// Releases the track and leaves its events to whoever holds them; null is ignored.
void deleteZQMidiEventTrackOnlyReferences(ZQMidiEventTrack* track);

}  // namespace zmatrix
