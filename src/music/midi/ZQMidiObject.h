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
    if (data != nullptr) releaseData();
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
    if (data != nullptr) releaseData();
    startQuanta = start;
    endQuanta = end;
    type = ZQMidiObjectNote;
    noteNumber = note;
    velocity = noteVelocity;
    releaseVelocity = 127;
    channel = noteChannel;
    phraseBegin = phraseEnd = soundID = 0;
    dataCount = dataSize = 0;
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
  unsigned char dataByteAt(int index) const { return data != nullptr && index >= 0 && index < dataCount ? data[index] : 0; }

  int getStartQuanta() const { return startQuanta; }
  void setStartQuanta(int quanta) { startQuanta = quanta; }
  int getEndQuanta() const { return endQuanta; }
  void setEndQuanta(int quanta) { endQuanta = quanta; }
  unsigned char getType() const { return type; }
  void setType(unsigned char newType) { type = newType; }
  unsigned char getNoteNumber() const { return noteNumber; }
  void setNoteNumber(unsigned char number) { noteNumber = number; }
  unsigned char getVelocity() const { return velocity; }
  void setVelocity(unsigned char newVelocity) { velocity = newVelocity; }
  unsigned char getReleaseVelocity() const { return releaseVelocity; }
  void setReleaseVelocity(unsigned char newVelocity) { releaseVelocity = newVelocity; }
  unsigned char getChannel() const { return channel; }
  void setChannel(unsigned char newChannel) { channel = newChannel; }
  unsigned char getPhraseBegin() const { return phraseBegin; }
  void setPhraseBegin(unsigned char flag) { phraseBegin = flag; }
  unsigned char getPhraseEnd() const { return phraseEnd; }
  void setPhraseEnd(unsigned char flag) { phraseEnd = flag; }
  unsigned char getSoundID() const { return soundID; }
  void setSoundID(unsigned char sound) { soundID = sound; }
  int getDataCount() const { return dataCount; }
  void setDataCount(int count) { dataCount = count; }
  int getDataSize() const { return dataSize; }
  void setDataSize(int size) { dataSize = size; }
  unsigned char* getData() const { return data; }
  /// Takes ownership of a block of systemMalloc without releasing the old one.
  void setData(unsigned char* bytes) { data = bytes; }

  bool isNote() const { return type == ZQMidiObjectNote; }

  static void* operator new(size_t) noexcept { return ZQClassSlab<ZQMidiObject>::allocate(); }
  static void operator delete(void* memory) noexcept { ZQClassSlab<ZQMidiObject>::release(memory); }

 private:
  void releaseData();

  int startQuanta = 0;
  int endQuanta = 0;
  unsigned char type = ZQMidiObjectNote;
  unsigned char noteNumber = 0;
  unsigned char velocity = 0;
  unsigned char releaseVelocity = 127;
  unsigned char channel = 0;  // 0 to 15
  unsigned char phraseBegin = 0;
  unsigned char phraseEnd = 0;
  unsigned char soundID = 0;  // 0 to 15
  int dataCount = 0;
  int dataSize = 0;
  unsigned char* data = nullptr;  // time signature: numerator, then denominator as a plain number
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
