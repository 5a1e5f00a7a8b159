// Music: reading MIDI files into events and then objects, writing a file, and learning a tune. A plain counting pass, which only
// skips from event to event, is the lower bound for any reader. Answers are checked: the notes of a generated file are known, and
// real files must give the same result in each round.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Benchmarks.h"
#include "MusicLearning.h"
#include "music/midi/ZQMidiFile.h"
#include "music/score/ZQMidiScoreReader.h"
#include "music/score/ZQScore.h"
#include "music/score/ZQScoreMidiWriter.h"

#ifdef ZMATRIX_BENCH_SMF
#include <smf.h>
#endif

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int notesOfLargeFile = 500'000;
constexpr int noteOnsWithoutEnd = 1'000'000;
constexpr int statusFilter[zmatrix::ZQMidiTrackList::numberOfStatuses] = {0, 0, 1, 1, 0, 1, 1, 1};

std::string largeFile() {
  return (fs::temp_directory_path() / ("zmatrix_bench_" + std::to_string(getpid()) + ".mid")).string();
}

/// Notes like those of a composition: chords and runs, on all channels in turn, with occasional program changes.
std::unique_ptr<zmatrix::ZQMidiTrackList> notesToWrite(int numberOfNotes) {
  auto list = std::make_unique<zmatrix::ZQMidiTrackList>();
  bool hasRoom = list->extendEventTracksTo(1);
  zmatrix::ZQMidiEventTrack* track = list->getMidiEventTrackAtIndex(1);
  std::mt19937 random(7);
  int time = 0;
  for (int i = 0; i < numberOfNotes; i++) {
    if (random() % 3 != 0) time += 768;
    const auto number = static_cast<unsigned char>(40 + random() % 48);
    zmatrix::ZQMidiEvent* on = zmatrix::createZQMidiEvent();
    on->initWith(time, 0x90, number, 100);
    hasRoom = track->addMidiEvent(on) && hasRoom;
    zmatrix::ZQMidiEvent* off = zmatrix::createZQMidiEvent();
    off->initWith(time + 700, 0x80, number, 64);
    hasRoom = track->addMidiEvent(off) && hasRoom;
  }
  if (!hasRoom) abort();
  track->sortByFunction(zmatrix::ZQCompareMidiEventsAscending);
  return list;
}

/// The number of notes in all event tracks of a file, paired.
long long notesOf(const std::string& path) {
  const std::unique_ptr<zmatrix::ZQMidiTrackList> list(zmatrix::createZQMidiTrackList());
  zmatrix::ZQMidiFile().readEventsFromFileWithPath(list.get(), path.c_str());
  if (!list->updateMIDIObjectTracksFromMIDIEventTracks(statusFilter, nullptr, zmatrix::ZQMidiTrackAnalyzeSingle)) return 0;
  long long notes = 0;
  for (int i = 0; i < list->getNumberOfMidiObjectTracks(); i++) {
    for (const zmatrix::ZQMidiObject* object : *list->getMidiObjectTrackAtIndex(i)) notes += object->isNote();
  }
  return notes;
}

/// The number of notes in the exact reading of a file.
long long exactNotesOf(const std::string& path) {
  zq_Score* const score = zmatrix::createScoreFromMidiFile(path.c_str());
  const long long notes = score->numberOfNotes;
  zmatrix::deleteScore(score);
  return notes;
}

#ifdef ZMATRIX_BENCH_SMF
/// The files without findings: others may abort libsmf.
std::vector<std::string> filesInOrder(const std::vector<std::string>& files) {
  std::vector<std::string> inOrder;
  for (const std::string& file : files) {
    zq_Score* const score = zmatrix::createScoreFromMidiFile(file.c_str());
    if (score->state == zq_ScoreRead && score->numberOfFindings == 0) inOrder.push_back(file);
    zmatrix::deleteScore(score);
  }
  return inOrder;
}

/// The number of note-ons among the events that libsmf reads. Its time is quadratic in the length of a track, so that it is not
/// run on the large file.
long long noteOnsOfSmf(const std::string& path) {
  smf_t* const smf = smf_load(path.c_str());
  if (smf == nullptr) return 0;
  long long noteOns = 0;
  while (const smf_event_t* event = smf_get_next_event(smf)) {
    noteOns += event->midi_buffer_length == 3 && event->midi_buffer[0] >> 4 == 9 && event->midi_buffer[2] != 0;
  }
  smf_delete(smf);
  return noteOns;
}
#endif

/// Counts the note-ons of a file in a plain pass over its bytes.
long long noteOnsOf(const std::string& path) {
  FILE* file = fopen(path.c_str(), "rb");
  if (file == nullptr) return 0;
  std::vector<unsigned char> bytes(fs::file_size(path) + 16);
  const size_t size = fread(bytes.data(), 1, bytes.size() - 16, file);
  fclose(file);
  long long noteOns = 0;
  for (size_t i = 14; i + 8 < size;) {
    const size_t end = std::min(size, i + 8 +
                                          (static_cast<size_t>(bytes[i + 4]) << 24 | static_cast<size_t>(bytes[i + 5]) << 16 |
                                           static_cast<size_t>(bytes[i + 6]) << 8 | bytes[i + 7]));
    unsigned char status = 0;
    for (i += 8; i < end;) {
      while (i < end && bytes[i] >= 0x80) i++;
      i++;
      if (bytes[i] >= 0x80) status = bytes[i++];
      if (status < 0xf0) {
        noteOns += status >> 4 == 9 && bytes[i + 1] != 0;
        i += status >> 5 == 6 ? 1 : 2;
        continue;
      }
      if (status == 0xff) i++;
      size_t length = 0;
      do length = length << 7 | (bytes[i] & 0x7f);
      while (bytes[i++] >= 0x80 && i < end);
      i += length;
    }
    i = end;
  }
  return noteOns;
}

template <class Count>
Measurement countNotes(const std::vector<std::string>& files, int rounds, Count count) {
  Measurement measured;
  long long first = 0;
  for (const std::string& file : files) first += count(file);
  const StopWatch watch;
  measured.isRight = first > 0;
  for (int round = 0; round < rounds; round++) {
    long long notes = 0;
    for (const std::string& file : files) notes += count(file);
    measured.isRight = measured.isRight && notes == first;
    measured.operations += notes;
  }
  measured.seconds[0] = watch.seconds();
  return measured;
}

Measurement write(int numberOfNotes) {
  Measurement measured;
  const auto list = notesToWrite(numberOfNotes);
  const std::string path = largeFile();
  const StopWatch watch;
  measured.isRight = zmatrix::ZQMidiFile().writeEventsToFileWithPath(list.get(), path.c_str()) == 0;
  measured.seconds[0] = watch.seconds();
  measured.operations = numberOfNotes;
  measured.isRight = measured.isRight && notesOf(path) == numberOfNotes;
  fs::remove(path);
  return measured;
}

/// Writes the exact reading of a large file into memory.
Measurement writeScore(int numberOfNotes) {
  Measurement measured;
  const std::string path = largeFile();
  zmatrix::ZQMidiFile().writeEventsToFileWithPath(notesToWrite(numberOfNotes).get(), path.c_str());
  zq_Score* const score = zmatrix::createScoreFromMidiFile(path.c_str());
  fs::remove(path);
  zq_ScoreWriting writing{};
  long long size = 0;
  const StopWatch watch;
  unsigned char* const bytes = zmatrix::createMidiDataOfScore(score, &size, &writing);
  measured.seconds[0] = watch.seconds();
  measured.operations = numberOfNotes;
  zq_Score* const again = zmatrix::createScoreFromMidiData(bytes, size);
  measured.isRight = score->numberOfNotes == numberOfNotes && again->numberOfNotes == numberOfNotes && writing.timesMoved == 0;
  zmatrix::deleteScore(again);
  zmatrix::deleteScore(score);
  free(bytes);
  return measured;
}

Measurement pairUnended() {
  Measurement measured;
  zmatrix::ZQMidiTrackList list;
  bool hasRoom = list.extendEventTracksTo(1);
  for (int i = 0; i < noteOnsWithoutEnd; i++) {
    zmatrix::ZQMidiEvent* event = zmatrix::createZQMidiEvent();
    event->initWith(i, static_cast<unsigned char>(0x90 | i % 16), static_cast<unsigned char>(i / 16 % 128), 100);
    hasRoom = hasRoom && list.getMidiEventTrackAtIndex(1)->addMidiEvent(event);
  }
  const StopWatch watch;
  hasRoom = hasRoom && list.updateMIDIObjectTracksFromMIDIEventTracks(statusFilter, nullptr, zmatrix::ZQMidiTrackAnalyzeSingle);
  measured.seconds[0] = watch.seconds();
  measured.operations = noteOnsWithoutEnd;
  measured.isRight = hasRoom && list.getMidiObjectTrackAtIndex(1)->getCount() == noteOnsWithoutEnd - 16 * 128;
  return measured;
}

std::vector<std::string> midiFilesIn(const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".mid" && fs::file_size(entry.path()) > 0) files.push_back(entry.path().string());
  }
  return files;
}

}  // namespace

void registerMusic(const std::string& folder) {
  const auto readLarge = [](auto count) {
    const std::string path = largeFile();
    zmatrix::ZQMidiFile().writeEventsToFileWithPath(notesToWrite(notesOfLargeFile).get(), path.c_str());
    const Measurement measured = countNotes({path}, 3, count);
    fs::remove(path);
    return measured;
  };
  registerMusicRow("midi_read/limit:0/size:500/zmatrix", [=] { return readLarge(notesOf); });
  registerMusicRow("midi_read/limit:0/size:500/zmatrix_exact", [=] { return readLarge(exactNotesOf); });
  registerMusicRow("midi_read/limit:0/size:500/counting_pass", [=] { return readLarge(noteOnsOf); });
  registerMusicRow("midi_write/limit:0/size:500/zmatrix", [] { return write(notesOfLargeFile); });
  registerMusicRow("midi_write/limit:0/size:50/zmatrix", [] { return write(notesOfLargeFile / 10); });
  registerMusicRow("midi_write/limit:0/size:500/zmatrix_exact", [] { return writeScore(notesOfLargeFile); });
  registerMusicRow("midi_write/limit:0/size:50/zmatrix_exact", [] { return writeScore(notesOfLargeFile / 10); });
  registerMusicRow("midi_unended/limit:0/size:1000/zmatrix", pairUnended);
  if (folder.empty()) return;
  const std::vector<std::string> files = midiFilesIn(folder);
  registerMusicRow("midi_read/limit:0/size:0/zmatrix", [=] { return countNotes(files, 20, notesOf); });
  registerMusicRow("midi_read/limit:0/size:0/zmatrix_exact", [=] { return countNotes(files, 20, exactNotesOf); });
#ifdef ZMATRIX_BENCH_SMF
  registerMusicRow("midi_read/limit:0/size:0/libsmf", [=] { return countNotes(filesInOrder(files), 20, noteOnsOfSmf); });
#endif
  registerMusicRow("midi_read/limit:0/size:0/counting_pass", [=] { return countNotes(files, 20, noteOnsOf); });
  registerMusicRow("midi_learn/limit:16/size:0/zmatrix",
                   [=] { return learnMusic(files, 16, &ZQMatrixMedium::updateMatrixWithMIDIFile); });
  registerMusicRow("midi_learn/limit:16/size:0/zmatrix_exact",
                   [=] { return learnScores(files, 16, zmatrix::createScoreFromMidiFile); });
}

}  // namespace bench
