#include "music/midi/ZQMidiReport.h"

#include <algorithm>
#include <climits>
#include <iterator>
#include <memory>
#include <new>

#include "frame/ZQMemory.h"
#include "frame/ZQMutedMessages.h"
#include "music/midi/ZQMidiFeed.h"
#include "music/midi/ZQMidiFile.h"
#include "music/midi/ZQMidiPairing.h"
#include "music/midi/ZQMidiTrackJudge.h"

namespace zmatrix {

namespace {

static_assert(static_cast<int>(MidiReadEnd::complete) == zq_MidiEndComplete);
static_assert(static_cast<int>(MidiReadEnd::notFound) == zq_MidiEndNotFound);
static_assert(static_cast<int>(MidiReadEnd::notMidi) == zq_MidiEndNotMidi);
static_assert(static_cast<int>(MidiReadEnd::divisionOfZero) == zq_MidiEndDivisionOfZero);
static_assert(static_cast<int>(MidiReadEnd::noTrack) == zq_MidiEndNoTrack);
static_assert(static_cast<int>(MidiReadEnd::cut) == zq_MidiEndCut);
static_assert(static_cast<int>(MidiReadEnd::outOfMemory) == zq_MidiEndOutOfMemory);
static_assert(static_cast<int>(MidiTrackVerdict::meterOutOfRange) == zq_MidiMeterOutOfRange);

constexpr const char* textsOfEnds[] = {
    "whole",
    "no such file",
    "no MIDI file",
    "0 ticks per quarter note, so that events have no times",
    "no track after the header",
    "cut inside a track",
    "memory has run out",
};

constexpr const char* textsOfVerdicts[] = {
    "learned",
    "fewer than two notes",
    "the number of coordinates doesn't fit the preprocessing type",
    "only percussion or effects without pitch",
    "the file has no time signature",
    "the file has several time signatures",
    "the denominator of the time signature is not 2 to 16",
};

template <size_t count>
const char* textAt(const char* const (&texts)[count], int index) {
  return index >= 0 && static_cast<size_t>(index) < count ? texts[index] : "";
}

/// Zeroed records for a report, at least one, so that null always means a lack of memory.
template <class Record>
Record* recordsFor(int count) {
  return static_cast<Record*>(systemCalloc(static_cast<size_t>(std::max(count, 1)), sizeof(Record)));
}

/// The settings that the judge reads, which the feed takes from the matrix.
struct ReportSettings {
  int preProcessingType;
  int noteOnQuantization;
  int midiTrackAnalyze;
  const unsigned char* channelFilter;
};

void fillFileTrack(zq_MidiFileTrack& to, const MidiTrackReading& reading, const MidiPairingFindings& pairings) {
  to.channelEvents = reading.channelEvents;
  to.metaEvents = reading.metaEvents;
  to.systemEvents = reading.systemEvents;
  to.unknownEvents = reading.unknownEvents;
  to.repeatedEvents = reading.repeatedEvents;
  const auto index = static_cast<size_t>(reading.indexOfEventTrack);
  if (index == 0 || index >= pairings.tracks.size()) return;
  const MidiTrackPairing& pairing = pairings.tracks[index];
  to.notes = pairing.notes;
  to.notesEndedByNextNote = pairing.notesEndedByTheNext;
  to.notesBegunByNoteOff = pairing.noteOffsTakenAsNotes;
  to.noteOnsWithoutEnd = pairing.noteOnsWithoutEnd;
  to.noteOffsWithoutNote = pairing.noteOffsWithoutNote;
  to.programChanges = pairing.programChanges;
  to.eventsLostInsideNotes = pairing.lostInsideNotes;
  to.programChangesLostInsideNotes = pairing.programChangesLostInsideNotes;
  to.eventsOnFilteredChannels = pairing.onFilteredChannels;
  to.unusedEvents = pairing.ofOtherKinds;
}

bool fillFileTracks(zq_MidiReport& report, const MidiReadFindings& reading, const MidiPairingFindings& pairings) {
  report.numberOfFileTracks = static_cast<int>(reading.tracks.size());
  report.fileTracks = recordsFor<zq_MidiFileTrack>(report.numberOfFileTracks);
  if (report.fileTracks == nullptr) return false;
  for (size_t i = 0; i < reading.tracks.size(); i++) fillFileTrack(report.fileTracks[i], reading.tracks[i], pairings);
  return true;
}

/// Runs the judge as the feed does, and stores its findings.
void fillTrack(zq_MidiTrack& to, MidiTrackJudge& judge, const ZQMidiObjectTrack& track, int index, int chordThreshold) {
  MidiTrackVerdict verdict = judge.takeUp(&track, index);
  to.index = index;
  to.notes = judge.numberOfNotes();
  to.soundID = track.getMidiSoundIDFromMidiObjectTrack(&to.numberOfSounds, &to.hasPercussion);
  to.subType = track.getMidiSubTypeFromMidiObjectTrack(&to.chordSize, chordThreshold, &to.hasPercussion);
  to.preProcessingType = judge.settings().preProcessingType;
  if (verdict == MidiTrackVerdict::taken) verdict = judge.findMeter();
  to.numerator = judge.numerator();
  to.denominator = judge.denominator();
  to.verdict = static_cast<int>(verdict);
  if (verdict != MidiTrackVerdict::taken) return;
  to.notesLearned = static_cast<int>(std::count_if(
      track.begin(), track.end(), [](const ZQMidiObject* object) { return object != nullptr && isLearned(*object); }));
  judge.finish();
}

bool fillTracks(zq_MidiReport& report, const ZQMidiTrackList& list, const ReportSettings& settings, const char* path) {
  const int singleTracks = list.getNumberOfMidiEventTracks();
  const int objectTracks = list.getNumberOfMidiObjectTracks();
  report.numberOfTracks = std::max(objectTracks - 1, 0);
  report.tracks = recordsFor<zq_MidiTrack>(report.numberOfTracks);
  if (report.tracks == nullptr) return false;
  MidiTrackJudge judge(list, midiSettingsFor(settings.preProcessingType), settings.noteOnQuantization, path, mediumMidiFeedTexts);
  report.numberOfMeters = list.getMidiTimeSignatureFromTrackList(&report.numerator, &report.denominator);
  for (int i = 1; i < objectTracks; i++) {
    zq_MidiTrack& track = report.tracks[i - 1];
    fillTrack(track, judge, *list.getMidiObjectTrackAtIndex(i), i, settings.noteOnQuantization);
    const bool isOnlyTrack = objectTracks == 2 && settings.midiTrackAnalyze == ZQMidiTrackAnalyzeMerged;
    track.isMerged = i >= singleTracks || isOnlyTrack ? 1 : 0;
    report.notesLearned += track.notesLearned;
  }
  return true;
}

bool fillReport(zq_MidiReport& report, const char* path, const ReportSettings& settings) {
  ZQMidiTrackList list;
  MidiReadFindings reading;
  MidiPairingFindings pairings;
  ZQMidiFile().readEventsFromFileWithPath(&list, path, &reading);
  report.end = static_cast<int>(reading.end);
  report.format = reading.format;
  report.division = reading.division;
  report.tracksAnnounced = reading.tracksAnnounced;
  report.bytesUnread = reading.bytesUnread;
  return list.updateMIDIObjectTracksFromMIDIEventTracks(midiFeedStatusFilter, settings.channelFilter, settings.midiTrackAnalyze,
                                                        &pairings) &&
         fillFileTracks(report, reading, pairings) && fillTracks(report, list, settings, path != nullptr ? path : "");
}

}  // namespace

zq_MidiReport* createMidiReport(const char* path, int preProcessingType, int noteOnQuantization, int midiTrackAnalyze,
                                const unsigned char* channelFilter) try {
  const MutedMessages muted;
  std::unique_ptr<zq_MidiReport, void (*)(zq_MidiReport*)> report(recordsFor<zq_MidiReport>(1), deleteMidiReport);
  if (report == nullptr) return nullptr;
  if (!fillReport(*report, path, {preProcessingType, noteOnQuantization, midiTrackAnalyze, channelFilter})) return nullptr;
  return report.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

void deleteMidiReport(zq_MidiReport* report) {
  if (report == nullptr) return;
  systemFree(report->fileTracks);
  systemFree(report->tracks);
  systemFree(report);
}

const char* textOfMidiEnd(int end) {
  return textAt(textsOfEnds, end);
}

const char* textOfMidiVerdict(int verdict) {
  return textAt(textsOfVerdicts, verdict);
}

}  // namespace zmatrix
