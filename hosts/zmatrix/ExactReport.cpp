#include "ExactReport.h"

#include <algorithm>
#include <map>

#include "Failure.h"
#include "MusicCoding.h"

namespace {

constexpr std::size_t mostFindingsOfTable = 20;
constexpr double quartersOfWhole = 4;

double quarters(long long numerator, int denominator) {
  return quartersOfWhole * static_cast<double>(numerator) / denominator;
}

std::string meterText(int numerator, int denominator) {
  return numerator == 0 ? "" : std::to_string(numerator) + "/" + std::to_string(denominator);
}

const char* textOfState(int state) {
  static const char* const states[] = {"it can't be opened", "refused", "read up to where it breaks off", "read to its end"};
  return states[std::clamp(state, 0, 3)];
}

const char* placeName(const zq_Score& score) {
  return score.format == zq_ScoreKern ? "line" : "byte";
}

Json partsOf(const zq_Score& score) {
  Json parts = Json::array();
  for (int at = 0; at < score.numberOfParts; ++at) {
    const zq_ScorePart& part = score.parts[at];
    parts.push_back({{"part", at + 1},
                     {score.format == zq_ScoreKern ? "column" : "track", part.track},
                     {"channel", part.channel + 1},
                     {"name", part.name},
                     {"notes", part.numberOfNotes}});
  }
  return parts;
}

Json metersOf(const zq_Score& score) {
  Json meters = Json::array();
  for (int at = 0; at < score.numberOfMeters; ++at) {
    const zq_ScoreMeter& meter = score.meters[at];
    meters.push_back({{"at_quarter", quarters(meter.onset, meter.onsetDenominator)},
                      {placeName(score), meter.place},
                      {"part", meter.part < 0 ? Json("all") : Json(meter.part + 1)},
                      {"meter", meterText(meter.numerator, meter.denominator)}});
  }
  return meters;
}

Json findingCountsOf(const zq_Score& score) {
  Json counts = Json::object();
  for (int kind = 0; kind < zq_ScoreNumberOfKinds; ++kind) {
    if (score.findingCounts[kind] > 0) counts[zq_textOfScoreFinding(kind)] = score.findingCounts[kind];
  }
  return counts;
}

Json findingsOf(const zq_Score& score) {
  Json findings = Json::array();
  for (int at = 0; at < score.numberOfFindings; ++at) {
    const zq_ScoreFinding& finding = score.findings[at];
    findings.push_back({{placeName(score), finding.place},
                        {score.format == zq_ScoreKern ? "column" : "track", finding.column},
                        {"token", finding.token},
                        {"what", zq_textOfScoreFinding(finding.kind)}});
  }
  return findings;
}

Json runAsJson(const zq_ScoreRun& run) {
  const MusicCoding* const coding = findMusicCoding(run.preProcessingType);
  return {{"part", run.part < 0 ? Json("merged") : Json(run.part + 1)},
          {"at_quarter", quarters(run.onset, run.onsetDenominator)},
          {"meter", meterText(run.numerator, run.denominator)},
          {"meter_in_file", run.hasAssumedMeter != 0 ? "" : meterText(run.writtenNumerator, run.writtenDenominator)},
          {"kind", nameOfSubType(run.subType)},
          {"sound", nameOfSound(run.soundID)},
          {"coding", coding == nullptr ? "" : coding->name},
          {"tempo", run.quartersPerMinute},
          {"notes", run.notes},
          {"verdict", zq_textOfScoreCause(run.cause)}};
}

Json gridOf(const zq_ScoreFeedReport& plan) {
  return {{"onsets_moved", plan.onsetsMoved},
          {"largest_onset_move", plan.largestOnsetMove},
          {"mean_onset_move", plan.meanOnsetMove},
          {"durations_changed", plan.durationsMoved},
          {"largest_duration_change", plan.largestDurationMove},
          {"mean_duration_change", plan.meanDurationMove},
          {"notes_without_duration", plan.notesWithoutDuration}};
}

// Adds up the runs that differ only in place, tempo or written meter.
Json sumOfRuns(const Json& runs) {
  Json sums = Json::array();
  for (const Json& run : runs) {
    const auto isAlike = [&](const Json& sum) {
      for (const char* name : {"part", "meter", "kind", "sound", "coding", "verdict"}) {
        if (sum[name] != run[name]) return false;
      }
      return true;
    };
    const auto known = std::find_if(sums.begin(), sums.end(), isAlike);
    if (known == sums.end()) {
      Json sum = {{"part", run["part"]}, {"runs", 1}};
      for (const char* name : {"meter", "kind", "sound", "coding", "notes", "verdict"}) sum[name] = run[name];
      sums.push_back(sum);
    } else {
      (*known)["runs"] = (*known)["runs"].get<long long>() + 1;
      (*known)["notes"] = (*known)["notes"].get<long long>() + run["notes"].get<long long>();
    }
  }
  return sums;
}

std::string countsAsLines(const Json& counts) {
  std::string lines;
  for (const auto& count : counts.items()) lines += "  " + count.value().dump() + "  " + count.key() + "\n";
  return lines;
}

}  // namespace

FeedReport planOf(const zq_Score& score, const Matrix::MusicSettings& settings, bool leavesOutPercussion) {
  zq_ScoreFeedSettings feed{settings.preprocessing,      settings.grid,
                            settings.durationGrid,       static_cast<int>(settings.tracks),
                            leavesOutPercussion ? 1 : 0, {}};
  std::copy(settings.skippedChannels.begin(), settings.skippedChannels.end(), feed.channelFilter);
  FeedReport plan(zq_createScoreFeedPlan(&score, &feed), zq_deleteScoreFeedReport);
  if (!plan) throw Failure{ExitCode::limit, "out of memory"};
  return plan;
}

std::string kindOf(const zq_ScoreRun& run) {
  return meterText(run.numerator, run.denominator) + " " + std::to_string(run.subType) + " " + std::to_string(run.soundID) + " " +
         std::to_string(run.preProcessingType);
}

std::vector<std::pair<std::string, long long>> leftOutOf(const zq_ScoreFeedReport& plan) {
  std::vector<std::pair<std::string, long long>> causes;
  for (int cause = 0; cause < zq_ScoreNumberOfCauses; ++cause) {
    if (plan.leftOut[cause] > 0) causes.emplace_back(zq_textOfScoreCause(cause), plan.leftOut[cause]);
  }
  return causes;
}

Json exactReportOf(const zq_Score& score, const zq_ScoreFeedReport& plan) {
  Json report = {{"state", textOfState(score.state)},
                 {"notes", score.numberOfNotes},
                 {"notes_learned", plan.notesLearned},
                 {"parts", partsOf(score)},
                 {"meters", metersOf(score)},
                 {"has_no_meter", plan.hasNoMeter != 0},
                 {"keys", score.numberOfKeys},
                 {"tempi", score.numberOfTempi},
                 {"bar_lines", score.numberOfBarLines},
                 {"sub_matrices", plan.numberOfSubMatrices},
                 {"rests_shortened", plan.shortenedRests},
                 {"left_out", Json::object()},
                 {"grid_in_quanta", gridOf(plan)},
                 {"finding_counts", findingCountsOf(score)},
                 {"findings", findingsOf(score)},
                 {"runs", Json::array()}};
  for (const auto& [cause, notes] : leftOutOf(plan)) report["left_out"][cause] = notes;
  for (long long at = 0; at < plan.numberOfRuns; ++at) report["runs"].push_back(runAsJson(plan.runs[at]));
  return report;
}

std::string exactTableOf(Json report) {
  Json lists = Json::object();
  for (const char* name : {"parts", "meters", "left_out", "grid_in_quanta", "finding_counts", "findings", "runs"}) {
    lists[name] = report[name];
    report.erase(name);
  }
  report["meters"] = lists["meters"].size();
  std::string table = membersOf(report);
  table += "how far the grid moves notes, in quanta (3072 are a quarter):\n" + membersOf(lists["grid_in_quanta"]);
  if (!lists["left_out"].empty()) table += "left out:\n" + countsAsLines(lists["left_out"]);
  if (!lists["parts"].empty()) table += "\nparts:\n" + linesWithoutZeros(lists["parts"]);
  if (!lists["runs"].empty()) table += "\nlearned as:\n" + linesWithoutZeros(sumOfRuns(lists["runs"]));
  if (!lists["finding_counts"].empty()) table += "\nfindings:\n" + countsAsLines(lists["finding_counts"]);
  Json first = Json::array();
  for (const Json& finding : lists["findings"]) {
    if (first.size() < mostFindingsOfTable) first.push_back(finding);
  }
  if (!first.empty()) table += "the first of them, all with --json:\n" + linesWithoutZeros(first);
  return table;
}
