#include "music/score/ZQMidiTrackBytes.h"

#include <algorithm>
#include <new>

namespace zmatrix {

namespace {

constexpr size_t sizeOfFileHead = 14, sizeOfChunkHead = 8;
constexpr size_t longestTrack = 0xffffffff;
constexpr int mostTracks = 0xffff;
constexpr long long mostPauses = 1000000;
constexpr unsigned char meta = 0xff, metaText = 0x01, metaEndOfTrack = 0x2f, programChange = 0xc0;

}  // namespace

MidiTrackBytes::MidiTrackBytes(size_t expectedSize) {
  grow(std::max(expectedSize, sizeOfFileHead));
  size_ = sizeOfFileHead;
}

void MidiTrackBytes::grow(size_t count) {
  const size_t capacity = std::max(size_ + count, capacity_ + capacity_ / 2);
  void* const larger = systemRealloc(bytes_.get(), capacity);
  if (larger == nullptr) throw std::bad_alloc();
  static_cast<void>(bytes_.release());
  bytes_.reset(static_cast<unsigned char*>(larger));
  capacity_ = capacity;
}

void MidiTrackBytes::putBigEndianAt(size_t position, size_t value, int count) {
  for (int i = 0; i < count; ++i) bytes_[position++] = static_cast<unsigned char>(value >> (8 * (count - 1 - i)) & 0xff);
}

void MidiTrackBytes::beginTrack() {
  reserve(sizeOfChunkHead);
  track_ = size_;
  memcpy(&bytes_[size_], "MTrk", 4);
  size_ += sizeOfChunkHead;
  tick_ = 0;
  status_ = 0;
  ++tracks_;
}

void MidiTrackBytes::endTrack() {
  moveTo(tick_);
  putMetaEvent(metaEndOfTrack, {});
  const size_t length = size_ - track_ - sizeOfChunkHead;
  isTrackTooLong_ = isTrackTooLong_ || length > longestTrack;
  putBigEndianAt(track_ + 4, length, 4);
}

void MidiTrackBytes::finish(int division) {
  constexpr size_t bytesOfHead = 6, format = 1;
  memcpy(&bytes_[0], "MThd", 4);
  putBigEndianAt(4, bytesOfHead, 4);
  putBigEndianAt(8, format, 2);
  putBigEndianAt(10, static_cast<size_t>(tracks_), 2);
  putBigEndianAt(12, static_cast<size_t>(division), 2);
}

void MidiTrackBytes::putProgramChange(unsigned char channel, unsigned char program) {
  putStatus(programChange | channel);
  put(program);
}

void MidiTrackBytes::putMetaEvent(unsigned char type, std::string_view data) {
  reserve(largestShortEvent + data.size());
  put(meta);
  put(type);
  putQuantity(static_cast<unsigned>(data.size()));
  if (!data.empty()) memcpy(&bytes_[size_], data.data(), data.size());
  size_ += data.size();
  status_ = 0;
}

/// Splits a pause that exceeds the largest delta by empty text events. Returns the remaining delta.
unsigned long long MidiTrackBytes::pause(unsigned long long delta) {
  for (; delta > largestQuantity && pauses_ <= mostPauses; delta -= largestQuantity, ++pauses_) {
    reserve(2 * largestShortEvent);
    putQuantity(largestQuantity);
    putMetaEvent(metaText, {});
  }
  reserve(largestShortEvent);
  return std::min<unsigned long long>(delta, largestQuantity);
}

bool MidiTrackBytes::isPossible() const {
  return tracks_ <= mostTracks && pauses_ <= mostPauses && !isTrackTooLong_;
}

}  // namespace zmatrix
