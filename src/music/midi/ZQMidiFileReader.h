// Takes the codec's events, one after the other, into the event tracks of a list.
#pragma once

#include "frame/ZQDebugChannel.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFile.h"

namespace zmatrix {

class MidiFileReader {
 public:
  MidiFileReader(ZQMidiTrackList& aList, _MIDIFILEInStruct& aState, MidiReadFindings& theFindings)
      : list(aList), state(aState), event(*aState.event), findings(theFindings) {}

  /// Reads until nothing more can be read. False if memory has run out.
  bool run();

 private:
  bool take();
  void tellEvent() const;
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
  const bool speaks = ZQDebugChannel::shows(1);  // asked once a file, not once an event
  ZQMidiEventTrack* trackInHand = nullptr;
  int indexOfTrackInHand = -1;
  int ticksOfLastTime = 0;  // many events share their time
  int lastTimeInQuanta = 0;
};

}  // namespace zmatrix
