#include "Inspection.h"

#include "ExactReport.h"
#include "MusicLearning.h"
#include "ReadingComparison.h"

namespace {

const Matrix::MusicSettings settingsOfNewModel = {ZQPreProcessingTypeMidiTriple_NDMT, 16, 16, Tracks::both, {}};

std::string headOf(const InputFile& input) {
  return input.name + "\n";
}

std::string sideBySide(const Json& readings, const Json& losses) {
  std::string table = linesOf(readings);
  if (!losses.empty()) table += "\nwhat the classic reading loses or changes:\n" + linesOf(losses);
  return table;
}

MusicReport classicInspection(const InputFile& input, const ReadingOptions& options) {
  MusicLearning::of(Reading::classic, options);  // refuses options of the exact reading
  return reportOf(input);
}

}  // namespace

MusicReport inspectionOf(const InputFile& input, const ReadingOptions& options) {
  if (options.reading == Reading::classic) return classicInspection(input, options);
  const Score score = readScore(input.path, input.kind, options.graceQuanta.value_or(0));
  const FeedReport plan = planOf(*score, settingsOfNewModel, options.leavesOutPercussion);
  const Json exact = exactReportOf(*score, *plan);
  const std::string exactTable = "exact reading:\n" + exactTableOf(exact);
  const bool isAlone = options.reading == Reading::exact;
  MusicReport classic;
  if (!isAlone) classic = reportOf(input);
  MusicReport inspection;
  inspection.refusal = refusalOf(*score);
  if (isAlone) {
    inspection.full = {{"file", input.name}, {"kind", nameOf(input.kind)}, {"exact", exact}};
    inspection.table = headOf(input) + "\n" + exactTable;
    return inspection;
  }
  const Json readings = comparisonOf(input, *score, *plan, classic);
  inspection.full = classic.full;
  inspection.full["readings"] = readings;
  inspection.full["classic_losses"] = classic.losses;
  inspection.full["exact"] = exact;
  inspection.table =
      headOf(input) + "\n" + sideBySide(readings, classic.losses) + "\n" + exactTable + "\nclassic reading:\n" + classic.table;
  return inspection;
}
