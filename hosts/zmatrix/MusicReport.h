// What the library reports of a MIDI or kern file, as the command needs it: in short for learning, in full for `inspect`.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "Inputs.h"
#include "Statistics.h"

struct MusicReport {
  std::string refusal;                 ///< why nothing of the file is read; empty unless that is so
  std::string ending;                  ///< where and why the reading ended early; empty unless it did
  std::vector<std::string> discarded;  ///< for each track with notes that isn't learned, why
  std::set<std::string> kinds;         ///< what the learned tracks are, as sub-matrices tell them apart
  long long notesWithoutEnd = 0;
  long long notesRead = 0;
  long long notesLearned = 0;   ///< by themselves or merged
  Json losses = Json::array();  ///< what the reading loses or changes, by cause and place
  Json full;
  std::string table;
};

/// Of the classic reading, by the settings of a model. Throws a Failure if there is no memory for it.
MusicReport reportOf(const InputFile& input, const Matrix::MusicSettings& settings);
/// By the settings of a new model.
MusicReport reportOf(const InputFile& input);

MusicReport midiReportOf(const std::string& path, const Matrix::MusicSettings& settings);
MusicReport kernReportOf(const std::string& path, const Matrix::MusicSettings& settings);

/// A table of the list without the columns that hold nothing but zeros and empty texts.
std::string linesWithoutZeros(Json list);
