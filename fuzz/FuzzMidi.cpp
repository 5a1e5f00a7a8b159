// Reads arbitrary bytes as a MIDI file: into tracks, whose pairing is compared with a plain implementation, into a report and
// into a matrix, and back to a file if something was learned; and exactly, into a score that is written as MIDI and read again.
// The first two bytes select coding, tier and merging of tracks. fuzz/make_midi_seeds.py writes seeds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <string>

#include "MusicFile.h"
#include "ScoreFeeding.h"
#include "music/midi/ZQGeneratedMidi.h"
#include "music/midi/ZQMidiFile.h"
#include "music/midi/ZQMidiReport.h"
#include "music/score/ZQMidiScoreReader.h"
#include "music/score/ZQScore.h"
#include "music/score/ZQScoreCheck.h"
#include "music/score/ZQScoreMidiWriter.h"
#include "music/score/ZQScoreTime.h"
#include "support/PlainPairing.h"

namespace {

constexpr int feedFilter[8] = {0, 0, 1, 1, 0, 1, 1, 1};
constexpr unsigned char noFilter[16] = {};
constexpr int mostEventsForPlain = 2000;
constexpr int notesToGenerate = 5;  // a track with bar lines only takes many steps for each

void require(bool isTrue) {
  if (!isTrue) abort();
}

/// The library sorts the objects, so that only their number and a checksum are compared.
void compareWithPlain(const zmatrix::ZQMidiTrackList& list, const zmatrix::ZQMidiEventTrack& track) {
  int channels = 0, hasPercussion = 0, nom = 0, denom = 0;
  const std::unique_ptr<zmatrix::ZQMidiObjectTrack> objects(
      list.createMIDIObjectTrackFromMidiEventTrack(&track, feedFilter, noFilter, &channels, &hasPercussion, &nom, &denom));
  const auto plain = zmatrix::plain::paired(track, feedFilter, noFilter);
  unsigned sum = 0, plainSum = 0;
  for (const zmatrix::ZQMidiObject* object : *objects) {
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
  zmatrix::ZQMidiTrackList list;
  zmatrix::ZQMidiFile().readEventsFromFileWithPath(&list, path.c_str());
  for (int i = 0; i < list.getNumberOfMidiEventTracks(); i++) {
    const zmatrix::ZQMidiEventTrack& track = *list.getMidiEventTrackAtIndex(i);
    if (track.getCount() <= mostEventsForPlain) compareWithPlain(list, track);
  }
}

/// Checks that the score is valid, and that its counts of findings agree with the findings listed and with the flags of its
/// notes.
void checkScore(const zq_Score& score) {
  long long refusedNote = 0;
  require(zmatrix::isScoreValid(&score, &refusedNote));
  const long long found = std::accumulate(std::begin(score.findingCounts), std::end(score.findingCounts), 0LL);
  require(score.numberOfFindings == std::min(found, 10000LL));
  const auto isUnended = [](const zq_ScoreNote& note) { return (note.flags & zq_ScoreUnended) != 0; };
  require(std::count_if(score.notes, score.notes + score.numberOfNotes, isUnended) ==
          score.findingCounts[zq_ScoreNoteWithoutEnd]);
  require(score.numberOfNotes == 0 || score.state >= zq_ScoreCutShort);
}

bool areSame(const zq_ScoreNote& one, const zq_ScoreNote& other) {
  return zmatrix::ScoreTime{one.onset, one.onsetDenominator} == zmatrix::ScoreTime{other.onset, other.onsetDenominator} &&
         zmatrix::ScoreTime{one.duration, one.durationDenominator} ==
             zmatrix::ScoreTime{other.duration, other.durationDenominator} &&
         one.pitch == other.pitch && one.velocity == other.velocity && one.program == other.program && one.part == other.part;
}

/// Reads exactly, writes the score as MIDI and reads that: the notes must be the same, without findings.
void readExactly(const std::uint8_t* data, std::size_t size, int choice) {
  zq_Score* const score = zmatrix::createScoreFromMidiData(data, static_cast<long long>(size));
  checkScore(*score);
  zq_ScoreWriting writing{};
  long long length = 0;
  unsigned char* const bytes = zmatrix::createMidiDataOfScore(score, &length, &writing);
  require((bytes != nullptr) == (writing.state == zq_ScoreWritten));
  require(bytes != nullptr || writing.state == zq_ScoreTooLarge);
  if (bytes != nullptr) {
    zq_Score* const again = zmatrix::createScoreFromMidiData(bytes, length);
    checkScore(*again);
    require(again->state == zq_ScoreRead && again->numberOfFindings == 0 && writing.extraTracks == 0);
    require(again->numberOfNotes == score->numberOfNotes);
    require(writing.timesMoved > 0 || std::equal(score->notes, score->notes + score->numberOfNotes, again->notes, areSame));
    zmatrix::deleteScore(again);
  }
  free(bytes);
  feedScore(*score, choice);
  zmatrix::deleteScore(score);
}

template <class Matrix>
void feed(Matrix* matrix, const std::string& path, int coding, int analyze) {
  matrix->setMaxNumberOfMatrices(5);
  setMusicBlock(matrix, coding, 4);
  matrix->setGlobalMidiTrackAnalyze(analyze);
  int notes = 0;
  matrix->updateMatrixWithMIDIFile(path.c_str(), &notes);
  for (int id = 0; id < matrix->getNumberOfMatrices(); id++) {
    matrix->setCurrentMatrixID(id);
    matrix->getMatrixInfo()->setEnableStopItem(id % 2);
    zmatrix::readMidiObjexsAndWriteToMidiFile(matrix, notesToGenerate, "/dev/null", &notes);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const MusicFile file("midi", data + 2, size - 2);
  if (!file.isWritten()) return 0;
  const std::string& path = file.path();
  const int coding = data[0] % 4, analyze = data[1] % 3;
  constexpr int preProcessingTypes[] = {1, 1002, 1003, 1004};
  readAndPair(path);
  readExactly(data + 2, size - 2, (data[0] / 4 * 3 + data[1]) % 24);
  zq_MidiReport* report = zmatrix::createMidiReport(path.c_str(), preProcessingTypes[coding], 16, analyze, nullptr);
  require(report != nullptr && (report->end != zq_MidiEndNotMidi || report->notesLearned == 0));
  zmatrix::deleteMidiReport(report);
  feedNewMatrix(data[0] % 8 >= 4, [&](auto* matrix) { feed(matrix, path, coding, analyze); });
  return 0;
}
