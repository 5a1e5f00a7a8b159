// Converts a kern score to a MIDI file by the classic reading.
#pragma once

#include <string>

/// False if memory runs out. If the reading refuses the score, the MIDI file is empty.
bool convertClassically(const std::string& score, const std::string& midi);
