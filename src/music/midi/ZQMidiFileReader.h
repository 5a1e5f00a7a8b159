// Reads a file's events through the codec and adds them to the event tracks of a list.
#pragma once

#include "frame/ZQDebugChannel.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFile.h"

namespace zmatrix {

class MidiFileReader {
 public:
  MidiFileReader(ZQMidiTrackList& trackList, _MIDIFILEInStruct& readingState, MidiReadFindings& readFindings)
      : list_(trackList), state_(readingState), event_(*readingState.event), findings_(readFindings) {}

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
  bool isSystemEvent() const { return event_.buffer[0] >= 0xf0; }
  bool hasNoStatus() const { return event_.buffer[0] < ZQMidiNoteOff; }
  int timeInQuanta();

  ZQMidiTrackList& list_;
  _MIDIFILEInStruct& state_;
  _MIDIFILEReadStruct& event_;
  MidiReadFindings& findings_;
  const bool printsEvents_ = ZQDebugChannel::shows(1);  // checked once per file, not once per event
  ZQMidiEventTrack* trackInHand_ = nullptr;
  int indexOfTrackInHand_ = -1;
  int ticksOfLastTime_ = 0;  // many successive events have the same time
  int lastTimeInQuanta_ = 0;
};

}  // namespace zmatrix
