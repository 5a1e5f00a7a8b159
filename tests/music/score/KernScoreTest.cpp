// Exact readings of small kern scores, as texts: a note is "onset:pitch+duration", parts are separated by "|", and a finding is
// "kind@line.column".
#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "music/score/ScoreUnderTest.h"
#include "music/score/ZQKernScoreReader.h"
#include "support/KeptText.h"

namespace {

/// A kern text from lines of tokens separated by blanks; a comma is a blank within a token.
std::string kern(std::string records) {
  for (char& character : records) character = character == ' ' ? '\t' : character == ',' ? ' ' : character;
  return records + "\n";
}

using zmatrix::Score;

Score scoreOf(const std::string& text, int graceQuanta = 0) {
  return Score(zmatrix::createScoreFromKernData(text.data(), static_cast<long long>(text.size()), graceQuanta));
}

std::string textOf(long long numerator, long long denominator) {
  const long long divisor = std::gcd(numerator, denominator);
  const std::string text = std::to_string(numerator / divisor);
  return denominator == divisor ? text : text + "/" + std::to_string(denominator / divisor);
}

std::string textOf(const zq_ScoreNote& note) {
  std::string text = textOf(note.onset, note.onsetDenominator) + ":" + std::to_string(note.pitch) + "+" +
                     textOf(note.duration, note.durationDenominator);
  if (note.voice > 0) text += "v" + std::to_string(note.voice);
  if ((note.flags & zq_ScoreGrace) != 0) text += "g";
  if ((note.flags & zq_ScoreTied) != 0) text += "~";
  if ((note.flags & zq_ScorePhraseBegin) != 0) text += "{";
  if ((note.flags & zq_ScorePhraseEnd) != 0) text += "}";
  return text;
}

std::string notesOf(const Score& score) {
  std::string text;
  for (int part = 0; part < score->numberOfParts; part++) {
    if (part > 0) text += " |";
    for (int i = 0; i < score->parts[part].numberOfNotes; i++) {
      text += (text.empty() ? "" : " ") + textOf(score->notes[score->parts[part].firstNote + i]);
    }
  }
  return text;
}

std::string findingsOf(const Score& score) {
  std::string text;
  for (int i = 0; i < score->numberOfFindings; i++) {
    const zq_ScoreFinding& found = score->findings[i];
    text +=
        (i > 0 ? " " : "") + std::to_string(found.kind) + "@" + std::to_string(found.place) + "." + std::to_string(found.column);
  }
  return text;
}

std::string signsOf(const Score& score) {
  std::string text;
  for (int i = 0; i < score->numberOfMeters; i++) {
    const zq_ScoreMeter& meter = score->meters[i];
    text += "M" + textOf(meter.onset, meter.onsetDenominator) + ":" + std::to_string(meter.numerator) + "/" +
            std::to_string(meter.denominator) + (meter.part < 0 ? " " : "p" + std::to_string(meter.part) + " ");
  }
  for (int i = 0; i < score->numberOfKeys; i++) {
    const zq_ScoreKey& key = score->keys[i];
    text += "k" + textOf(key.onset, key.onsetDenominator) + ":" + std::to_string(key.fifths) + (key.isMinor != 0 ? "m" : "") +
            (key.part < 0 ? " " : "p" + std::to_string(key.part) + " ");
  }
  for (int i = 0; i < score->numberOfTempi; i++) {
    text += "T" + textOf(score->tempi[i].onset, score->tempi[i].onsetDenominator) + ":" +
            std::to_string(static_cast<int>(score->tempi[i].quartersPerMinute)) + " ";
  }
  for (int i = 0; i < score->numberOfBarLines; i++) {
    text += "=" + textOf(score->barLines[i].onset, score->barLines[i].onsetDenominator) + " ";
  }
  return text;
}

TEST(KernScoreTest, ReadsSmallScores) {
  zmatrix::expectKeptCases("kern_scores.txt", [](const std::string& records) {
    const Score score = scoreOf(kern(records));
    return notesOf(score) + "\n" + findingsOf(score);
  });
}

TEST(KernScoreTest, GivesGraceNotesTimeOnRequest) {
  const auto notes = [](const char* records, int graceQuanta) { return notesOf(scoreOf(kern(records), graceQuanta)); };
  EXPECT_EQ(notes("**kern **kern\n4c 4c\nqd .\n8qe,8qg .\n4f 4f\n=2 =2\nqa .\n*- *-", 192),
            "0:60+1/4 7/32:62+1/64g 15/64:64+1/64g 15/64:67+1/64g 1/4:65+1/4 31/64:69+1/64g | 0:60+1/4 1/4:65+1/4");
  EXPECT_EQ(notes("**kern\nqd\n16c\nqe\n4f\n*-", 768), "0:62+1/16g 0:60+1/16 1/32:64+1/16g 1/16:65+1/4")
      << "limited by the note before, and no time at the beginning";
}

TEST(KernScoreTest, ReadsSignsInstrumentsAndPhrases) {
  const Score score = scoreOf(
      kern("**kern **kern **text\n*Iviola *Ivioln2 *\n*I\"Low\" *I\"High *\n*M3/4 *M3/4 *\n*k[b-e-] *k[b-] *\n*g: *d: "
           "*\n*MM60-80 * *\n"
           "{4c 2.d x\n4r . .\n4e} . .\n=2 =2 =2\n*M2/4 * *\n*k[f#] *k[f#] *\n4f 2g .\n{4r . .\n*M0/4 *M4/0 *\n*M1/3%2 *MM0 *\n"
           "[2a 2b .\n2a]} 2r .\n== == ==\n*- *- *-"));
  EXPECT_EQ(notesOf(score), "0:60+1/4{ 1/2:64+1/4} 3/4:65+1/4 5/4:69+1~{} | 0:62+3/4 3/4:67+1/2 5/4:71+1/2");
  EXPECT_EQ(signsOf(score), "M0:3/4 M3/4:2/4p0 M5/4:2/3p0 k0:-2mp0 k0:-1mp1 k3/4:1 T0:70 =3/4 =9/4 ");
  EXPECT_EQ(findingsOf(score), "11@16.1 11@16.2 12@17.2");
  EXPECT_STREQ(score->parts[0].name, "Low");
  EXPECT_EQ(score->parts[0].track * 100 + score->parts[0].channel, 100);
  EXPECT_EQ(score->notes[0].program * 100 + score->notes[0].sound, 4106);
  EXPECT_EQ(score->notes[score->parts[1].firstNote].program, 40);
  const Score drums = scoreOf(kern("**kern\n*Ch9\n4c\n*Ch16\n*-"));
  EXPECT_EQ(drums->parts[0].channel, 9);
  EXPECT_EQ(drums->notes[0].flags, zq_ScorePercussion);
  EXPECT_EQ(findingsOf(drums), "1@4.1");
}

TEST(KernScoreTest, ReadsFilesOfAnyLineEndAndLength) {
  const zmatrix::TestFolder folder;
  const auto readFile = [&](const std::string& text) {
    return Score(zmatrix::createScoreFromKernFile(folder.put("a.krn", text).c_str(), 0));
  };
  EXPECT_EQ(notesOf(readFile("\xEF\xBB\xBF**kern\r\n4c\r\n*\r\n4d\r\n*-")), "0:60+1/4 1/4:62+1/4");
  EXPECT_EQ(Score(zmatrix::createScoreFromKernFile(folder.path().c_str(), 0))->state, zq_ScoreNotFound);
  EXPECT_EQ(Score(zmatrix::createScoreFromKernFile(nullptr, 0))->state, zq_ScoreNotFound);
  EXPECT_EQ(Score(zmatrix::createScoreFromKernData(nullptr, 5, 0))->state, zq_ScoreOtherFormat);
  EXPECT_EQ(readFile("**dynam\np\n*-\n")->state, zq_ScoreOtherFormat);
  EXPECT_EQ(readFile("**kern\n4c\n*-\n")->state, zq_ScoreRead);
  EXPECT_EQ(readFile("**kern\n4c\n")->state, zq_ScoreCutShort);
  constexpr int many = 20'000;  // notes of one token, and spines of one record
  std::string chord = "4c", record = "4c", head = "**kern";
  for (int i = 1; i < many; i++) chord += " 4c", record += "\t4c", head += "\t**kern";
  const Score ofChord = readFile("**kern\n" + chord + "\n*-\n"), ofRecord = readFile(head + "\n" + record + "\n" + record + "\n");
  EXPECT_EQ(ofChord->numberOfNotes, many);
  EXPECT_EQ(ofRecord->numberOfNotes, 2 * many);
  EXPECT_EQ(ofRecord->notes[2 * many - 1].onset * 4, ofRecord->notes[2 * many - 1].onsetDenominator);
}

// Random records: parts are contiguous, onsets ascend, durations are not negative.
TEST(KernScoreTest, RandomScoresAreConsistent) {
  std::mt19937 random(17);
  const char* const tokens[] = {"4c", "[8e",    "8e]", ".",  "*^",       "*v",    "*-",    "*+",
                                "*x", "**kern", "=1",  "qd", "7%3g 4a_", "*M3/4", "*k[b-]"};
  for (int round = 0; round < 2000; round++) {
    std::string text = "**kern\t**kern\n";
    for (int i = 0; i < 60; i++) text += std::string(tokens[random() % std::size(tokens)]) + "\t\t\n"[random() % 3];
    const Score score = scoreOf(text, static_cast<int>(random() % 2) * 192);
    long long notes = 0;
    for (int part = 0; part < score->numberOfParts; part++) {
      EXPECT_EQ(score->parts[part].firstNote, notes);
      notes += score->parts[part].numberOfNotes;
      for (long long i = score->parts[part].firstNote; i < notes; i++) {
        const zq_ScoreNote& note = score->notes[i];
        ASSERT_TRUE(note.part == part && note.onset >= 0 && note.duration >= 0 && note.onsetDenominator > 0) << text;
        if (i == score->parts[part].firstNote) continue;
        const zq_ScoreNote& before = score->notes[i - 1];
        ASSERT_LE(before.onset * note.onsetDenominator, note.onset * before.onsetDenominator) << text;
      }
    }
    EXPECT_EQ(notes, score->numberOfNotes);
  }
}

}  // namespace
