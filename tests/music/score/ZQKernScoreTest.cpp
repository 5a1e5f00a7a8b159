// Small kern scores read exactly, in words: "onset:pitch+duration" a note, parts apart by "|", and findings as
// "kind@line.column".
#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>

#include "music/score/ZQKernScoreReader.h"
#include "music/score/ZQScore.h"
#include "support/TestFolder.h"

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

struct Case {
  const char* records;
  const char* notes;
  const char* findings = "";
};

void expect(const std::vector<Case>& cases, int graceQuanta = 0) {
  for (const Case& one : cases) {
    const Score score = scoreOf(kern(one.records), graceQuanta);
    EXPECT_EQ(sayNotes(score), one.notes) << one.records;
    EXPECT_EQ(sayFindings(score), one.findings) << one.records;
  }
}

TEST(KernScoreTest, TakesPitchesAndDurationsExactly) {
  const std::vector<std::array<const char*, 3>> tokens = {{"4c", "60+1/4", ""},
                                                          {"4.c", "60+3/8", ""},
                                                          {"8...cc", "72+15/64", ""},
                                                          {"12C", "48+1/12", ""},
                                                          {"3%2c", "60+2/3", ""},
                                                          {"5%3.c", "60+9/10", ""},
                                                          {"0c", "60+2", ""},
                                                          {"00.c", "60+6", ""},
                                                          {"000c", "60+8", ""},
                                                          {"4BB--", "45+1/4", ""},
                                                          {"(4b##L)", "73+1/4", ""},
                                                          {"4ccnX;", "72+1/4", ""},
                                                          {"c4", "60+1/4", ""},
                                                          {"4ccccccccc", "120+1/4", "10"},
                                                          {"4CCCCCC-", "11+1/4", "10"},
                                                          {"c", "60+0", "2"},
                                                          {"99999999999c", "60+0", "13"},
                                                          {"1073741824c", "60+1/1073741824", ""},
                                                          {"4d-", "61+1/4", ""},
                                                          {"4cd", "", "1"},
                                                          {"xyz", "", "1"},
                                                          {"4L", "", "0"},
                                                          {"4rgg", "", ""},
                                                          {"00000000000000000000000000000000000c", "60+2147483647", "14"}};
  for (const auto& [token, note, kind] : tokens) {
    const Score score = scoreOf("**kern\n" + std::string(token) + "\n*-\n");
    const std::string notes = sayNotes(score), findings = sayFindings(score);
    EXPECT_EQ(notes, *note == 0 ? "" : std::string("0:") + note) << token;
    EXPECT_EQ(findings.substr(0, findings.find('@')), kind) << token;
  }
}

TEST(KernScoreTest, MakesTiedNotesOne) {
  expect({
      {"**kern\n[4c\n4c_\n8c]\n4d\n*-", "0:60+5/8~ 5/8:62+1/4"},
      {"**kern\n[4c,[4e,4g\n4c],4e_\n4c,8e]\n*-", "0:60+1/2~ 0:64+5/8~ 0:67+1/4 1/2:60+1/4"},
      // Across a split, with the other sub-spine, and a join.
      {"**kern\n[2c,[2e\n*^\n[4f 4c],4e_\n*v *v\n2e],4f]\n*-", "0:60+3/4~ 0:64+5/4~ 1/2:65+1/2~"},
      // Each part has its own, unless only another one holds the note.
      {"**kern **kern\n[4c [4c\n4r 4c]\n*- *-", "0:60+1/4 | 0:60+1/2~", "4@2.1"},
      {"**kern **kern\n[4c 4e\n4r 4c]\n*- *-", "0:60+1/2~ | 0:64+1/4"},
      {"**kern\n[4c\n4r\n4c]\n*-", "0:60+1/4 1/2:60+1/4", "3@4.1 4@2.1"},
      {"**kern\n4r]\n[4c\n[4c\n4c]\n*-", "1/4:60+1/4 1/2:60+1/2~", "4@3.1"},
  });
}

TEST(KernScoreTest, FollowsSpinesWhereverTheyGo) {
  expect({
      // Chords without a duration of their own; notes keep theirs, and the spine takes the first.
      {"**kern\n4c,e,8g\n4d\n*-", "0:60+1/4 0:64+1/4 0:67+1/8 1/4:62+1/4"},
      // A join waits for the later end; a split may begin beside a note that goes on.
      {"**kern **kern\n*^ *\n4c 8e 1g\n. 8f .\n8d . .\n*v *v *\n2a . \n*- *-",
       "0:60+1/4 0:64+1/8v1 1/8:65+1/8v1 1/4:62+1/8 "
       "3/8:69+1/2 | 0:67+1",
       "7@7.3"},
      {"**kern **kern\n1c 4d\n*^ *\n. 4e 4f\n. 2g 2a\n*v *v *\n4b 4b\n*- *-",
       "0:60+1 1/4:64+1/4v1 1/2:67+1/2v1 1:71+1/4 | 0:62+1/4 1/4:65+1/4 1/2:69+1/2 1:71+1/4"},
      {"**kern **kern **text\n4c 4d a\n*x *x *\n4D 4C b\n*- *- *-", "0:60+1/4 1/4:48+1/4 | 0:62+1/4 1/4:50+1/4"},
      {"**kern **text\n2c a\n*+ *^\n* **kern * *\n4d 4e x y\n. 4f . .\n*- * *v *v\n*- *-",
       "0:60+1/2 1/2:62+1/4 | 1/2:64+1/4 3/4:65+1/4", ""},
      // Records without a token of a kern spine take no time, and bar lines are marks.
      {"**kern **dynam\n2c p\n. <\n=1 =1\n. f\n4d .\n*- *-", "0:60+1/2 1/2:62+1/4"},
      {"**kern\n4c\n*-\n!!comment\n**kern **kern\n4d 2e\n*- *-", "0:60+1/4 | 1/4:62+1/4 | 1/4:64+1/2"},
      {"**kern **kern\n4c 4d\n**kern\n4e\n*-", "0:60+1/4 | 0:62+1/4 | 1/4:64+1/4", "9@3.1 9@3.2"},
  });
}

TEST(KernScoreTest, TellsWhatIsWrongAndGoesOn) {
  expect({
      {"**kern **kern\n4c 2d\n4e !4f\n*- *-", "0:60+1/4 1/2:64+1/4 | 0:62+1/2 1/2:65+1/4", "5@3.1"},
      {"**kern **kern\n4c 4d\n4e\n4f 4g a\n*- *-", "0:60+1/4 1/4:64+1/4 1/2:65+1/4 | 0:62+1/4 1/2:67+1/4", "6@3.2 7@4.3 5@4.2"},
      {"**kern **kern\n*v *\n*x *\n4c \n*- *-", "0:60+1/4", "8@2.1 8@3.1 1@4.2"},
      {"**kern **text\n*v *v\n4c\n*-", "0:60+1/4", "8@2.1"},
      {"**kern\n4c,.,4e\n\n4d\n", "0:60+1/4 0:64+1/4 1/4:62+1/4", "1@2.1 6@3.1 6@5.1 9@5.1"},
      {"**kern\n4c\n*-\n4d", "0:60+1/4", "1@4.1"},
      {"**kern\n4c\n00000000000000000000000000000000c\n4d\n*-", "0:60+1/4 1/4:60+2147483647", "14@3.1"},
  });
}

TEST(KernScoreTest, GivesGraceNotesNoTimeUnlessAsked) {
  const char* const records = "**kern **kern\n4c 4c\nqd .\n8qe,8qg .\n4f 4f\n=2 =2\nqa .\n*- *-";
  expect({{records, "0:60+1/4 1/4:62+0g 1/4:64+0g 1/4:67+0g 1/4:65+1/4 1/2:69+0g | 0:60+1/4 1/4:65+1/4"},
          // The record of the grace note isn't later than what other spines have still to say.
          {"**kern **kern\n2c 4e\nqd .\n. 4f\n4g 4a\n*- *-", "0:60+1/2 1/2:62+0g 1/2:67+1/4 | 0:64+1/4 1/4:65+1/4 1/2:69+1/4"},
          {"**kern\n[qc\n4c]\n*-", "0:60+1/4~"}});
  expect({{records, "0:60+1/4 7/32:62+1/64g 15/64:64+1/64g 15/64:67+1/64g 1/4:65+1/4 31/64:69+1/64g | 0:60+1/4 1/4:65+1/4"}},
         192);
  // No more than the note before has room for, and none at the beginning.
  expect({{"**kern\nqd\n16c\nqe\n4f\n*-", "0:62+1/16g 0:60+1/16 1/32:64+1/16g 1/16:65+1/4"}}, 768);
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
