// The objects of one track in order of their start, and the meter, texture and sound of the track. The track owns the objects,
// except for operations with OnlyReferences in their names.
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

  /// Empties the track without releasing its objects.
  void init();
  /// Appends an object and takes ownership; null is ignored. False if memory runs out; then the caller keeps the object.
  bool addMidiObject(ZQMidiObject* object) { return object == nullptr || objects_.add(object); }
  /// Appends references to the objects of another track; room must have been reserved.
  void appendMidiObjects(const ZQMidiObjectTrack& other) { objects_.append(other.objects_); }
  /// Makes room for a total of `count` objects; false if memory runs out.
  bool reserve(int count) { return objects_.reserve(count); }
  int getCount() const { return objects_.getCount(); }
  /// Null outside the range.
  ZQMidiObject* getMidiObjectAtIndex(int index) const { return objects_.at(index); }
  /// Releases the object at `index` and removes it. For an index below the range the first reference is removed, for one above it
  /// the last, in both cases without releasing the object.
  void deleteMidiObjectAtIndex(int index);
  void deleteAllMidiObjects();
  /// Removes all objects without releasing them.
  void deleteAllMidiObjectsOnlyReferences() { objects_.setCount(0); }
  /// Sorts by a function that compares pointers to two object pointers; null is ignored. A track that is in order is unchanged.
  void sortByFunction(ZQCompareFunction compare);

  /// The first meter of the track's time signature objects. `denom` is 2 to the power of the stored denominator, although that is
  /// a plain number: 4/4 gives 4/16. Result: 0 without a signature, else 1, plus one for each later signature that differs from
  /// the first in both values.
  int getMidiTimeSignatureFromMidiObjectTrack(int* nom, int* denom) const;
  /// The texture, a ZQMidiSubType. Notes that start less than `threshold` quanta after the first note of a chord belong to it; a
  /// note at time 0 counts as part of a chord, and a chord at the end of the track counts as single notes. `chordSize`: number of
  /// notes of the largest chord, 0 without one. `hasPercussion`: 1 if channel 9 has notes.
  int getMidiSubTypeFromMidiObjectTrack(int* chordSize, int threshold, int* hasPercussion) const;
  /// Both of the above; the result is the texture.
  int getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(int* nom, int* denom, int threshold, int* hasPercussion) const;
  /// The sound of most notes, the lowest of equally frequent ones, 0 without notes. `numberOfSounds`: number of different sounds.
  int getMidiSoundIDFromMidiObjectTrack(int* numberOfSounds, int* hasPercussion) const;

  ZQMidiObject** getMidiObjectTrack() const { return objects_.begin(); }
  void setMidiObjectTrack(ZQMidiObject** array) { objects_.setArray(array); }
  void setNumberOfMidiObjects(int number) { objects_.setCount(number); }
  void setInternalNumberOfMidiObjects(int number) { objects_.setCapacity(number); }
  ZQMidiObject** begin() const { return objects_.begin(); }
  ZQMidiObject** end() const { return objects_.end(); }

 private:
  ZQPointerArray<ZQMidiObject> objects_{firstCapacity};
};

/// An empty track, or null if memory runs out.
ZQMidiObjectTrack* createZQMidiObjectTrack();
/// Releases the track with its objects; null is ignored.
void deleteZQMidiObjectTrack(ZQMidiObjectTrack* track);
/// Releases the track but not its objects; null is ignored.
void deleteZQMidiObjectTrackOnlyReferences(ZQMidiObjectTrack* track);

/// 2 to the power of a byte from a file; 0 if the power exceeds an int.
constexpr int powerOfTwo(unsigned char exponent) {
  return exponent < 31 ? 1 << exponent : 0;
}

}  // namespace zmatrix
