// A musical object with a start and an end, made by pairing events: a note, a program change or a time signature.
#pragma once

#include <cstddef>

#include "music/ZQClassSlab.h"

namespace zmatrix {

enum ZQMidiObjectType : int { ZQMidiObjectNote = 1, ZQMidiObjectProgramChange = 4, ZQMidiObjectTimeSignature = 8 };

class ZQMidiObject final {
 public:
  ZQMidiObject() = default;
  ~ZQMidiObject() {
    if (data_ != nullptr) releaseData();
  }
  ZQMidiObject(const ZQMidiObject&) = delete;
  ZQMidiObject& operator=(const ZQMidiObject&) = delete;

  /// Clears all fields to zero.
  void init();
  /// A note with release velocity 127, on channel 0 unless one is given.
  void initWithNote(int start, int end, unsigned char note, unsigned char noteVelocity) {
    initWithNote(start, end, note, noteVelocity, 0);
  }
  void initWithNote(int start, int end, unsigned char note, unsigned char noteVelocity, unsigned char noteChannel) {
    if (data_ != nullptr) releaseData();
    startQuanta_ = start;
    endQuanta_ = end;
    type_ = ZQMidiObjectNote;
    noteNumber_ = note;
    velocity_ = noteVelocity;
    releaseVelocity_ = 127;
    channel_ = noteChannel;
    phraseBegin_ = phraseEnd_ = soundId_ = 0;
    dataCount_ = dataSize_ = 0;
  }
  /// A change of sound; `program` is a General MIDI program, counted from 0.
  void initWithProgramChange(int time, unsigned char program, unsigned char noteChannel);
  /// Copies all fields and the data. False, with this object cleared, if memory runs out.
  bool initFromMidiObject(const ZQMidiObject* other);
  /// A new copy of this object, or null if memory runs out.
  ZQMidiObject* createAndCopy() const;
  /// Appends a byte to the data; false if memory runs out.
  bool addDataByte(unsigned char byte);
  /// A byte of the data; 0 outside the range.
  unsigned char dataByteAt(int index) const { return data_ != nullptr && index >= 0 && index < dataCount_ ? data_[index] : 0; }

  int getStartQuanta() const { return startQuanta_; }
  void setStartQuanta(int quanta) { startQuanta_ = quanta; }
  int getEndQuanta() const { return endQuanta_; }
  void setEndQuanta(int quanta) { endQuanta_ = quanta; }
  unsigned char getType() const { return type_; }
  void setType(unsigned char newType) { type_ = newType; }
  unsigned char getNoteNumber() const { return noteNumber_; }
  void setNoteNumber(unsigned char number) { noteNumber_ = number; }
  unsigned char getVelocity() const { return velocity_; }
  void setVelocity(unsigned char newVelocity) { velocity_ = newVelocity; }
  unsigned char getReleaseVelocity() const { return releaseVelocity_; }
  void setReleaseVelocity(unsigned char newVelocity) { releaseVelocity_ = newVelocity; }
  unsigned char getChannel() const { return channel_; }
  void setChannel(unsigned char newChannel) { channel_ = newChannel; }
  unsigned char getPhraseBegin() const { return phraseBegin_; }
  void setPhraseBegin(unsigned char flag) { phraseBegin_ = flag; }
  unsigned char getPhraseEnd() const { return phraseEnd_; }
  void setPhraseEnd(unsigned char flag) { phraseEnd_ = flag; }
  unsigned char getSoundID() const { return soundId_; }
  void setSoundID(unsigned char sound) { soundId_ = sound; }
  int getDataCount() const { return dataCount_; }
  void setDataCount(int count) { dataCount_ = count; }
  int getDataSize() const { return dataSize_; }
  void setDataSize(int size) { dataSize_ = size; }
  unsigned char* getData() const { return data_; }
  /// Takes ownership of a block of systemMalloc without releasing the old one.
  void setData(unsigned char* bytes) { data_ = bytes; }

  bool isNote() const { return type_ == ZQMidiObjectNote; }

  static void* operator new(size_t) noexcept { return ZQClassSlab<ZQMidiObject>::allocate(); }
  static void operator delete(void* memory) noexcept { ZQClassSlab<ZQMidiObject>::release(memory); }

 private:
  void releaseData();

  int startQuanta_ = 0;
  int endQuanta_ = 0;
  unsigned char type_ = ZQMidiObjectNote;
  unsigned char noteNumber_ = 0;
  unsigned char velocity_ = 0;
  unsigned char releaseVelocity_ = 127;
  unsigned char channel_ = 0;  // 0 to 15
  unsigned char phraseBegin_ = 0;
  unsigned char phraseEnd_ = 0;
  unsigned char soundId_ = 0;  // 0 to 15
  int dataCount_ = 0;
  int dataSize_ = 0;
  unsigned char* data_ = nullptr;  // time signature: numerator, then denominator as a plain number
};

/// A new object: a note with all fields 0 except for the release velocity of 127; null if memory runs out.
inline ZQMidiObject* createZQMidiObject() {
  return new ZQMidiObject;
}
/// Releases an object and its data; null is ignored.
inline void deleteZQMidiObject(ZQMidiObject* object) {
  delete object;
}

/// Compares two pointers to object pointers by start, then note number, then sound. Result: -1, 0 or 1.
int ZQCompareMidiObjectsAscending(const void* first, const void* second);

}  // namespace zmatrix
