// Takes arbitrary bytes for a MIDI file: to tracks, whose pairing is held against the plain one, into a report and a matrix, and
// back to a file if something was learned. The first two bytes choose coding, tier and how tracks are merged. The corpus begins
// well with what fuzz/make_midi_seeds.py writes.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "frame/flat/ZQMatrixCreators.h"
#include "music/midi/ZQGeneratedMidi.h"
#include "music/midi/ZQMidiFile.h"
#include "music/midi/ZQMidiReport.h"
#include "support/PlainPairing.h"
#include "symbols/ZQMatrix.h"

namespace {

constexpr int feedFilter[8] = {0, 0, 1, 1, 0, 1, 1, 1};
constexpr unsigned char noFilter[16] = {};
constexpr int mostEventsForPlain = 2000;
constexpr int notesToGenerate = 40;

void require(bool isTrue) {
  if (!isTrue) abort();
}

/// The library sorts what it pairs, so the number of objects and the sum of their times stand for them.
void compareWithPlain(const ZQMidiTrackList& list, const ZQMidiEventTrack& track) {
  int channels = 0, hasPercussion = 0, nom = 0, denom = 0;
  const std::unique_ptr<ZQMidiObjectTrack> objects(
      list.createMIDIObjectTrackFromMidiEventTrack(&track, feedFilter, noFilter, &channels, &hasPercussion, &nom, &denom));
  const auto plain = zmatrix::plain::paired(track, feedFilter, noFilter);
  unsigned sum = 0, plainSum = 0;
  for (const ZQMidiObject* object : *objects) {
    sum += static_cast<unsigned>(object->getStartQuanta()) * 3 + static_cast<unsigned>(object->getEndQuanta()) * 7 +
           object->getNoteNumber();
  }
  for (const auto& object : plain) {
    plainSum += static_cast<unsigned>(object[0]) * 3 + static_cast<unsigned>(object[1]) * 7 +
                static_cast<unsigned>(object[2] == 1 ? object[3] : 0);
  }
  require(static_cast<size_t>(objects->getCount()) == plain.size() && sum == plainSum);
}

void readAndPair(const std::string& path) {
  ZQMidiTrackList list;
  ZQMidiFile().readEventsFromFileWithPath(&list, path.c_str());
  for (int i = 0; i < list.getNumberOfMidiEventTracks(); i++) {
    const ZQMidiEventTrack& track = *list.getMidiEventTrackAtIndex(i);
    if (track.getCount() <= mostEventsForPlain) compareWithPlain(list, track);
  }
}

template <class Matrix>
void feed(Matrix* matrix, void (*destroy)(Matrix*), const std::string& path, int coding, int analyze) {
  matrix->setMaxNumberOfMatrices(5);
  if (coding == 0) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta();
  if (coding == 1) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta();
  if (coding == 2) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  if (coding == 3) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS();
  matrix->setGlobalMidiTrackAnalyze(analyze);
  matrix->setGlobalMaxPhraseLengthForUpdateWithSequence(4);
  int notes = 0;
  matrix->updateMatrixWithMIDIFile(path.c_str(), &notes);
  for (int id = 0; id < matrix->getNumberOfMatrices(); id++) {
    matrix->setCurrentMatrixID(id);
    matrix->getMatrixInfo()->setEnableStopItem(id % 2);
    zmatrix::readMidiObjexsAndWriteToMidiFile(matrix, notesToGenerate, "/dev/null", &notes);
  }
  destroy(matrix);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static const std::string path = "/dev/shm/zmatrix-fuzz-midi-" + std::to_string(getpid());
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  fwrite(data + 2, 1, size - 2, file);
  fclose(file);
  const int coding = data[0] % 4, analyze = data[1] % 3;
  constexpr int preProcessingTypes[] = {1, 1002, 1003, 1004};
  readAndPair(path);
  zq_MidiReport* report = zmatrix::createMidiReport(path.c_str(), preProcessingTypes[coding], 16, analyze, nullptr);
  require(report != nullptr && (report->end != zq_MidiEndNotMidi || report->notesLearned == 0));
  zmatrix::deleteMidiReport(report);
  if (data[0] % 8 < 4) {
    feed(createAndInitMatrixMedium(), deleteMatrixMedium, path, coding, analyze);
  } else {
    feed(createAndInitMatrix(), deleteMatrix, path, coding, analyze);
  }
  remove(path.c_str());
  return 0;
}
