// Pairing: the note-ons and note-offs of an event track become notes. Linked lists of the events that can be searched for replace
// removals from an array, so that the time is proportional to the number of events.
#pragma once

#include <memory>

#include "frame/ZQArray.h"
#include "music/midi/ZQMidiEventTrack.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

/// The counts of one track's pairing.
struct MidiTrackPairing {
  int events = 0;
  int notes = 0;
  int notesEndedByTheNext = 0;   ///< of the notes: ended by the next note-on of the same number for lack of a note-off
  int noteOnsWithoutEnd = 0;     ///< dropped
  int noteOffsWithoutNote = 0;   ///< dropped
  int noteOffsTakenAsNotes = 0;  ///< of the notes: begun by a note-off without a note-on
  int programChanges = 0;
  int timeSignatures = 0;
  int lostInsideNotes = 0;                ///< dropped, since a note was held on their channel
  int programChangesLostInsideNotes = 0;  ///< of these
  int onFilteredChannels = 0;             ///< dropped
  int ofOtherKinds = 0;                   ///< controllers, pitch wheel and the like, and meta events without a meter
};

/// One entry per event track.
struct MidiPairingFindings {
  ZQArray<MidiTrackPairing> tracks;
};

/// The filters: an event whose status or channel has a value other than 0 is dropped.
struct MidiPairingFilter {
  const int* status;             ///< 8 values, or null
  const unsigned char* channel;  ///< 16 values, or null

  bool dropsStatus(int statusBits) const { return status != nullptr && status[(statusBits >> 4) - 8] != 0; }
  bool dropsChannel(int number) const { return channel != nullptr && channel[number] != 0; }
};

/// Pairs `events` and appends the objects to `objects`, in the order in which they begin.
class MidiPairing {
 public:
  MidiPairing(const ZQMidiEventTrack& track, const MidiPairingFilter& pairingFilter, ZQMidiObjectTrack& result)
      : events_(track.begin()), count_(track.getCount()), filter_(pairingFilter), objects_(result) {}

  /// False if memory runs out.
  [[nodiscard]] bool run();

  const MidiTrackPairing& findings() const { return found_; }
  int numberOfUsedChannels() const;
  bool hasPercussion() const { return hasDrums_; }
  bool hasTimeSignature() const { return found_.timeSignatures > 0; }
  int numerator() const { return firstNumerator_; }
  int denominator() const { return firstDenominator_; }

 private:
  static constexpr int channels = 16;
  static constexpr int noteNumbers = 256;
  static constexpr int none = -1;

  /// The events of one kind in order: the first that no search has passed yet, and links from each to the next.
  struct Chain {
    int first = none;
    int last = none;
  };
  /// The note events of one channel by note number. A note-on of velocity 0 is a note-off.
  struct NotesOfChannel {
    Chain ons[noteNumbers];
    Chain offs[noteNumbers];
  };

  const ZQMidiEvent* eventAt(int index) const { return events_[index]; }
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

  const ZQMidiEvent* const* events_;
  const int count_;
  const MidiPairingFilter filter_;
  ZQMidiObjectTrack& objects_;
  MidiTrackPairing found_;
  bool isUsed_[channels] = {};
  bool hasDrums_ = false;
  int firstNumerator_ = 0;
  int firstDenominator_ = 0;

  ZQArray<int> next_;                                // per event: the next one in its chain
  ZQArray<unsigned char> isDropped_;                 // per event: 1 if a search has dropped it
  std::unique_ptr<NotesOfChannel> notes_[channels];  // only for channels with note events; most tracks have one
  Chain others_[channels];                           // the events that a search for a note-off drops
};

}  // namespace zmatrix
