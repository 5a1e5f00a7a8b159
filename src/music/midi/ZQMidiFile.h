// MIDI files as tracks of events: reads a file into the event tracks of a list, and writes event tracks into a file.
#pragma once

#include "frame/ZQArray.h"
#include "music/midi/ZQMidiTrackList.h"

namespace zmatrix {

/// The counts of one track of a file.
struct MidiTrackReading {
  int indexOfEventTrack = 0;     ///< the event track of the channel events, 0 if there are none
  long long channelEvents = 0;   ///< kept
  long long metaEvents = 0;      ///< kept, in event track 0
  long long repeatedEvents = 0;  ///< channel events that repeat the one before, for an undecoded system byte
  long long systemEvents = 0;    ///< dropped
  long long unknownEvents = 0;   ///< dropped: data bytes before any status
};

/// How the reading of a file ended.
enum class MidiReadEnd { complete, notFound, notMidi, divisionOfZero, noTrack, cut, outOfMemory };

/// What the reader found, with one entry per track of the file.
struct MidiReadFindings {
  MidiReadEnd end = MidiReadEnd::notFound;
  int format = 0;
  int division = 0;           ///< ticks per quarter note
  int tracksAnnounced = 0;    ///< number of tracks in the file's header
  long long bytesUnread = 0;  ///< behind the last track
  ZQArray<MidiTrackReading> tracks;
};

/// Has no state: an object to call the operations on.
class ZQMidiFile {
 public:
  /// Appends the tracks of a file to a list. Times become musical time, 3072 quanta per quarter at any tempo. The list is
  /// unchanged for a file that can't be opened, is no regular file or no MIDI file; of a truncated file the events before its end
  /// are kept. False for all of these, if memory runs out, and if an argument is null. `findings` may be null.
  bool readEventsFromFileWithPath(ZQMidiTrackList* list, const char* path, MidiReadFindings* findings = nullptr) const;
  /// Writes the event tracks as a file of format 1, 3072 ticks per quarter. Texts are cut to four characters; empty tracks behind
  /// the first are left out. Returns 0, else EOF.
  int writeEventsToFileWithPath(const ZQMidiTrackList* list, const char* path) const;
};

/// Null if memory runs out.
[[nodiscard]] ZQMidiFile* createZQMidiFile();
/// Null is ignored.
void deleteZQMidiFile(ZQMidiFile* file);

}  // namespace zmatrix
