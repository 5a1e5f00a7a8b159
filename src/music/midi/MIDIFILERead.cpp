// Reading Standard MIDI Files. Lengths in the file are not trusted: buffers grow with the bytes that were really read.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiEvent.h"

using zmatrix::dbPrintf;
using zmatrix::systemCalloc;
using zmatrix::systemFree;
using zmatrix::systemRealloc;

namespace {

using zmatrix::intOfTime;
using zmatrix::wrappingSum;

constexpr int smallestBuffer = 6;        // tempo and SMPTE offset are written without a check of the size
constexpr uint32_t bytesAtOnce = 65536;  // a buffer grows by at most this much before the bytes are there
constexpr int systemExclusive = 0xf0;
constexpr int endOfSystemExclusive = 0xf7;
constexpr int metaEvent = 0xff;

zmatrix::MidiReadingState& wholeState(_MIDIFILEInStruct* in) {
  return *reinterpret_cast<zmatrix::MidiReadingState*>(in);
}

int readByte(_MIDIFILEInStruct* in) {
  return getc_unlocked(in->file);
}

/// Reads `count` bytes, high byte first.
bool readBigEndian(_MIDIFILEInStruct* in, int count, uint32_t* value) {
  *value = 0;
  for (int i = 0; i < count; i++) {
    const int byte = readByte(in);
    if (byte == EOF) return false;
    *value = *value << 8 | static_cast<uint32_t>(byte);
  }
  return true;
}

/// Reads a variable-length quantity of any number of bytes; the last 32 bits are kept.
bool readVariableQuantity(_MIDIFILEInStruct* in, uint32_t* value) {
  uint32_t bits = 0;
  for (;;) {
    const int byte = readByte(in);
    if (byte == EOF) return false;
    bits = bits << 7 | static_cast<uint32_t>(byte & 0x7f);
    if ((byte & 0x80) != 0) continue;
    *value = bits;
    return true;
  }
}

bool readChunkName(_MIDIFILEInStruct* in, const char* name) {
  for (int i = 0; i < 4; i++) {
    if (readByte(in) != static_cast<unsigned char>(name[i])) return false;
  }
  return true;
}

bool skip(_MIDIFILEInStruct* in, uint32_t count) {
  for (; count > 0; count--) {
    if (readByte(in) == EOF) return false;
  }
  return true;
}

/// Grows the buffer to `size` bytes if it is smaller.
bool provideBuffer(_MIDIFILEInStruct* in, uint32_t size) {
  if (size <= static_cast<uint32_t>(in->bufferSize)) return true;
  auto* resized = static_cast<unsigned char*>(systemRealloc(in->event->buffer, size));
  if (resized == nullptr) return false;
  in->event->buffer = resized;
  in->bufferSize = static_cast<int>(size);
  return true;
}

/// Reads `count` bytes into the buffer from `*position` on, and leaves room for one more. `*position` moves behind the bytes
/// read.
bool readIntoBuffer(_MIDIFILEInStruct* in, uint32_t count, uint32_t* position) {
  while (count > 0) {
    const uint32_t piece = std::min(count, std::max(bytesAtOnce, *position));
    if (*position + piece > INT_MAX - 2u || !provideBuffer(in, *position + piece + 1)) return false;
    const auto got = static_cast<uint32_t>(fread(in->event->buffer + *position, 1, piece, in->file));
    *position += got;
    if (got < piece) return false;
    count -= piece;
  }
  return provideBuffer(in, *position + 1);
}

/// Goes to the next track. The length in its header is ignored: the track ends at its end-of-track event.
bool readTrackHeader(_MIDIFILEInStruct* in) {
  uint32_t length = 0;
  if (!readChunkName(in, "MTrk")) return false;
  in->currentTrack++;
  in->trackTicks = 0;
  return readBigEndian(in, 4, &length);
}

/// Reads a delta and returns the time of the event that follows.
bool readTime(_MIDIFILEInStruct* in, int* time) {
  uint32_t delta = 0;
  if (!readVariableQuantity(in, &delta)) return false;
  in->trackTicks = wrappingSum(in->trackTicks, static_cast<int>(delta));
  *time = intOfTime(in->trackTicks * in->timeScale + 0.5);
  return true;
}

// --- meta events

bool readBytesOfMeta(_MIDIFILEInStruct* in, int type, int count, uint32_t size) {
  in->event->buffer[0] = static_cast<unsigned char>(type);
  in->event->byteCount = count + 1;
  for (int i = 1; i <= count; i++) {
    const int byte = readByte(in);
    if (byte == EOF) return false;
    in->event->buffer[i] = static_cast<unsigned char>(byte);
  }
  return size <= static_cast<uint32_t>(count) || skip(in, size - static_cast<uint32_t>(count));
}

/// A text is terminated behind its last byte. In other data the terminator replaces the last byte, as hosts expect.
bool readDataOfMeta(_MIDIFILEInStruct* in, int type, uint32_t size, bool isText) {
  uint32_t position = 1;
  in->event->buffer[0] = static_cast<unsigned char>(type);
  if (size > INT_MAX - 2u || !readIntoBuffer(in, size, &position)) return false;
  in->event->byteCount = static_cast<int>(size) + 1;
  if (isText) in->event->buffer[position] = 0;
  if (!isText && size > 0) in->event->buffer[position - 1] = 0;
  return true;
}

/// Reads the header of the next track. At the end of the file there is none: the last end-of-track event is not delivered.
bool readEndOfTrack(_MIDIFILEInStruct* in) {
  zmatrix::MidiReadingState& state = wholeState(in);
  state.behindLastTrack = ftell(in->file);
  if (!readTrackHeader(in)) return false;
  state.behindLastTrack = 0;
  in->event->buffer[0] = zmatrix::ZQMidiMetaEndOfTrack;
  in->event->buffer[1] = static_cast<unsigned char>(in->currentTrack >> 8);
  in->event->buffer[2] = static_cast<unsigned char>(in->currentTrack);
  in->event->byteCount = 3;
  return true;
}

/// The state's tempo includes 0.5, added for rounding: 500000 microseconds are 120.5 beats per minute in the state and 120 in the
/// buffer.
bool readTempo(_MIDIFILEInStruct* in, uint32_t size) {
  uint32_t microseconds = 0;
  if (!readBigEndian(in, 3, &microseconds) || (size > 3 && !skip(in, size - 3))) return false;
  in->tempo = 60000000.0 / microseconds + 0.5;
  in->timeScale = microseconds / (static_cast<double>(in->quantaSize) * in->division);
  const int wholeBeats = intOfTime(in->tempo);
  unsigned char* buffer = in->event->buffer;
  buffer[0] = zmatrix::ZQMidiMetaTempo;
  buffer[1] = 0;
  buffer[2] = static_cast<unsigned char>(wholeBeats >> 16);
  buffer[3] = static_cast<unsigned char>(wholeBeats >> 8);
  buffer[4] = static_cast<unsigned char>(wholeBeats);
  in->event->byteCount = 5;
  return true;
}

bool readMetaEvent(_MIDIFILEInStruct* in, int time) {
  in->event->metaFlag = 1;
  in->event->time = time;
  const int type = readByte(in);
  uint32_t size = 0;
  if (type == EOF || !readVariableQuantity(in, &size)) return false;
  switch (type) {
    case zmatrix::ZQMidiMetaSequenceNumber:
      return readBytesOfMeta(in, type, 2, size);
    case zmatrix::ZQMidiMetaEndOfTrack:
      return readEndOfTrack(in);
    case zmatrix::ZQMidiMetaTempo:
      return readTempo(in, size);
    case zmatrix::ZQMidiMetaSMPTEOffset:
      return readBytesOfMeta(in, type, 5, size);
    case zmatrix::ZQMidiMetaTimeSignature:
      return readBytesOfMeta(in, type, 4, size);
    case zmatrix::ZQMidiMetaKeySignature:
      return readBytesOfMeta(in, type, 2, size);
    case zmatrix::ZQMidiMetaEscape:
      dbPrintf(1, "Metafile Escape Code (Sequencer specific data)");
      return readDataOfMeta(in, type, size, false);
    default:
      return readDataOfMeta(in, type, size, type <= 15);
  }
}

// --- system exclusive messages

/// Collects the packets of a message until one ends with 247; any status byte may precede a further packet. The times of all
/// packets are added up. A truncated message is delivered as far as it was read.
bool readSystemExclusive(_MIDIFILEInStruct* in, int time) {
  _MIDIFILEReadStruct* event = in->event;
  event->metaFlag = 0;
  event->time = time;
  event->buffer[0] = systemExclusive;
  event->byteCount = 1;
  for (uint32_t position = 1;;) {
    uint32_t size = 0;
    const bool isWhole = readVariableQuantity(in, &size) && readIntoBuffer(in, size, &position);
    event->byteCount = static_cast<int>(position);
    if (!isWhole || event->buffer[position - 1] == endOfSystemExclusive) return true;
    int timeOfPacket = 0;
    if (!readTime(in, &timeOfPacket)) return true;
    const int status = readByte(in);
    if (status == EOF) return true;
    if (status == metaEvent) return readMetaEvent(in, timeOfPacket);
    event->time = wrappingSum(event->time, timeOfPacket);
  }
}

// --- channel events

int lengthOfMessage(int status) {
  if ((status >= 192 && status <= 223) || status == 241 || status == 243) return 2;
  return status == 246 || status == 247 || status >= 248 ? 1 : 3;
}

// Writes the first four bytes of the buffer as one word, the first byte lowest. Readers load them as one word too; a load of four
// bytes that were just stored one by one would be slow.

uint32_t firstBytes(const unsigned char* buffer) {
  return buffer[0] | buffer[1] << 8 | buffer[2] << 16 | static_cast<uint32_t>(buffer[3]) << 24;
}

void setFirstBytes(unsigned char* buffer, uint32_t bytes) {
  buffer[0] = static_cast<unsigned char>(bytes);
  buffer[1] = static_cast<unsigned char>(bytes >> 8);
  buffer[2] = static_cast<unsigned char>(bytes >> 16);
  buffer[3] = static_cast<unsigned char>(bytes >> 24);
}

void putByte(uint32_t& bytes, int position, int byte) {
  const int shift = 8 * position;
  bytes = (bytes & ~(0xffu << shift)) | static_cast<uint32_t>(byte) << shift;
}

/// `byte` is a status, or the first data byte under the running status. Bytes behind the message are left in the buffer.
bool readChannelEvent(_MIDIFILEInStruct* in, int byte, int time) {
  _MIDIFILEReadStruct* event = in->event;
  const bool isStatus = (byte & 0x80) != 0;
  if (isStatus) in->runningStatus = static_cast<unsigned char>(byte);
  event->metaFlag = 0;
  event->time = time;
  event->byteCount = lengthOfMessage(in->runningStatus);
  uint32_t bytes = firstBytes(event->buffer);
  putByte(bytes, 0, in->runningStatus);
  bool isWhole = true;
  if (event->byteCount >= 2) {
    const int first = isStatus ? readByte(in) : byte;
    isWhole = first != EOF;
    if (isWhole) putByte(bytes, 1, first);
  }
  if (event->byteCount == 3 && isWhole) {
    const int second = readByte(in);
    isWhole = second != EOF;
    if (isWhole) putByte(bytes, 2, second);
  }
  setFirstBytes(event->buffer, bytes);
  return isWhole;
}

/// System bytes that are not decoded: the content of the event before is delivered again for them.
bool repeatsLastEvent(int status) {
  return (status >= 242 && status <= 247) || (status >= 249 && status <= 254);
}

}  // namespace

_MIDIFILEInStruct* MIDIFILEBeginReading(FILE* file, _MIDIFILEReadStruct* event) {
  auto* state = static_cast<zmatrix::MidiReadingState*>(systemCalloc(1, sizeof(zmatrix::MidiReadingState)));
  auto* buffer = static_cast<unsigned char*>(systemCalloc(1, smallestBuffer));
  if (state == nullptr || buffer == nullptr) {
    systemFree(state);
    systemFree(buffer);
    return nullptr;
  }
  _MIDIFILEInStruct* in = &state->seen;
  *event = {0, 0, 0, buffer};
  in->tempo = 120.0;
  in->currentTrack = -1;
  in->quantaSize = 1000;
  in->file = file;
  in->bufferSize = smallestBuffer;
  in->event = event;
  return in;
}

int MIDIFILEReadPreamble(_MIDIFILEInStruct* in, int* format, int* numberOfTracks) {
  uint32_t length = 0, formatOfFile = 0, tracks = 0, division = 0;
  if (!readChunkName(in, "MThd") || !readBigEndian(in, 4, &length) || length < 6) return 0;
  if (!readBigEndian(in, 2, &formatOfFile) || formatOfFile >= 3) return 0;
  if (!readBigEndian(in, 2, &tracks) || !readBigEndian(in, 2, &division) || !skip(in, length - 6)) return 0;
  in->division = static_cast<int16_t>(division);
  // A negative division holds the negated frames per second in its upper byte and the ticks per frame in its lower byte; their
  // product takes the place of the ticks per quarter note.
  if (in->division < 0) in->division = -(in->division >> 8) * (in->division & 0xff);
  wholeState(in).tracksAnnounced = static_cast<int>(tracks);
  wholeState(in).hasDivisionOfZero = in->division == 0;
  if (in->division == 0) return 0;  // no event would have a time
  in->format = static_cast<short>(formatOfFile);
  *format = in->format;
  *numberOfTracks = in->format == 0 ? 1 : static_cast<int>(tracks) - 1;
  in->currentTrack = -1;
  // The tempo affects times only from the first tempo event on.
  in->timeScale = 60000000.0 / (static_cast<double>(in->division) * in->quantaSize);
  return 1;
}

int MIDIFILEReadEvent(_MIDIFILEInStruct* in) {
  if (in->currentTrack < 0 && !readTrackHeader(in)) return 0;
  int time = 0;
  if (!readTime(in, &time)) return 0;
  const int status = readByte(in);
  if (status == EOF) return 0;
  wholeState(in).repeatsLastEvent = repeatsLastEvent(status);
  if (status < systemExclusive) return readChannelEvent(in, status, time) ? 1 : 0;
  if (status == metaEvent) return readMetaEvent(in, time) ? 1 : 0;
  if (status == systemExclusive) return readSystemExclusive(in, time) ? 1 : 0;
  if (wholeState(in).repeatsLastEvent) {
    in->event->metaFlag = 0;
    return 1;
  }
  return readChannelEvent(in, status, time) ? 1 : 0;
}

int MIDIFILEEndReading(_MIDIFILEInStruct* in) {
  systemFree(in->event->buffer);
  in->event->buffer = nullptr;
  systemFree(in);
  return 0;
}

int MIDIFILESetReadQuantaSize(_MIDIFILEOutStruct* state, int size) {
  auto* in = reinterpret_cast<_MIDIFILEInStruct*>(state);
  in->quantaSize = size;
  if (in->division != 0) in->timeScale = 60000000.0 / in->tempo / (static_cast<double>(in->division) * size);
  return size;
}
