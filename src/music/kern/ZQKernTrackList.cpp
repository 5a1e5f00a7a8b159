#include "music/kern/ZQKernTrackList.h"

#include <algorithm>
#include <new>

namespace zmatrix {

bool ZQKernTrackList::init() {
  tracks_.setArray(nullptr);
  tracks_.setCount(0);
  tracks_.setCapacity(firstCapacity);
  ZQKernObjectTrack* track = createZQKernObjectTrack();
  if (track != nullptr && addKernObjectTrack(track)) return true;
  deleteZQKernObjectTrack(track);
  return false;
}

void ZQKernTrackList::closeGapAt(int index) {
  if (tracks_.getCount() > 0) tracks_.removeAt(std::clamp(index, 0, tracks_.getCount() - 1));
}

void ZQKernTrackList::deleteKernObjectTrackAtIndex(int index) {
  deleteZQKernObjectTrack(tracks_.at(index));
  closeGapAt(index);
}

void ZQKernTrackList::deleteKernObjectTrackAtIndexOnlyReferences(int index) {
  deleteZQKernObjectTrackOnlyReferences(tracks_.at(index));
  closeGapAt(index);
}

void ZQKernTrackList::deleteAllKernObjectTracks() {
  for (ZQKernObjectTrack* track : tracks_) deleteZQKernObjectTrack(track);
  tracks_.setCount(0);
}

int ZQKernTrackList::getKernTrackIDForChannel(int channel) const {
  const auto found =
      std::find_if(tracks_.begin(), tracks_.end(), [channel](const auto* track) { return track->getChannel() == channel; });
  return found != tracks_.end() ? static_cast<int>(found - tracks_.begin()) : -1;
}

int ZQKernTrackList::getKernTimeSignatureFromTrackList(int* nom, int* denom) const {
  return tracks_.getCount() > 0 ? tracks_.at(0)->getMidiTimeSignatureFromKernObjectTrack(nom, denom) : 0;
}

ZQKernTrackList* createZQKernTrackList() {
  return new (std::nothrow) ZQKernTrackList;
}

void deleteZQKernTrackList(ZQKernTrackList* list) {
  delete list;
}

}  // namespace zmatrix
