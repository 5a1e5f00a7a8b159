// Learning from scores in both tiers that learn: what becomes a run, where it goes, that every note is accounted for, and what a
// model remembers of it.
#include "music/score/ZQScoreFeed.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "music/score/ZQScoreBuilder.h"
#include "music/score/ZQScoreMeters.h"
#include "music/score/ZQScoreRuns.h"
#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace {

using zmatrix::ScoreBuilder;
using zmatrix::ScoreTime;

struct Delete {
  void operator()(zq_Score* score) const { zmatrix::deleteScore(score); }
  void operator()(zq_ScoreFeedReport* report) const { zmatrix::deleteScoreFeedReport(report); }
};
using Score = std::unique_ptr<zq_Score, Delete>;
using Report = std::unique_ptr<zq_ScoreFeedReport, Delete>;

constexpr int quarter = 3072;

/// A score in verbs; times are in sixteenths unless a denominator is given.
class Writer {
 public:
  explicit Writer(int parts = 1) : builder(zq_ScoreKern) {
    for (int part = 0; part < parts; ++part) builder.addPart(part + 1, part);
  }
  Writer& note(long long onset, int pitch, int part = 0, int sound = 1, long long duration = 4, int flags = 0) {
    zq_ScoreNote note{};
    note.onset = onset;
    note.duration = duration;
    note.onsetDenominator = note.durationDenominator = denominator;
    note.part = part;
    note.pitch = static_cast<unsigned char>(pitch);
    note.velocity = 64;
    note.sound = static_cast<unsigned char>(sound);
    note.flags = static_cast<unsigned char>(flags);
    builder.addNote(note);
    return *this;
  }
  Writer& notes(long long onset, const std::vector<int>& pitches, int part = 0, int sound = 1) {
    for (const int pitch : pitches) note(std::exchange(onset, onset + 4), pitch, part, sound);
    return *this;
  }
  Writer& meter(long long onset, int numerator, int ofWhole, int part = -1) {
    builder.addMeter({onset, denominator}, 1, part, numerator, ofWhole);
    return *this;
  }
  Writer& bar(long long onset) {
    builder.addBarLine({onset, denominator}, 1);
    return *this;
  }
  Writer& tempo(long long onset, double quarters) {
    builder.addTempo({onset, denominator}, quarters);
    return *this;
  }
  Score done() { return Score(builder.finish()); }

  int denominator = 16;

 private:
  ScoreBuilder builder;
};

Report planOf(const Score& score, int type = 1003, int tracks = 2, int withoutPercussion = 0) {
  const zq_ScoreFeedSettings settings{type, 16, 16, tracks, withoutPercussion, {}};
  return Report(zmatrix::createScoreFeedPlan(score.get(), &settings));
}

/// Each run as part, notes, meter, texture, sound, coding, cause.
std::vector<std::vector<int>> runsOf(const Report& report) {
  std::vector<std::vector<int>> runs;
  for (long long i = 0; i < report->numberOfRuns; ++i) {
    const zq_ScoreRun& run = report->runs[i];
    runs.push_back({run.part, static_cast<int>(run.notes), run.numerator, run.denominator, run.subType, run.soundID,
                    run.preProcessingType, run.cause});
  }
  return runs;
}
using Runs = std::vector<std::vector<int>>;

TEST(ScoreMetersTest, JoinsBarsOfMetersThatARecordCannotHold) {
  const auto barsOf = [](int numerator, int denominator) {
    const zmatrix::BarMeter meter = zmatrix::barMeterFor(numerator, denominator);
    return std::pair(meter.numerator, meter.denominator);
  };
  const std::pair<int, int> kept[] = {{4, 4}, {3, 1}, {6, 8}, {5, 32}, {255, 16}};
  for (const auto& [numerator, denominator] : kept) EXPECT_EQ(barsOf(numerator, denominator), std::pair(numerator, denominator));
  EXPECT_EQ(barsOf(48, 64), std::pair(3, 4));
  EXPECT_EQ(barsOf(1, 128), std::pair(1, 32));  // four bars
  EXPECT_EQ(barsOf(4, 3), std::pair(4, 1));     // three bars
  EXPECT_EQ(barsOf(5, 12), std::pair(5, 4));    // three bars
  EXPECT_EQ(barsOf(512, 1024), std::pair(1, 2));
  EXPECT_EQ(barsOf(257, 4), std::pair(0, 0));
  EXPECT_EQ(barsOf(0, 4), std::pair(0, 0));
}

TEST(ScorePlanTest, BeginsARunWhereTheMeterChanges) {
  const Score score = Writer()
                          .meter(0, 4, 4)
                          .meter(16, 4, 4)
                          .meter(32, 3, 4)
                          .notes(0, {60, 62, 64, 65, 67, 69, 71, 72})
                          .notes(32, {74, 72, 71})
                          .done();
  EXPECT_EQ(runsOf(planOf(score)), (Runs{{0, 8, 4, 4, 1, 1, 1003, 0}, {0, 3, 3, 4, 1, 1, 1003, 0}}));
  const Score within = Writer().meter(0, 4, 4).meter(8, 4, 4).notes(0, {60, 62, 64, 65, 67}).done();
  EXPECT_EQ(planOf(within)->numberOfRuns, 2) << "bars are counted anew from a meter within a bar";
  const Score late = Writer().meter(16, 3, 4).notes(0, {60, 62, 64, 65, 67, 69}).done();
  const Report assumed = planOf(late);
  EXPECT_EQ(runsOf(assumed), (Runs{{0, 4, 4, 4, 1, 1, 1003, 0}, {0, 2, 3, 4, 1, 1, 1003, 0}}));
  EXPECT_EQ(assumed->runs[0].hasAssumedMeter * 10 + assumed->runs[1].hasAssumedMeter, 10);
  EXPECT_EQ(assumed->hasNoMeter, 0);
  EXPECT_EQ(planOf(Writer().notes(0, {60, 62}).done())->hasNoMeter, 1);
}

TEST(ScorePlanTest, TellsPartsTexturesAndSounds) {
  Writer writer(3);
  writer.meter(0, 4, 4).notes(0, {60, 62}).note(0, 48, 1, 5).note(0, 55, 1, 5).note(4, 50, 1, 6);
  for (int beat = 0; beat < 3; ++beat) writer.note(beat * 4, 36, 2, 0, 1, zq_ScorePercussion);
  const Score score = writer.done();
  const Runs single = {{0, 2, 4, 4, 1, 1, 1003, 0}, {1, 3, 4, 4, 2, 0, 1003, 0}, {2, 3, 4, 4, 3, 9, 1004, 0}};
  const std::vector<int> merged = {-1, 8, 4, 4, 4, 0, 1004, 0};
  EXPECT_EQ(runsOf(planOf(score, 1003, 0)), single);
  EXPECT_EQ(runsOf(planOf(score, 1003, 1)), Runs{merged});
  EXPECT_EQ(runsOf(planOf(score, 1003, 2)), (Runs{single[0], single[1], single[2], merged}));
  EXPECT_EQ(planOf(score)->notesLearned * 100 + planOf(score)->notesFed, 816);
  EXPECT_EQ(runsOf(planOf(score, 1004, 0)), (Runs{single[0], {1, 3, 4, 4, 2, 0, 1004, 0}, single[2]}));
  const Report withoutDrums = planOf(score, 1003, 2, 1);
  EXPECT_EQ(withoutDrums->leftOut[zq_ScoreSkippedPercussion], 3);
  EXPECT_EQ(runsOf(withoutDrums).back(), (std::vector<int>{-1, 5, 4, 4, 4, 0, 1003, 0}));
}

TEST(ScorePlanTest, LeavesNoSingleNoteOfAPartWithOthers) {
  // An upbeat with a meter of its own, a bar of one note, and a part of one note.
  const Score score = Writer(2)
                          .meter(0, 1, 4)
                          .meter(4, 3, 4)
                          .meter(16, 2, 4)
                          .meter(24, 3, 4)
                          .note(0, 67)
                          .notes(4, {60, 62, 64})
                          .note(20, 65)
                          .notes(24, {67, 69})
                          .note(0, 40, 1)
                          .done();
  const Report report = planOf(score, 1003, 0);
  EXPECT_EQ(runsOf(report), (Runs{{0, 4, 3, 4, 1, 1, 1003, 0},
                                  {0, 1, 2, 4, 1, 1, 1003, 0},
                                  {0, 2, 3, 4, 1, 1, 1003, 0},
                                  {1, 1, 1, 4, 1, 1, 1003, zq_ScoreAlone}}));
  EXPECT_EQ(report->notesLearned, 7);
  EXPECT_EQ(report->leftOut[zq_ScoreAlone], 1);
  const zq_ScoreFeedSettings settings{1003, 16, 16, 0, 0, {}};
  const zmatrix::ScorePlan plan = zmatrix::planScore(*score, settings);
  EXPECT_EQ(plan.sequenceOf(*score, plan.runs[0]), (std::vector<int>{67, 2 * quarter, quarter, 60, 3 * quarter, quarter, 62,
                                                                     4 * quarter, quarter, 64, 5 * quarter, quarter}))
      << "the upbeat stands before the first bar line";
  EXPECT_EQ(plan.sequenceOf(*score, plan.runs[1]), (std::vector<int>{64, quarter, quarter, 65, 3 * quarter, quarter}));
}

TEST(ScorePlanTest, PutsBarLinesOnMultiplesOfTheBar) {
  const zq_ScoreFeedSettings settings{1003, 16, 16, 0, 0, {}};
  const auto startsOf = [&](const Score& score) {
    const zmatrix::ScorePlan plan = zmatrix::planScore(*score, settings);
    std::vector<int> starts;
    for (const zmatrix::NoteOnGrid& note : plan.notes) starts.push_back(note.start / quarter);
    return starts;
  };
  EXPECT_EQ(startsOf(Writer().meter(0, 4, 4).bar(4).bar(20).notes(0, {60, 62, 64}).done()), (std::vector<int>{3, 4, 5}));
  EXPECT_EQ(startsOf(Writer().meter(0, 4, 4).bar(0).bar(16).notes(0, {60, 62, 64}).done()), (std::vector<int>{0, 1, 2}));
  // The longest rest that is kept whole is of 32 bars; what is longer keeps its place within the bar.
  const Score rests = Writer().meter(0, 4, 4).notes(0, {60, 62}).note(4 + 32 * 16, 64).note(8 + 3000000 * 16, 65).done();
  EXPECT_EQ(startsOf(rests), (std::vector<int>{0, 1, 129, 129 + 128 + 1}));
  EXPECT_EQ(planOf(rests)->shortenedRests, 1);
}

TEST(ScorePlanTest, MeasuresHowFarTheGridMovesNotes) {
  Writer writer;
  writer.denominator = 48;  // thirds of a sixteenth: 256 quanta each
  writer.note(0, 60, 0, 1, 3).note(4, 62, 0, 1, 4).note(8, 64, 0, 1, 0).note(12, 65, 0, 1, 13);
  const Report report = planOf(writer.done());
  EXPECT_EQ(report->onsetsMoved, 2);
  EXPECT_EQ(report->durationsMoved, 2);
  EXPECT_EQ(report->notesWithoutDuration, 1);
  EXPECT_DOUBLE_EQ(report->largestOnsetMove, 256);
  EXPECT_DOUBLE_EQ(report->meanOnsetMove, 128);
  EXPECT_DOUBLE_EQ(report->largestDurationMove, 256);
  EXPECT_DOUBLE_EQ(report->meanDurationMove, 512.0 / 3);
}

TEST(ScorePlanTest, AccountsForEachNoteOfAnyScore) {
  std::mt19937 random(7);
  const auto draw = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  const int types[] = {1, 1002, 1003, 1004};
  for (int round = 0; round < 200; ++round) {
    Writer writer(4);
    for (int i = draw(5); i > 0; --i) writer.meter(draw(200), 1 + draw(300), 1 + draw(40), draw(3) == 0 ? draw(4) : -1);
    for (int i = draw(4); i > 0; --i) writer.bar(draw(60));
    for (int i = draw(60); i > 0; --i) {
      writer.denominator = 1 + draw(1000);
      const long long onset = draw(9) == 0 ? 2147483647LL * writer.denominator / (1 + draw(9)) : draw(20 * writer.denominator);
      writer.note(onset, draw(128), draw(4), draw(17), draw(30) == 0 ? 200000LL * writer.denominator : draw(2000),
                  draw(5) == 0 ? zq_ScorePercussion : 0);
    }
    const Score score = writer.done();
    const zq_ScoreFeedSettings settings{types[draw(4)], 1 + draw(3072), 1 + draw(3072), draw(3), draw(2), {0, 1}};
    const Report report(zmatrix::createScoreFeedPlan(score.get(), &settings));
    long long sum = report->notesLearned;
    for (const long long notes : report->leftOut) sum += notes;
    EXPECT_EQ(sum, score->numberOfNotes) << round;
    const zmatrix::ScorePlan plan = zmatrix::planScore(*score, settings);
    for (const zmatrix::PlannedRun& run : plan.runs) {
      const std::vector<int> sequence = plan.sequenceOf(*score, run);
      const size_t coordinates = run.told.preProcessingType == 1 ? 2 : static_cast<size_t>(run.told.preProcessingType) - 1000;
      ASSERT_EQ(sequence.size() % coordinates, 0U);
      EXPECT_TRUE(sequence.size() / coordinates >= 2 || run.told.cause != zq_ScoreLearned) << round;
      int previous = 0;
      for (size_t i = 1; i < sequence.size(); i += coordinates) {
        ASSERT_GE(sequence[i], previous) << round;
        previous = sequence[i];
      }
    }
  }
}

template <class Matrix>
class ScoreFeedTest : public zmatrix::TierTest<Matrix> {
 protected:
  ScoreFeedTest() {
    this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
    ZQDebugChannel::globalDebugLevel = 0;
    this->take();
  }
  Report feed(const Score& score, const char* name = "tune.krn") {
    return Report(zmatrix::updateMatrixWithScore(this->matrix, score.get(), name, 0));
  }
};
TYPED_TEST_SUITE(ScoreFeedTest, zmatrix::LearningTiers);

}  // namespace

TYPED_TEST(ScoreFeedTest, LearnsEachRunInTheSubMatrixOfItsKind) {
  Writer writer(2);
  writer.meter(0, 4, 4).meter(16, 3, 1).meter(64, 5, 4).meter(84, 4, 4);
  writer.notes(0, {60, 62, 64, 60}).notes(16, {67, 65, 64}).notes(64, {62, 64, 65}).notes(84, {60, 62, 64, 72});
  for (int beat = 0; beat < 8; ++beat) writer.note(beat * 4, 36, 1, 0, 1, zq_ScorePercussion);
  const Report report = this->feed(writer.done());
  EXPECT_EQ(report->notesLearned, 22);
  EXPECT_EQ(report->numberOfSubMatrices, 7) << "of which the empty matrix has reserved enough";
  EXPECT_GE(this->matrix->getMaxNumberOfMatrices(), 7);
  EXPECT_EQ(report->runs[0].matrixID, 0);
  EXPECT_EQ(report->runs[3].matrixID, 0);
  EXPECT_GT(this->exist({2, quarter, quarter, 2, 2 * quarter, quarter}), 0);
  EXPECT_GT(this->exist({8, 3 * quarter, quarter}), 0) << "of the second run in 4/4";
  EXPECT_LT(this->exist({-2, quarter, quarter}), 1);
  this->matrix->setCurrentMatrixID(report->runs[1].matrixID);
  EXPECT_EQ(this->info()->getMidiTimeSignatureNom() * 10 + this->info()->getMidiTimeSignatureDenom(), 31);
  EXPECT_GT(this->exist({-2, quarter, quarter, -1, 2 * quarter, quarter}), 0);
  for (int id = 0; id < 7; ++id) {
    this->matrix->setCurrentMatrixID(id);
    EXPECT_EQ(this->walk()[0], 1);
    EXPECT_EQ(this->scan()[0], 1);
  }
  this->matrix->setCurrentMatrixID(0);
  EXPECT_EQ(this->matrix->getGlobalPreProcessingType() * 10 + this->matrix->getGlobalMatrixType(), 10034);
  EXPECT_EQ(this->take(), "");
}

TYPED_TEST(ScoreFeedTest, CountsWhatFindsNoSubMatrix) {
  const Score first = Writer().meter(0, 4, 4).notes(0, {60, 62, 64}).done();
  this->feed(first);
  Writer writer;
  for (int numerator = 1; numerator <= 9; ++numerator) {
    writer.meter(numerator * 64, numerator, 8).notes(numerator * 64, {60, 61, 62});
  }
  const Report report = this->feed(writer.done());
  const long long reserved = this->matrix->getMaxNumberOfMatrices();
  EXPECT_EQ(report->notesLearned, 3 * (reserved - 1));
  EXPECT_EQ(report->leftOut[zq_ScoreNoSubMatrix], 27 - report->notesLearned);
  EXPECT_STRNE(zmatrix::textOfScoreCause(zq_ScoreNoSubMatrix), "");
  this->matrix->setGlobalPreProcessingType(0);
  EXPECT_EQ(this->feed(first)->leftOut[zq_ScoreNoMusicSettings], 3);
  EXPECT_EQ(zmatrix::updateMatrixWithScore(this->matrix, nullptr, nullptr, 0), nullptr);
  zq_Score wrong = *first;  // a host's own
  const zq_ScoreBarLine line{0, 1, 0, 0};
  wrong.barLines = &line;
  wrong.numberOfBarLines = 1;
  EXPECT_EQ(zmatrix::updateMatrixWithScore(this->matrix, &wrong, nullptr, 0), nullptr) << "a time with the denominator 0";
}

TYPED_TEST(ScoreFeedTest, RemembersReadingAndTempo) {
  EXPECT_EQ(zmatrix::getLearnedReadings(this->matrix), 0);
  for (const double tempo : {90.0, 61.5, 200.0}) {
    this->feed(Writer().meter(0, 4, 4).tempo(0, 300).tempo(1, tempo).notes(0, {60, 62, 64, 65}).done(), "a (b): c.mid");
  }
  this->feed(Writer().meter(0, 4, 4).notes(0, {60, 62}).done());
  EXPECT_EQ(zmatrix::getLearnedTempo(this->matrix), 90);
  const zmatrix::TestFolder folder;
  const std::string path = folder.path() + "/tunes.zmatrix";
  ASSERT_EQ(this->matrix->saveMatrixToDisk(path.c_str()), 1);
  this->makeAnew();
  ASSERT_EQ(this->matrix->readAndInitMatrixFromDisk(path.c_str(), 0), 1);
  EXPECT_EQ(zmatrix::getLearnedTempo(this->matrix), 90);
  EXPECT_EQ(zmatrix::getLearnedReadings(this->matrix), 2);
  this->matrix->getMatrixInfo()->addNameOfUpdateFile("MatID0: 4/4, Monophon, Undefined, Piano (track1): x, exact, 9.00.mid");
  EXPECT_EQ(zmatrix::getLearnedReadings(this->matrix), 3);
  EXPECT_EQ(zmatrix::getLearnedTempo(this->matrix), 90);
}
