// One timed message of a MIDI file. Times are quanta: 12288 per whole note, 3072 per quarter.
#pragma once

#include <cstddef>

#include "music/ZQClassSlab.h"

namespace zmatrix {

/// `eventType` of a channel event. Meta events have their meta type, or 99 for unknown ones.
constexpr int ZQMidiEventTypeChannel = -1;
constexpr int ZQMidiEventTypeUnknownMeta = 99;

/// Upper four bits of a channel event's status; the lower four are the channel.
enum ZQMidiStatus : int {
  ZQMidiNoteOff = 0x80,
  ZQMidiNoteOn = 0x90,
  ZQMidiKeyAftertouch = 0xa0,
  ZQMidiControlChange = 0xb0,
  ZQMidiProgramChange = 0xc0,
  ZQMidiChannelAftertouch = 0xd0,
  ZQMidiPitchWheel = 0xe0
};

/// The meta events that this library interprets.
enum ZQMidiMetaType : int {
  ZQMidiMetaSequenceNumber = 0,
  ZQMidiMetaText = 1,
  ZQMidiMetaCopyright = 2,
  ZQMidiMetaTrackName = 3,
  ZQMidiMetaMarker = 6,
  ZQMidiMetaEndOfTrack = 47,
  ZQMidiMetaTempo = 81,
  ZQMidiMetaSMPTEOffset = 84,
  ZQMidiMetaTimeSignature = 88,
  ZQMidiMetaKeySignature = 89,
  ZQMidiMetaSequencerSpecific = 127,
  ZQMidiMetaEscape = 247
};

class ZQMidiEvent final {
 public:
  virtual ~ZQMidiEvent() = default;

  /// Sets time, bytes and their number; the event type is unchanged.
  void initWith(int time, unsigned char b1) { set(time, 1, b1, 0, 0, 0); }
  void initWith(int time, unsigned char b1, unsigned char b2) { set(time, 2, b1, b2, 0, 0); }
  void initWith(int time, unsigned char b1, unsigned char b2, unsigned char b3) { set(time, 3, b1, b2, b3, 0); }
  void initWith(int time, unsigned char b1, unsigned char b2, unsigned char b3, unsigned char b4) {
    set(time, 4, b1, b2, b3, b4);
  }

  int getTimeQuanta() const { return timeQuanta_; }
  void setTimeQuanta(int time) { timeQuanta_ = time; }
  int getByteCount() const { return byteCount_; }
  void setByteCount(int count) { byteCount_ = count; }
  unsigned char getByte1() const { return byte1_; }
  void setByte1(unsigned char byte) { byte1_ = byte; }
  unsigned char getByte2() const { return byte2_; }
  void setByte2(unsigned char byte) { byte2_ = byte; }
  unsigned char getByte3() const { return byte3_; }
  void setByte3(unsigned char byte) { byte3_ = byte; }
  unsigned char getByte4() const { return byte4_; }
  void setByte4(unsigned char byte) { byte4_ = byte; }
  int getEventType() const { return eventType_; }
  void setEventType(int type) { eventType_ = type; }
  float getFloatValue() const { return floatValue_; }
  void setFloatValue(float value) { floatValue_ = value; }

  /// Copies a message from a file: `count` of the four bytes at `bytes` are valid.
  void initWithBytes(int time, int count, const unsigned char* bytes) {
    set(time, count, bytes[0], bytes[1], bytes[2], bytes[3]);
  }

  int getChannel() const { return byte1_ & 15; }
  void setChannel(int channel) { byte1_ = static_cast<unsigned char>((byte1_ & 0xf0) | (channel & 15)); }
  bool isChannelEvent() const { return eventType_ == ZQMidiEventTypeChannel; }
  /// The upper four bits of the first byte, a ZQMidiStatus.
  int getStatus() const { return byte1_ & 0xf0; }

  /// A new copy of this event, or null if memory runs out.
  ZQMidiEvent* createAndCopy() const;

  static void* operator new(size_t) noexcept { return ZQClassSlab<ZQMidiEvent>::allocate(); }
  static void operator delete(void* memory) noexcept { ZQClassSlab<ZQMidiEvent>::release(memory); }

 private:
  void set(int time, int count, unsigned char b1, unsigned char b2, unsigned char b3, unsigned char b4) {
    timeQuanta_ = time;
    byteCount_ = count;
    byte1_ = b1;
    byte2_ = b2;
    byte3_ = b3;
    byte4_ = b4;
  }

  int timeQuanta_ = 0;
  int byteCount_ = 0;  // 0 to 4
  unsigned char byte1_ = 0;
  unsigned char byte2_ = 0;
  unsigned char byte3_ = 0;
  unsigned char byte4_ = 0;
  int eventType_ = ZQMidiEventTypeChannel;
  float floatValue_ = 0;  // tempo: beats per minute; time signature: the reader's time scale
};

/// A new channel event with time and bytes 0; null if memory runs out.
inline ZQMidiEvent* createZQMidiEvent() {
  return new ZQMidiEvent;
}
/// Null is ignored.
inline void deleteZQMidiEvent(ZQMidiEvent* event) {
  delete event;
}

/// Orders for sorting, with results -1, 0 or 1. The first takes two pointers to event pointers and compares by time, then first
/// byte: a note-off comes before a note-on of the same time, since its status is lower. The others take two events.
int ZQCompareMidiEventsAscending(const void* first, const void* second);
int ZQCompareMidiEventsByByte1Ascending(const ZQMidiEvent* first, const ZQMidiEvent* second);
int ZQCompareMidiEventsByTimeAscending(const ZQMidiEvent* first, const ZQMidiEvent* second);

}  // namespace zmatrix
