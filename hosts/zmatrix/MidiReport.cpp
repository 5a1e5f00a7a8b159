// The report on the classic reading of a MIDI file.
#include <zmatrix/zq.h>

#include <algorithm>
#include <memory>

#include "Failure.h"
#include "MusicCoding.h"
#include "MusicReport.h"

namespace {

using Report = std::unique_ptr<zq_MidiReport, decltype(&zq_deleteMidiReport)>;

std::string meter(int numerator, int denominator) {
  return numerator == 0 ? "" : std::to_string(numerator) + "/" + std::to_string(denominator);
}

Json fileTrackAsJson(const zq_MidiFileTrack& track, int index) {
  return {{"track", index},
          {"channel_events", track.channelEvents},
          {"meta_events", track.metaEvents},
          {"notes", track.notes},
          {"note_ons_without_end", track.noteOnsWithoutEnd},
          {"ended_by_next_note", track.notesEndedByNextNote},
          {"begun_by_note_off", track.notesBegunByNoteOff},
          {"note_offs_without_note", track.noteOffsWithoutNote},
          {"program_changes", track.programChanges},
          {"lost_inside_notes", track.eventsLostInsideNotes},
          {"programs_lost_inside_notes", track.programChangesLostInsideNotes},
          {"on_skipped_channels", track.eventsOnFilteredChannels},
          {"system_events_dropped", track.systemEvents},
          {"unknown_events_dropped", track.unknownEvents},
          {"repeated_events", track.repeatedEvents},
          {"unused_controllers", track.unusedEvents}};
}

Json trackAsJson(const zq_MidiTrack& track) {
  const MusicCoding* const coding = findMusicCoding(track.preProcessingType);
  return {{"track", track.isMerged != 0 ? Json("merged") : Json(track.index)},
          {"meter", meter(track.numerator, track.denominator)},
          {"kind", nameOfSubType(track.subType)},
          {"largest_chord", track.chordSize},
          {"sound", nameOfSound(track.soundID)},
          {"sounds", track.numberOfSounds},
          {"drums", track.hasPercussion != 0},
          {"coding", coding == nullptr ? "" : coding->name},
          {"notes", track.notes},
          {"notes_learned", track.notesLearned},
          {"verdict", zq_textOfMidiVerdict(track.verdict)}};
}

std::string kindOf(const zq_MidiTrack& track) {
  const int sound = track.numberOfSounds == 1 ? track.soundID : 0;
  return meter(track.numerator, track.denominator) + " " + std::to_string(track.subType) + " " + std::to_string(sound) + " " +
         std::to_string(track.preProcessingType);
}

// Tracks without notes lose nothing. Notes of single tracks are in the merged track too, so its verdict counts only if there are
// no single tracks.
void addVerdicts(const zq_MidiReport& report, MusicReport& result) {
  bool hasSingle = false;
  for (int at = 0; at < report.numberOfTracks; ++at) hasSingle = hasSingle || report.tracks[at].isMerged == 0;
  for (int at = 0; at < report.numberOfTracks; ++at) {
    const zq_MidiTrack& track = report.tracks[at];
    if (track.verdict == zq_MidiTaken) result.kinds.insert(kindOf(track));
    if (track.verdict == zq_MidiTaken || track.notes == 0 || (track.isMerged != 0 && hasSingle)) continue;
    result.discarded.emplace_back(zq_textOfMidiVerdict(track.verdict));
  }
}

// A file that is cut off is read up to the cut; with any other fault nothing is read.
void addEnding(const zq_MidiReport& report, MusicReport& result) {
  if (report.end == zq_MidiEndComplete) return;
  if (report.end == zq_MidiEndOutOfMemory) throw Failure{ExitCode::limit, "out of memory"};
  (report.end == zq_MidiEndCut ? result.ending : result.refusal) = zq_textOfMidiEnd(report.end);
}

void addLoss(Json& losses, const std::string& cause, const std::string& place, long long amount) {
  if (amount > 0) losses.push_back({{"cause", cause}, {"place", place}, {"amount", amount}});
}

// What pairing loses of the file's tracks, and the tracks that are not learned.
void addLosses(const zq_MidiReport& report, MusicReport& result) {
  Json& losses = result.losses;
  for (int at = 0; at < report.numberOfFileTracks; ++at) {
    const zq_MidiFileTrack& track = report.fileTracks[at];
    const std::string place = "track " + std::to_string(at);
    result.notesRead += track.notes;
    addLoss(losses, "notes that nothing ends, dropped", place, track.noteOnsWithoutEnd);
    addLoss(losses, "notes ended by the next of the same pitch", place, track.notesEndedByNextNote);
    addLoss(losses, "notes begun by a note-off", place, track.notesBegunByNoteOff);
    addLoss(losses, "program changes lost inside notes", place, track.programChangesLostInsideNotes);
    addLoss(losses, "events on channels that are left out", place, track.eventsOnFilteredChannels);
  }
  long long single = 0, merged = 0;
  for (int at = 0; at < report.numberOfTracks; ++at) {
    const zq_MidiTrack& track = report.tracks[at];
    (track.isMerged != 0 ? merged : single) += track.notesLearned;
    const std::string place = track.isMerged != 0 ? "merged" : "track " + std::to_string(track.index);
    const char* const cause = track.verdict == zq_MidiTaken ? "notes of percussion and effects in a track of others"
                                                            : zq_textOfMidiVerdict(track.verdict);
    addLoss(losses, std::string("not learned: ") + cause, place, track.notes - track.notesLearned);
  }
  result.notesLearned = std::max(single, merged);
}

Json fullReport(const zq_MidiReport& report, const std::string& path) {
  Json full = {{"file", path},
               {"kind", "midi"},
               {"ending", zq_textOfMidiEnd(report.end)},
               {"format", report.format},
               {"ticks_per_quarter", report.division},
               {"tracks_announced", report.tracksAnnounced},
               {"tracks_read", report.numberOfFileTracks},
               {"bytes_unread", report.bytesUnread},
               {"meter", meter(report.numerator, report.denominator)},
               {"different_meters", report.numberOfMeters},
               {"notes_learned", report.notesLearned}};
  full["file_tracks"] = Json::array();
  for (int at = 0; at < report.numberOfFileTracks; ++at) {
    full["file_tracks"].push_back(fileTrackAsJson(report.fileTracks[at], at));
  }
  full["tracks"] = Json::array();
  for (int at = 0; at < report.numberOfTracks; ++at) full["tracks"].push_back(trackAsJson(report.tracks[at]));
  return full;
}

std::string tableOf(Json full) {
  const Json fileTracks = full["file_tracks"];
  const Json tracks = full["tracks"];
  full.erase("file_tracks");
  full.erase("tracks");
  std::string table = membersOf(full);
  if (!fileTracks.empty()) table += "\nas it stands in the file (columns of zeros left out):\n" + linesWithoutZeros(fileTracks);
  if (!tracks.empty()) table += "\nas learning sees it:\n" + linesWithoutZeros(tracks);
  return table;
}

}  // namespace

MusicReport midiReportOf(const std::string& path, const Matrix::MusicSettings& settings) {
  unsigned char filter[16];
  std::copy(settings.skippedChannels.begin(), settings.skippedChannels.end(), filter);
  const Report report(
      zq_createMidiReport(path.c_str(), settings.preprocessing, settings.grid, static_cast<int>(settings.tracks), filter),
      zq_deleteMidiReport);
  if (!report) throw Failure{ExitCode::limit, "out of memory"};
  MusicReport result;
  addEnding(*report, result);
  addLosses(*report, result);
  addVerdicts(*report, result);
  for (int at = 0; at < report->numberOfFileTracks; ++at) result.notesWithoutEnd += report->fileTracks[at].noteOnsWithoutEnd;
  result.full = fullReport(*report, path);
  result.table = tableOf(result.full);
  return result;
}
