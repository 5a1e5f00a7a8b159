// Notes as the integers that are learned: note number and start, then the duration and the sound for the types that have them,
// with times on a grid.
#pragma once

#include <utility>

#include "frame/ZQSystemOwned.h"
#include "music/midi/ZQMidiObjectTrack.h"

namespace zmatrix {

/// The nearest multiple of a grid of 12288 / `quantization` quanta. A quantization that gives no grid leaves the time as it is.
int noteOnOnGrid(int quanta, int quantization);
/// The same, but at least one step of the grid, with a message at level 4 for a duration of less.
int durationOnGrid(int quanta, int quantization);

struct MidiSequenceForm {
  int preProcessingType;
  int noteOnQuantization;
  int durationQuantization;
};

struct MidiSequence {
  SystemOwned<int> values;  ///< null if memory has run out
  long long count = 0;      ///< integers written
};

/// A note as it is learned, times not yet on the grid.
struct NoteToLearn {
  int noteNumber;
  int start;
  int duration;
  int sound;
};

/// Puts notes into a sequence of a given length. Messages begin with the name of the caller.
class MidiSequenceWriter {
 public:
  MidiSequenceWriter(const MidiSequenceForm& aForm, long long aLength, const char* aCaller);
  /// False if the sequence has no room for the note, or no memory.
  bool add(const NoteToLearn& note);
  MidiSequence take() { return std::move(sequence); }

 private:
  int durationOf(int quanta) const;
  void warnAbout(int noteNumber, int noteOn) const;

  const MidiSequenceForm form;
  const long long length;
  const char* caller;
  MidiSequence sequence;
};

/// The notes of a track, as many as `length` integers hold.
MidiSequence sequenceOfTrack(const ZQMidiObjectTrack& track, const MidiSequenceForm& form, long long length);

}  // namespace zmatrix
