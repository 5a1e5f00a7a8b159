// Notes as the integers that are learned: note number and start, then the duration and the sound for the types that have them,
// with times on a grid.
#pragma once

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

/// The notes of a track, as many as `length` integers hold.
MidiSequence sequenceOfTrack(const ZQMidiObjectTrack& track, const MidiSequenceForm& form, long long length);

}  // namespace zmatrix
