#include "music/midi/ZQMidiTrackList.h"

#include <memory>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "music/midi/ZQMidiPairing.h"
#include "music/midi/ZQMidiSounds.h"

namespace zmatrix {

namespace {

constexpr int percussionChannel = 9;
constexpr int percussionSound = 9;

struct DeleteOnlyReferences {
  void operator()(ZQMidiObjectTrack* track) const { deleteZQMidiObjectTrackOnlyReferences(track); }
};
/// A track that does not own its objects.
using TrackOfReferences = std::unique_ptr<ZQMidiObjectTrack, DeleteOnlyReferences>;

/// Removes the track at an index; one outside the range means the first or the last.
template <class Track>
void removeTrackAt(ZQPointerArray<Track>& tracks, int index) {
  tracks.removeAt(tracks.holds(index) ? index : index < 0 ? 0 : tracks.getCount() - 1);
}

/// Gives each note the sound of its channel at the note's start. The objects belong to the single tracks.
void giveNotesTheirSounds(ZQMidiObjectTrack& merged) {
  unsigned char soundOfChannel[ZQMidiTrackList::numberOfChannels] = {};
  for (ZQMidiObject* object : merged) {
    const int channel = object->getChannel() & 15;
    if (object->getType() == ZQMidiObjectProgramChange) {
      soundOfChannel[channel] = object->getSoundID();
    } else if (object->getType() <= ZQMidiObjectNote) {
      if (channel == percussionChannel) soundOfChannel[channel] = percussionSound;
      object->setSoundID(soundOfChannel[channel]);
    }
  }
}

}  // namespace

ZQMidiTrackList::~ZQMidiTrackList() {
  deleteAllMidiEventTracks();
  deleteAllMidiObjectTracks();
}

void ZQMidiTrackList::init() {
  eventTracks_.setArray(nullptr);
  eventTracks_.setCount(0);
  eventTracks_.setCapacity(firstCapacity);
  objectTracks_.setArray(nullptr);
  objectTracks_.setCount(0);
  objectTracks_.setCapacity(firstCapacity);
}

bool ZQMidiTrackList::extendEventTracksTo(int index) {
  while (eventTracks_.getCount() <= index) {
    ZQMidiEventTrack* track = createZQMidiEventTrack();
    if (track == nullptr || !eventTracks_.add(track)) {
      deleteZQMidiEventTrack(track);
      return false;
    }
  }
  return true;
}

void ZQMidiTrackList::deleteMidiEventTrackAtIndex(int index) {
  deleteZQMidiEventTrack(eventTracks_.at(index));
  removeTrackAt(eventTracks_, index);
}

void ZQMidiTrackList::deleteMidiObjectTrackAtIndex(int index) {
  deleteZQMidiObjectTrack(objectTracks_.at(index));
  removeTrackAt(objectTracks_, index);
}

void ZQMidiTrackList::deleteMidiObjectTrackAtIndexOnlyReferences(int index) {
  deleteZQMidiObjectTrackOnlyReferences(objectTracks_.at(index));
  removeTrackAt(objectTracks_, index);
}

void ZQMidiTrackList::deleteAllMidiEventTracks() {
  for (ZQMidiEventTrack* track : eventTracks_) deleteZQMidiEventTrack(track);
  eventTracks_.setCount(0);
}

void ZQMidiTrackList::deleteAllMidiObjectTracks() {
  for (ZQMidiObjectTrack* track : objectTracks_) deleteZQMidiObjectTrack(track);
  objectTracks_.setCount(0);
}

ZQMidiObjectTrack* ZQMidiTrackList::createMIDIObjectTrackFromMidiEventTrack(
    const ZQMidiEventTrack* track, const int* statusFilter, const unsigned char* channelFilter, int* numberOfChannelsUsed,
    int* hasPercussion, int* nom, int* denom, MidiPairingFindings* findings) const {
  *numberOfChannelsUsed = *hasPercussion = 0;
  if (track == nullptr) return nullptr;
  std::unique_ptr<ZQMidiObjectTrack> objects(createZQMidiObjectTrack());
  if (objects == nullptr) return nullptr;
  const MidiPairingFilter filter{statusFilter, channelFilter};
  MidiPairing pairing(*track, filter, *objects);
  if (!pairing.run()) return nullptr;
  *numberOfChannelsUsed = pairing.numberOfUsedChannels();
  *hasPercussion = pairing.hasPercussion() ? 1 : 0;
  if (pairing.hasTimeSignature()) {
    *nom = pairing.numerator();
    *denom = pairing.denominator();
  }
  if (findings != nullptr && !findings->tracks.append(pairing.findings())) return nullptr;
  objects->sortByFunction(ZQCompareMidiObjectsAscending);
  return objects.release();
}

bool ZQMidiTrackList::pairAllTracks(const int* statusFilter, const unsigned char* channelFilter, MidiPairingFindings* findings) {
  for (const ZQMidiEventTrack* events : eventTracks_) {
    int numberOfChannelsUsed = 0, hasPercussion = 0, nom = 0, denom = 0;
    ZQMidiObjectTrack* objects = createMIDIObjectTrackFromMidiEventTrack(
        events, statusFilter, channelFilter, &numberOfChannelsUsed, &hasPercussion, &nom, &denom, findings);
    if (objects == nullptr || !objectTracks_.add(objects)) {
      deleteZQMidiObjectTrack(objects);
      return false;
    }
  }
  return true;
}

/// Appends references to all objects except those of track 0, in order of start.
bool ZQMidiTrackList::collectObjects(ZQMidiObjectTrack* merged) const {
  long long count = 0;
  for (int i = 1; i < objectTracks_.getCount(); i++) count += objectTracks_.at(i)->getCount();
  if (count > INT_MAX / 2 || !merged->reserve(static_cast<int>(count))) return false;
  for (int i = 1; i < objectTracks_.getCount(); i++) {
    merged->appendMidiObjects(*objectTracks_.at(i));
  }
  merged->sortByFunction(ZQCompareMidiObjectsAscending);
  return true;
}

/// Replaces the single tracks by the merged track, which takes over their objects.
bool ZQMidiTrackList::replaceByMergedTrack(ZQMidiObjectTrack* merged) {
  if (objectTracks_.getCount() < 2) return objectTracks_.add(merged);
  for (int i = objectTracks_.getCount() - 1; i >= 2; i--) deleteMidiObjectTrackAtIndexOnlyReferences(i);
  deleteZQMidiObjectTrackOnlyReferences(objectTracks_.at(1));
  objectTracks_.begin()[1] = merged;
  return true;
}

bool ZQMidiTrackList::appendCopyOfMergedTrack(ZQMidiObjectTrack* merged) {
  std::unique_ptr<ZQMidiObjectTrack> copies(createZQMidiObjectTrack());
  if (copies == nullptr || !copies->reserve(merged->getCount())) return false;
  for (const ZQMidiObject* object : *merged) {
    ZQMidiObject* copy = object->createAndCopy();
    if (copy == nullptr) return false;
    copies->addMidiObject(copy);
  }
  if (!objectTracks_.add(copies.get())) return false;
  static_cast<void>(copies.release());
  return true;
}

bool ZQMidiTrackList::updateMIDIObjectTracksFromMIDIEventTracks(const int* statusFilter, const unsigned char* channelFilter,
                                                                int midiTrackAnalyze, MidiPairingFindings* findings) {
  deleteAllMidiObjectTracks();
  TrackOfReferences merged(createZQMidiObjectTrack());
  if (merged == nullptr || !pairAllTracks(statusFilter, channelFilter, findings) || !collectObjects(merged.get())) {
    deleteAllMidiObjectTracks();
    return false;
  }
  giveNotesTheirSounds(*merged);
  const int tracks = objectTracks_.getCount();
  if (midiTrackAnalyze == ZQMidiTrackAnalyzeMerged || (midiTrackAnalyze == ZQMidiTrackAnalyzeSingleAndMerged && tracks == 2)) {
    if (!replaceByMergedTrack(merged.get())) return false;
    static_cast<void>(merged.release());
  } else if (midiTrackAnalyze == ZQMidiTrackAnalyzeSingleAndMerged && tracks > 2) {
    return appendCopyOfMergedTrack(merged.get());
  }
  return true;
}

int ZQMidiTrackList::getMidiTimeSignatureFromTrackList(int* nom, int* denom) const {
  if (eventTracks_.getCount() == 0) return 0;
  *nom = *denom = 0;
  int count = 0;
  for (const ZQMidiEvent* event : *eventTracks_.at(0)) {
    if (event->getEventType() != ZQMidiMetaTimeSignature) continue;
    const int numerator = event->getByte1();
    const int denominator = powerOfTwo(event->getByte2());
    if (count == 0) {
      *nom = numerator;
      *denom = denominator;
      count = 1;
    } else if (numerator != *nom || denominator != *denom) {
      count++;
    }
  }
  return count;
}

ZQMidiTrackList* createZQMidiTrackList() {
  return new (std::nothrow) ZQMidiTrackList;
}

void deleteZQMidiTrackList(ZQMidiTrackList* list) {
  delete list;
}

// --- conversion of objects to events

namespace {

/// Adds a channel event; false if memory runs out.
bool addChannelEvent(ZQMidiEventTrack* events, int time, int byteCount, int status, unsigned char b2, unsigned char b3) {
  ZQMidiEvent* event = createZQMidiEvent();
  if (event == nullptr) return false;
  event->initWith(time, static_cast<unsigned char>(status), b2, b3);
  event->setByteCount(byteCount);
  if (events->addMidiEvent(event)) return true;
  deleteZQMidiEvent(event);
  return false;
}

/// Gives each note the channel of its sound, if there is one, and counts the notes per channel.
void giveNotesTheirChannels(ZQMidiObjectTrack& objects, int* notesOnChannel) {
  for (ZQMidiObject* object : objects) {
    if (object->getType() >= 2) {
      dbPrintf(0, "updateEventTrackFromObjectTrack: objectType %d unexpected...\n", object->getType());
    } else if (object->getSoundID() >= 14) {
      dbPrintf(0, "updateEventTrackFromObjectTrack: soundID %d unexpected...\n", object->getSoundID());
    } else {
      object->setChannel(object->getSoundID());
      notesOnChannel[object->getSoundID()]++;
    }
  }
}

/// Adds a program change at time 0 for each channel with notes except channel 0, and always for channel 9.
bool addPrograms(ZQMidiEventTrack* events, const int* notesOnChannel) {
  for (int channel = 1; channel < ZQMidiTrackList::numberOfChannels; channel++) {
    if (notesOnChannel[channel] == 0 && channel != percussionChannel) continue;
    const auto program = static_cast<unsigned char>(getGMProgramChangeIDFromSoundID(channel));
    if (!addChannelEvent(events, 0, 2, ZQMidiProgramChange + channel, program, 0)) return false;
  }
  return true;
}

bool addNotes(ZQMidiEventTrack* events, const ZQMidiObjectTrack& objects) {
  for (const ZQMidiObject* object : objects) {
    if (!addChannelEvent(events, object->getStartQuanta(), 3, ZQMidiNoteOn + object->getChannel(), object->getNoteNumber(),
                         object->getVelocity()) ||
        !addChannelEvent(events, object->getEndQuanta(), 3, ZQMidiNoteOff + object->getChannel(), object->getNoteNumber(),
                         object->getReleaseVelocity()))
      return false;
  }
  return true;
}

}  // namespace

bool updateEventTrackFromObjectTrack(ZQMidiEventTrack* events, ZQMidiObjectTrack* objects) {
  events->deleteMidiEventsIf([](const ZQMidiEvent* event) {
    const int status = event->getStatus();
    return event->isChannelEvent() && (status == ZQMidiNoteOff || status == ZQMidiNoteOn || status == ZQMidiProgramChange);
  });
  int notesOnChannel[ZQMidiTrackList::numberOfChannels] = {};
  giveNotesTheirChannels(*objects, notesOnChannel);
  if (!addPrograms(events, notesOnChannel) || !addNotes(events, *objects)) return false;
  events->sortByFunction(ZQCompareMidiEventsAscending);
  return true;
}

}  // namespace zmatrix
