// Scores, the result of the exact reading, with their owners.
#pragma once

#include <zmatrix/zq.h>

#include <memory>
#include <string>

#include "Kind.h"

using Score = std::unique_ptr<zq_Score, decltype(&zq_deleteScore)>;
using FeedReport = std::unique_ptr<zq_ScoreFeedReport, decltype(&zq_deleteScoreFeedReport)>;

/// Reads a MIDI or kern file. Throws a Failure if memory runs out; other faults are in the score's state.
Score readScore(const std::string& path, Kind kind, int graceQuanta);

/// Why nothing of a file was read; empty if something was.
std::string refusalOf(const zq_Score& score);

/// The bytes of a MIDI file with all notes of the score. Throws a Failure if it can't be written.
std::string midiOf(const zq_Score& score);
