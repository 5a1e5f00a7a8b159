#include "MusicReport.h"

#include "LibraryMessages.h"

namespace {

bool isNothing(const Json& value) {
  return value == 0 || value == "" || value == false || value.is_null();
}

}  // namespace

MusicReport reportOf(const InputFile& input, const Matrix::MusicSettings& settings) {
  LibraryMessages messages(true);  // keeps messages off stderr; the report has the same information
  return input.kind == Kind::kern ? kernReportOf(input.path, settings) : midiReportOf(input.path, settings);
}

MusicReport reportOf(const InputFile& input) {
  return reportOf(input, {ZQPreProcessingTypeMidiTriple_NDMT, 16, 16, Tracks::both, {}});
}

std::string linesWithoutZeros(Json list) {
  std::vector<std::string> names;
  for (const Json& line : list) {
    for (const auto& member : line.items()) names.push_back(member.key());
  }
  for (const std::string& name : names) {
    bool isEmpty = name != "track";  // there is a track 0
    for (const Json& line : list) isEmpty = isEmpty && (!line.contains(name) || isNothing(line[name]));
    for (Json& line : list) {
      if (isEmpty) line.erase(name);
    }
  }
  return linesOf(list);
}
