#include "music/score/ZQMidiScorePrograms.h"

#include <algorithm>

#include "music/midi/ZQMidiSounds.h"

namespace zmatrix {

namespace {

constexpr int percussionChannel = 9;
constexpr unsigned char soundOfPercussion = 9;

bool isEarlier(const MidiProgramChange& one, const MidiProgramChange& other) {
  return one.onset < other.onset;
}

}  // namespace

unsigned char midiScoreSound(int channel, unsigned char program) {
  if (channel == percussionChannel) return soundOfPercussion;
  return static_cast<unsigned char>(getSoundIDFromGMProgramChange(program, nullptr));
}

void MidiProgramChanges::Channel::arrange() {
  byTime = inFile;
  std::stable_sort(byTime.begin(), byTime.end(), isEarlier);
  ofOtherTrack.assign(byTime.size(), -1);
  for (size_t i = 1; i < byTime.size(); ++i) {
    if (byTime[i - 1].onset != byTime[i].onset) continue;
    ofOtherTrack[i] = byTime[i - 1].track != byTime[i].track ? static_cast<long long>(i) - 1 : ofOtherTrack[i - 1];
  }
}

const MidiProgramChange* MidiProgramChanges::Channel::ownChangeFor(long long index, int track) {
  while (next < inFile.size() &&
         (inFile[next].track < track || (inFile[next].track == track && inFile[next].nextNote <= index))) {
    ++next;
  }
  return next > 0 && inFile[next - 1].track == track ? &inFile[next - 1] : nullptr;
}

const MidiProgramChange* MidiProgramChanges::Channel::changeFor(const zq_ScoreNote& note, long long index, int track) {
  const MidiProgramChange* const own = ownChangeFor(index, track);
  if (own != nullptr && own->onset == note.onset) return own;
  const auto [first, behind] = std::equal_range(byTime.begin(), byTime.end(), MidiProgramChange{note.onset, 0, 0, 0}, isEarlier);
  if (first != behind) {
    const auto last = behind - 1;
    if (last->track != track) return &*last;
    const long long other = ofOtherTrack[static_cast<size_t>(last - byTime.begin())];
    if (other >= 0) return &byTime[static_cast<size_t>(other)];
  }
  if (first == byTime.begin()) return own;
  const MidiProgramChange& latest = *(first - 1);
  return own != nullptr && own->onset == latest.onset ? own : &latest;
}

void MidiProgramChanges::applyTo(ScoreBuilder& builder, const std::vector<zq_ScorePart>& parts) {
  bool areShared = false;
  for (const zq_ScorePart& part : parts) {
    Channel& channel = channels_[static_cast<size_t>(part.channel)];
    if (channel.isShared || channel.inFile.empty()) continue;
    if (channel.inFile.front().track == part.track && channel.inFile.back().track == part.track) continue;
    channel.isShared = areShared = true;
    channel.arrange();
  }
  for (long long index = 0; areShared && index < builder.numberOfNotes(); ++index) {
    zq_ScoreNote& note = builder.noteAt(index);
    const zq_ScorePart& part = parts[static_cast<size_t>(note.part)];
    Channel& channel = channels_[static_cast<size_t>(part.channel)];
    if (!channel.isShared) continue;
    const MidiProgramChange* const change = channel.changeFor(note, index, part.track);
    if (change == nullptr) continue;
    note.program = change->program;
    note.sound = midiScoreSound(part.channel, change->program);
  }
}

}  // namespace zmatrix
