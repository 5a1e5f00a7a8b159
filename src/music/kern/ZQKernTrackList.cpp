#include "music/kern/ZQKernTrackList.h"

#include <algorithm>
#include <new>

namespace zmatrix {

bool ZQKernTrackList::init() {
  tracks.setArray(nullptr);
  tracks.setCount(0);
  tracks.setCapacity(firstCapacity);
  ZQKernObjectTrack* track = createZQKernObjectTrack();
  if (track != nullptr && addKernObjectTrack(track)) return true;
  deleteZQKernObjectTrack(track);
  return false;
}

void ZQKernTrackList::closeGapAt(int index) {
  if (tracks.getCount() > 0) tracks.removeAt(std::clamp(index, 0, tracks.getCount() - 1));
}

void ZQKernTrackList::deleteKernObjectTrackAtIndex(int index) {
  deleteZQKernObjectTrack(tracks.at(index));
  closeGapAt(index);
}

void ZQKernTrackList::deleteKernObjectTrackAtIndexOnlyReferences(int index) {
  deleteZQKernObjectTrackOnlyReferences(tracks.at(index));
  closeGapAt(index);
}

void ZQKernTrackList::deleteAllKernObjectTracks() {
  for (ZQKernObjectTrack* track : tracks) deleteZQKernObjectTrack(track);
  tracks.setCount(0);
}

int ZQKernTrackList::getKernTrackIDForChannel(int channel) const {
  const auto found =
      std::find_if(tracks.begin(), tracks.end(), [channel](const auto* track) { return track->getChannel() == channel; });
  return found != tracks.end() ? static_cast<int>(found - tracks.begin()) : -1;
}

int ZQKernTrackList::getKernTimeSignatureFromTrackList(int* nom, int* denom) const {
  return tracks.getCount() > 0 ? tracks.at(0)->getMidiTimeSignatureFromKernObjectTrack(nom, denom) : 0;
}

ZQKernTrackList* createZQKernTrackList() {
  return new (std::nothrow) ZQKernTrackList;
}

void deleteZQKernTrackList(ZQKernTrackList* list) {
  delete list;
}

}  // namespace zmatrix
