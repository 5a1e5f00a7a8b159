// Learning from scores in both learning tiers: runs and their sub-matrices, counts of notes, readings and tempo kept in a model.
#include <random>
#include <sstream>

#include "music/score/ScoreUnderTest.h"
#include "music/score/ZQScoreBuilder.h"
#include "music/score/ZQScoreMeters.h"
#include "music/score/ZQScoreRuns.h"
#include "support/KeptText.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::Score;
using zmatrix::ScoreBuilder;
using Report = zmatrix::ScoreReport;

constexpr int quarter = 3072;

/// Builds scores; times are in sixteenths unless `denominator` is set.
class Writer {
 public:
  explicit Writer(int parts = 1) : builder_(zq_ScoreKern) {
    for (int part = 0; part < parts; ++part) builder_.addPart(part + 1, part);
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
    builder_.addNote(note);
    return *this;
  }
  Writer& notes(long long onset, const std::vector<int>& pitches, int part = 0, int sound = 1) {
    for (const int pitch : pitches) note(std::exchange(onset, onset + 4), pitch, part, sound);
    return *this;
  }
  Writer& meter(long long onset, int numerator, int ofWhole, int part = -1) {
    builder_.addMeter({onset, denominator}, 1, part, numerator, ofWhole);
    return *this;
  }
  Writer& bar(long long onset) {
    builder_.addBarLine({onset, denominator}, 1);
    return *this;
  }
  Writer& tempo(long long onset, double quarters) {
    builder_.addTempo({onset, denominator}, quarters);
    return *this;
  }
  Score done() { return Score(builder_.finish()); }

  int denominator = 16;

 private:
  ScoreBuilder builder_;
};

TEST(ScoreMetersTest, JoinsBarsOfMetersThatARecordCannotHave) {
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

// In the table m is a meter, b a bar line, d the denominator of times, n a list of consecutive notes, v a note with part, sound,
// duration and flags, s the coding, the tracks and whether percussion is left out.
TEST(ScorePlanTest, PlansRuns) {
  zmatrix::expectKeptCases("score_plans.txt", [](const std::string& line) {
    std::istringstream words(line);
    int parts = 0;
    words >> parts;
    Writer writer(parts);
    zq_ScoreFeedSettings settings{1003, 16, 16, 2, 0, {}};
    for (char kind; words >> kind; words.clear()) {
      std::vector<int> n;
      for (int number; words >> number;) n.push_back(number);
      if (kind == 'm') writer.meter(n[0], n[1], n[2]);
      if (kind == 'b') writer.bar(n[0]);
      if (kind == 'd') writer.denominator = n[0];
      if (kind == 'n') writer.notes(n[0], {n.begin() + 1, n.end()});
      if (kind == 'v') writer.note(n[0], n[1], n[2], n[3], n[4], n[5]);
      if (kind == 's') settings = {n[0], 16, 16, n[1], n[2], {}};
    }
    const Score score = writer.done();
    const Report report(zmatrix::createScoreFeedPlan(score.get(), &settings));
    std::ostringstream output;
    for (const zmatrix::PlannedRun& run : zmatrix::planScore(*score, settings).runs) {
      const zq_ScoreRun& reported = run.reported;
      output << "part " << reported.part << ": " << reported.notes << " notes, " << reported.numerator << "/"
             << reported.denominator << ", texture " << reported.subType << ", sound " << reported.soundID << ", coding "
             << reported.preProcessingType << ", cause " << reported.cause
             << (reported.hasAssumedMeter != 0 ? ", meter assumed:" : ":");
      for (const int number : zmatrix::planScore(*score, settings).sequenceOf(*score, run)) output << " " << number;
      output << "\n";
    }
    output << report->notesLearned << " learned, " << report->notesFed << " fed, " << report->shortenedRests
           << " rests shortened, " << report->notesWithoutDuration << " without duration, no meter " << report->hasNoMeter
           << "; left out";
    for (const long long notes : report->leftOut) output << " " << notes;
    output << "\nonsets moved " << report->onsetsMoved << ", " << report->largestOnsetMove << ", " << report->meanOnsetMove
           << "; durations " << report->durationsMoved << ", " << report->largestDurationMove << ", " << report->meanDurationMove;
    return output.str();
  });
}

TEST(ScorePlanTest, CountsEachNoteOfRandomScores) {
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
      const size_t coordinates =
          run.reported.preProcessingType == 1 ? 2 : static_cast<size_t>(run.reported.preProcessingType) - 1000;
      ASSERT_EQ(sequence.size() % coordinates, 0U);
      EXPECT_TRUE(sequence.size() / coordinates >= 2 || run.reported.cause != zq_ScoreLearned) << round;
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
  EXPECT_EQ(report->numberOfSubMatrices, 7) << "the empty matrix reserves enough";
  EXPECT_GE(this->matrix->getMaxNumberOfMatrices(), 7);
  EXPECT_EQ(report->runs[0].matrixID, 0);
  EXPECT_EQ(report->runs[3].matrixID, 0);
  EXPECT_GT(this->exist({2, quarter, quarter, 2, 2 * quarter, quarter}), 0);
  EXPECT_GT(this->exist({8, 3 * quarter, quarter}), 0) << "from the second run in 4/4";
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

TYPED_TEST(ScoreFeedTest, CountsNotesWithoutASubMatrix) {
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
  zq_Score wrong = *first;  // made by a host
  const zq_ScoreBarLine line{0, 1, 0, 0};
  wrong.barLines = &line;
  wrong.numberOfBarLines = 1;
  EXPECT_EQ(zmatrix::updateMatrixWithScore(this->matrix, &wrong, nullptr, 0), nullptr) << "a time with the denominator 0";
}

TYPED_TEST(ScoreFeedTest, KeepsReadingAndTempoInTheModel) {
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
