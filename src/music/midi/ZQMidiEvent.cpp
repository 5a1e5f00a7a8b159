#include "music/midi/ZQMidiEvent.h"

namespace zmatrix {

ZQMidiEvent* ZQMidiEvent::createAndCopy() const {
  return new ZQMidiEvent(*this);
}

namespace {

int order(int first, int second) {
  return (first > second) - (first < second);
}

}  // namespace

int ZQCompareMidiEventsByByte1Ascending(const ZQMidiEvent* first, const ZQMidiEvent* second) {
  return order(first->getByte1(), second->getByte1());
}

int ZQCompareMidiEventsByTimeAscending(const ZQMidiEvent* first, const ZQMidiEvent* second) {
  return order(first->getTimeQuanta(), second->getTimeQuanta());
}

int ZQCompareMidiEventsAscending(const void* first, const void* second) {
  const auto* a = *static_cast<const ZQMidiEvent* const*>(first);
  const auto* b = *static_cast<const ZQMidiEvent* const*>(second);
  const int byTime = ZQCompareMidiEventsByTimeAscending(a, b);
  return byTime != 0 ? byTime : ZQCompareMidiEventsByByte1Ascending(a, b);
}

}  // namespace zmatrix
