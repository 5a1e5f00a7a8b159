// Takes arbitrary bytes for a kern file: checks and reads it, reports on it, turns it into MIDI and learns it. The first byte
// chooses coding, tier and how tracks are merged. Whatever comes: no overrun, no leak, no endless loop, and the report counts
// what the reading makes. The corpus begins well with what fuzz/make_kern_seeds.py writes.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/flat/ZQMatrixCreators.h"
#include "music/kern/ZQKernConversion.h"
#include "music/kern/ZQKernFile.h"
#include "music/kern/ZQKernReport.h"
#include "symbols/ZQMatrix.h"

namespace {

void require(bool isTrue) {
  if (!isTrue) abort();
}

void readAndReport(const std::string& path) {
  ZQKernTrackList list;
  list.init();
  ZQKernFile().readKernObjectsFromFileWithPath(&list, path.c_str());
  long long notes = 0, others = 0;
  for (const ZQKernObject* object : *list.getKernObjectTrackAtIndex(0)) {
    notes += object->isNote();
    others += object->isNote() && object->getChannel() > 15;
  }
  zq_KernReport* report = zmatrix::createKernReport(path.c_str(), 1003, 2, nullptr);
  require(report != nullptr && report->notes == notes && report->notesOnOtherChannels == others);
  require(report->state == zq_KernFileRead || report->state == zq_KernFileCutShort || notes == 0);
  zmatrix::deleteKernReport(report);
}

template <class Matrix>
void feed(Matrix* matrix, void (*destroy)(Matrix*), const std::string& path, int choice) {
  const int coding = choice % 4;
  if (coding == 0) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta();
  if (coding == 1) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta();
  if (coding == 2) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  if (coding == 3) matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS();
  matrix->setGlobalMidiTrackAnalyze(choice / 8 % 3);
  matrix->setGlobalMaxPhraseLengthForUpdateWithSequence(4);
  int notes = 0;
  matrix->updateMatrixWithKERNFile(path.c_str(), &notes);
  require(notes >= 0);
  destroy(matrix);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  static const std::string path = "/dev/shm/zmatrix-fuzz-kern-" + std::to_string(getpid());
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  fwrite(data + 1, 1, size - 1, file);
  fclose(file);
  readAndReport(path);
  require(zmatrix::convertKernFileToMidiFile(path.c_str(), "/dev/null") == 1);
  if (data[0] % 8 < 4) {
    feed(createAndInitMatrixMedium(), deleteMatrixMedium, path, data[0]);
  } else {
    feed(createAndInitMatrix(), deleteMatrix, path, data[0]);
  }
  remove(path.c_str());
  return 0;
}
