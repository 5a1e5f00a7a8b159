// The programs of channels that several tracks of a MIDI file share.
#pragma once

#include <array>
#include <vector>

#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// The class of sound (ZQMatrixSoundID) of a program on a channel.
unsigned char midiScoreSound(int channel, unsigned char program);

struct MidiProgramChange {
  long long onset;     ///< in the unit of the notes' onsets
  long long nextNote;  ///< index of the first note behind it in the file
  int track;
  unsigned char program;
};

/// The program changes of all tracks, one list per channel. A note has the program of the latest change on its channel in any
/// track; of several at the same time that of its own track, else that of the last track. A change in the note's own track
/// applies to the notes behind it in the file, one in another track also to notes at its time.
class MidiProgramChanges {
 public:
  /// Adds a change; changes come in the order of the file.
  void add(int channel, const MidiProgramChange& change) { channels_[static_cast<size_t>(channel)].inFile.push_back(change); }

  /// Replaces the programs of notes, so far those of their own tracks, by those that other tracks set. `parts`: the builder's
  /// parts by index; notes are in the order of the file.
  void applyTo(ScoreBuilder& builder, const std::vector<zq_ScorePart>& parts);

 private:
  struct Channel {
    std::vector<MidiProgramChange> inFile, byTime;
    std::vector<long long> ofOtherTrack;  ///< for each of `byTime`: the last one at the same time from another track, or -1
    size_t next = 0;                      ///< in `inFile`: the first change behind the note
    bool isShared = false;

    void arrange();
    const MidiProgramChange* ownChangeFor(long long index, int track);
    const MidiProgramChange* changeFor(const zq_ScoreNote& note, long long index, int track);
  };

  std::array<Channel, 16> channels_;
};

}  // namespace zmatrix
