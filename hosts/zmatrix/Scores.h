// Scores: files of music, read exactly.
#pragma once

#include <zmatrix/zq.h>

#include <memory>
#include <string>

#include "Kind.h"

using Score = std::unique_ptr<zq_Score, decltype(&zq_deleteScore)>;
using FeedReport = std::unique_ptr<zq_ScoreFeedReport, decltype(&zq_deleteScoreFeedReport)>;

/// Reads a MIDI or kern file. Throws a Failure if there is no memory for it.
Score readScore(const std::string& path, Kind kind, int graceQuanta);

/// Why nothing of a file is read; empty unless that is so.
std::string refusalOf(const zq_Score& score);

/// The bytes of a MIDI file with all notes of the score. Throws a Failure if there are none to be had.
std::string midiOf(const zq_Score& score);
