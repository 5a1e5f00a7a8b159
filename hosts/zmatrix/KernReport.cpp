// The report on the classic reading of a kern file.
#include <zmatrix/zq.h>

#include <algorithm>
#include <memory>

#include "Failure.h"
#include "MusicCoding.h"
#include "MusicReport.h"

namespace {

using Report = std::unique_ptr<zq_KernReport, decltype(&zq_deleteKernReport)>;

constexpr int wholeNote = 12288;

const char* const states[] = {"it can't be opened", "refused", "read up to a timing error", "read to its end"};

const char* const departures[zq_KernNumberOfDepartures] = {
    "tokens_without_pitch", "tokens_without_duration", "durations_cut",       "times_set_back",
    "bars_resynchronised",  "tokens_missing",          "tokens_surplus",      "timing_errors",
    "notes_behind_it",      "lines_taken_apart",       "last_line_unchecked", "spines_without_room",
    "ties_too_short",       "notes_in_tied_chords",    "ties_without_start",  "grace_notes_taking_time"};

const char* nameOfFinding(const zq_KernFinding& finding) {
  static const char* const names[] = {"error", "warning", "departure"};
  return names[std::clamp(finding.kind, 0, 2)];
}

Json findingAsJson(const zq_KernFinding& finding) {
  return {{"line", finding.line},
          {"column", finding.column},
          {"token", finding.token},
          {"finding", nameOfFinding(finding)},
          {"number", finding.number},
          {"amount", finding.amount},
          {"ends_reading", finding.stopsRead != 0},
          {"what", finding.text}};
}

Json departuresOf(const zq_KernReport& report) {
  Json counts = Json::object();
  for (int at = 0; at < zq_KernNumberOfDepartures; ++at) {
    if (report.departures[at] > 0) counts[departures[at]] = report.departures[at];
  }
  return counts;
}

std::string meterText(int numerator, int denominator) {
  return std::to_string(numerator) + "/" + std::to_string(denominator);
}

Json metersOf(const zq_KernReport& report) {
  Json meters = Json::array();
  for (int at = 0; at < report.numberOfMeters; ++at) {
    const zq_KernMeter& meter = report.meters[at];
    meters.push_back({{"line", meter.line}, {"column", meter.column}, {"meter", meterText(meter.numerator, meter.denominator)}});
  }
  return meters;
}

Json channelsOf(const zq_KernReport& report) {
  Json channels = Json::object();
  for (int channel = 0; channel < 16; ++channel) {
    if (report.notesOnChannel[channel] > 0) channels[std::to_string(channel + 1)] = report.notesOnChannel[channel];
  }
  if (report.notesOnOtherChannels > 0) channels["beyond 16"] = report.notesOnOtherChannels;
  return channels;
}

Json trackAsJson(const zq_KernTrack& track) {
  const MusicCoding* const coding = findMusicCoding(track.preProcessingType);
  return {{"track", track.isMerged != 0 ? Json("merged") : Json(track.index)},
          {"meter", meterText(track.numerator, track.denominator)},
          {"kind", nameOfSubType(track.subType)},
          {"channel", track.isMerged != 0 ? Json("all") : Json(track.soundID + 1)},
          {"coding", coding == nullptr ? "" : coding->name},
          {"notes", track.notes},
          {"notes_learned", track.notesLearned},
          {"verdict", zq_textOfMidiVerdict(track.verdict)}};
}

Json fullReport(const zq_KernReport& report, const std::string& path) {
  Json full = {{"file", path},
               {"kind", "kern"},
               {"state", states[std::clamp(report.state, 0, 3)]},
               {"errors", report.errors},
               {"warnings", report.warnings},
               {"spines", report.spines},
               {"kern_spines", report.kernSpines},
               {"sections", report.sections},
               {"notes", report.notes},
               {"rests", report.rests},
               {"ties", report.ties},
               {"grace_notes", report.graceNotes},
               {"splits", report.splits},
               {"joins", report.joins},
               {"spines_added", report.additions},
               {"spines_exchanged", report.exchanges},
               {"spines_ended", report.ends},
               {"bar_lines", report.barLines},
               {"bar_offset_in_quarters", report.barOffset > 0 ? report.barOffset * 4.0 / wholeNote : 0.0}};
  full["departures"] = departuresOf(report);
  full["notes_on_channel"] = channelsOf(report);
  full["meters"] = metersOf(report);
  full["meters_left_out"] = report.metersLeftOut;
  full["notes_learned"] = report.notesLearned;
  full["tracks"] = Json::array();
  for (int at = 0; at < report.numberOfTracks; ++at) full["tracks"].push_back(trackAsJson(report.tracks[at]));
  full["findings"] = Json::array();
  for (int at = 0; at < report.numberOfFindings; ++at) full["findings"].push_back(findingAsJson(report.findings[at]));
  full["findings_left_out"] = report.findingsLeftOut;
  return full;
}

std::string withoutBraces(const Json& object) {
  std::string list;
  for (const auto& member : object.items()) list += (list.empty() ? "" : ", ") + member.key() + ": " + member.value().dump();
  return list.empty() ? "-" : list;
}

std::string tableOf(Json full) {
  const Json findings = full["findings"];
  const Json meters = full["meters"];
  const Json tracks = full["tracks"];
  full.erase("tracks");
  full.erase("findings");
  full.erase("meters");
  for (const char* name : {"departures", "notes_on_channel"}) full[name] = withoutBraces(full[name]);
  std::string table = membersOf(full);
  if (!meters.empty()) table += "\nmeters:\n" + linesOf(meters);
  if (!tracks.empty()) table += "\nas learning sees it:\n" + linesWithoutZeros(tracks);
  if (!findings.empty()) table += "\nfindings:\n" + linesWithoutZeros(findings);
  return table;
}

// Where and why the reading stopped.
std::string stopOf(const zq_KernReport& report) {
  const zq_KernFinding* const end = report.findings + report.numberOfFindings;
  const auto* const finding =
      std::find_if(report.findings, end, [](const zq_KernFinding& candidate) { return candidate.stopsRead != 0; });
  if (finding == end) return states[std::clamp(report.state, 0, 3)];
  const std::string column = finding->column > 0 ? ", column " + std::to_string(finding->column) : "";
  const std::string token = *finding->token != '\0' ? " (" + std::string(finding->token).substr(0, 40) + ")" : "";
  return "line " + std::to_string(finding->line) + column + ": " + finding->text + token;
}

// The departures from the score with the lines of the first few, then the tracks that are not learned.
void addLosses(const zq_KernReport& report, MusicReport& result) {
  constexpr int mostLines = 5;
  result.notesRead = report.notes;
  for (int kind = 0; kind < zq_KernNumberOfDepartures; ++kind) {
    if (report.departures[kind] == 0) continue;
    std::string lines;
    int count = 0;
    for (int at = 0; at < report.numberOfFindings && count < mostLines; ++at) {
      const zq_KernFinding& finding = report.findings[at];
      if (finding.kind != zq_KernDeparted || finding.number != kind) continue;
      lines += (count++ == 0 ? "line " : ", ") + std::to_string(finding.line);
    }
    if (report.departures[kind] > count) lines += ", ...";
    std::string cause = departures[kind];
    std::replace(cause.begin(), cause.end(), '_', ' ');
    result.losses.push_back({{"cause", cause}, {"place", lines}, {"amount", report.departures[kind]}});
  }
  long long single = 0, merged = 0;
  for (int at = 0; at < report.numberOfTracks; ++at) {
    const zq_KernTrack& track = report.tracks[at];
    (track.isMerged != 0 ? merged : single) += track.notesLearned;
    if (track.notes == track.notesLearned) continue;
    result.losses.push_back({{"cause", std::string("not learned: ") + zq_textOfMidiVerdict(track.verdict)},
                             {"place", track.isMerged != 0 ? "merged" : "track " + std::to_string(track.index)},
                             {"amount", track.notes - track.notesLearned}});
  }
  result.notesLearned = std::max(single, merged);
}

// Notes of single tracks are in the merged track too, so its verdict counts only if there are no single tracks.
void addVerdicts(const zq_KernReport& report, MusicReport& result) {
  bool hasSingle = false;
  for (int at = 0; at < report.numberOfTracks; ++at) hasSingle = hasSingle || report.tracks[at].isMerged == 0;
  for (int at = 0; at < report.numberOfTracks; ++at) {
    const zq_KernTrack& track = report.tracks[at];
    if (track.verdict == zq_MidiTaken) {
      result.kinds.insert(meterText(track.numerator, track.denominator) + " " + std::to_string(track.subType) + " " +
                          std::to_string(track.soundID) + " " + std::to_string(track.preProcessingType));
    } else if (track.notes > 0 && (track.isMerged == 0 || !hasSingle)) {
      result.discarded.emplace_back(zq_textOfMidiVerdict(track.verdict));
    }
  }
}

}  // namespace

MusicReport kernReportOf(const std::string& path, const Matrix::MusicSettings& settings) {
  unsigned char filter[16];
  std::copy(settings.skippedChannels.begin(), settings.skippedChannels.end(), filter);
  const Report report(zq_createKernReport(path.c_str(), settings.preprocessing, static_cast<int>(settings.tracks), filter),
                      zq_deleteKernReport);
  if (!report) throw Failure{ExitCode::limit, "out of memory"};
  MusicReport result;
  addLosses(*report, result);
  if (report->state <= zq_KernFileRefused) {
    result.refusal = stopOf(*report);
  } else {
    if (report->state == zq_KernFileCutShort) result.ending = stopOf(*report);
    addVerdicts(*report, result);
  }
  result.full = fullReport(*report, path);
  result.table = tableOf(result.full);
  return result;
}
