// How MIDI and kern files are read: exactly, as scores of which nothing is dropped, or by the classic readers, whose rules leave
// much out but match what models learned in earlier times.
#pragma once

#include <optional>

enum class Reading { exact, classic };

inline const char* nameOf(Reading reading) {
  return reading == Reading::exact ? "exact" : "classic";
}

/// What was not given is decided by the model, or exact.
struct ReadingOptions {
  std::optional<Reading> reading;
  std::optional<int> graceQuanta;
  bool leavesOutPercussion = false;
};
