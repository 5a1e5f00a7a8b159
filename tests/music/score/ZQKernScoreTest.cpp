// Small kern scores read exactly, in words: "onset:pitch+duration" a note, parts apart by "|", and findings as
// "kind@line.column".
#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>

#include "music/score/ZQKernScoreReader.h"
#include "music/score/ZQScore.h"
#include "support/KeptText.h"

namespace {

/// Records a line each, tokens apart by blanks; a comma stands for a blank within a token.
std::string kern(std::string records) {
  for (char& character : records) character = character == ' ' ? '\t' : character == ',' ? ' ' : character;
  return records + "\n";
}

struct DeleteScore {
  void operator()(zq_Score* score) const { zmatrix::deleteScore(score); }
};
using Score = std::unique_ptr<zq_Score, DeleteScore>;

Score scoreOf(const std::string& text, int graceQuanta = 0) {
  return Score(zmatrix::createScoreFromKernData(text.data(), static_cast<long long>(text.size()), graceQuanta));
}

std::string say(long long numerator, long long denominator) {
  const long long divisor = std::gcd(numerator, denominator);
  const std::string said = std::to_string(numerator / divisor);
  return denominator == divisor ? said : said + "/" + std::to_string(denominator / divisor);
}

std::string say(const zq_ScoreNote& note) {
  std::string said = say(note.onset, note.onsetDenominator) + ":" + std::to_string(note.pitch) + "+" +
                     say(note.duration, note.durationDenominator);
  if (note.voice > 0) said += "v" + std::to_string(note.voice);
  if ((note.flags & zq_ScoreGrace) != 0) said += "g";
  if ((note.flags & zq_ScoreTied) != 0) said += "~";
  if ((note.flags & zq_ScorePhraseBegin) != 0) said += "{";
  if ((note.flags & zq_ScorePhraseEnd) != 0) said += "}";
  return said;
}

std::string sayNotes(const Score& score) {
  std::string said;
  for (int part = 0; part < score->numberOfParts; part++) {
    if (part > 0) said += " |";
    for (int i = 0; i < score->parts[part].numberOfNotes; i++) {
      said += (said.empty() ? "" : " ") + say(score->notes[score->parts[part].firstNote + i]);
    }
  }
  return said;
}

std::string sayFindings(const Score& score) {
  std::string said;
  for (int i = 0; i < score->numberOfFindings; i++) {
    const zq_ScoreFinding& found = score->findings[i];
    said +=
        (i > 0 ? " " : "") + std::to_string(found.kind) + "@" + std::to_string(found.place) + "." + std::to_string(found.column);
  }
  return said;
}

std::string saySigns(const Score& score) {
  std::string said;
  for (int i = 0; i < score->numberOfMeters; i++) {
    const zq_ScoreMeter& meter = score->meters[i];
    said += "M" + say(meter.onset, meter.onsetDenominator) + ":" + std::to_string(meter.numerator) + "/" +
            std::to_string(meter.denominator) + (meter.part < 0 ? " " : "p" + std::to_string(meter.part) + " ");
  }
  for (int i = 0; i < score->numberOfKeys; i++) {
    const zq_ScoreKey& key = score->keys[i];
    said += "k" + say(key.onset, key.onsetDenominator) + ":" + std::to_string(key.fifths) + (key.isMinor != 0 ? "m" : "") +
            (key.part < 0 ? " " : "p" + std::to_string(key.part) + " ");
  }
  for (int i = 0; i < score->numberOfTempi; i++) {
    said += "T" + say(score->tempi[i].onset, score->tempi[i].onsetDenominator) + ":" +
            std::to_string(static_cast<int>(score->tempi[i].quartersPerMinute)) + " ";
  }
  for (int i = 0; i < score->numberOfBarLines; i++) {
    said += "=" + say(score->barLines[i].onset, score->barLines[i].onsetDenominator) + " ";
  }
  return said;
}

TEST(KernScoreTest, ReadsSmallScores) {
  zmatrix::expectKeptCases("kern_scores.txt", [](const std::string& records) {
    const Score score = scoreOf(kern(records));
    return sayNotes(score) + "\n" + sayFindings(score);
  });
}

TEST(KernScoreTest, GivesGraceNotesTimeIfAsked) {
  const auto notes = [](const char* records, int graceQuanta) { return sayNotes(scoreOf(kern(records), graceQuanta)); };
  EXPECT_EQ(notes("**kern **kern\n4c 4c\nqd .\n8qe,8qg .\n4f 4f\n=2 =2\nqa .\n*- *-", 192),
            "0:60+1/4 7/32:62+1/64g 15/64:64+1/64g 15/64:67+1/64g 1/4:65+1/4 31/64:69+1/64g | 0:60+1/4 1/4:65+1/4");
  EXPECT_EQ(notes("**kern\nqd\n16c\nqe\n4f\n*-", 768), "0:62+1/16g 0:60+1/16 1/32:64+1/16g 1/16:65+1/4")
      << "no more than the note before has room for, and none at the beginning";
}

TEST(KernScoreTest, PlacesSignsInstrumentsAndPhrases) {
  const Score score = scoreOf(
      kern("**kern **kern **text\n*Iviola *Ivioln2 *\n*I\"Low\" *I\"High *\n*M3/4 *M3/4 *\n*k[b-e-] *k[b-] *\n*g: *d: "
           "*\n*MM60-80 * *\n"
           "{4c 2.d x\n4r . .\n4e} . .\n=2 =2 =2\n*M2/4 * *\n*k[f#] *k[f#] *\n4f 2g .\n{4r . .\n*M0/4 *M4/0 *\n*M1/3%2 *MM0 *\n"
           "[2a 2b .\n2a]} 2r .\n== == ==\n*- *- *-"));
  EXPECT_EQ(sayNotes(score), "0:60+1/4{ 1/2:64+1/4} 3/4:65+1/4 5/4:69+1~{} | 0:62+3/4 3/4:67+1/2 5/4:71+1/2");
  EXPECT_EQ(saySigns(score), "M0:3/4 M3/4:2/4p0 M5/4:2/3p0 k0:-2mp0 k0:-1mp1 k3/4:1 T0:70 =3/4 =9/4 ");
  EXPECT_EQ(sayFindings(score), "11@16.1 11@16.2 12@17.2");
  EXPECT_STREQ(score->parts[0].name, "Low");
  EXPECT_EQ(score->parts[0].track * 100 + score->parts[0].channel, 100);
  EXPECT_EQ(score->notes[0].program * 100 + score->notes[0].sound, 4106);
  EXPECT_EQ(score->notes[score->parts[1].firstNote].program, 40);
  const Score drums = scoreOf(kern("**kern\n*Ch9\n4c\n*Ch16\n*-"));
  EXPECT_EQ(drums->parts[0].channel, 9);
  EXPECT_EQ(drums->notes[0].flags, zq_ScorePercussion);
  EXPECT_EQ(sayFindings(drums), "1@4.1");
}

TEST(KernScoreTest, ReadsFilesOfAnyLineEndAndLength) {
  const zmatrix::TestFolder folder;
  const auto readFile = [&](const std::string& text) {
    return Score(zmatrix::createScoreFromKernFile(folder.put("a.krn", text).c_str(), 0));
  };
  EXPECT_EQ(sayNotes(readFile("\xEF\xBB\xBF**kern\r\n4c\r\n*\r\n4d\r\n*-")), "0:60+1/4 1/4:62+1/4");
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

/// Scores of nothing but chance keep what the model promises.
TEST(KernScoreTest, KeepsItsPromisesWhateverComes) {
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
