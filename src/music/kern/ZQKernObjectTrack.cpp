#include "music/kern/ZQKernObjectTrack.h"

#include <algorithm>
#include <climits>
#include <iterator>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "music/midi/ZQMidiSort.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

namespace {

constexpr int numberOfChannels = 16;
constexpr int percussionChannel = 9;

}  // namespace

void ZQKernObjectTrack::init() {
  objects_.setArray(nullptr);
  objects_.setCount(0);
  objects_.setCapacity(firstCapacity);
}

bool ZQKernObjectTrack::insertKernObjectAtIndex(ZQKernObject* object, int index) {
  if (object == nullptr || index < 0 || index > objects_.getCount() || !objects_.add(object)) return false;
  std::rotate(objects_.begin() + index, objects_.end() - 1, objects_.end());
  return true;
}

void ZQKernObjectTrack::deleteKernObjectAtIndex(int index) {
  deleteZQKernObject(objects_.at(index));
  deleteKernObjectAtIndexOnlyReference(index);
}

void ZQKernObjectTrack::deleteKernObjectAtIndexOnlyReference(int index) {
  if (objects_.getCount() > 0) objects_.removeAt(std::clamp(index, 0, objects_.getCount() - 1));
}

void ZQKernObjectTrack::deleteAllKernObjects() {
  for (ZQKernObject* object : *this) deleteZQKernObject(object);
  objects_.setCount(0);
}

void ZQKernObjectTrack::sortByFunction(ZQCompareFunction compare) {
  if (compare == ZQCompareKernObjectsAscending) {
    sortPointersByKey(objects_.begin(), objects_.getCount(), [](const ZQKernObject* object) {
      return sortableBits(object->getTimeQuanta()) << 16 | static_cast<unsigned>(object->getNoteNumber()) << 8 |
             object->getChannel();
    });
  } else {
    sortPointersByFunction(objects_.begin(), objects_.getCount(), compare);
  }
}

int ZQKernObjectTrack::getMidiTimeSignatureFromKernObjectTrack(int* nom, int* denom) const {
  *nom = *denom = 0;
  int count = 0;
  for (const ZQKernObject* object : *this) {
    if (object->getType() != ZQKernObjectTimeSignature) continue;
    if (count == 0) {
      *nom = object->getTimeSignatureNom();
      *denom = object->getTimeSignatureDenom();
      count = 1;
    } else if (object->getTimeSignatureNom() != *nom || object->getTimeSignatureDenom() != *denom) {
      count++;
    }
  }
  return count;
}

int ZQKernObjectTrack::getMidiSubTypeFromKernObjectTrack(int* chordSize) const {
  int notesOnChannel[UCHAR_MAX + 1] = {};  // a *Ch can set channels above 15
  int previousTime = 0, chord = 0, largestChord = 0, singleNotes = 0;
  for (const ZQKernObject* object : *this) {
    if (!object->isNote()) continue;
    notesOnChannel[object->getChannel()]++;
    if (object->getTimeQuanta() == previousTime) {
      chord++;
      continue;
    }
    previousTime = object->getTimeQuanta();
    if (chord > 0) {
      largestChord = std::max(largestChord, chord);
      chord = 0;
    } else {
      singleNotes++;
    }
  }
  *chordSize = largestChord > 0 ? largestChord + 1 : 0;
  const bool hasDrums = notesOnChannel[percussionChannel] > 0;
  const auto channels = std::count_if(std::begin(notesOnChannel), std::end(notesOnChannel), [](int notes) { return notes > 0; });
  if (largestChord > 0 && channels == 1 && hasDrums) return ZQMidiSubTypePercussion;
  if (channels >= 2 && (chord > 0 || singleNotes > 0)) return ZQMidiSubTypeMultiChannel;
  if (largestChord > 0) return hasDrums ? ZQMidiSubTypeUndefined : ZQMidiSubTypePolyphon;
  return channels < 2 && singleNotes > 0 ? ZQMidiSubTypeMonophon : ZQMidiSubTypeUndefined;
}

int ZQKernObjectTrack::getKernTimeSignatureAndSubTypeFromKernObjectTrack(int* nom, int* denom) const {
  int chordSize = 0;
  getMidiTimeSignatureFromKernObjectTrack(nom, denom);
  return getMidiSubTypeFromKernObjectTrack(&chordSize);
}

int ZQKernObjectTrack::getMidiSoundIDFromKernObjectTrack(int* numberOfSounds) const {
  int notesOfSound[numberOfChannels] = {};
  for (const ZQKernObject* object : *this) {
    if (!object->isNote()) continue;
    int sound = object->getChannel();
    if (sound >= numberOfChannels) {
      dbPrintf(0, "getMidiSoundID: soundID %d undexpected!\n", sound);
      sound = 0;
    }
    notesOfSound[sound]++;
  }
  *numberOfSounds =
      static_cast<int>(std::count_if(std::begin(notesOfSound), std::end(notesOfSound), [](int notes) { return notes > 0; }));
  return static_cast<int>(std::max_element(std::begin(notesOfSound), std::end(notesOfSound)) - std::begin(notesOfSound));
}

ZQKernObjectTrack* createZQKernObjectTrack() {
  return new (std::nothrow) ZQKernObjectTrack;
}

void deleteZQKernObjectTrack(ZQKernObjectTrack* track) {
  delete track;
}

void deleteZQKernObjectTrackOnlyReferences(ZQKernObjectTrack* track) {
  if (track == nullptr) return;
  track->deleteAllKernObjectsOnlyReferences();
  delete track;
}

}  // namespace zmatrix
