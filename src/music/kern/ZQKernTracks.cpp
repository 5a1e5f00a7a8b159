#include "music/kern/ZQKernTracks.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernFile.h"

namespace zmatrix {

namespace {

constexpr int numberOfChannels = 16;
constexpr float defaultTempo = 121.0F;
constexpr int defaultNumerator = 4, defaultDenominator = 4;

/// Moves the first object of a type to the head of the track and to time 0. False if there is none.
bool moveFirstToHead(ZQKernObjectTrack* track, int type) {
  const auto first =
      std::find_if(track->begin(), track->end(), [type](const ZQKernObject* object) { return object->getType() == type; });
  if (first == track->end()) return false;
  (*first)->setTimeQuanta(0);
  std::rotate(track->begin(), first, first + 1);
  return true;
}

/// Moves both; the one that stood later ends up first.
void moveTempoAndSignatureToHead(ZQKernObjectTrack* track, bool& hasTempo, bool& hasSignature) {
  const auto isOne = [](const ZQKernObject* object) {
    return object->getType() == ZQKernObjectTempo || object->getType() == ZQKernObjectTimeSignature;
  };
  const auto first = std::find_if(track->begin(), track->end(), isOne);
  const bool tempoComesFirst = first != track->end() && (*first)->getType() == ZQKernObjectTempo;
  if (tempoComesFirst) hasTempo = moveFirstToHead(track, ZQKernObjectTempo);
  hasSignature = moveFirstToHead(track, ZQKernObjectTimeSignature);
  if (!tempoComesFirst) hasTempo = moveFirstToHead(track, ZQKernObjectTempo);
}

/// Moves the notes of track 0 to the tracks of their channels.
class ChannelSplit {
 public:
  ChannelSplit(ZQKernTrackList* list, const unsigned char* channelFilter, const char* caller)
      : list_(list), filter_(channelFilter), caller_(caller) {
    std::fill(std::begin(trackIDs_), std::end(trackIDs_), unknown);
  }

  bool run() {
    ZQKernObjectTrack* track = list_->getKernObjectTrackAtIndex(0);
    track->forgetIf([this](ZQKernObject* object) { return hasMemory_ && moves(object); });
    return hasMemory_;
  }

 private:
  static constexpr int unknown = -2;

  bool moves(ZQKernObject* object) {
    if (object->getType() != ZQKernObjectNoteOn && object->getType() != ZQKernObjectNoteOff) return false;
    const int channel = object->getChannel();
    if (filter_ != nullptr && channel < numberOfChannels && filter_[channel] != 0) return false;
    int& trackID = trackIDs_[channel];
    if (trackID == unknown) trackID = findTrack(channel);
    if (trackID < 1) {  // channel 16 is that of track 0
      if (hasMemory_) dbPrintf(0, "%s: trackID %d unexpected\n", caller_, trackID);
      return false;
    }
    hasMemory_ = list_->getKernObjectTrackAtIndex(trackID)->addKernObject(object);
    return hasMemory_;
  }

  int findTrack(int channel) {
    const int trackID = list_->getKernTrackIDForChannel(channel);
    return trackID >= 0 ? trackID : createTrack(channel);
  }

  /// Appends a track with its name; returns its index, or -1.
  int createTrack(int channel) {
    const int index = list_->getNumberOfKernObjectTracks();
    ZQKernObjectTrack* track = createZQKernObjectTrack();
    ZQKernObject* name = createAndInitZQKernObjectOfType(ZQKernObjectTrackName, 0);
    char text[16];
    snprintf(text, sizeof text, "ZM%d", index);
    hasMemory_ = track != nullptr && name != nullptr && name->setBuffer(text) && track->addKernObject(name);
    if (hasMemory_) {
      name->setChannel(static_cast<unsigned char>(index));
      name = nullptr;
      track->setChannel(channel);
      hasMemory_ = list_->addKernObjectTrack(track);
    }
    if (hasMemory_) return index;
    deleteZQKernObject(name);
    deleteZQKernObjectTrack(track);
    return -1;
  }

  ZQKernTrackList* list_;
  const unsigned char* filter_;
  const char* caller_;
  int trackIDs_[256];  // by channel
  bool hasMemory_ = true;
};

bool insertAtHead(ZQKernObjectTrack* track, ZQKernObject* object) {
  if (track->insertKernObjectAtIndex(object, 0)) return true;
  deleteZQKernObject(object);
  return false;
}

bool insertDefaultTempo(ZQKernObjectTrack* track) {
  ZQKernObject* object = createAndInitZQKernObjectOfType(ZQKernObjectTempo, 0);
  if (object != nullptr) object->setTempo(defaultTempo);
  return insertAtHead(track, object);
}

bool insertDefaultSignature(ZQKernObjectTrack* track) {
  ZQKernObject* object = createAndInitZQKernObjectOfType(ZQKernObjectTimeSignature, 0);
  if (object != nullptr) object->setTimeSignature(defaultNumerator, defaultDenominator);
  return insertAtHead(track, object);
}

/// Appends all objects of the tracks from 1 on, or copies of them; false if memory runs out, with some appended.
bool collectObjects(const ZQKernTrackList* list, bool asCopies, ZQKernObjectTrack* merged) {
  for (int i = 1; i < list->getNumberOfKernObjectTracks(); i++) {
    for (ZQKernObject* object : *list->getKernObjectTrackAtIndex(i)) {
      ZQKernObject* taken = asCopies ? object->createAndCopy() : object;
      if (taken != nullptr && merged->addKernObject(taken)) continue;
      if (asCopies) deleteZQKernObject(taken);
      return false;
    }
  }
  return true;
}

}  // namespace

ZQKernTrackList* readKernTrackList(const char* fileName, const char* caller) {
  ZQKernTrackList* list = createZQKernTrackList();
  if (list == nullptr || !list->init()) {
    deleteZQKernTrackList(list);
    return nullptr;
  }
  ZQKernFile().readKernObjectsFromFileWithPath(list, fileName);
  const int numberOfTracks = list->getNumberOfKernObjectTracks();
  if (numberOfTracks != 1) dbPrintf(0, "%s: number of kern tracks (%d) unexpected\n", caller, numberOfTracks);
  if (numberOfTracks >= 1) return list;
  deleteZQKernTrackList(list);  // memory ran out before a track was made
  return nullptr;
}

bool arrangeKernTracks(ZQKernTrackList* list, const unsigned char* channelFilter, const char* caller) {
  ZQKernObjectTrack* track = list->getKernObjectTrackAtIndex(0);
  bool hasTempo = false, hasSignature = false;
  moveTempoAndSignatureToHead(track, hasTempo, hasSignature);
  if (!ChannelSplit(list, channelFilter, caller).run()) return false;
  if (!hasTempo) {
    dbPrintf(5, "%s: insert tempo at time 0!\n", caller);
    if (!insertDefaultTempo(track)) return false;
  }
  if (!hasSignature) {
    dbPrintf(5, "%s: insert time signature at time 0!\n", caller);
    if (!insertDefaultSignature(track)) return false;
  }
  return true;
}

bool mergeKernTracks(ZQKernTrackList* list, int trackAnalyze) {
  constexpr int inPlace = 1, asCopies = 2;
  if (trackAnalyze != inPlace && trackAnalyze != asCopies) return true;
  ZQKernObjectTrack* merged = createZQKernObjectTrack();
  const bool copies = trackAnalyze == asCopies;
  if (merged == nullptr || !collectObjects(list, copies, merged) || !list->addKernObjectTrack(merged)) {
    copies ? deleteZQKernObjectTrack(merged) : deleteZQKernObjectTrackOnlyReferences(merged);
    return false;
  }
  if (!copies) {
    while (list->getNumberOfKernObjectTracks() > 2) list->deleteKernObjectTrackAtIndexOnlyReferences(1);
  }
  merged->sortByFunction(ZQCompareKernObjectsAscending);
  return true;
}

}  // namespace zmatrix
