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

/// The nearest multiple of the grid, as a number of steps.
int stepsOf(int quanta, int grid) {
  return intOfTime(static_cast<double>(quanta) / grid + 0.5);
}

/// Steps as quanta; the product wraps around.
int quantaOf(int steps, int grid) {
  return static_cast<int>(static_cast<unsigned>(steps) * static_cast<unsigned>(grid));
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

MidiSequenceWriter::MidiSequenceWriter(const MidiSequenceForm& sequenceForm, long long capacity, const char* callerName)
    : form_(sequenceForm),
      length_(capacity),
      caller_(callerName),
      sequence_{SystemOwned<int>(systemMallocArray<int>(capacity)), 0} {
}

int MidiSequenceWriter::durationOf(int quanta) const {
  const int duration = durationOnGrid(quanta, form_.durationQuantization);
  if (duration <= 0 || duration > longestDuration) dbPrintf(0, "%s: illegal noteDuration: %d\n", caller_, duration);
  return duration;
}

/// Prints warnings; the note is not changed.
void MidiSequenceWriter::warnAbout(int noteNumber, int noteOn) const {
  if (noteNumber >= noteNumbers) dbPrintf(0, "%s: illegal notenumber: %d\n", caller_, noteNumber);
  if (noteOn < 0) dbPrintf(0, "%s: illegal quanta value: %d\n", caller_, noteOn);
}

bool MidiSequenceWriter::add(const NoteToLearn& note) {
  const int coordinates = coordinatesOfNote(form_.preProcessingType);
  if (sequence_.values == nullptr || sequence_.count + coordinates > length_) return false;
  const int noteOn = noteOnOnGrid(note.start, form_.noteOnQuantization);
  int* next = sequence_.values.get() + sequence_.count;
  *next++ = note.noteNumber;
  *next++ = noteOn;
  if (coordinates >= 3) *next++ = durationOf(note.duration);
  if (coordinates >= 4) *next++ = note.sound;
  sequence_.count += coordinates;
  warnAbout(note.noteNumber, noteOn);
  return true;
}

MidiSequence sequenceOfTrack(const ZQMidiObjectTrack& track, const MidiSequenceForm& form, long long length) {
  MidiSequenceWriter writer(form, length, "updateMatrixWithMidiFile");
  for (const ZQMidiObject* note : track) {
    if (note == nullptr || !isLearned(*note)) continue;
    const int duration = wrappingDifference(note->getEndQuanta(), note->getStartQuanta());
    if (!writer.add({note->getNoteNumber(), note->getStartQuanta(), duration, note->getSoundID()})) break;
  }
  return writer.take();
}

}  // namespace zmatrix
