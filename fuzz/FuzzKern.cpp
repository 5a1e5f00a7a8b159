// Reads arbitrary bytes as a kern file: checks and reads it, reports on it, converts it to MIDI and learns it. The first byte
// selects coding, tier and merging of tracks. For every input there must be no overrun, no leak and no endless loop, and the
// report must agree with the reading. The exact reading must give a valid score, the same from a file and from its bytes.
// fuzz/make_kern_seeds.py writes seeds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "MusicFile.h"
#include "ScoreFeeding.h"
#include "music/kern/ZQKernConversion.h"
#include "music/kern/ZQKernFile.h"
#include "music/kern/ZQKernReport.h"
#include "music/score/ZQKernScoreReader.h"
#include "music/score/ZQScore.h"
#include "music/score/ZQScoreTime.h"

namespace {

void require(bool isTrue) {
  if (!isTrue) abort();
}

void readAndReport(const std::string& path) {
  zmatrix::ZQKernTrackList list;
  require(list.init());
  zmatrix::ZQKernFile().readKernObjectsFromFileWithPath(&list, path.c_str());
  long long notes = 0, others = 0;
  for (const zmatrix::ZQKernObject* object : *list.getKernObjectTrackAtIndex(0)) {
    notes += object->isNote();
    others += object->isNote() && object->getChannel() > 15;
  }
  zq_KernReport* report = zmatrix::createKernReport(path.c_str(), 1003, 2, nullptr);
  require(report != nullptr && report->notes == notes && report->notesOnOtherChannels == others);
  require(report->state == zq_KernFileRead || report->state == zq_KernFileCutShort || notes == 0);
  zmatrix::deleteKernReport(report);
}

bool isTime(long long numerator, int denominator) {
  return numerator >= 0 && denominator > 0 && denominator <= zmatrix::ScoreTime::largestDenominator &&
         numerator <= zmatrix::ScoreTime::latest * denominator;
}

void checkPart(const zq_Score& score, int index) {
  const zq_ScorePart& part = score.parts[index];
  require(part.numberOfNotes > 0 && part.channel >= 0 && part.channel < 16 && part.name != nullptr);
  for (long long i = part.firstNote; i < part.firstNote + part.numberOfNotes; i++) {
    const zq_ScoreNote& note = score.notes[i];
    require(note.part == index && note.pitch < 128 && note.program < 128 && note.place > 0 && note.column > 0);
    require(isTime(note.onset, note.onsetDenominator) && isTime(note.duration, note.durationDenominator));
    if (i == part.firstNote) continue;
    const zq_ScoreNote& before = score.notes[i - 1];
    require(zmatrix::ScoreTime{before.onset, before.onsetDenominator} <= zmatrix::ScoreTime{note.onset, note.onsetDenominator});
  }
}

void checkScore(const zq_Score& score) {
  long long notes = 0, findings = 0;
  for (int i = 0; i < score.numberOfParts; i++) {
    require(score.parts[i].firstNote == notes);
    checkPart(score, i);
    notes += score.parts[i].numberOfNotes;
  }
  require(notes == score.numberOfNotes);
  for (const long long count : score.findingCounts) findings += count;
  require(findings >= score.numberOfFindings && (findings > 10000 || findings == score.numberOfFindings));
  for (int i = 0; i < score.numberOfMeters; i++) {
    const zq_ScoreMeter& meter = score.meters[i];
    require(isTime(meter.onset, meter.onsetDenominator) && meter.numerator > 0 && meter.denominator > 0);
    require(meter.part >= -1 && meter.part < score.numberOfParts);
  }
  for (int i = 0; i < score.numberOfBarLines; i++) require(isTime(score.barLines[i].onset, score.barLines[i].onsetDenominator));
}

void readExactly(const std::string& path, const std::uint8_t* data, std::size_t size, int graceQuanta, int choice) {
  zq_Score* score = zmatrix::createScoreFromKernFile(path.c_str(), graceQuanta);
  zq_Score* other =
      zmatrix::createScoreFromKernData(reinterpret_cast<const char*>(data), static_cast<long long>(size), graceQuanta);
  require(score != nullptr && other != nullptr);
  checkScore(*score);
  require(score->state == other->state && score->numberOfNotes == other->numberOfNotes);
  require(std::equal(score->findingCounts, std::end(score->findingCounts), other->findingCounts));
  const std::size_t bytes = static_cast<std::size_t>(score->numberOfNotes) * sizeof(zq_ScoreNote);
  require(bytes == 0 || std::memcmp(score->notes, other->notes, bytes) == 0);
  feedScore(*score, choice);
  zmatrix::deleteScore(score);
  zmatrix::deleteScore(other);
}

template <class Matrix>
void feed(Matrix* matrix, const std::string& path, int choice) {
  setMusicBlock(matrix, choice % 4, 4);
  matrix->setGlobalMidiTrackAnalyze(choice / 8 % 3);
  int notes = 0;
  matrix->updateMatrixWithKERNFile(path.c_str(), &notes);
  require(notes >= 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const MusicFile file("kern", data + 1, size - 1);
  if (!file.isWritten()) return 0;
  const std::string& path = file.path();
  readExactly(path, data + 1, size - 1, data[0] / 32 % 3 * 192, data[0] % 24);
  readAndReport(path);
  require(zmatrix::convertKernFileToMidiFile(path.c_str(), "/dev/null") == 1);
  feedNewMatrix(data[0] % 8 >= 4, [&](auto* matrix) { feed(matrix, path, data[0]); });
  return 0;
}
