// The programs of channels that several tracks of a MIDI file share.
#pragma once

#include <array>
#include <vector>

#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// The class of sound (ZQMatrixSoundID) of a program on a channel.
unsigned char midiScoreSound(int channel, unsigned char program);

struct MidiProgramChange {
  long long onset;     ///< in the unit of the notes
  long long nextNote;  ///< index of the first note behind it
  int track;
  unsigned char program;
};

/// The program changes of all tracks, a list a channel. A note has the program of the latest change on its channel in any track;
/// of those at one time that of its own track, else that of the last track. A change in the own track counts for the notes
/// behind it, one in another track for those at its time too.
class MidiProgramChanges {
 public:
  /// In the order of the file.
  void add(int channel, const MidiProgramChange& change) { channels_[static_cast<size_t>(channel)].inFile.push_back(change); }

  /// Gives the notes of the score, which have the programs of their own tracks so far, those that other tracks set. Parts are
  /// those of the builder by index; notes stand in the order of the file.
  void applyTo(ScoreBuilder& builder, const std::vector<zq_ScorePart>& parts);

 private:
  struct Channel {
    std::vector<MidiProgramChange> inFile, byTime;
    std::vector<long long> ofOtherTrack;  ///< for each of `byTime`: the last one before it at its time in another track, or -1
    size_t next = 0;                      ///< in the file: the first change that is behind the note
    bool isShared = false;

    void arrange();
    const MidiProgramChange* ownChangeFor(long long index, int track);
    const MidiProgramChange* changeFor(const zq_ScoreNote& note, long long index, int track);
  };

  std::array<Channel, 16> channels_;
};

}  // namespace zmatrix
