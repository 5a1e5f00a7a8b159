// The objects of one kern track in the order in which they were read, and the meter, texture and sound of the track. The track
// owns the objects, except for operations with OnlyReference in their names.
#pragma once

#include "music/ZQPointerArray.h"
#include "music/ZQSortByFunction.h"
#include "music/kern/ZQKernObject.h"

namespace zmatrix {

class ZQKernObjectTrack {
 public:
  static constexpr int firstCapacity = 100;
  static constexpr int channelOfWholeFile = 16;

  ZQKernObjectTrack() = default;
  ~ZQKernObjectTrack() { deleteAllKernObjects(); }

  /// Empties the track without releasing its objects.
  void init();
  /// Appends an object and takes ownership; null is ignored. False if memory runs out; then the caller keeps the object.
  bool addKernObject(ZQKernObject* object) { return object == nullptr || objects_.add(object); }
  /// Inserts an object before the one at `index` and takes ownership; an index equal to the count appends. False for null, for an
  /// index outside the range, or if memory runs out; then the caller keeps the object.
  bool insertKernObjectAtIndex(ZQKernObject* object, int index);
  int getCount() const { return objects_.getCount(); }
  /// Null outside the range.
  ZQKernObject* getKernObjectAtIndex(int index) const { return objects_.at(index); }
  /// Releases the object at `index` and removes it. For an index below the range the first reference is removed, for one above it
  /// the last, in both cases without releasing the object.
  void deleteKernObjectAtIndex(int index);
  /// The same without releasing the object.
  void deleteKernObjectAtIndexOnlyReference(int index);
  void deleteAllKernObjects();
  /// Removes all objects without releasing them.
  void deleteAllKernObjectsOnlyReferences() { objects_.setCount(0); }
  /// Removes the objects for which `isRemoved` is true, in one pass, without releasing them.
  template <class Predicate>
  void forgetIf(Predicate isRemoved) {
    objects_.removeIf(isRemoved);
  }
  /// Sorts by a function that compares pointers to two object pointers; null is ignored. A track that is in order is unchanged.
  void sortByFunction(ZQCompareFunction compare);

  /// 0 to 15, or 16 for the track of a whole file.
  int getChannel() const { return channel_; }
  void setChannel(int newChannel) { channel_ = newChannel; }

  /// The first meter of the track's time signature objects. Result: 0 without a signature, else 1, plus one for each later
  /// signature that differs from the first in either value.
  int getMidiTimeSignatureFromKernObjectTrack(int* nom, int* denom) const;
  /// The texture, a ZQMidiSubType. Notes of exactly the same time make a chord; a note at time 0 counts as part of a chord, and a
  /// chord at the end of the track counts as single notes. `chordSize`: number of notes of the largest chord, 0 without one.
  int getMidiSubTypeFromKernObjectTrack(int* chordSize) const;
  /// Both of the above; the result is the texture.
  int getKernTimeSignatureAndSubTypeFromKernObjectTrack(int* nom, int* denom) const;
  /// The channel of most notes, the lowest of equally frequent ones, 0 without notes. `numberOfSounds`: number of different
  /// channels.
  int getMidiSoundIDFromKernObjectTrack(int* numberOfSounds) const;

  ZQKernObject** getKernObjectTrack() const { return objects_.begin(); }
  void setKernObjectTrack(ZQKernObject** array) { objects_.setArray(array); }
  void setNumberOfKernObjects(int number) { objects_.setCount(number); }
  void setInternalNumberOfKernObjects(int number) { objects_.setCapacity(number); }
  ZQKernObject** begin() const { return objects_.begin(); }
  ZQKernObject** end() const { return objects_.end(); }

 private:
  int channel_ = channelOfWholeFile;
  ZQPointerArray<ZQKernObject> objects_{firstCapacity};
};

/// An empty track, or null if memory runs out.
ZQKernObjectTrack* createZQKernObjectTrack();
/// Releases the track with its objects; null is ignored.
void deleteZQKernObjectTrack(ZQKernObjectTrack* track);
/// Releases the track but not its objects; null is ignored.
void deleteZQKernObjectTrackOnlyReferences(ZQKernObjectTrack* track);

}  // namespace zmatrix
