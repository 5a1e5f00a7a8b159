// Composes with a trained matrix: asks it for one note after the other, repairs what a statistical source may produce, and writes
// a MIDI file of one track.
#pragma once

#include <memory>

#include "music/midi/ZQMidiTrackList.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

class GeneratedMidi {
 public:
  explicit GeneratedMidi(ZQMatrixMedium* aMatrix);

  /// 1 if the current sub-matrix can be read as music, else the negative result of the operation, with its message.
  int check() const;
  /// Takes the context's notes and then those of `numberOfObjex` reads. False if memory has run out.
  bool compose(int numberOfObjex);
  /// The same without a thought of a file: notes() has them then.
  bool composeNotes(int numberOfObjex);
  const ZQMidiObjectTrack& notes() const { return *objects; }
  /// Writes all notes. 0 if the file is whole, else EOF.
  int write(const char* fileName);

  int numberOfNotes() const { return objects != nullptr ? objects->getCount() : 0; }

 private:
  static constexpr int coordinatesOfLargestItem = 4;
  /// An object of the matrix, which stays as it is while the kernel changes.
  struct Item {
    int coordinates[coordinatesOfLargestItem];

    int& noteNumber() { return coordinates[0]; }
    int& noteOn() { return coordinates[1]; }
    int& duration() { return coordinates[2]; }
    int& sound() { return coordinates[3]; }
  };

  bool hasBars() const { return preProcessingType != 1; }
  bool hasDurations() const { return coordinateDimension >= 3; }
  bool hasSounds() const { return coordinateDimension >= 4; }
  void warn() const;
  bool takeContext();
  bool takeItem(int index, Item item);
  bool addNote(Item item, int start);
  int soundOf(Item& item) const { return hasSounds() ? item.sound() : midiSoundID; }
  void repairNoteNumber(Item& item) const;
  bool repairDuration(Item& item) const;
  bool hasIllegalSound(Item& item) const;
  void restartFrom(Item& item);
  void startAnew();
  void giveNotesTheirLengths();
  bool addMetaEvents();
  bool addMetaEvent(int eventType, int byteCount, const unsigned char* bytes, float value);

  ZQMatrixMedium* matrix;
  ZQMatrixMediumInfo* info;
  int preProcessingType;
  int coordinateDimension;
  int midiSoundID;
  int numerator;
  int denominator;
  long long barLength = 0;
  int timeOffset = 0;    // added to the time of each object
  int lastStart = 0;     // of the last note made
  int contextStart = 0;  // of the last note of the context
  int channel = 0;       // goes on with each sequence; the file's channels are those of the sounds
  std::unique_ptr<ZQMidiEventTrack> events;
  std::unique_ptr<ZQMidiObjectTrack> objects;
};

/// 1 written, or 0 to -5 as the matrix's operation of this name has it; -6 if a write failed, -7 if memory has run out.
/// `numberOfNotes` may be null.
int readMidiObjexsAndWriteToMidiFile(ZQMatrixMedium* matrix, int numberOfObjex, const char* fileName, int* numberOfNotes);

}  // namespace zmatrix
