#include "music/midi/ZQMidiFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "file/ZQFileStream.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQOwnedFile.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFileReader.h"

namespace zmatrix {

namespace {

constexpr size_t readAheadSize = 1 << 14;
constexpr short ticksPerQuarter = 3072;  // a tick is a quantum
constexpr int charactersOfText = 4;

struct EndReading {
  void operator()(_MIDIFILEInStruct* in) const { MIDIFILEEndReading(in); }
};

/// A file is complete if its last track has ended. Bytes behind that, or behind the head if there is no track, count as unread.
void noteEnd(const _MIDIFILEInStruct* in, long behindHead, MidiReadFindings& findings) {
  const long end = wholeState(in).behindLastTrack;
  findings.end = end > 0 ? MidiReadEnd::complete : findings.tracks.empty() ? MidiReadEnd::noTrack : MidiReadEnd::cut;
  if (findings.end == MidiReadEnd::cut) return;
  findings.bytesUnread = static_cast<long>(std::max(0LL, sizeOfFile(in->file) - std::max(end, behindHead)));
}

/// Reads the events of an opened file. If there is no preamble, `findings.end` holds the reason.
bool readEvents(ZQMidiTrackList* list, const char* path, FILE* file, MidiReadFindings& findings) {
  _MIDIFILEReadStruct event;
  const std::unique_ptr<_MIDIFILEInStruct, EndReading> in(MIDIFILEBeginReading(file, &event));
  findings.end = MidiReadEnd::outOfMemory;
  if (in == nullptr) return false;
  if (MIDIFILEReadPreamble(in.get(), &findings.format, &findings.tracksAnnounced) == 0) {
    dbPrintf(0, "MIDIFILEReadPreamble(failed)");
    findings.end = wholeState(in.get()).hasDivisionOfZero ? MidiReadEnd::divisionOfZero : MidiReadEnd::notMidi;
    return false;
  }
  findings.division = in->division;
  findings.tracksAnnounced = wholeState(in.get()).tracksAnnounced;
  const long behindHead = ftell(file);
  dbPrintf(2, "reading %s MIDI Format type %d\n", path, findings.format);
  if (!MidiFileReader(*list, *in, findings).run()) return false;
  noteEnd(in.get(), behindHead, findings);
  return true;
}

// --- writing

/// Writes a text with the few characters that an event stores.
bool writeText(_MIDIFILEOutStruct* out, const ZQMidiEvent& event) {
  const unsigned char bytes[] = {event.getByte1(), event.getByte2(), event.getByte3(), event.getByte4()};
  char text[charactersOfText + 1] = {};
  memcpy(text, bytes, static_cast<size_t>(std::clamp(event.getByteCount(), 0, charactersOfText)));
  return MIDIFILEWriteText(out, event.getTimeQuanta(), static_cast<short>(event.getEventType()), text) == 1;
}

/// Writes channel events and the meta events that this library makes; other events are written as raw bytes.
bool writeEvent(_MIDIFILEOutStruct* out, const ZQMidiEvent& event) {
  const int time = event.getTimeQuanta();
  switch (event.getEventType()) {
    case ZQMidiMetaKeySignature:
      return MIDIFILEWriteKeySig(out, time, event.getByte1(), event.getByte2()) == 1;
    case ZQMidiMetaTimeSignature:
      return MIDIFILEWriteTimeSig(out, time, event.getByte1(), event.getByte2(), event.getByte3(), event.getByte4()) == 1;
    case ZQMidiMetaTempo:
      return MIDIFILEWriteTempo(out, time, static_cast<double>(event.getFloatValue())) == 1;
    case ZQMidiMetaText:
    case ZQMidiMetaCopyright:
    case ZQMidiMetaTrackName:
    case ZQMidiMetaMarker:
      return writeText(out, event);
    default: {
      const unsigned char bytes[] = {event.getByte1(), event.getByte2(), event.getByte3()};
      return MIDIFILEWriteEvent(out, time, std::clamp(event.getByteCount(), 0, 3), bytes) == 1;
    }
  }
}

/// A failed write is detected through the error state of the stream.
void writeTracks(_MIDIFILEOutStruct* out, const ZQMidiTrackList& list) {
  int timeOfLastEvent = 0;
  for (int i = 0; i < list.getNumberOfMidiEventTracks(); i++) {
    const ZQMidiEventTrack& track = *list.getMidiEventTrackAtIndex(i);
    if (i > 0 && track.getCount() == 0) continue;
    if (i > 0) MIDIFILEBeginWritingTrack(out, nullptr);
    for (const ZQMidiEvent* event : track) {
      writeEvent(out, *event);
      timeOfLastEvent = event->getTimeQuanta();
    }
    MIDIFILEEndWritingTrack(out, timeOfLastEvent);
  }
}

}  // namespace

bool ZQMidiFile::readEventsFromFileWithPath(ZQMidiTrackList* list, const char* path, MidiReadFindings* findings) const {
  MidiReadFindings unused;
  MidiReadFindings& found = findings != nullptr ? *findings : unused;
  found.end = MidiReadEnd::notFound;
  if (list == nullptr || path == nullptr) return false;
  char readAhead[readAheadSize];
  const OwnedFile file(openRegularFile(path));  // not a pipe, which might never end
  if (file == nullptr) return false;
  setvbuf(file.get(), readAhead, _IOFBF, sizeof readAhead);
  return readEvents(list, path, file.get(), found);
}

int ZQMidiFile::writeEventsToFileWithPath(const ZQMidiTrackList* list, const char* path) const {
  if (list == nullptr || path == nullptr) return EOF;
  FILE* file = fopen(path, "wb");
  if (file == nullptr) return EOF;
  _MIDIFILEOutStruct* out = MIDIFILEBeginWriting(file, 1, ticksPerQuarter, nullptr);
  bool isWritten = out != nullptr;
  if (isWritten) {
    writeTracks(out, *list);
    isWritten = MIDIFILEEndWriting(out) == 1 && ferror(file) == 0;
  }
  const int isClosed = fclose(file);
  return isWritten ? isClosed : EOF;
}

ZQMidiFile* createZQMidiFile() {
  return new (std::nothrow) ZQMidiFile;
}

void deleteZQMidiFile(ZQMidiFile* file) {
  delete file;
}

}  // namespace zmatrix
