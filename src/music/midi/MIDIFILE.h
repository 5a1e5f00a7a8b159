// The codec of Standard MIDI Files: bytes to events and back, one event a call. It knows the format as published, nothing of
// tracks as lists, notes or matrices. The file is the caller's, open, and stays open. Hosts have these functions under the same
// names; what each does is told in zmatrix/zmatrix.h.
//
// Reading:  BeginReading, ReadPreamble, ReadEvent until it returns 0, EndReading.
// Writing:  BeginWriting, which opens the first track, events, BeginWritingTrack for each further track, EndWriting.
#pragma once

#include <cstdio>

/// One event as it is delivered.
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
  int bufferSize;               // bytes that event->buffer has
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

/// What the codec allocates as the state of reading: more than hosts see.
struct MidiReadingState {
  _MIDIFILEInStruct seen;
  bool repeatsLastEvent;   ///< the last event was a system byte that stands for the event before
  bool hasDivisionOfZero;  ///< why the preamble was refused
  int tracksAnnounced;     ///< as the file says
  long behindLastTrack;    ///< where the file's last track ended, or 0 as long as none did or another one followed
};

inline const MidiReadingState& wholeState(const _MIDIFILEInStruct* in) {
  return *reinterpret_cast<const MidiReadingState*>(in);
}

/// A time as an int: cut, and at the ends of int where it lies outside; 0 for what is no number.
inline int intOfTime(double time) {
  if (time > -2147483649.0 && time < 2147483648.0) return static_cast<int>(time);
  return time > 0 ? 2147483647 : time < 0 ? -2147483647 - 1 : 0;
}

/// Sums and differences of times from a file wrap.
inline int wrappingSum(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

inline int wrappingDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

}  // namespace zmatrix
