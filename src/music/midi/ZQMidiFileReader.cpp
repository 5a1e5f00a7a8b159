#include "music/midi/ZQMidiFileReader.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "frame/ZQSentence.h"

namespace zmatrix {

namespace {

constexpr double quantaPerQuarter = 3072.0;
constexpr int mostBytesOfEvent = 4;
constexpr unsigned char velocityOfNoteOff = 127;  // of a note-off that was read as a note-on of velocity 0

/// How a type of meta event is stored and reported. The format of a text's message takes the text; other formats take nothing, or
/// are printed separately.
struct MetaRow {
  int type;
  int eventType;
  int mostBytes;
  ZQSentence<const char*> textMessage;
};

constexpr MetaRow metaRows[] = {
    {0, 0, 4, nullptr},
    {1, 1, 4, "         Text: %s\n"},
    {2, 2, 4, "         Copyright: %s\n"},
    {3, 3, 4, "         Trackname: %s\n"},
    {4, 4, 4, "         InstrumentName: %s\n"},
    {5, 5, 4, "         Lyrics: %s\n"},
    {6, 6, 4, "         Marker: %s\n"},
    {7, 7, 4, "         CuePoint: %s\n"},
    {8, 8, 4, "         program (Patch) Name: %s\n"},
    {9, ZQMidiEventTypeUnknownMeta, 4, "         device (Port) Name: %s\n"},
    {32, 32, 2, nullptr},
    {33, 33, 2, nullptr},
    {ZQMidiMetaEndOfTrack, ZQMidiMetaEndOfTrack, 0, nullptr},
    {ZQMidiMetaTempo, ZQMidiMetaTempo, 3, nullptr},
    {ZQMidiMetaSMPTEOffset, ZQMidiMetaSMPTEOffset, 4, nullptr},
    {ZQMidiMetaTimeSignature, ZQMidiMetaTimeSignature, 4, nullptr},
    {ZQMidiMetaKeySignature, ZQMidiMetaKeySignature, 2, nullptr},
};
constexpr MetaRow unknownMeta = {-1, ZQMidiEventTypeUnknownMeta, 4, nullptr};

const MetaRow& rowOfMeta(int type) {
  const auto* row =
      std::find_if(std::begin(metaRows), std::end(metaRows), [&](const MetaRow& each) { return each.type == type; });
  return row != std::end(metaRows) ? *row : unknownMeta;
}

bool isUnknownText(int type) {
  return type == 9 || (type >= 13 && type <= 15);  // type 9 has a name but counts as unknown
}

void printKeySignature(const unsigned char* data) {
  dbPrintf(1, "         KeySignature; %d Sharps\n", data[0]);
  if (data[1] == 1) dbPrintf(1, "              Minor");
  if (data[1] == 0) dbPrintf(1, "              Major");
}

void printTimeSignature(const unsigned char* data) {
  dbPrintf(1, "         TimeSignature: %d/%d\n", data[0], powerOfTwo(data[1]));
  dbPrintf(1, "              Metronom-clicks: %d, 32nd notes in quarter note: %d\n", data[2], data[3]);
}

void printMetaEvent(const _MIDIFILEReadStruct& event, double tempo) {
  const int type = event.buffer[0];
  const unsigned char* data = event.buffer + 1;
  const char* text = reinterpret_cast<const char*>(data);
  const MetaRow& row = rowOfMeta(type);
  if (row.textMessage.isThere()) dbPrintf(1, row.textMessage, text);
  if (isUnknownText(type)) dbPrintf(1, "Unknown text metaevent: %s\n", text);
  if (row.textMessage.isThere() || isUnknownText(type)) return;
  switch (type) {
    case ZQMidiMetaSequenceNumber:
      return dbPrintf(1, "         Sequence no. %d %d\n", data[0], data[1]);
    case 32:
      return dbPrintf(1, "         ChannelPrefix: %d\n", data[0]);
    case 33:
      return dbPrintf(1, "         PortPrefix: %d\n", data[0]);
    case ZQMidiMetaEndOfTrack:
      return dbPrintf(1, "         TrackChange\n");
    case ZQMidiMetaTempo:
      return dbPrintf(2, "         TempoChange: %f\n", tempo);
    case ZQMidiMetaSMPTEOffset:
      return dbPrintf(1, "         SMPTEOffset");
    case ZQMidiMetaTimeSignature:
      return printTimeSignature(data);
    case ZQMidiMetaKeySignature:
      return printKeySignature(data);
    case ZQMidiMetaSequencerSpecific:
      return dbPrintf(1, "         Sequencer specific data of length %d: %d \n", event.byteCount - 1, data[0]);
    default:
      return dbPrintf(1, "         Unknown Meta Event of length %d: %d \n", event.byteCount - 1, data[0]);
  }
}

void printChannelEvent(const ZQMidiEvent& event) {
  const int channel = event.getChannel();
  switch (event.getStatus()) {
    case ZQMidiNoteOff:
      return dbPrintf(8, "         NoteOff channel %d\n", channel);
    case ZQMidiNoteOn:
      dbPrintf(8, "         NoteOn channel %d\n", channel);
      return dbPrintf(8, "notenumber, quanta; %d %d\n", event.getByte2(), event.getTimeQuanta());
    case ZQMidiKeyAftertouch:
      return dbPrintf(4, "         Key Aftertouch channel %d\n", channel);
    case ZQMidiControlChange:
      return dbPrintf(8, "         Control Change/ Channel Mode channel %d\n", channel);
    case ZQMidiProgramChange:
      return dbPrintf(1, "         Program change no. %d on channel %d\n", event.getByte2(), channel);
    case ZQMidiChannelAftertouch:
      return dbPrintf(4, "         Channel Aftertouch channel %d\n", channel);
    default:
      return dbPrintf(8, "         Pitch Wheel Change channel %d\n", channel);
  }
}

/// The begin of a text event that names a meter.
constexpr char meterText[] = "!!!AMT: ";

struct MeterOfText {
  const char* name;
  unsigned char numerator;
  unsigned char denominatorPower;
};

constexpr MeterOfText metersOfText[] = {
    {"simple quadruple", 4, 2}, {"simple duple", 2, 2},   {"simple triple", 3, 2},
    {"simple quintuple", 5, 2}, {"compound duple", 6, 3}, {"compound triple", 9, 3},
};

bool beginsWith(const char* text, const char* prefix) {
  return strncmp(text, prefix, strlen(prefix)) == 0;
}

}  // namespace

int MidiFileReader::timeInQuanta() {
  if (state_.trackTicks != ticksOfLastTime_) {
    ticksOfLastTime_ = state_.trackTicks;
    lastTimeInQuanta_ = intOfTime(static_cast<double>(state_.trackTicks) / state_.division * quantaPerQuarter);
  }
  return lastTimeInQuanta_;
}

/// Takes ownership of the event; false if memory runs out, with the event released.
bool MidiFileReader::addToTrack(ZQMidiEventTrack* track, ZQMidiEvent* midiEvent) {
  if (midiEvent == nullptr) return false;
  if (track->addMidiEvent(midiEvent)) return true;
  deleteZQMidiEvent(midiEvent);
  return false;
}

/// If a text event names a meter, a time signature is added behind it.
bool MidiFileReader::addMeterOfText() {
  const char* text = reinterpret_cast<const char*>(event_.buffer + 1);
  if (!beginsWith(text, meterText)) return true;
  text += strlen(meterText);
  const auto* meter = std::find_if(std::begin(metersOfText), std::end(metersOfText),
                                   [&](const MeterOfText& each) { return beginsWith(text, each.name); });
  if (meter == std::end(metersOfText)) {
    if (!beginsWith(text, "irregular")) dbPrintf(0, "MIDI Stanford new Signature type found: %s\n", text);
    return true;
  }
  ZQMidiEvent* signature = createZQMidiEvent();
  if (signature == nullptr) return false;
  signature->initWith(timeInQuanta(), meter->numerator, meter->denominatorPower, 1, 8);
  signature->setEventType(ZQMidiMetaTimeSignature);
  signature->setFloatValue(static_cast<float>(state_.timeScale));
  return addToTrack(list_.getMidiEventTrackAtIndex(0), signature);
}

bool MidiFileReader::takeMetaEvent() {
  const int type = event_.buffer[0];
  const MetaRow& row = rowOfMeta(type);
  printMetaEvent(event_, state_.tempo);
  ZQMidiEvent* midiEvent = createZQMidiEvent();
  if (midiEvent == nullptr || !list_.extendEventTracksTo(0)) {
    deleteZQMidiEvent(midiEvent);
    return false;
  }
  // After an end of track the time is 0: the codec is already in the next track.
  midiEvent->initWithBytes(timeInQuanta(), std::min({event_.byteCount, mostBytesOfEvent, row.mostBytes}), event_.buffer + 1);
  midiEvent->setEventType(row.eventType);
  if (type == ZQMidiMetaTempo) midiEvent->setFloatValue(static_cast<float>(state_.tempo));
  if (type == ZQMidiMetaTimeSignature) midiEvent->setFloatValue(static_cast<float>(state_.timeScale));
  return addToTrack(list_.getMidiEventTrackAtIndex(0), midiEvent) && (type != ZQMidiMetaText || addMeterOfText());
}

/// Finds the event track of a channel event; false if memory runs out. Channel events in the file's track 0, as in all files of
/// format 0, and the rest of that track go to index 1; the file's next track then goes to index 2.
bool MidiFileReader::findTrack() {
  if (!list_.extendEventTracksTo(state_.currentTrack)) return false;
  if (state_.currentTrack == 0) {
    if (!list_.extendEventTracksTo(list_.getNumberOfMidiEventTracks())) return false;
    state_.currentTrack = 1;
    dbPrintf(1, "Warning: readEventsFromFileWithPath(): normal MIDI data found before MetaEvent data...\n");
  }
  indexOfTrackInHand_ = state_.currentTrack;
  trackInHand_ = list_.getMidiEventTrackAtIndex(indexOfTrackInHand_);
  return true;
}

bool MidiFileReader::takeChannelEvent() {
  ZQMidiEvent* midiEvent = createZQMidiEvent();
  if (midiEvent == nullptr) return false;
  midiEvent->initWithBytes(timeInQuanta(), std::min(event_.byteCount, mostBytesOfEvent), event_.buffer);
  if (printsEvents_) printChannelEvent(*midiEvent);
  // Computed without a branch, which would often be mispredicted: files end notes in both ways.
  const int isNoteOn = midiEvent->getStatus() == ZQMidiNoteOn, isSilent = midiEvent->getByte3() == 0;
  const bool isSilentNoteOn = (isNoteOn & isSilent) != 0;
  midiEvent->setByte1(static_cast<unsigned char>(midiEvent->getByte1() - (isSilentNoteOn ? ZQMidiNoteOn - ZQMidiNoteOff : 0)));
  midiEvent->setByte3(isSilentNoteOn ? velocityOfNoteOff : midiEvent->getByte3());
  if (printsEvents_ && isSilentNoteOn) dbPrintf(4, "note-on 0 converted to note-off\n");
  const bool isTaken = (state_.currentTrack == indexOfTrackInHand_ || findTrack()) && trackInHand_->addMidiEvent(midiEvent);
  if (!isTaken) deleteZQMidiEvent(midiEvent);
  return isTaken;
}

/// Adds an event to its track, or drops it, and counts it for the file's track.
bool MidiFileReader::take() {
  MidiTrackReading& track = findings_.tracks.back();
  if (event_.metaFlag == 1) {
    track.metaEvents++;
    const bool isTaken = takeMetaEvent();
    return (event_.buffer[0] != ZQMidiMetaEndOfTrack || findings_.tracks.append({})) && isTaken;
  }
  if (isSystemEvent()) {
    track.systemEvents++;
    dbPrintf(1, "         Sysex data \n");
    return true;
  }
  if (hasNoStatus()) {
    track.unknownEvents++;
    dbPrintf(1, "Unknown MIDI Message Statusbyte %d\n", event_.buffer[0]);
    return true;
  }
  track.channelEvents++;
  track.repeatedEvents += wholeState(&state_).repeatsLastEvent;
  const bool isTaken = takeChannelEvent();
  track.indexOfEventTrack = state_.currentTrack;
  return isTaken;
}

void MidiFileReader::printEvent() const {
  dbPrintf(3, "track: %d, status: %d, time in Quanta, timescale: %d %f\n", state_.currentTrack, event_.buffer[0], event_.time,
           state_.timeScale);
  if (event_.metaFlag == 1)
    dbPrintf(3, "      MetaFlag: %d, no. of data bytes: %d, quanta: %d\n", event_.metaFlag, event_.byteCount, event_.time);
}

bool MidiFileReader::run() {
  bool hasEvent = MIDIFILEReadEvent(&state_) != 0;
  if (state_.currentTrack >= 0 && !findings_.tracks.append({})) return false;
  for (; hasEvent; hasEvent = MIDIFILEReadEvent(&state_) != 0) {
    if (printsEvents_) printEvent();
    if (!take()) return false;
  }
  return true;
}

}  // namespace zmatrix
