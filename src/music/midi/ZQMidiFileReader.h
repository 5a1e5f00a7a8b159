// Reads a file's events through the codec and adds them to the event tracks of a list.
#pragma once

#include "frame/ZQDebugChannel.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFile.h"

namespace zmatrix {

class MidiFileReader {
 public:
  MidiFileReader(ZQMidiTrackList& trackList, _MIDIFILEInStruct& readingState, MidiReadFindings& readFindings)
      : list(trackList), state(readingState), event(*readingState.event), findings(readFindings) {}

  /// Reads until the codec delivers no more events. False if memory runs out.
  bool run();

 private:
  bool take();
  void printEvent() const;
  bool takeMetaEvent();
  bool takeChannelEvent();
  bool addToTrack(ZQMidiEventTrack* track, ZQMidiEvent* midiEvent);
  bool findTrack();
  bool addMeterOfText();
  bool isSystemEvent() const { return event.buffer[0] >= 0xf0; }
  bool hasNoStatus() const { return event.buffer[0] < ZQMidiNoteOff; }
  int timeInQuanta();

  ZQMidiTrackList& list;
  _MIDIFILEInStruct& state;
  _MIDIFILEReadStruct& event;
  MidiReadFindings& findings;
  const bool printsEvents = ZQDebugChannel::shows(1);  // checked once per file, not once per event
  ZQMidiEventTrack* trackInHand = nullptr;
  int indexOfTrackInHand = -1;
  int ticksOfLastTime = 0;  // many successive events have the same time
  int lastTimeInQuanta = 0;
};

}  // namespace zmatrix
