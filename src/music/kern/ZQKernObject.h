// One object of a kern file: the start or the end of a note, a signature, a tempo, or a text. A track holds all of them in one
// sequence.
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
  /// Copies all fields and the text. False, with this object cleared, if memory runs out.
  bool initFromKernObject(const ZQKernObject* other);
  /// A new copy of this object, or null if memory runs out.
  ZQKernObject* createAndCopy() const;

  /// Stores a copy of a text up to its first zero byte; null is an empty text. False, with no text, if memory runs out.
  bool setBuffer(const char* text);
  bool setBuffer(std::string_view text);
  /// The terminated text; up to 7 characters are stored in the object itself.
  const char* getBuffer() const { return buffer_ != nullptr ? buffer_ : inlineStore_; }
  int getByteCount() const { return byteCount_; }
  void setByteCount(int count) { byteCount_ = count; }
  /// A byte of the text, 0 behind its end.
  unsigned char textByteAt(int index) const;

  unsigned char getType() const { return type_; }
  void setType(unsigned char newType) { type_ = newType; }
  int getTimeQuanta() const { return timeQuanta_; }
  void setTimeQuanta(int quanta) { timeQuanta_ = quanta; }
  int getDuration() const { return duration_; }
  void setDuration(int quanta) { duration_ = quanta; }
  unsigned char getNoteNumber() const { return noteNumber_; }
  void setNoteNumber(unsigned char number) { noteNumber_ = number; }
  unsigned char getChannel() const { return channel_; }
  void setChannel(unsigned char newChannel) { channel_ = newChannel; }
  unsigned char getPhraseBegin() const { return phraseBegin_; }
  void setPhraseBegin(unsigned char flag) { phraseBegin_ = flag; }
  unsigned char getPhraseEnd() const { return phraseEnd_; }
  void setPhraseEnd(unsigned char flag) { phraseEnd_ = flag; }

  // Fields that belong to one type read as 0 from an object of another type.
  float getTempo() const { return type_ == ZQKernObjectTempo ? tempo_ : 0; }
  void setTempo(float beatsPerMinute) { tempo_ = beatsPerMinute; }
  int getTimeSignatureNom() const { return type_ == ZQKernObjectTimeSignature ? firstValue_ : 0; }
  int getTimeSignatureDenom() const { return type_ == ZQKernObjectTimeSignature ? secondValue_ : 0; }
  void setTimeSignature(int nom, int denom) { setValues(nom, denom); }
  /// Returns the count; *second gets the second value unless `second` is null.
  int getKeySignature(int* second) const;
  void setKeySignature(int count, int second) { setValues(count, second); }

  bool isNote() const { return type_ == ZQKernObjectNoteOn; }

  static void* operator new(size_t size) noexcept;
  static void operator delete(void* memory) noexcept;

 private:
  static constexpr int inlineSize = 8;

  void setValues(int first, int second) {
    firstValue_ = first;
    secondValue_ = second;
  }
  void releaseText();

  unsigned char type_ = 0;
  unsigned char noteNumber_ = 0;
  unsigned char channel_ = 0;
  unsigned char phraseBegin_ = 0;
  unsigned char phraseEnd_ = 0;
  int timeQuanta_ = 0;
  int duration_ = 0;  // of notes
  int byteCount_ = 0;
  int firstValue_ = 0;   // numerator, or count of the key signature
  int secondValue_ = 0;  // denominator, or second value of the key signature
  float tempo_ = 0;      // beats per minute
  char inlineStore_[inlineSize] = {};
  char* buffer_ = nullptr;  // a text of more than 7 characters, or null
};

/// A new object with all fields 0; null if memory runs out.
ZQKernObject* createZQKernObject();
ZQKernObject* createAndInitZQKernObjectOfType(int type, int time);
/// Releases an object and its text; null is ignored.
void deleteZQKernObject(ZQKernObject* object);

/// Compares two pointers to object pointers by time, then note number, then channel. Result: -1, 0 or 1.
int ZQCompareKernObjectsAscending(const void* first, const void* second);

}  // namespace zmatrix
