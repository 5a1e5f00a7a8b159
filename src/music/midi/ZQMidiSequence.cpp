#include "music/midi/ZQMidiSequence.h"

#include "frame/ZQDebugChannel.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiTrackJudge.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr int longestDuration = 16 * quantaPerWholeNote;
constexpr int noteNumbers = 128;

int gridOf(int quantization) {
  return quantization > 0 ? quantaPerWholeNote / quantization : 0;
}

/// The nearest multiple, in steps of the grid.
int stepsOf(int quanta, int grid) {
  return intOfTime(static_cast<double>(quanta) / grid + 0.5);
}

/// Steps as quanta; wraps where an int doesn't hold them.
int quantaOf(int steps, int grid) {
  return static_cast<int>(static_cast<unsigned>(steps) * static_cast<unsigned>(grid));
}

int durationOf(const ZQMidiObject& note, int quantization) {
  const int duration = durationOnGrid(wrappingDifference(note.getEndQuanta(), note.getStartQuanta()), quantization);
  if (duration <= 0 || duration > longestDuration) {
    dbPrintf(0, "updateMatrixWithMidiFile: illegal noteDuration: %d\n", duration);
  }
  return duration;
}

/// Warnings alone: the note stays as it is.
void warnAboutNote(int noteNumber, int noteOn) {
  if (noteNumber >= noteNumbers) dbPrintf(0, "updateMatrixWithMidiFile: illegal notenumber: %d\n", noteNumber);
  if (noteOn < 0) dbPrintf(0, "updateMatrixWithMidiFile: illegal quanta value: %d\n", noteOn);
}

}  // namespace

int noteOnOnGrid(int quanta, int quantization) {
  const int grid = gridOf(quantization);
  return grid > 0 ? quantaOf(stepsOf(quanta, grid), grid) : quanta;
}

int durationOnGrid(int quanta, int quantization) {
  const int grid = gridOf(quantization);
  if (grid <= 0) return quanta;
  const int steps = stepsOf(quanta, grid);
  if (steps >= 1) return quantaOf(steps, grid);
  dbPrintf(4, "quantizeDurationTime: duration < 1/16th! (quanta: %d)\n", quanta);
  return grid;
}

MidiSequence sequenceOfTrack(const ZQMidiObjectTrack& track, const MidiSequenceForm& form, long long length) {
  MidiSequence sequence{SystemOwned<int>(systemMallocArray<int>(length)), 0};
  if (sequence.values == nullptr) return sequence;
  const int coordinates = coordinatesOfNote(form.preProcessingType);
  int* next = sequence.values.get();
  for (const ZQMidiObject* note : track) {
    if (note == nullptr || !isLearned(*note)) continue;
    if (sequence.count + coordinates > length) break;
    const int noteOn = noteOnOnGrid(note->getStartQuanta(), form.noteOnQuantization);
    *next++ = note->getNoteNumber();
    *next++ = noteOn;
    if (coordinates >= 3) *next++ = durationOf(*note, form.durationQuantization);
    if (coordinates >= 4) *next++ = note->getSoundID();
    sequence.count += coordinates;
    warnAboutNote(note->getNoteNumber(), noteOn);
  }
  return sequence;
}

}  // namespace zmatrix
