// Exact readings of MIDI files, also damaged ones, and scores written as MIDI and read back.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "frame/ZQMemory.h"
#include "music/midi/MidiBytes.h"
#include "music/score/ScoreUnderTest.h"
#include "music/score/ZQMidiScoreReader.h"
#include "music/score/ZQScoreMidiWriter.h"
#include "music/score/ZQScoreTime.h"
#include "support/TestFolder.h"

using zmatrix::systemFree;

namespace {

using namespace zmatrix;

Score read(const std::string& file) {
  return Score(createScoreFromMidiData(reinterpret_cast<const unsigned char*>(file.data()), static_cast<long long>(file.size())));
}

/// Each note as "channel:pitch@onset+duration" in ticks, with "p" and its program, and "?" if it is unended.
std::string notesOf(const zq_Score& score, int ticksOfWhole = 384) {
  std::string text;
  for (long long i = 0; i < score.numberOfNotes; ++i) {
    const zq_ScoreNote& note = score.notes[i];
    const auto ticks = [&](long long numerator, int denominator) {
      return std::to_string(numerator * ticksOfWhole / denominator);
    };
    text += (i > 0 ? " " : "") + std::to_string(score.parts[note.part].channel) + ":" + std::to_string(note.pitch) + "@" +
            ticks(note.onset, note.onsetDenominator) + "+" + ticks(note.duration, note.durationDenominator);
    if (note.program != 0) text += "p" + std::to_string(note.program);
    if ((note.flags & zq_ScoreUnended) != 0) text += "?";
  }
  return text;
}

std::string notesOf(const std::string& file) {
  return notesOf(*read(file));
}

std::string oneTrack(const std::string& events) {
  return midiHead(0, 1, 96) + midiTrack(events);
}

long long found(const zq_Score& score, int kind) {
  return score.findingCounts[kind];
}

std::string written(const zq_Score& score, zq_ScoreWriting& writing) {
  long long size = 0;
  unsigned char* const data = createMidiDataOfScore(&score, &size, &writing);
  const std::string file(reinterpret_cast<const char*>(data), static_cast<size_t>(size));
  systemFree(data);
  return file;
}

TEST(MidiScoreTest, NotesArePairedFirstInFirstOut) {
  EXPECT_EQ(notesOf(oneTrack(bytes({0, 0x90, 60, 1, 8, 60, 1, 8, 60, 0, 8, 0x80, 60, 0}))), "0:60@0+16 0:60@8+16");
  EXPECT_EQ(notesOf(oneTrack(bytes({0, 0x99, 35, 9, 0, 35, 0, 4, 0x80, 35, 0}))), "9:35@0+0");
  const Score unended = read(oneTrack(bytes({0, 0x90, 60, 1, 8, 61, 1, 8, 61, 0, 8, 61, 0})));
  EXPECT_EQ(notesOf(*unended), "0:60@0+24? 0:61@8+8");
  EXPECT_EQ(found(*unended, zq_ScoreNoteWithoutEnd), 1);
  EXPECT_EQ(found(*unended, zq_ScoreEndWithoutNote), 1);
  const Score percussion = read(oneTrack(bytes({0, 0x99, 35, 9, 4, 35, 0})));
  EXPECT_EQ(percussion->notes[0].flags, zq_ScorePercussion);
  EXPECT_EQ(percussion->notes[0].sound, 9);
}

TEST(MidiScoreTest, RunningStatusIsKeptAndWrongBytesAreReported) {
  const std::string note = bytes({0, 0x90, 60, 1, 4, 60, 0});
  EXPECT_EQ(notesOf(oneTrack(bytes({0, 0x90, 60, 1, 4, 0xff, 1, 1, 65, 0, 60, 0, 0, 0xf0, 2, 1, 0xf7, 0, 62, 1, 4, 62, 0}))),
            "0:60@0+4 0:62@4+4");
  const Score withoutStatus = read(oneTrack(bytes({0, 60, 1, 4}) + note));
  EXPECT_EQ(found(*withoutStatus, zq_ScoreDataWithoutStatus), 1);
  const Score loud = read(oneTrack(bytes({0, 0x90, 60, 200, 4, 60, 0, 0, 0xf8, 0, 0xf2, 1, 1, 0, 0x90, 130, 1})));
  EXPECT_EQ(notesOf(*loud), "0:60@0+4");
  EXPECT_EQ(loud->notes[0].velocity, 127);
  EXPECT_EQ(found(*loud, zq_ScoreBadEvent), 4);
}

TEST(MidiScoreTest, ChunksOfWrongLengthAreRead) {
  const std::string note = bytes({0, 0x90, 60, 1, 4, 60, 0}), other = bytes({0, 0x91, 62, 1, 4, 62, 0});
  const Score unknown = read(midiHead(1, 2, 96) + midiTrack(note) + "XFIH" + bytes({0, 0, 0, 2, 0xff, 0xff}) + midiTrack(other));
  EXPECT_EQ(notesOf(*unknown), "0:60@0+4 1:62@0+4");
  EXPECT_EQ(found(*unknown, zq_ScoreUnknownChunk), 1);
  EXPECT_EQ(unknown->state, zq_ScoreRead);
  const Score shortTrack = read(midiHead(1, 2, 96) + "MTrk" + bytes({0, 0, 0, 5}) + note.substr(0, 5) + midiTrack(other));
  EXPECT_EQ(notesOf(*shortTrack), "0:60@0+4? 1:62@0+4");
  EXPECT_EQ(found(*shortTrack, zq_ScoreChunkCut), 1);
  EXPECT_EQ(found(*shortTrack, zq_ScoreTrackWithoutEnd), 1);
  const Score longTrack = read(midiHead(1, 2, 96) + "MTrk" + bytes({9, 0, 0, 0}) + note + endOfMidiTrack + midiTrack(other));
  EXPECT_EQ(notesOf(*longTrack), "0:60@0+4 1:62@0+4");
  EXPECT_EQ(longTrack->state, zq_ScoreRead);
  EXPECT_EQ(found(*longTrack, zq_ScoreChunkCut), 1);
  const std::string file = oneTrack(note), size = bytes({static_cast<int>(file.size()), 0, 0, 0});
  EXPECT_EQ(notesOf("RIFF" + bytes({0, 0, 0, 0}) + "RMID" + "LIST" + bytes({1, 0, 0, 0, 7, 0}) + "data" + size + file + "junk"),
            "0:60@0+4");
}

TEST(MidiScoreTest, ProgramsHoldForTheirChannelInAllTracks) {
  const auto change = [](int channel, int program, int delta = 0) { return bytes({delta, 0xc0 | channel, program}); };
  const std::string notes = bytes({0, 0x90, 60, 1, 8, 60, 0, 0, 60, 1, 8, 60, 0, 0, 60, 1, 8, 60, 0});
  EXPECT_EQ(notesOf(midiHead(1, 3, 96) + midiTrack(change(0, 5) + change(1, 9)) + midiTrack(notes) + midiTrack(change(0, 7, 8))),
            "0:60@0+8p5 0:60@8+8p7 0:60@16+8p7");
  // Of changes at the same time the one in the note's own track applies.
  EXPECT_EQ(notesOf(midiHead(1, 2, 96) + midiTrack(change(0, 5) + notes) + midiTrack(change(0, 7) + notes)),
            "0:60@0+8p5 0:60@8+8p5 0:60@16+8p5 0:60@0+8p7 0:60@8+8p7 0:60@16+8p7");
  EXPECT_EQ(notesOf(midiHead(2, 2, 96) + midiTrack(change(0, 5)) + midiTrack(notes)), "0:60@0+8 0:60@8+8 0:60@16+8");
}

TEST(MidiScoreTest, PiecesOfFormatTwoAreJoined) {
  const std::string waltz = meter(3, 2) + bytes({0, 0xff, 0x51, 3, 3, 0xd0, 0x90, 0, 0x90, 60, 1, 96, 60, 0});
  const Score score = read(midiHead(2, 2, 96) + midiTrack(waltz) + midiTrack(bytes({0, 0x90, 62, 1, 96, 62, 0})));
  EXPECT_EQ(notesOf(*score), "0:60@0+96 0:62@96+96");
  ASSERT_EQ(score->numberOfMeters, 2);
  EXPECT_EQ(score->meters[1].numerator, 4);
  EXPECT_EQ(score->meters[1].onset * 4, score->meters[1].onsetDenominator);
  ASSERT_EQ(score->numberOfTempi, 2);
  EXPECT_DOUBLE_EQ(score->tempi[0].quartersPerMinute, 240);
  EXPECT_DOUBLE_EQ(score->tempi[1].quartersPerMinute, 120);
}

TEST(MidiScoreTest, DivisionsInSecondsAreConverted) {
  const std::string note = bytes({40, 0x90, 60, 1, 80, 60, 0});
  const Score film = read(midiHead(0, 1, 0xe728) + midiTrack(note));  // 25 frames of 40 ticks: half a second is a quarter
  EXPECT_EQ(ScoreTime({film->notes[0].onset, film->notes[0].onsetDenominator}), (ScoreTime{40, 2000}));
  EXPECT_EQ(found(*film, zq_ScoreSecondsAsTime), 1);
  const Score television = read(midiHead(0, 1, 0xe302) + midiTrack(note));
  EXPECT_EQ(ScoreTime({television->notes[0].duration, television->notes[0].durationDenominator}), (ScoreTime{80 * 1001, 120000}));
  for (const int division : {0, 0xe700}) EXPECT_EQ(read(midiHead(0, 1, division) + midiTrack(note))->state, zq_ScoreOtherFormat);
}

TEST(MidiScoreTest, SignaturesAndNamesAreRead) {
  const std::string wrong = meter(0, 2) + meter(4, 255) + bytes({0, 0xff, 0x51, 3, 0, 0, 0, 0, 0xff, 0x58, 1, 3});
  const std::string key = bytes({0, 0xff, 0x59, 2, 0xfd, 1}), sixEighths = meter(6, 3);
  const std::string names = bytes({0, 0xff, 3, 1, 'a', 0, 0xff, 0x20, 1, 2, 0, 0xff, 4, 1, 'b'});
  const std::string notes = bytes({0, 0x91, 60, 1, 0, 0x92, 60, 1, 0, 0x91, 60, 0, 0, 0x92, 60, 0});
  const Score score =
      read(midiHead(1, 2, 96) + midiTrack(wrong + key + sixEighths) + midiTrack(names + sixEighths + key + notes));
  EXPECT_EQ(found(*score, zq_ScoreBadMeter), 2);
  EXPECT_EQ(found(*score, zq_ScoreBadTempo), 1);
  EXPECT_EQ(found(*score, zq_ScoreBadEvent), 1);
  ASSERT_EQ(score->numberOfMeters, 1);  // equal meters of two tracks are one
  EXPECT_EQ(score->meters[0].denominator, 8);
  ASSERT_EQ(score->numberOfKeys, 1);
  EXPECT_EQ(score->keys[0].fifths, -3);
  EXPECT_STREQ(score->parts[0].name, "a");
  EXPECT_STREQ(score->parts[1].name, "b");
}

TEST(MidiScoreTest, CutAndHostileFilesAreSafe) {
  const std::string file = tune(melody({60, 62, 64}));
  const std::string whole = notesOf(file);
  for (size_t size = 0; size < file.size(); ++size) {
    const Score score = read(file.substr(0, size));
    EXPECT_EQ(score->state, size < 4 ? zq_ScoreOtherFormat : zq_ScoreCutShort) << size;
    for (long long i = 0; i < score->numberOfNotes; ++i) EXPECT_EQ(score->notes[i].pitch, 60 + 2 * i) << size;
  }
  EXPECT_EQ(read(std::string(1025, '\0'))->state, zq_ScoreOtherFormat);
  EXPECT_EQ(Score(createScoreFromMidiData(nullptr, 5))->state, zq_ScoreOtherFormat);
  EXPECT_EQ(Score(createScoreFromMidiFile("/no/such/file"))->state, zq_ScoreNotFound);
  std::string late;
  for (int i = 0; i < 40; ++i) late += bytes({0xff, 0xff, 0xff, 0x7f, 0x90, 60, 1});
  const Score beyond = read(midiHead(0, 1, 1) + midiTrack(late));
  EXPECT_EQ(found(*beyond, zq_ScoreTimeOutOfRange), 1);
  EXPECT_EQ(beyond->numberOfNotes, 32);
  std::string many;
  for (int i = 0; i < 1000000; ++i) many += bytes({0, 0x90, 60, 1});
  const Score unended = read(oneTrack(many + bytes({96, 0x91, 1, 0})));
  EXPECT_EQ(found(*unended, zq_ScoreNoteWithoutEnd), 1000000);
  EXPECT_EQ(unended->notes[999999].duration, 96);
}

/// A score made by a host, with a part for each channel.
struct MadeScore : zq_Score {
  explicit MadeScore(const std::vector<int>& channels) : zq_Score() {
    for (const int channel : channels) partsOfScore.push_back({0, 0, 0, channel, nullptr});
  }
  void add(int part, ScoreTime onset, ScoreTime duration, int pitch, int program = 0) {
    zq_ScoreNote note{};
    note.onset = onset.numerator, note.onsetDenominator = onset.denominator;
    note.duration = duration.numerator, note.durationDenominator = duration.denominator;
    note.part = part, note.pitch = static_cast<unsigned char>(pitch), note.velocity = 64;
    note.program = static_cast<unsigned char>(program);
    notesOfScore.push_back(note);
    ++partsOfScore[static_cast<size_t>(part)].numberOfNotes;
  }
  const zq_Score& finish() {
    for (size_t i = 1; i < partsOfScore.size(); ++i)
      partsOfScore[i].firstNote = partsOfScore[i - 1].firstNote + partsOfScore[i - 1].numberOfNotes;
    notes = notesOfScore.data(), numberOfNotes = static_cast<long long>(notesOfScore.size());
    parts = partsOfScore.data(), numberOfParts = static_cast<int>(partsOfScore.size());
    return *this;
  }
  std::vector<zq_ScorePart> partsOfScore;
  std::vector<zq_ScoreNote> notesOfScore;
};

std::vector<std::string> sortedNotes(const zq_Score& score) {
  std::vector<std::string> notes;
  for (long long i = 0; i < score.numberOfNotes; ++i) {
    zq_Score one = score;
    one.notes = score.notes + i, one.numberOfNotes = 1;
    notes.push_back(notesOf(one, 1 << 20));
  }
  std::sort(notes.begin(), notes.end());
  return notes;
}

TEST(ScoreMidiTest, RandomScoresReadBackUnchanged) {
  std::mt19937 random(3);
  const int denominators[] = {4, 8, 12, 20, 64};
  for (int round = 0; round < 200; ++round) {
    MadeScore made({0, 0, 9, static_cast<int>(random() % 16)});
    for (int part = 0; part < 4; ++part) {
      ScoreTime onset;
      for (int i = 0; i < 30; ++i) {
        const int denominator = denominators[random() % 5], length = denominators[random() % 5];
        onset = sumOf(onset, {static_cast<int>(random() % 3), denominator}).time;
        made.add(part, onset, {static_cast<int>(random() % 6), length}, 60 + static_cast<int>(random() % 3),
                 round % 2 == 0 ? part : static_cast<int>(random() % 2));
      }
    }
    zq_ScoreWriting writing{};
    const Score again = read(written(made.finish(), writing));
    ASSERT_EQ(writing.timesMoved, 0);
    ASSERT_EQ(sortedNotes(*again), sortedNotes(made)) << round;
    ASSERT_EQ(again->numberOfFindings, 0) << round;
  }
}

TEST(ScoreMidiTest, TimesWithoutATickAreMovedAndCounted) {
  MadeScore made({0});
  made.add(0, {1, 4 * 32749}, {1, 4 * 32719}, 60);
  zq_ScoreWriting writing{};
  EXPECT_EQ(read(written(made.finish(), writing))->numberOfNotes, 1);
  EXPECT_EQ(writing.division, 30240);
  EXPECT_EQ(writing.timesMoved, 2);
  EXPECT_GT(writing.largestMove, 0);
  EXPECT_LT(writing.largestMove, 0.5 / (4 * 30240));
}

TEST(ScoreMidiTest, WrongScoresAreRefused) {
  zq_ScoreWriting writing{};
  EXPECT_EQ(writeScoreToMidiFile(nullptr, "x", &writing), zq_ScoreRefused);
  const auto refuses = [&](void (*spoil)(MadeScore&), long long note) {
    MadeScore made({0, 1});
    for (int i = 0; i < 4; ++i) made.add(i / 2, {i, 4}, {1, 4}, 60);
    made.finish();
    spoil(made);
    written(made, writing);
    EXPECT_EQ(writing.state, zq_ScoreRefused);
    EXPECT_EQ(writing.refusedNote, note);
  };
  refuses([](MadeScore& score) { score.notes = nullptr; }, -1);
  refuses([](MadeScore& score) { score.numberOfMeters = 1; }, -1);
  refuses([](MadeScore& score) { score.partsOfScore[1].firstNote = 1; }, -1);
  refuses([](MadeScore& score) { score.partsOfScore[1].numberOfNotes = 99; }, -1);
  refuses([](MadeScore& score) { score.partsOfScore[0].channel = 16; }, -1);
  refuses([](MadeScore& score) { score.notesOfScore[1].onsetDenominator = 0; }, 1);
  refuses([](MadeScore& score) { score.notesOfScore[1].onset = -1; }, 1);
  refuses([](MadeScore& score) { score.notesOfScore[3].onset = 0; }, 3);
  refuses([](MadeScore& score) { score.notesOfScore[2].part = 0; }, 2);
  refuses([](MadeScore& score) { score.notesOfScore[2].velocity = 0; }, 2);
  MadeScore deep({0});
  for (int i = 0; i < 70000; ++i) deep.add(0, {i, 4}, {200000 - 2 * i, 4}, 60);
  written(deep.finish(), writing);
  EXPECT_EQ(writing.state, zq_ScoreTooLarge);
}

}  // namespace
