#include "music/score/ZQScoreMidiTracks.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace zmatrix {

namespace {

constexpr unsigned char noteOn = 0x90;
constexpr unsigned char metaTrackName = 0x03;
constexpr int percussionChannel = 9;
constexpr int severalPrograms = -1;
constexpr int noProgram = 128;
constexpr int bitsOfKey = 7;
constexpr size_t longestName = 1024;

/// The program for a note, or `noProgram` if the file should set none for it.
int programOf(const zq_ScoreNote& note, int channel) {
  return note.program == 0 && (note.sound == 0 || channel == percussionChannel) ? noProgram : note.program;
}

}  // namespace

ScoreMidiTracks::ScoreMidiTracks(const zq_Score& score, ScoreTicks& ticks, MidiTrackBytes& bytes)
    : score_(score), ticks_(ticks), bytes_(bytes) {
}

void ScoreMidiTracks::write() {
  lookAtPrograms();
  for (int i = 0; i < score_.numberOfParts && bytes_.isPossible(); ++i) writePart(score_.parts[i]);
}

/// A program applies to its channel in all tracks. Where several tracks share a channel but not the program, each must set its
/// own program wherever it has notes; of several changes at one time the one in the note's own track applies.
void ScoreMidiTracks::lookAtPrograms() {
  std::array<const zq_ScorePart*, 16> lastParts{};
  for (int i = 0; i < score_.numberOfParts; ++i) {
    const zq_ScorePart& part = score_.parts[i];
    if (part.numberOfNotes == 0) continue;
    Channel& channel = channels_[static_cast<size_t>(part.channel)];
    ++channel.parts;
    lastParts[static_cast<size_t>(part.channel)] = &part;
    if (channel.program == usualPrograms) channel.program = programOf(score_.notes[part.firstNote], part.channel);
    for (long long note = part.firstNote; note < part.firstNote + part.numberOfNotes; ++note) {
      if (programOf(score_.notes[note], part.channel) != channel.program) channel.program = severalPrograms;
    }
  }
  for (size_t i = 0; i < channels_.size(); ++i) {
    Channel& channel = channels_[i];
    if (channel.program == severalPrograms) channel.repeatsPrograms = channel.parts > 1 || needsSeveralTracks(*lastParts[i]);
  }
}

/// Works on a copy of the ticks, so that moved times are not counted twice.
bool ScoreMidiTracks::needsSeveralTracks(const zq_ScorePart& part) const {
  ScoreTicks ticks = ticks_;
  Ends lastEnds{};
  const zq_ScoreNote* const first = score_.notes + part.firstNote;
  return std::any_of(first, first + part.numberOfNotes, [&](const zq_ScoreNote& note) {
    const long long end = ticks.spanOf(note).end;
    const bool isEarlier = end < lastEnds[note.pitch];
    lastEnds[note.pitch] = end;
    return isEarlier;
  });
}

void ScoreMidiTracks::writePart(const zq_ScorePart& part) {
  if (part.numberOfNotes == 0) return;
  Ends lastEnds{};
  extraNotes_.clear();
  beginTrack(part);
  for (long long i = part.firstNote; i < part.firstNote + part.numberOfNotes; ++i) {
    const zq_ScoreNote& note = score_.notes[i];
    const ScoreTicks::Span span = ticks_.spanOf(note);
    if (span.end < lastEnds[note.pitch]) {
      extraNotes_.push_back({extraTrackFor(note, span.end), i});
      continue;
    }
    lastEnds[note.pitch] = span.end;
    writeNote(part, note, span);
  }
  endTrack(part.channel);
  if (!extraNotes_.empty()) writeExtraTracks(part);
}

/// The first extra track whose last note of this key doesn't end later. These ends decrease from track to track, so that binary
/// search works.
size_t ScoreMidiTracks::extraTrackFor(const zq_ScoreNote& note, long long end) {
  std::vector<long long>& ends = endsOfExtraTracks_[note.pitch];
  const auto found = std::lower_bound(ends.begin(), ends.end(), end, std::greater<>());
  const auto track = static_cast<size_t>(found - ends.begin());
  if (found == ends.end()) {
    ends.push_back(end);
  } else {
    *found = end;
  }
  return track;
}

void ScoreMidiTracks::writeExtraTracks(const zq_ScorePart& part) {
  std::stable_sort(extraNotes_.begin(), extraNotes_.end(),
                   [](const ExtraNote& one, const ExtraNote& other) { return one.track < other.track; });
  ScoreTicks ticks = ticks_;
  size_t track = 0;
  for (const ExtraNote& extra : extraNotes_) {
    if (&extra == extraNotes_.data() || extra.track != track) {
      if (&extra != extraNotes_.data()) endTrack(part.channel);
      if (!bytes_.isPossible()) return;
      beginTrack(part);
      ++extraTracks_;
      track = extra.track;
    }
    writeNote(part, score_.notes[extra.index], ticks.spanOf(score_.notes[extra.index]));
  }
  endTrack(part.channel);
  for (std::vector<long long>& ends : endsOfExtraTracks_) ends.clear();
}

void ScoreMidiTracks::beginTrack(const zq_ScorePart& part) {
  bytes_.beginTrack();
  program_ = 0;
  hasWrittenProgram_ = false;
  const std::string_view name = part.name != nullptr ? part.name : "";
  if (name.empty()) return;
  bytes_.moveTo(0);
  bytes_.putMetaEvent(metaTrackName, name.substr(0, longestName));
}

/// Notes that end at a tick are ended before new ones begin. A note without a duration ends at its onset.
void ScoreMidiTracks::writeNote(const zq_ScorePart& part, const zq_ScoreNote& note, const ScoreTicks::Span& span) {
  endNotes(part.channel, span.onset);
  writeProgram(part.channel, note, span.onset);
  const auto status = static_cast<unsigned char>(noteOn | part.channel);
  bytes_.moveTo(span.onset);
  bytes_.putChannelEvent(status, note.pitch, note.velocity);
  if (span.end == span.onset) {
    bytes_.moveTo(span.onset);
    bytes_.putChannelEvent(status, note.pitch, 0);
    return;
  }
  ends_.push_back(static_cast<uint64_t>(span.end) << bitsOfKey | note.pitch);
  std::push_heap(ends_.begin(), ends_.end(), std::greater<>());
}

void ScoreMidiTracks::writeProgram(int channel, const zq_ScoreNote& note, long long tick) {
  const bool isNew = note.program != program_ || (!hasWrittenProgram_ && programOf(note, channel) != noProgram);
  const bool isStale = channels_[static_cast<size_t>(channel)].repeatsPrograms && (!hasWrittenProgram_ || tick != tickOfProgram_);
  if (!isNew && !isStale) return;
  bytes_.moveTo(tick);
  bytes_.putProgramChange(static_cast<unsigned char>(channel), note.program);
  program_ = note.program;
  hasWrittenProgram_ = true;
  tickOfProgram_ = tick;
}

/// Ends the notes that end at `until` or before, by note-ons of velocity 0, which share the running status.
void ScoreMidiTracks::endNotes(int channel, long long until) {
  while (!ends_.empty() && static_cast<long long>(ends_.front() >> bitsOfKey) <= until) {
    bytes_.moveTo(static_cast<long long>(ends_.front() >> bitsOfKey));
    bytes_.putChannelEvent(static_cast<unsigned char>(noteOn | channel),
                           static_cast<unsigned char>(ends_.front() & (numberOfKeys - 1)), 0);
    std::pop_heap(ends_.begin(), ends_.end(), std::greater<>());
    ends_.pop_back();
  }
}

void ScoreMidiTracks::endTrack(int channel) {
  endNotes(channel, std::numeric_limits<long long>::max());
  bytes_.endTrack();
}

}  // namespace zmatrix
