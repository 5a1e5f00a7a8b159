// The two readings of MIDI and kern files. The exact one gives a score with every note. The classic one leaves much out, and is
// kept for models that were learned with it.
#pragma once

#include <optional>

enum class Reading { exact, classic };

inline const char* nameOf(Reading reading) {
  return reading == Reading::exact ? "exact" : "classic";
}

/// The options of reading. Without `reading` the model decides; a new model is read exactly.
struct ReadingOptions {
  std::optional<Reading> reading;
  std::optional<int> graceQuanta;
  bool leavesOutPercussion = false;
};
