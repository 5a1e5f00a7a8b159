#include "music/midi/ZQMidiObjectTrack.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "music/midi/ZQMidiSort.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

namespace {

constexpr int numberOfChannels = 16;
constexpr int numberOfSoundBins = 16;
constexpr int percussionChannel = 9;
constexpr int percussionSound = 9;

/// The texture of a track, computed from the starts of its notes.
struct Texture {
  int notesOnChannel[numberOfChannels] = {};
  int chord = 0;  // further notes of the current chord
  int largestChord = 0;
  int singleNotes = 0;
  long long previousStart = 0;

  void add(const ZQMidiObject& note, int threshold) {
    notesOnChannel[note.getChannel()]++;
    const long long start = note.getStartQuanta();
    if (std::llabs(start - previousStart) < threshold) {
      chord++;
      return;
    }
    previousStart = start;
    if (chord > 0) {
      largestChord = std::max(largestChord, chord);
      chord = 0;
    } else {
      singleNotes++;
    }
  }

  int channels() const {
    return static_cast<int>(
        std::count_if(std::begin(notesOnChannel), std::end(notesOnChannel), [](int notes) { return notes > 0; }));
  }
  bool hasDrums() const { return notesOnChannel[percussionChannel] > 0; }

  int subType() const {
    if (largestChord > 0 && channels() == 1 && hasDrums()) return ZQMidiSubTypePercussion;
    if (channels() >= 2 && (chord >= 1 || singleNotes >= 1)) return ZQMidiSubTypeMultiChannel;
    if (largestChord > 0) return hasDrums() ? ZQMidiSubTypeUndefined : ZQMidiSubTypePolyphon;
    return singleNotes > 0 ? ZQMidiSubTypeMonophon : ZQMidiSubTypeUndefined;
  }
};

}  // namespace

void ZQMidiObjectTrack::init() {
  objects_.setArray(nullptr);
  objects_.setCount(0);
  objects_.setCapacity(firstCapacity);
}

void ZQMidiObjectTrack::deleteMidiObjectAtIndex(int index) {
  if (objects_.getCount() == 0) return;
  deleteZQMidiObject(objects_.at(index));
  objects_.removeAt(objects_.holds(index) ? index : index < 0 ? 0 : objects_.getCount() - 1);
}

void ZQMidiObjectTrack::deleteAllMidiObjects() {
  for (ZQMidiObject* object : *this) deleteZQMidiObject(object);
  objects_.setCount(0);
}

void ZQMidiObjectTrack::sortByFunction(ZQCompareFunction compare) {
  if (compare == ZQCompareMidiObjectsAscending) {
    sortPointersByKey(objects_.begin(), objects_.getCount(), [](const ZQMidiObject* object) {
      return sortableBits(object->getStartQuanta()) << 16 | static_cast<unsigned>(object->getNoteNumber()) << 8 |
             object->getSoundID();
    });
  } else {
    sortPointersByFunction(objects_.begin(), objects_.getCount(), compare);
  }
}

int ZQMidiObjectTrack::getMidiTimeSignatureFromMidiObjectTrack(int* nom, int* denom) const {
  *nom = *denom = 0;
  int count = 0;
  for (const ZQMidiObject* object : *this) {
    if (object == nullptr || object->getType() != ZQMidiObjectTimeSignature) continue;
    const int numerator = object->dataByteAt(0);
    const int denominator = powerOfTwo(object->dataByteAt(1));
    if (count == 0) {
      *nom = numerator;
      *denom = denominator;
      count = 1;
    } else if (numerator != *nom && denominator != *denom) {
      count++;
    }
  }
  return count;
}

int ZQMidiObjectTrack::getMidiSubTypeFromMidiObjectTrack(int* chordSize, int threshold, int* hasPercussion) const {
  Texture texture;
  for (const ZQMidiObject* object : *this) {
    if (object == nullptr) {
      dbPrintf(0, "getMidiSubType: kObject = NULL unexpected\n");
    } else if (object->isNote() && object->getChannel() >= numberOfChannels) {
      dbPrintf(0, "getMidiSubType: channel %d unexpected\n", object->getChannel());
    } else if (object->isNote()) {
      texture.add(*object, threshold);
    }
  }
  *hasPercussion = texture.hasDrums() ? 1 : 0;
  *chordSize = texture.largestChord > 0 ? texture.largestChord + 1 : 0;
  return texture.subType();
}

int ZQMidiObjectTrack::getMidiTimeSignatureAndSubTypeFromMidiObjectTrack(int* nom, int* denom, int threshold,
                                                                         int* hasPercussion) const {
  getMidiTimeSignatureFromMidiObjectTrack(nom, denom);
  int chordSize = 0;
  return getMidiSubTypeFromMidiObjectTrack(&chordSize, threshold, hasPercussion);
}

int ZQMidiObjectTrack::getMidiSoundIDFromMidiObjectTrack(int* numberOfSounds, int* hasPercussion) const {
  int notesOfSound[numberOfSoundBins] = {};
  for (const ZQMidiObject* object : *this) {
    if (object == nullptr || !object->isNote()) continue;
    int sound = object->getSoundID();
    if (sound >= numberOfSoundBins) {
      dbPrintf(0, "getMidiSoundID: soundID %d undexpected!\n", sound);
      sound = 0;
    }
    notesOfSound[sound]++;
  }
  *numberOfSounds =
      static_cast<int>(std::count_if(std::begin(notesOfSound), std::end(notesOfSound), [](int notes) { return notes > 0; }));
  *hasPercussion = notesOfSound[percussionSound] > 0 ? 1 : 0;
  return static_cast<int>(std::max_element(std::begin(notesOfSound), std::end(notesOfSound)) - std::begin(notesOfSound));
}

ZQMidiObjectTrack* createZQMidiObjectTrack() {
  return new (std::nothrow) ZQMidiObjectTrack;
}

void deleteZQMidiObjectTrack(ZQMidiObjectTrack* track) {
  delete track;
}

void deleteZQMidiObjectTrackOnlyReferences(ZQMidiObjectTrack* track) {
  if (track != nullptr) track->deleteAllMidiObjectsOnlyReferences();
  delete track;
}

}  // namespace zmatrix
