// The events of one track of a MIDI file, in order. The track owns them, except for operations with OnlyReference in their names.
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

  /// Empties the track without releasing its events.
  void init();
  /// Appends an event and takes ownership; null is ignored. False if memory runs out; then the caller keeps the event.
  bool addMidiEvent(ZQMidiEvent* event) { return event == nullptr || events_.add(event); }
  int getCount() const { return events_.getCount(); }
  /// Null outside the range.
  ZQMidiEvent* getMidiEventAtIndex(int index) const { return events_.at(index); }
  /// Both ignore an index outside the range. The second removes the event without releasing it.
  void deleteMidiEventAtIndex(int index);
  void deleteMidiEventAtIndexOnlyReference(int index) { events_.removeAt(index); }
  void deleteAllMidiEvents();
  /// Deletes all events for which `isRemoved(event)` is true, in one pass.
  template <class Predicate>
  void deleteMidiEventsIf(Predicate isRemoved) {
    events_.removeIf([&](ZQMidiEvent* event) {
      const bool removed = isRemoved(event);
      if (removed) deleteZQMidiEvent(event);
      return removed;
    });
  }
  /// Sorts by a function that compares pointers to two event pointers; null is ignored. A track that is in order is unchanged.
  void sortByFunction(ZQCompareFunction compare);

  ZQMidiEvent** getMidiEventTrack() const { return events_.begin(); }
  void setMidiEventTrack(ZQMidiEvent** array) { events_.setArray(array); }
  void setNumberOfMidiEvents(int number) { events_.setCount(number); }
  void setInternalNumberOfMidiEvents(int number) { events_.setCapacity(number); }
  ZQMidiEvent** begin() const { return events_.begin(); }
  ZQMidiEvent** end() const { return events_.end(); }

 private:
  ZQPointerArray<ZQMidiEvent> events_{firstCapacity};
};

/// An empty track, or null if memory runs out.
ZQMidiEventTrack* createZQMidiEventTrack();
/// Releases the track with its events; null is ignored.
void deleteZQMidiEventTrack(ZQMidiEventTrack* track);
/// Releases the track but not its events; null is ignored.
void deleteZQMidiEventTrackOnlyReferences(ZQMidiEventTrack* track);

}  // namespace zmatrix
