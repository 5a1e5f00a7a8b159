// The codec of Standard MIDI Files: converts bytes to events and back, one event per call. It has no notion of track lists, notes
// or matrices. The caller opens the file and closes it. Hosts have these functions under the same names; zmatrix/zmatrix.h
// documents each.
//
// Reading:  BeginReading, ReadPreamble, ReadEvent until it returns 0, EndReading.
// Writing:  BeginWriting, which opens the first track, events, BeginWritingTrack for each further track, EndWriting.
#pragma once

#include <cstdio>

/// One event that was read.
struct _MIDIFILEReadStruct {
  int time;               // in quanta of the codec
  int metaFlag;           // 1 for a meta event, else 0
  int byteCount;          // valid bytes in buffer
  unsigned char* buffer;  // at least 6 bytes
};

/// The state of reading.
struct _MIDIFILEInStruct {
  double tempo;                 // beats per minute
  double timeScale;             // quanta per tick
  int currentTrack;             // -1 before the first
  int trackTicks;               // since the start of the track
  int division;                 // ticks per quarter note
  short format;                 // 0 to 2
  int quantaSize;               // microseconds per quantum
  unsigned char runningStatus;  // 0 before the first status byte
  FILE* file;                   // the caller's
  int bufferSize;               // allocated bytes of event->buffer
  _MIDIFILEReadStruct* event;   // the caller's
};

/// The state of writing.
struct _MIDIFILEOutStruct {
  unsigned char timeInQuanta;  // 1 if times are quanta, 0 if they are ticks
  double tempo;                // beats per minute
  double timeScale;            // ticks per quantum
  int currentTrack;            // -1 before the first
  int division;                // ticks per quarter note
  int trackLength;             // bytes of the current track so far
  int lastTicks;               // time of the last event
  FILE* file;                  // the caller's
  int quantaSize;              // microseconds per quantum
};

_MIDIFILEInStruct* MIDIFILEBeginReading(FILE* file, _MIDIFILEReadStruct* event);
int MIDIFILEReadPreamble(_MIDIFILEInStruct* in, int* format, int* numberOfTracks);
int MIDIFILEReadEvent(_MIDIFILEInStruct* in);
int MIDIFILEEndReading(_MIDIFILEInStruct* in);
/// Declared with the state of writing, but works on the state of reading.
int MIDIFILESetReadQuantaSize(_MIDIFILEOutStruct* state, int size);

_MIDIFILEOutStruct* MIDIFILEBeginWriting(FILE* file, int format, short division, const char* trackName);
int MIDIFILEBeginWritingTrack(_MIDIFILEOutStruct* out, const char* trackName);
int MIDIFILEEndWritingTrack(_MIDIFILEOutStruct* out, int time);
int MIDIFILEEndWriting(_MIDIFILEOutStruct* out);
int MIDIFILEWriteEvent(_MIDIFILEOutStruct* out, int time, int count, const unsigned char* bytes);
int MIDIFILEWriteSysExcl(_MIDIFILEOutStruct* out, int time, int count, const unsigned char* bytes);
int MIDIFILEWriteTempo(_MIDIFILEOutStruct* out, int time, double tempo);
int MIDIFILEWriteTimeSig(_MIDIFILEOutStruct* out, int time, unsigned char numerator, unsigned char denominatorPower,
                         unsigned char clocks, unsigned char notes32nd);
int MIDIFILEWriteKeySig(_MIDIFILEOutStruct* out, int time, unsigned char sharps, unsigned char isMinor);
int MIDIFILEWriteText(_MIDIFILEOutStruct* out, int time, short type, const char* text);
int MIDIFILEWriteSMPTEoffset(_MIDIFILEOutStruct* out, unsigned char hours, unsigned char minutes, unsigned char seconds,
                             unsigned char frames, unsigned char subframes);
int MIDIFILEWriteSequenceNumber(_MIDIFILEOutStruct* out, int number);

namespace zmatrix {

/// The codec's whole state of reading; hosts see its first member only.
struct MidiReadingState {
  _MIDIFILEInStruct seen;
  bool repeatsLastEvent;   ///< the last event was a system byte, delivered with the content of the event before
  bool hasDivisionOfZero;  ///< the preamble was refused for this
  int tracksAnnounced;     ///< number of tracks in the file's header
  long behindLastTrack;    ///< the position behind the last track; 0 until a track has ended, and while another follows
};

inline const MidiReadingState& wholeState(const _MIDIFILEInStruct* in) {
  return *reinterpret_cast<const MidiReadingState*>(in);
}

/// A time as an int: truncated and limited to the range of int; 0 for NaN.
inline int intOfTime(double time) {
  if (time > -2147483649.0 && time < 2147483648.0) return static_cast<int>(time);
  return time > 0 ? 2147483647 : time < 0 ? -2147483647 - 1 : 0;
}

/// Sums and differences of times from a file wrap around.
inline int wrappingSum(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

inline int wrappingDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

}  // namespace zmatrix
