// The objects of one kern track in the order in which they were read, and what they say of it: meter, texture and sound. The
// track owns the objects, except where an operation says that only references go.
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

  /// Sets the track up anew; objects that were in it are not released.
  void init();
  /// Appends an object and takes it over; null is ignored. False, and the object still the caller's, if memory has run out.
  bool addKernObject(ZQKernObject* object) { return object == nullptr || objects.add(object); }
  /// Inserts an object before the one at `index` and takes it over; the count as index appends. False, and the object still the
  /// caller's, for null, for an index outside, or if memory has run out.
  bool insertKernObjectAtIndex(ZQKernObject* object, int index);
  int getCount() const { return objects.getCount(); }
  /// Null outside the range.
  ZQKernObject* getKernObjectAtIndex(int index) const { return objects.at(index); }
  /// Inside the range releases the object. The count falls by 1 for an index outside the range too, while there is an object:
  /// below the range all move up, above it the last reference goes.
  void deleteKernObjectAtIndex(int index);
  /// As before, but the object is left to whoever holds it.
  void deleteKernObjectAtIndexOnlyReference(int index);
  void deleteAllKernObjects();
  /// Forgets all objects and leaves them to whoever holds them.
  void deleteAllKernObjectsOnlyReferences() { objects.setCount(0); }
  /// Forgets the objects of which `isToGo` is true, in one pass.
  template <class Predicate>
  void forgetIf(Predicate isToGo) {
    objects.removeIf(isToGo);
  }
  /// Sorts by a function that compares pointers to two object pointers; null is ignored. A track in order stays as it is.
  void sortByFunction(ZQCompareFunction compare);

  /// 0 to 15, or 16 for the track of a whole file.
  int getChannel() const { return channel; }
  void setChannel(int aChannel) { channel = aChannel; }

  /// The first meter of the track's time signature objects. Result: 0 without a signature, else 1 and one more for each later one
  /// that differs from the first in either value.
  int getMidiTimeSignatureFromKernObjectTrack(int* nom, int* denom) const;
  /// The texture as ZQMidiSubType has it. Notes of exactly the same time make a chord; one at time 0 counts into one, and a chord
  /// at the end of the track is not told from single notes. `chordSize`: notes of the largest chord, 0 without one.
  int getMidiSubTypeFromKernObjectTrack(int* chordSize) const;
  /// Both at once; the result is the texture.
  int getKernTimeSignatureAndSubTypeFromKernObjectTrack(int* nom, int* denom) const;
  /// The channel of most notes, the lowest if several have as many, 0 without notes. `numberOfSounds`: different channels.
  int getMidiSoundIDFromKernObjectTrack(int* numberOfSounds) const;

  ZQKernObject** getKernObjectTrack() const { return objects.begin(); }
  void setKernObjectTrack(ZQKernObject** array) { objects.setArray(array); }
  void setNumberOfKernObjects(int number) { objects.setCount(number); }
  void setInternalNumberOfKernObjects(int number) { objects.setCapacity(number); }
  ZQKernObject** begin() const { return objects.begin(); }
  ZQKernObject** end() const { return objects.end(); }

 private:
  int channel = channelOfWholeFile;
  ZQPointerArray<ZQKernObject> objects{firstCapacity};
};

/// An empty track, or null if memory has run out.
ZQKernObjectTrack* createZQKernObjectTrack();
/// Releases the track with its objects; null is ignored.
void deleteZQKernObjectTrack(ZQKernObjectTrack* track);
/// Releases the track and leaves its objects to whoever holds them; null is ignored.
void deleteZQKernObjectTrackOnlyReferences(ZQKernObjectTrack* track);

}  // namespace zmatrix
