// MIDI files as tracks of events: reads a file into the event tracks of a list, and writes event tracks into a file.
#pragma once

#include "frame/ZQArray.h"
#include "music/midi/ZQMidiTrackList.h"

namespace zmatrix {

/// What the reader met in one track of a file.
struct MidiTrackReading {
  int indexOfEventTrack = 0;     ///< where the channel events went; 0 for nowhere
  long long channelEvents = 0;   ///< kept
  long long metaEvents = 0;      ///< kept, in event track 0
  long long repeatedEvents = 0;  ///< of the channel events: system bytes for which the event before was taken once more
  long long systemEvents = 0;    ///< dropped
  long long unknownEvents = 0;   ///< dropped: data bytes before any status
};

/// How the reading of a file ended.
enum class MidiReadEnd { complete, notFound, notMidi, divisionOfZero, noTrack, cut, outOfMemory };

/// What the reader found, an entry a track of the file.
struct MidiReadFindings {
  MidiReadEnd end = MidiReadEnd::notFound;
  int format = 0;
  int division = 0;           ///< ticks per quarter note
  int tracksAnnounced = 0;    ///< as the file says
  long long bytesUnread = 0;  ///< behind the last track
  ZQArray<MidiTrackReading> tracks;
};

/// Without fields: a token to call the operations on.
class ZQMidiFile {
 public:
  /// Appends the tracks of a file to a list. Times become musical time, 3072 quanta to the quarter whatever the tempo. A file
  /// that can't be opened, is no regular file or no MIDI file leaves the list as it is; of one that is cut stays what was read.
  /// False for these, and if memory has run out. Null for either argument is refused. `findings` may be null.
  bool readEventsFromFileWithPath(ZQMidiTrackList* list, const char* path, MidiReadFindings* findings = nullptr) const;
  /// Writes the event tracks as a file of format 1, 3072 ticks to the quarter. Texts keep four characters; tracks behind the
  /// first that are empty are left out. Result: 0 written, else EOF.
  int writeEventsToFileWithPath(const ZQMidiTrackList* list, const char* path) const;
};

/// Null if memory has run out.
ZQMidiFile* createZQMidiFile();
/// Null is ignored.
void deleteZQMidiFile(ZQMidiFile* file);

}  // namespace zmatrix
