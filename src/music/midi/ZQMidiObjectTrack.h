// The objects of one track in order of their start, and what they say of the track: its meter, texture and sound. The track owns
// the objects, except where an operation says that only references go.
#pragma once

#include "music/ZQPointerArray.h"
#include "music/ZQSortByFunction.h"
#include "music/midi/ZQMidiObject.h"

namespace zmatrix {

class ZQMidiObjectTrack {
 public:
  static constexpr int firstCapacity = 100;

  ZQMidiObjectTrack() = default;
  ~ZQMidiObjectTrack() { deleteAllMidiObjects(); }

  /// Sets the track up anew; objects that were in it are not released.
  void init();
  /// Appends an object and takes it over; null is ignored. False, and the object still the caller's, if memory has run out.
  bool addMidiObject(ZQMidiObject* object) { return object == nullptr || objects.add(object); }
  /// Appends references to the objects of another track, for which there must be room.
  void appendMidiObjects(const ZQMidiObjectTrack& other) { objects.append(other.objects); }
  /// Makes room for a total of `count` objects; false if memory has run out.
  bool reserve(int count) { return objects.reserve(count); }
  int getCount() const { return objects.getCount(); }
  /// Null outside the range.
  ZQMidiObject* getMidiObjectAtIndex(int index) const { return objects.at(index); }
  /// Inside the range releases the object. The count falls by 1 for an index outside the range too, while there is an object:
  /// below the range all move up, above it the last reference goes.
  void deleteMidiObjectAtIndex(int index);
  void deleteAllMidiObjects();
  /// Forgets all objects and leaves them to whoever holds them.
  void deleteAllMidiObjectsOnlyReferences() { objects.setCount(0); }
  /// Sorts by a function that compares pointers to two object pointers; null is ignored. A track in order stays as it is.
  void sortByFunction(ZQCompareFunction compare);

  /// The first meter of the track's time signature objects. The denominator reads as a power of two of what the object holds,
  /// which is the plain denominator already: 4/4 gives 4/16. Result: 0 without a signature, else 1 and one more for each later
  /// one that differs from the first in both values.
  int getMidiTimeSignatureFromMidiObjectTrack(int* nom, int* denom) const;
  /// The texture as ZQMidiSubType has it. Notes that start less than `threshold` quanta after the first of a chord belong to it;
  /// a note at time 0 counts into one, and a chord at the end of the track is not told from single notes. `chordSize`: notes of
  /// the largest chord, 0 without one. `hasPercussion`: 1 if channel 9 has notes.
  int getMidiSubTypeFromMidiObjectTrack(int* chordSize, int threshold, int* hasPercussion) const;
  /// Both at once; the result is the texture.
  int getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(int* nom, int* denom, int threshold, int* hasPercussion) const;
  /// The sound of most notes, the lowest if several have as many, 0 without notes. `numberOfSounds`: different sounds.
  int getMidiSoundIDFromMidiObjectTrack(int* numberOfSounds, int* hasPercussion) const;

  ZQMidiObject** getMidiObjectTrack() const { return objects.begin(); }
  void setMidiObjectTrack(ZQMidiObject** array) { objects.setArray(array); }
  void setNumberOfMidiObjects(int number) { objects.setCount(number); }
  void setInternalNumberOfMidiObjects(int number) { objects.setCapacity(number); }
  ZQMidiObject** begin() const { return objects.begin(); }
  ZQMidiObject** end() const { return objects.end(); }

 private:
  ZQPointerArray<ZQMidiObject> objects{firstCapacity};
};

/// An empty track, or null if memory has run out.
ZQMidiObjectTrack* createZQMidiObjectTrack();
/// Releases the track with its objects; null is ignored.
void deleteZQMidiObjectTrack(ZQMidiObjectTrack* track);
/// Releases the track and leaves its objects to whoever holds them; null is ignored.
void deleteZQMidiObjectTrackOnlyReferences(ZQMidiObjectTrack* track);

/// 2 to the power of a byte from a file; 0 where an int doesn't hold it.
constexpr int powerOfTwo(unsigned char exponent) {
  return exponent < 31 ? 1 << exponent : 0;
}

}  // namespace zmatrix
