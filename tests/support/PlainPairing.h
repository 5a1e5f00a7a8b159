// Note pairing on an array from which events are erased, in quadratic time: the reference for the library's pairing on linked
// events.
#pragma once

#include <vector>

#include "music/midi/ZQMidiEventTrack.h"

namespace zmatrix::plain {

/// Start, end, type, note number or sound, velocity, release velocity, channel.
using PairedObject = std::vector<int>;

inline bool isChannelEvent(const ZQMidiEvent* event, int status) {
  return event->getEventType() == -1 && event->getStatus() == status;
}

inline bool endsNote(const ZQMidiEvent* event, int number) {
  const bool isEnd = isChannelEvent(event, 0x80) || (isChannelEvent(event, 0x90) && event->getByte3() == 0);
  return isEnd && event->getByte2() == number;
}

/// The event that ends the note at `i`, or null. The search erases events from `events`.
inline const ZQMidiEvent* takeEnd(std::vector<const ZQMidiEvent*>& events, size_t i) {
  const int channel = events[i]->getByte1() & 15, number = events[i]->getByte2();
  for (size_t k = i + 1; k < events.size();) {
    const ZQMidiEvent* event = events[k];
    if ((event->getByte1() & 15) != channel) {
      k++;
    } else if (endsNote(event, number)) {
      events.erase(events.begin() + static_cast<long>(k));
      return event;
    } else if (isChannelEvent(event, 0x80) || isChannelEvent(event, 0x90)) {
      k++;
    } else {
      events.erase(events.begin() + static_cast<long>(k));
    }
  }
  for (size_t k = i + 1; k < events.size(); k++) {
    if (isChannelEvent(events[k], 0x90) && (events[k]->getByte1() & 15) == channel && events[k]->getByte2() == number)
      return events[k];
  }
  return nullptr;
}

inline std::vector<PairedObject> paired(const ZQMidiEventTrack& track, const int* statusFilter,
                                        const unsigned char* channelFilter) {
  std::vector<const ZQMidiEvent*> events(track.begin(), track.end());
  std::vector<PairedObject> objects;
  for (size_t i = 0; i < events.size();) {
    const ZQMidiEvent* event = events[i];
    const int status = event->getStatus(), channel = event->getChannel(), time = event->getTimeQuanta();
    if (event->getEventType() == 88) objects.push_back({0, 0, 8, event->getByte1(), event->getByte2(), 0, 0});
    if (event->getEventType() != -1 || status < 0x80 || channelFilter[channel] != 0 || statusFilter[(status >> 4) - 8] != 0) {
      i++;
    } else if (status == 0xc0) {
      objects.push_back({time, time, 4, event->getByte2(), 0, 0, channel});
      i++;
    } else if (status == 0x80 || status == 0x90) {
      const ZQMidiEvent* end = takeEnd(events, i);
      if (end == nullptr) {
        events.erase(events.begin() + static_cast<long>(i));
        continue;
      }
      objects.push_back({time, end->getTimeQuanta(), 1, event->getByte2(), event->getByte3(), end->getByte3(), channel});
      i++;
    } else {
      i++;
    }
  }
  return objects;
}

}  // namespace zmatrix::plain
