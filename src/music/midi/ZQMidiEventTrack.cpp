#include "music/midi/ZQMidiEventTrack.h"

#include <cstdint>
#include <new>

#include "music/midi/ZQMidiSort.h"

namespace zmatrix {

void ZQMidiEventTrack::init() {
  events_.setArray(nullptr);
  events_.setCount(0);
  events_.setCapacity(firstCapacity);
}

void ZQMidiEventTrack::deleteMidiEventAtIndex(int index) {
  deleteZQMidiEvent(events_.at(index));
  events_.removeAt(index);
}

void ZQMidiEventTrack::deleteAllMidiEvents() {
  for (ZQMidiEvent* event : *this) deleteZQMidiEvent(event);
  events_.setCount(0);
}

void ZQMidiEventTrack::sortByFunction(ZQCompareFunction compare) {
  if (compare == ZQCompareMidiEventsAscending) {
    sortPointersByKey(events_.begin(), events_.getCount(),
                      [](const ZQMidiEvent* event) { return sortableBits(event->getTimeQuanta()) << 8 | event->getByte1(); });
  } else {
    sortPointersByFunction(events_.begin(), events_.getCount(), compare);
  }
}

ZQMidiEventTrack* createZQMidiEventTrack() {
  return new (std::nothrow) ZQMidiEventTrack;
}

void deleteZQMidiEventTrack(ZQMidiEventTrack* track) {
  delete track;
}

void deleteZQMidiEventTrackOnlyReferences(ZQMidiEventTrack* track) {
  if (track != nullptr) track->setNumberOfMidiEvents(0);
  delete track;
}

}  // namespace zmatrix
