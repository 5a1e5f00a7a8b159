// Builds MIDI files from bytes.
#pragma once

#include <initializer_list>
#include <string>

namespace zmatrix {

inline std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values) text += static_cast<char>(value);
  return text;
}

inline std::string bigEndian(unsigned value, int count) {
  std::string text;
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) text += static_cast<char>(value >> shift);
  return text;
}

inline std::string midiHead(int format, int tracks, int division) {
  return "MThd" + bigEndian(6, 4) + bigEndian(static_cast<unsigned>(format), 2) + bigEndian(static_cast<unsigned>(tracks), 2) +
         bigEndian(static_cast<unsigned>(division), 2);
}

inline const std::string endOfMidiTrack = bytes({0, 0xff, 47, 0});

inline std::string midiTrack(const std::string& events) {
  const std::string body = events + endOfMidiTrack;
  return "MTrk" + bigEndian(static_cast<unsigned>(body.size()), 4) + body;
}

inline std::string meter(int numerator, int power) {
  return bytes({0, 0xff, 88, 4, numerator, power, 24, 8});
}

/// A quarter rest and quarter notes, at 96 ticks.
inline std::string melody(std::initializer_list<int> numbers, int channel = 0) {
  std::string events = bytes({96, 0xc0 | channel, 0});
  for (const int number : numbers) {
    events += bytes({0, 0x90 | channel, number, 100, 95, 0x80 | channel, number, 64});
    events += bytes({1, 0xb0 | channel, 7, 90});
  }
  return events;
}

/// A file of format 1 with a meter and one track.
inline std::string tune(const std::string& events, int numerator = 4, int power = 2) {
  return midiHead(1, 2, 96) + midiTrack(meter(numerator, power)) + midiTrack(events);
}

}  // namespace zmatrix
