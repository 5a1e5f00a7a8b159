// Composes with a trained matrix: reads one note after the other from it, repairs illegal values that it may produce, and writes
// a MIDI file of one track.
#pragma once

#include <memory>

#include "music/midi/ZQMidiTrackList.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

class GeneratedMidi {
 public:
  explicit GeneratedMidi(ZQMatrixMedium* source);

  /// 1 if the current sub-matrix can generate music, else the negative result of the operation, with its message.
  int check() const;
  /// Takes the notes of the context and then those of `numberOfObjex` reads. False if memory runs out.
  bool compose(int numberOfObjex);
  /// The same without a file: the result is in notes().
  bool composeNotes(int numberOfObjex);
  const ZQMidiObjectTrack& notes() const { return *objects_; }
  /// Writes all notes. 0 if the file is complete, else EOF.
  int write(const char* fileName);

  int numberOfNotes() const { return objects_ != nullptr ? objects_->getCount() : 0; }

 private:
  static constexpr int coordinatesOfLargestItem = 4;
  /// A copy of an item of the matrix, unaffected by changes of the kernel.
  struct Item {
    int coordinates[coordinatesOfLargestItem];

    int& noteNumber() { return coordinates[0]; }
    int& noteOn() { return coordinates[1]; }
    int& duration() { return coordinates[2]; }
    int& sound() { return coordinates[3]; }
  };

  bool hasBars() const { return preProcessingType_ != 1; }
  bool hasDurations() const { return coordinateDimension_ >= 3; }
  bool hasSounds() const { return coordinateDimension_ >= 4; }
  void warn() const;
  bool takeContext();
  bool takeItem(int index, Item item);
  bool addNote(Item item, int start);
  int soundOf(Item& item) const { return hasSounds() ? item.sound() : midiSoundId_; }
  void repairNoteNumber(Item& item) const;
  bool repairDuration(Item& item) const;
  bool hasIllegalSound(Item& item) const;
  void restartFrom(Item& item);
  void startAnew();
  void giveNotesTheirLengths();
  bool addMetaEvents();
  bool addMetaEvent(int eventType, int byteCount, const unsigned char* bytes, float value);

  ZQMatrixMedium* matrix_;
  ZQMatrixMediumInfo* info_;
  int preProcessingType_;
  int coordinateDimension_;
  int midiSoundId_;
  int numerator_;
  int denominator_;
  long long barLength_ = 0;
  int timeOffset_ = 0;    // added to the time of each item
  int lastStart_ = 0;     // start of the last note made
  int contextStart_ = 0;  // start of the last note of the context
  int channel_ = 0;       // increases with each sequence; in the file each note has the channel of its sound
  std::unique_ptr<ZQMidiEventTrack> events_;
  std::unique_ptr<ZQMidiObjectTrack> objects_;
};

/// 1 if written, or 0 to -5 as from the matrix's operation of this name; -6 if writing failed, -7 if memory runs out.
/// `numberOfNotes` may be null.
int readMidiObjexsAndWriteToMidiFile(ZQMatrixMedium* matrix, int numberOfObjex, const char* fileName, int* numberOfNotes);

}  // namespace zmatrix
