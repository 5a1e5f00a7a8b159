// Writing Standard MIDI Files. Lengths are patched: at the end of a track its header gets the length.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "frame/ZQMemory.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiEvent.h"

using zmatrix::systemCalloc;
using zmatrix::systemFree;

namespace {

using zmatrix::intOfTime;
using zmatrix::wrappingDifference;
using zmatrix::wrappingSum;

constexpr long positionOfNumberOfTracks = 10;

bool putByte(_MIDIFILEOutStruct* out, int byte) {
  return putc_unlocked(byte & 0xff, out->file) != EOF;
}

/// Writes `count` bytes, high byte first, that don't count towards the length of the track.
bool putBigEndian(_MIDIFILEOutStruct* out, int value, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
    if (!putByte(out, value >> shift)) return false;
  }
  return true;
}

bool writeByte(_MIDIFILEOutStruct* out, int byte) {
  out->trackLength = wrappingSum(out->trackLength, 1);
  return putByte(out, byte);
}

bool writeBigEndian(_MIDIFILEOutStruct* out, int value, int count) {
  out->trackLength = wrappingSum(out->trackLength, count);
  return putBigEndian(out, value, count);
}

bool writeBytes(_MIDIFILEOutStruct* out, const void* bytes, int count) {
  constexpr int fewBytes = 8;
  const auto* values = static_cast<const unsigned char*>(bytes);
  if (count <= fewBytes) {
    return std::all_of(values, values + std::max(count, 0), [&](unsigned char value) { return writeByte(out, value); });
  }
  out->trackLength = wrappingSum(out->trackLength, count);
  return fwrite(bytes, static_cast<size_t>(count), 1, out->file) == 1;
}

/// A negative value is less than every bound, so that only its low seven bits are written.
bool writeVariableQuantity(_MIDIFILEOutStruct* out, int value) {
  if (value >= 0x10000000 && !writeByte(out, value >> 28 | 0x80)) return false;
  if (value >= 0x200000 && !writeByte(out, value >> 21 | 0x80)) return false;
  if (value >= 0x4000 && !writeByte(out, value >> 14 | 0x80)) return false;
  if (value >= 0x80 && !writeByte(out, value >> 7 | 0x80)) return false;
  return writeByte(out, value & 0x7f);
}

bool writeDelta(_MIDIFILEOutStruct* out, int time) {
  const int ticks = out->timeInQuanta != 0 ? intOfTime(time * out->timeScale + 0.5) : time;
  const int delta = wrappingDifference(ticks, out->lastTicks);
  out->lastTicks = ticks;
  return writeVariableQuantity(out, delta);
}

bool writeMetaHead(_MIDIFILEOutStruct* out, int type, int length) {
  return writeByte(out, 0xff) && writeByte(out, type) && writeVariableQuantity(out, length);
}

bool writeTextOfMeta(_MIDIFILEOutStruct* out, int type, const char* text) {
  const int length = static_cast<int>(strnlen(text, 0x7fffffff));
  return writeMetaHead(out, type, length) && writeBytes(out, text, length);
}

bool endTrackInHand(_MIDIFILEOutStruct* out) {
  return out->trackLength == 0 || MIDIFILEEndWritingTrack(out, 0) == 1;
}

}  // namespace

_MIDIFILEOutStruct* MIDIFILEBeginWriting(FILE* file, int format, short division, const char* trackName) {
  auto* out = static_cast<_MIDIFILEOutStruct*>(systemCalloc(1, sizeof(_MIDIFILEOutStruct)));
  if (out == nullptr) return nullptr;
  out->timeInQuanta = division == 0 ? 1 : 0;
  out->division = division == 0 ? 1024 : division;
  out->tempo = 120.0;
  out->quantaSize = 1000;
  out->file = file;
  out->timeScale = 60000000.0 / (out->division * 1000.0);
  out->currentTrack = -1;
  const bool hasBegun = fputs("MThd", file) >= 0 && putBigEndian(out, 6, 4) && putBigEndian(out, format, 2) &&
                        putBigEndian(out, 1, 2) && putBigEndian(out, out->division, 2) &&
                        MIDIFILEBeginWritingTrack(out, trackName) == 1;
  if (hasBegun) return out;
  systemFree(out);
  return nullptr;
}

int MIDIFILEBeginWritingTrack(_MIDIFILEOutStruct* out, const char* trackName) {
  if (!endTrackInHand(out)) return 0;
  if (fputs("MTrk", out->file) < 0 || !putBigEndian(out, 0, 4)) return 0;
  out->lastTicks = 0;
  out->trackLength = 0;
  out->currentTrack++;
  if (trackName == nullptr || *trackName == 0) return 1;
  return writeByte(out, 0) && writeTextOfMeta(out, zmatrix::ZQMidiMetaTrackName, trackName) ? 1 : 0;
}

int MIDIFILEEndWritingTrack(_MIDIFILEOutStruct* out, int time) {
  if (!writeDelta(out, time) || !writeMetaHead(out, zmatrix::ZQMidiMetaEndOfTrack, 0)) return 0;
  const int length = out->trackLength;
  if (fseek(out->file, -(static_cast<long>(length) + 4), SEEK_CUR) != 0 || !putBigEndian(out, length, 4)) return 0;
  if (fseek(out->file, length, SEEK_CUR) != 0) return 0;
  out->trackLength = 0;
  return 1;
}

int MIDIFILEEndWriting(_MIDIFILEOutStruct* out) {
  const bool hasEnded = endTrackInHand(out) && fseek(out->file, positionOfNumberOfTracks, SEEK_SET) == 0 &&
                        putBigEndian(out, out->currentTrack + 1, 2) && fseek(out->file, 0, SEEK_END) == 0;
  systemFree(out);
  return hasEnded ? 1 : 0;
}

int MIDIFILEWriteEvent(_MIDIFILEOutStruct* out, int time, int count, const unsigned char* bytes) {
  if (!writeDelta(out, time)) return 0;
  if (count <= 0) return 0;  // the delta was written already and stays in the file
  if (bytes[0] >= 0xf0 && (!writeByte(out, 0xf7) || !writeVariableQuantity(out, count))) return 0;
  return writeBytes(out, bytes, count) ? 1 : 0;
}

int MIDIFILEWriteSysExcl(_MIDIFILEOutStruct* out, int time, int count, const unsigned char* bytes) {
  if (count < 1) return 0;
  return writeDelta(out, time) && writeByte(out, 0xf0) && writeVariableQuantity(out, count - 1) &&
                 writeBytes(out, bytes + 1, count - 1)
             ? 1
             : 0;
}

int MIDIFILEWriteTempo(_MIDIFILEOutStruct* out, int time, double tempo) {
  out->tempo = tempo;
  const int microseconds = intOfTime(60000000.0 / tempo + 0.5);
  const bool isWritten =
      writeDelta(out, time) && writeMetaHead(out, zmatrix::ZQMidiMetaTempo, 3) && writeBigEndian(out, microseconds, 3);
  out->timeScale = static_cast<double>(out->quantaSize) * out->division / microseconds;
  return isWritten ? 1 : 0;
}

int MIDIFILEWriteTimeSig(_MIDIFILEOutStruct* out, int time, unsigned char numerator, unsigned char denominatorPower,
                         unsigned char clocks, unsigned char notes32nd) {
  const unsigned char bytes[] = {numerator, denominatorPower, clocks, notes32nd};
  return writeDelta(out, time) && writeMetaHead(out, zmatrix::ZQMidiMetaTimeSignature, 4) && writeBytes(out, bytes, 4) ? 1 : 0;
}

int MIDIFILEWriteKeySig(_MIDIFILEOutStruct* out, int time, unsigned char sharps, unsigned char isMinor) {
  const unsigned char bytes[] = {sharps, isMinor};
  return writeDelta(out, time) && writeMetaHead(out, zmatrix::ZQMidiMetaKeySignature, 2) && writeBytes(out, bytes, 2) ? 1 : 0;
}

int MIDIFILEWriteText(_MIDIFILEOutStruct* out, int time, short type, const char* text) {
  if (text == nullptr) return 1;
  return writeDelta(out, time) && writeTextOfMeta(out, type, text) ? 1 : 0;
}

int MIDIFILEWriteSMPTEoffset(_MIDIFILEOutStruct* out, unsigned char hours, unsigned char minutes, unsigned char seconds,
                             unsigned char frames, unsigned char subframes) {
  // Subframes and frames are swapped: readers of this library's files depend on it.
  const unsigned char bytes[] = {hours, minutes, seconds, subframes, frames};
  return writeByte(out, 0) && writeMetaHead(out, zmatrix::ZQMidiMetaSMPTEOffset, 5) && writeBytes(out, bytes, 5) ? 1 : 0;
}

int MIDIFILEWriteSequenceNumber(_MIDIFILEOutStruct* out, int number) {
  return writeByte(out, 0) && writeMetaHead(out, zmatrix::ZQMidiMetaSequenceNumber, 2) && writeBigEndian(out, number, 2) ? 1 : 0;
}
