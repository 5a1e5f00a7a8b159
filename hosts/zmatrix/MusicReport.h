// The library's report on the classic reading of a MIDI or kern file: a summary for learning, and JSON and tables for `inspect`.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "Inputs.h"
#include "Statistics.h"

struct MusicReport {
  std::string refusal;                 ///< why nothing of the file is read; empty if something is
  std::string ending;                  ///< where and why the reading ended early; empty if it didn't
  std::vector<std::string> discarded;  ///< the reason for each track with notes that isn't learned
  std::set<std::string> kinds;         ///< keys of the sub-matrices that the learned tracks need
  long long notesWithoutEnd = 0;
  long long notesRead = 0;
  long long notesLearned = 0;   ///< in single tracks or in the merged one, whichever is more
  Json losses = Json::array();  ///< what the reading loses or changes, by cause and place
  Json full;
  std::string table;
};

/// The report with the settings of a model. Throws a Failure if memory runs out.
MusicReport reportOf(const InputFile& input, const Matrix::MusicSettings& settings);
/// The report with the default settings of a new model.
MusicReport reportOf(const InputFile& input);

MusicReport midiReportOf(const std::string& path, const Matrix::MusicSettings& settings);
MusicReport kernReportOf(const std::string& path, const Matrix::MusicSettings& settings);

/// linesOf() without the columns in which all values are 0, false, null or empty; "track" is always kept.
std::string linesWithoutZeros(Json list);
