// Builds the bytes of a MIDI file, track after track.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "frame/ZQSystemOwned.h"

namespace zmatrix {

/// A MIDI file of format 1. Throws std::bad_alloc if memory runs out.
class MidiTrackBytes {
 public:
  /// Reserves `expectedSize` bytes.
  explicit MidiTrackBytes(size_t expectedSize);

  void beginTrack();
  void endTrack();
  /// Writes the head when all tracks are complete.
  void finish(int division);

  /// Begins an event at a tick, which is not before the last one.
  void moveTo(long long tick) {
    reserve(largestShortEvent);
    auto delta = static_cast<unsigned long long>(tick - tick_);
    if (delta > largestQuantity) delta = pause(delta);
    tick_ = tick;
    putQuantity(static_cast<unsigned>(delta));
  }
  /// Writes a channel event; `status` becomes the running status.
  void putChannelEvent(unsigned char status, unsigned char first, unsigned char second) {
    putStatus(status);
    put(first);
    put(second);
  }
  void putProgramChange(unsigned char channel, unsigned char program);
  void putMetaEvent(unsigned char type, std::string_view data);

  /// False if a track or the number of tracks is too large for the format, or if there were too many long pauses.
  bool isPossible() const;
  int numberOfTracks() const { return tracks_; }
  const unsigned char* bytes() const { return bytes_.get(); }
  size_t size() const { return size_; }
  unsigned char* release() { return bytes_.release(); }

 private:
  static constexpr size_t largestShortEvent = 16;
  static constexpr unsigned largestQuantity = 0xfffffff;

  void reserve(size_t count) {
    if (capacity_ - size_ < count) grow(count);
  }
  void grow(size_t count);
  void put(unsigned char byte) { bytes_[size_++] = byte; }
  void putQuantity(unsigned value) {
    if (value >= 1U << 21) put(static_cast<unsigned char>(0x80 | value >> 21));
    if (value >= 1U << 14) put(static_cast<unsigned char>(0x80 | (value >> 14 & 0x7f)));
    if (value >= 1U << 7) put(static_cast<unsigned char>(0x80 | (value >> 7 & 0x7f)));
    put(static_cast<unsigned char>(value & 0x7f));
  }
  void putStatus(unsigned char status) {
    if (status != status_) put(status);
    status_ = status;
  }
  void putBigEndianAt(size_t position, size_t value, int count);
  unsigned long long pause(unsigned long long delta);

  SystemOwned<unsigned char> bytes_;
  size_t size_ = 0, capacity_ = 0;
  size_t track_ = 0;  ///< position of its begin
  long long tick_ = 0;
  unsigned char status_ = 0;  ///< running status; 0 for none
  int tracks_ = 0;
  long long pauses_ = 0;
  bool isTrackTooLong_ = false;
};

}  // namespace zmatrix
