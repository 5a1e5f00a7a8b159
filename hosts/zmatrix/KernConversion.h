// A kern score as a MIDI file by the classic reading.
#pragma once

#include <string>

/// False if memory has run out. What the reading refuses gives an empty file.
bool convertClassically(const std::string& score, const std::string& midi);
