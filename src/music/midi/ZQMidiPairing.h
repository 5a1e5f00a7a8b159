// Pairing: the note-ons and note-offs of an event track become notes. It runs in time proportional to the events: instead of
// taking events out of an array, it links those that a search can be after.
#pragma once

#include <memory>

#include "frame/ZQArray.h"
#include "music/midi/ZQMidiEventTrack.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

/// What became of the events of one track.
struct MidiTrackPairing {
  int events = 0;
  int notes = 0;
  int notesEndedByTheNext = 0;   ///< of these: ended by a note-on of the same number, there being no note-off
  int noteOnsWithoutEnd = 0;     ///< dropped
  int noteOffsWithoutNote = 0;   ///< dropped
  int noteOffsTakenAsNotes = 0;  ///< of the notes: begun by a note-off that was left over
  int programChanges = 0;
  int timeSignatures = 0;
  int lostInsideNotes = 0;                ///< dropped, since a note was held on their channel
  int programChangesLostInsideNotes = 0;  ///< of these
  int onFilteredChannels = 0;             ///< dropped
  int ofOtherKinds = 0;                   ///< controllers, pitch wheel and the like, and meta events without a meter
};

/// An entry an event track.
struct MidiPairingFindings {
  ZQArray<MidiTrackPairing> tracks;
};

/// What does not depend on a single event.
struct MidiPairingFilter {
  const int* status;             ///< 8 values, or null
  const unsigned char* channel;  ///< 16 values, or null

  bool dropsStatus(int statusBits) const { return status != nullptr && status[(statusBits >> 4) - 8] != 0; }
  bool dropsChannel(int aChannel) const { return channel != nullptr && channel[aChannel] != 0; }
};

/// Pairs `events` and appends the objects to `objects`, in the order in which they begin.
class MidiPairing {
 public:
  MidiPairing(const ZQMidiEventTrack& aTrack, const MidiPairingFilter& aFilter, ZQMidiObjectTrack& theObjects)
      : events(aTrack.begin()), count(aTrack.getCount()), filter(aFilter), objects(theObjects) {}

  /// False if memory has run out.
  [[nodiscard]] bool run();

  const MidiTrackPairing& findings() const { return found; }
  int numberOfUsedChannels() const;
  bool hasPercussion() const { return hasDrums; }
  bool hasTimeSignature() const { return found.timeSignatures > 0; }
  int numerator() const { return firstNumerator; }
  int denominator() const { return firstDenominator; }

 private:
  static constexpr int channels = 16;
  static constexpr int noteNumbers = 256;
  static constexpr int none = -1;

  /// The events of one kind in order: the first that no search has passed, and links to the next.
  struct Chain {
    int first = none;
    int last = none;
  };
  /// The note events of one channel by their number. A note-on of velocity 0 is a note-off.
  struct NotesOfChannel {
    Chain ons[noteNumbers];
    Chain offs[noteNumbers];
  };

  const ZQMidiEvent* eventAt(int index) const { return events[index]; }
  [[nodiscard]] bool linkEvents();
  void append(Chain& chain, int index);
  int firstBehind(Chain& chain, int index);
  bool take(int index);
  bool takeTimeSignature(const ZQMidiEvent& event);
  bool takeProgramChange(const ZQMidiEvent& event);
  bool takeNote(int index);
  int findEnd(int index);
  void dropOthersBetween(int channel, int index, int end);
  [[nodiscard]] bool add(ZQMidiObject* object);

  const ZQMidiEvent* const* events;
  const int count;
  const MidiPairingFilter filter;
  ZQMidiObjectTrack& objects;
  MidiTrackPairing found;
  bool isUsed[channels] = {};
  bool hasDrums = false;
  int firstNumerator = 0;
  int firstDenominator = 0;

  ZQArray<int> next;                                // of each event, the next one in its chain
  ZQArray<unsigned char> isDropped;                 // of each event: 1 if a search has taken it out
  std::unique_ptr<NotesOfChannel> notes[channels];  // of the channels with note events; most tracks have one
  Chain others[channels];                           // what a search for a note-off takes out
};

}  // namespace zmatrix
