// One thing of a kern reading: the start of a note, its end, a signature, a tempo, or a text. All of them lie in one stream.
#pragma once

#include <cstddef>
#include <string_view>

namespace zmatrix {

enum ZQKernObjectType : int {
  ZQKernObjectNoteOn = 1,
  ZQKernObjectNoteOff = 2,
  ZQKernObjectTimeSignature = 4,
  ZQKernObjectKeySignature = 5,
  ZQKernObjectTempo = 7,
  ZQKernObjectText = 9,  ///< written as a comment is; the reader makes none
  ZQKernObjectComment = 10,
  ZQKernObjectTrackName = 11
};

class ZQKernObject {
 public:
  ZQKernObject() = default;
  ~ZQKernObject();
  ZQKernObject(const ZQKernObject&) = delete;
  ZQKernObject& operator=(const ZQKernObject&) = delete;

  /// Clears all fields.
  void init();
  /// Copies all fields and the text. False, and this object cleared, if memory has run out.
  bool initFromKernObject(const ZQKernObject* other);
  /// A new object like this one, or null if memory has run out.
  ZQKernObject* createAndCopy() const;

  /// Keeps a copy of a text up to its first zero byte; a null one is empty. False, and no text, if memory has run out.
  bool setBuffer(const char* text);
  bool setBuffer(std::string_view text);
  /// The text, terminated; it lies in the object itself if it has up to 7 characters.
  const char* getBuffer() const { return buffer != nullptr ? buffer : inlineStore; }
  int getByteCount() const { return byteCount; }
  void setByteCount(int count) { byteCount = count; }
  /// Byte of the text, 0 behind its end.
  unsigned char textByteAt(int index) const;

  unsigned char getType() const { return type; }
  void setType(unsigned char aType) { type = aType; }
  int getTimeQuanta() const { return timeQuanta; }
  void setTimeQuanta(int quanta) { timeQuanta = quanta; }
  int getDuration() const { return duration; }
  void setDuration(int quanta) { duration = quanta; }
  unsigned char getNoteNumber() const { return noteNumber; }
  void setNoteNumber(unsigned char number) { noteNumber = number; }
  unsigned char getChannel() const { return channel; }
  void setChannel(unsigned char aChannel) { channel = aChannel; }
  unsigned char getPhraseBegin() const { return phraseBegin; }
  void setPhraseBegin(unsigned char flag) { phraseBegin = flag; }
  unsigned char getPhraseEnd() const { return phraseEnd; }
  void setPhraseEnd(unsigned char flag) { phraseEnd = flag; }

  // What belongs to one type alone reads as 0 from any other.
  float getTempo() const { return type == ZQKernObjectTempo ? tempo : 0; }
  void setTempo(float beatsPerMinute) { tempo = beatsPerMinute; }
  int getTimeSignatureNom() const { return type == ZQKernObjectTimeSignature ? firstValue : 0; }
  int getTimeSignatureDenom() const { return type == ZQKernObjectTimeSignature ? secondValue : 0; }
  void setTimeSignature(int nom, int denom) { setValues(nom, denom); }
  /// The count, and the second value if there is room for it.
  int getKeySignature(int* second) const;
  void setKeySignature(int count, int second) { setValues(count, second); }

  bool isNote() const { return type == ZQKernObjectNoteOn; }

  static void* operator new(size_t size) noexcept;
  static void operator delete(void* memory) noexcept;

 private:
  static constexpr int inlineSize = 8;

  void setValues(int first, int second) {
    firstValue = first;
    secondValue = second;
  }
  void releaseText();

  unsigned char type = 0;
  unsigned char noteNumber = 0;
  unsigned char channel = 0;
  unsigned char phraseBegin = 0;
  unsigned char phraseEnd = 0;
  int timeQuanta = 0;
  int duration = 0;  // of notes
  int byteCount = 0;
  int firstValue = 0;   // numerator, or count of the key signature
  int secondValue = 0;  // denominator, or what else the key signature says
  float tempo = 0;      // beats a minute
  char inlineStore[inlineSize] = {};
  char* buffer = nullptr;  // a longer text, or null
};

/// A new object with all fields 0; null if memory has run out.
ZQKernObject* createZQKernObject();
ZQKernObject* createAndInitZQKernObjectOfType(int type, int time);
/// Releases an object and its text; null is ignored.
void deleteZQKernObject(ZQKernObject* object);

/// Compares two pointers to object pointers by time, then note number, then channel. Result: -1, 0 or 1.
int ZQCompareKernObjectsAscending(const void* first, const void* second);

}  // namespace zmatrix
