// Writes the notes of a score as tracks of a MIDI file.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "music/score/ZQMidiTrackBytes.h"
#include "music/score/ZQScoreTicks.h"

namespace zmatrix {

class ScoreMidiTracks {
 public:
  /// The score must be valid.
  ScoreMidiTracks(const zq_Score& score, ScoreTicks& ticks, MidiTrackBytes& bytes);

  /// Writes the tracks of all parts; stops when the file exceeds the format.
  void write();
  /// The number of tracks beyond one per part.
  int extraTracks() const { return extraTracks_; }

 private:
  static constexpr int numberOfKeys = 128;
  static constexpr int usualPrograms = -2;
  using Ends = std::array<long long, numberOfKeys>;

  struct Channel {
    int parts = 0;
    int program = usualPrograms;  ///< the program of all notes, or `severalPrograms`
    bool repeatsPrograms = false;
  };
  /// A note that can't be in the first track of its part.
  struct ExtraNote {
    size_t track;  ///< from 0, among the extra tracks of the part
    long long index;
  };

  void lookAtPrograms();
  bool needsSeveralTracks(const zq_ScorePart& part) const;
  void writePart(const zq_ScorePart& part);
  void writeExtraTracks(const zq_ScorePart& part);
  size_t extraTrackFor(const zq_ScoreNote& note, long long end);
  void beginTrack(const zq_ScorePart& part);
  void writeNote(const zq_ScorePart& part, const zq_ScoreNote& note, const ScoreTicks::Span& span);
  void writeProgram(int channel, const zq_ScoreNote& note, long long tick);
  void endNotes(int channel, long long until);
  void endTrack(int channel);

  const zq_Score& score_;
  ScoreTicks& ticks_;
  MidiTrackBytes& bytes_;
  std::array<Channel, 16> channels_;
  int extraTracks_ = 0;

  // State of the current track.
  std::vector<uint64_t> ends_;  ///< a heap of the sounding notes: tick and key
  int program_ = 0;
  bool hasWrittenProgram_ = false;
  long long tickOfProgram_ = 0;

  // State of the current part.
  std::vector<ExtraNote> extraNotes_;
  std::array<std::vector<long long>, numberOfKeys> endsOfExtraTracks_;  ///< per key: last end in each extra track, descending
};

}  // namespace zmatrix
