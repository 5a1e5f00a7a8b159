// Notes as the integers that are learned: note number and start, then duration and sound for the types that have them, with times
// rounded to a grid.
#pragma once

#include <utility>

#include "frame/ZQSystemOwned.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

/// The nearest multiple of a grid of 12288 / `quantization` quanta. A quantization without a grid leaves the time unchanged.
int noteOnOnGrid(int quanta, int quantization);
/// The same, but at least one step of the grid; a shorter duration gives a message at level 4.
int durationOnGrid(int quanta, int quantization);

struct MidiSequenceForm {
  int preProcessingType;
  int noteOnQuantization;
  int durationQuantization;
};

struct MidiSequence {
  SystemOwned<int> values;  ///< null if memory runs out
  long long count = 0;      ///< integers written
};

/// A note before its times are rounded to the grid.
struct NoteToLearn {
  int noteNumber;
  int start;
  int duration;
  int sound;
};

/// Writes notes into a sequence of a given length. Messages begin with the name of the caller.
class MidiSequenceWriter {
 public:
  MidiSequenceWriter(const MidiSequenceForm& sequenceForm, long long capacity, const char* callerName);
  /// False if the sequence has no room for the note, or if memory runs out.
  bool add(const NoteToLearn& note);
  MidiSequence take() { return std::move(sequence_); }

 private:
  int durationOf(int quanta) const;
  void warnAbout(int noteNumber, int noteOn) const;

  const MidiSequenceForm form_;
  const long long length_;
  const char* caller_;
  MidiSequence sequence_;
};

/// The notes of a track, as many as fit into `length` integers.
MidiSequence sequenceOfTrack(const ZQMidiObjectTrack& track, const MidiSequenceForm& form, long long length);

}  // namespace zmatrix
