// Each allocation of writing, learning, generating, pruning, testing, saving and loading fails in turn, through the C header and
// in all tiers: nothing crashes or is lost, an old file stays whole, and the matrix can be used afterwards or, if it has lost its
// block, be deleted. The sanitizers report invalid reads and leaks.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>

#include "memory/FailingMemory.h"
#include "memory/TierCalls.h"
#include "music/midi/MidiBytes.h"
#include "support/TestFolder.h"
#include "support/Vectors.h"

namespace {

using namespace zmatrix;

const Vector firstText = valuesOf("The harbour is dry. The boats lie on the sand.");
const Vector nextText = valuesOf("The water comes back, and a boat stands up.");
const Vector numbers = {2, 12, 30, 7, 64, 81, 5, 360, 97, 12, 30, 7, 210, 128, 6, 500, 11, 36, 30, 7};

/// Calls `act(armed)` for each allocation, which fails alone or with all later ones while armed(run) calls `run`.
template <class Act>
void forEachFailure(Act act) {
  for (const bool lasting : {false, true}) {
    for (long n = 1; n == 1 || anAllocationHasFailed(); ++n) {
      SCOPED_TRACE("allocation " + std::to_string(n) + (lasting ? " and all later ones" : ""));
      act([n, lasting](auto run) {
        const FailingMemory failing(n, lasting);
        run();
      });
      if (testing::Test::HasFailure()) return;
    }
  }
}

template <int tier>
class Runs {
 public:
  using Calls = TierCalls<tier>;
  using Matrix = typename Calls::Matrix;
  static constexpr bool learns = tier >= 1;

  Runs() {
    path = folder.path() + "/model.zmatrix";
    Matrix* matrix = Calls::create();
    Calls::setBlockSize(matrix, 900);
    writeMany(matrix, 40);
    if constexpr (learns) {
      Calls::setCurrent(matrix, 1);
      Calls::setUpForText(matrix, "harbour.txt");
      Calls::setPhraseLimit(matrix, 4);
      Calls::setAddUpdateInfo(matrix, 1);
      Calls::setAddSequence(matrix, 1);
      EXPECT_EQ(learn(matrix, firstText), 1);
    }
    EXPECT_EQ(Calls::save(matrix, path.c_str()), 1);
    Calls::destroy(matrix);
    bytes = TestFolder::contentOf(path);
  }

  static void writeMany(Matrix* matrix, int number) {
    std::mt19937 random(7);
    for (int i = 0; i < number; ++i) {
      int vector[5];
      for (int& k : vector) k = static_cast<int>(random() % 60) - 20;
      Calls::write(matrix, vector, 1 + i % 5, i);
    }
  }

  static int learn(Matrix* matrix, const Vector& text) {
    if constexpr (learns) return Calls::learn(matrix, text.data(), static_cast<int>(text.size()));
    return 1;
  }

  Matrix* load() {
    Matrix* matrix = Calls::createFromFile(path.c_str(), -1);
    if (learns && matrix != nullptr) Calls::setCurrent(matrix, 1);
    return matrix;
  }

  /// Calls `act` with each allocation failing, each time on a matrix loaded from the file. The outcome that it returns must be
  /// that of a run without failure, or empty, which means that the action has failed.
  void failEach(const std::string& name, const std::function<std::string(Matrix*)>& act) {
    SCOPED_TRACE(name);
    Matrix* matrix = load();
    const std::string expected = act(matrix);
    EXPECT_NE(expected, "") << "the run where nothing fails";
    expectUsable(matrix);
    forEachFailure([&](auto armed) {
      matrix = load();
      ASSERT_NE(matrix, nullptr);
      std::string outcome;
      armed([&] { outcome = act(matrix); });
      EXPECT_TRUE(outcome.empty() ? anAllocationHasFailed() : outcome == expected) << outcome;
      expectUsable(matrix);
      ++numberOfRuns;
    });
  }

  void expectUsable(Matrix* matrix) {
    if (isUsable(matrix, tier)) {
      EXPECT_EQ(faultOf(matrix, tier), "");
      expectWorks(matrix);
    }
    Calls::destroy(matrix);
  }

  /// The history of the loaded file must be in the next one.
  void expectHistory(Matrix* matrix) {
    if (!learns) return;
    Calls::setCurrent(matrix, 1);
    expectReloads(matrix, [](Matrix* loaded) {
      int count = 0;
      Calls::history(loaded, &count);
      EXPECT_EQ(count, 1);
    });
  }

  /// Writes, learns, generates, saves and loads, with memory available again.
  void expectWorks(Matrix* matrix) {
    const int vector[] = {3, -4, 5};
    EXPECT_EQ(Calls::write(matrix, vector, 3, 9), 1);
    EXPECT_GE(Calls::exist(matrix, vector, 3), 1);
    int written = 0, ends = 0;
    Calls::test(matrix, 1, &written, &ends, 0);
    EXPECT_GT(written, 0);
    if constexpr (learns) {
      Calls::setCurrent(matrix, 3);
      Calls::setUpForText(matrix, "next.txt");
      Calls::setPhraseLimit(matrix, 3);
      EXPECT_EQ(learn(matrix, nextText), 1);
      Calls::start(matrix, nextText.data(), 3, 1);
      double probability = 0, stopProbability = 0;
      EXPECT_NE(Calls::read(matrix, &probability, &stopProbability), nullptr);
    }
    expectReloads(matrix, [](Matrix* loaded) {
      EXPECT_EQ(Calls::loadReport(loaded, nullptr), 1);
      EXPECT_EQ(faultOf(loaded, tier), "");
    });
  }

  template <class Look>
  void expectReloads(Matrix* matrix, Look look) {
    const std::string other = folder.path() + "/other.zmatrix";
    ASSERT_EQ(Calls::save(matrix, other.c_str()), 1);
    Matrix* loaded = Calls::createFromFile(other.c_str(), -1);
    ASSERT_NE(loaded, nullptr);
    look(loaded);
    Calls::destroy(loaded);
    std::filesystem::remove(other);
  }

  /// A folder in memory if there is one, because each run saves, and a save waits for the disk.
  static const char* useFastFolder() {
    if (access("/dev/shm", W_OK) == 0) setenv("TMPDIR", "/dev/shm", 0);
    return getenv("TMPDIR");
  }

  const char* fastFolder = useFastFolder();
  TestFolder folder;
  std::string path;
  std::string bytes;
  int numberOfRuns = 0;
};

std::string numbered(int result, int number) {
  return result > 0 ? std::to_string(result) + "/" + std::to_string(number) : "";
}

template <class Tier>
class FailingMemoryTest : public testing::Test {
 public:
  static constexpr int tier = Tier::value;
  using Calls = TierCalls<tier>;
  using Matrix = typename Calls::Matrix;
  Runs<tier> runs;
};
using Tiers = testing::Types<std::integral_constant<int, 0>, std::integral_constant<int, 1>, std::integral_constant<int, 2>>;
TYPED_TEST_SUITE(FailingMemoryTest, Tiers);

TYPED_TEST(FailingMemoryTest, WritesReadsAndDeletesSurvive) {
  using C = typename TestFixture::Calls;
  this->runs.failEach("write", [](auto* matrix) {
    int result = 1;
    for (int i = 0; i < 60 && result == 1; ++i) {
      const int vector[] = {i * 9 % 100, i, 1 + i * 7 % 30, 2};
      result = C::write(matrix, vector, 1 + i % 4, i);
    }
    return numbered(result, C::numberOfWrites(matrix));
  });
  this->runs.failEach("read and delete", [](auto* matrix) {
    C::setCurrent(matrix, 0);
    C::properties(C::infoOf(matrix));
    int deepest[40] = {};
    if (C::write(matrix, deepest, 40, 1) != 1) return std::string();
    const int handle = C::handleOf(matrix, deepest, 40);
    int length = 0;
    int* vector = C::vectorOf(matrix, handle, &length);
    s_Free(vector);
    const int result = C::remove(matrix, deepest, 40, 1);
    return vector == nullptr && anAllocationHasFailed() ? "" : numbered(result, 0);
  });
  this->runs.failEach("settings", [](auto* matrix) {
    C::setCurrent(matrix, 2);
    C::setLargeIndices(matrix, 1);
    const int items[] = {5000000, 7};
    const int result = C::write32(matrix, items, 2, 1);
    int count = 0;
    C::history(matrix, &count);
    return numbered(result, 0);
  });
  EXPECT_GT(this->runs.numberOfRuns, 20);
}

TYPED_TEST(FailingMemoryTest, SavesAndLoadsSurvive) {
  using C = typename TestFixture::Calls;
  const std::string target = this->runs.folder.path() + "/target.zmatrix";
  this->runs.failEach("save", [&](auto* matrix) {
    C::setCurrent(matrix, this->tier == 0 ? 0 : 1);
    return numbered(C::save(matrix, target.c_str()), 0);
  });
  // The same, and then a look at the files.
  forEachFailure([&](auto armed) {
    auto* matrix = this->runs.load();
    this->runs.folder.put("target.zmatrix", "an old file");
    int result = 0;
    armed([&] { result = C::save(matrix, target.c_str()); });
    C::destroy(matrix);
    const std::filesystem::directory_iterator files(this->runs.folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2) << "the model and the target";
    const std::string content = TestFolder::contentOf(target);
    EXPECT_TRUE(result == 1 ? content.size() == this->runs.bytes.size() : content == "an old file");
  });
  forEachFailure([&](auto armed) {
    typename TestFixture::Matrix* matrix = nullptr;
    armed([&] { matrix = C::createFromFile(this->runs.path.c_str(), -1); });
    EXPECT_TRUE(matrix != nullptr || anAllocationHasFailed());
    if (matrix == nullptr) return;
    EXPECT_EQ(C::loadReport(matrix, nullptr), 1) << "lack of memory is not reported as damage";
    this->runs.expectHistory(matrix);
    this->runs.expectWorks(matrix);
    C::destroy(matrix);
  });
  forEachFailure([&](auto armed) {
    typename TestFixture::Matrix* matrix = nullptr;
    armed([&] {
      matrix = C::create();
      if (matrix != nullptr) C::setNumberOfMatrices(matrix, 9);
    });
    if (matrix == nullptr) return;
    this->runs.expectWorks(matrix);
    C::destroy(matrix);
  });
}

template <class Tier>
class FailingMemoryOfLearningTest : public FailingMemoryTest<Tier> {};
using LearningTiers = testing::Types<std::integral_constant<int, 1>, std::integral_constant<int, 2>>;
TYPED_TEST_SUITE(FailingMemoryOfLearningTest, LearningTiers);

TYPED_TEST(FailingMemoryOfLearningTest, LearningSurvives) {
  using C = typename TestFixture::Calls;
  this->runs.failEach("learn",
                      [this](auto* matrix) { return numbered(this->runs.learn(matrix, nextText), C::numberOfWrites(matrix)); });
  const std::string texts = this->runs.folder.path() + "/texts";
  this->runs.folder.put("texts/one.txt", "One text is short.");
  this->runs.folder.put("texts/two.txt", "The other is not.");
  this->runs.failEach("learn files", [&](auto* matrix) {
    int length = 0;
    C::learnFiles(matrix, texts.c_str(), 1, &length);
    return numbered(length == 35, length);
  });
  zq_initPrimes(0, 1000, std::array<int, 1>{}.data());
  for (const int coding : {1010, 1017}) {
    this->runs.failEach("numbers as " + std::to_string(coding), [coding](auto* matrix) {
      C::setCurrent(matrix, 2);
      C::setUpForIntegers(matrix, "numbers");
      C::setPreProcessing(matrix, coding);
      C::setOcronType(matrix, 4);
      const int result = C::learnIntegers(matrix, numbers.data(), static_cast<int>(numbers.size()));
      return numbered(result, C::numberOfWrites(matrix));
    });
  }
  zq_deinitPrimes();
  if constexpr (TestFixture::tier == 2) {
    this->runs.failEach("words", [](auto* matrix) {
      s_setMatrixAILevel(matrix, 1);
      const int result = s_updateMatrixFromBasicLevel(matrix, firstText.data(), static_cast<int>(firstText.size()));
      const int levelUp = s_getCurrentMatrixIDLevelUp(matrix);
      s_setCurrentMatrixID(matrix, levelUp);
      int length = 0;
      s_Free(s_createPreviousLevelElementsFromOriginalSymbol(matrix, 257, &length));
      return numbered(result == 1 && length > 0, 0);
    });
    this->runs.failEach("words alone", [](auto* matrix) {
      s_setMatrixAILevel(matrix, 1);
      const int result =
          zq_updateMatrixWithWordsOfLongANSISequence(matrix, nextText.data(), static_cast<int>(nextText.size()), nullptr);
      return numbered(result, zq_refreshSymbolLinks(matrix));
    });
  }
}

TYPED_TEST(FailingMemoryOfLearningTest, MusicSurvives) {
  using C = typename TestFixture::Calls;
  this->runs.folder.put("tune.mid", tune(melody({60, 62, 64, 60, 62, 65})));
  const std::string path = this->runs.folder.path() + "/tune.mid";
  const std::string target = this->runs.folder.path() + "/new.mid";
  const auto learnTune = [&](auto* matrix) {
    C::setMusicBlock(matrix);
    C::setTrackAnalyze(matrix, 0);
    int notes = 0;
    return C::learnMidi(matrix, path.c_str(), &notes) == 1 ? notes : 0;
  };
  this->runs.failEach("learn a tune", [&](auto* matrix) {
    const int notes = learnTune(matrix);
    return numbered(notes, C::numberOfWrites(matrix));
  });
  this->runs.failEach("write a tune", [&](auto* matrix) {
    if (learnTune(matrix) == 0) return std::string();
    C::setCurrent(matrix, 2);
    // A note that can't be read for lack of memory ends the sequence.
    const int result = C::writeMidi(matrix, 8, target.c_str(), nullptr);
    C::setCurrent(matrix, 1);
    return numbered(result, 0);
  });
  zq_Score* const score = zq_createScoreFromMidiFile(path.c_str());
  const auto learnScore = [&](auto* matrix) {
    C::setMusicBlock(matrix);
    zq_ScoreFeedReport* const report = C::learnScore(matrix, score, "tune.mid", 0);
    const long long notes = report == nullptr || report->notesLearned != report->notes ? 0 : report->notesLearned;
    zq_deleteScoreFeedReport(report);
    return static_cast<int>(notes);
  };
  this->runs.failEach("learn a score", [&](auto* matrix) {
    const int notes = learnScore(matrix);
    return numbered(notes, C::numberOfWrites(matrix));
  });
  this->runs.failEach("compose a score", [&](auto* matrix) {
    if (learnScore(matrix) == 0) return std::string();
    C::setCurrent(matrix, 2);
    int result = 0;
    zq_Score* const composed = C::compose(matrix, 8, 0, &result);
    C::setCurrent(matrix, 1);
    EXPECT_EQ(composed != nullptr, result == 1);
    zq_deleteScore(composed);
    return numbered(result, 0);
  });
  zq_deleteScore(score);
  std::filesystem::remove(target);
}

// A file that can't be opened for lack of memory is reported as not found.
TEST(FailingMemoryOfFilesTest, ReportsAndScoresAreWholeOrNull) {
  TestFolder folder;
  const std::string midi = folder.put("tune.mid", tune(melody({60, 62, 64})));
  const std::string kern = folder.put("score.krn", "**kern\t**kern\n*M3/4\t*M3/4\n[4c\t4e 4g\n4c]\t4rx\n=1\t=1\n*-\t*-\n");
  forEachFailure([&](auto armed) {
    zq_MidiReport* report = nullptr;
    armed([&] { report = zq_createMidiReport(midi.c_str(), 1003, 16, 2, nullptr); });
    EXPECT_TRUE(anAllocationHasFailed() || (report != nullptr && report->notesLearned == 3));
    zq_deleteMidiReport(report);
  });
  forEachFailure([&](auto armed) {
    zq_KernReport* report = nullptr;
    armed([&] { report = zq_createKernReport(kern.c_str(), 1003, 2, nullptr); });
    EXPECT_TRUE(anAllocationHasFailed() || (report != nullptr && report->notes == 3));
    zq_deleteKernReport(report);
  });
  forEachFailure([&](auto armed) {
    zq_Score* score = nullptr;
    armed([&] { score = zq_createScoreFromKernFile(kern.c_str(), 0); });
    const bool isWhole = score != nullptr && score->numberOfNotes == 3;
    EXPECT_TRUE(isWhole || (anAllocationHasFailed() && (score == nullptr || score->state == zq_ScoreNotFound)));
    zq_deleteScore(score);
  });
  const std::string target = folder.path() + "/new.mid";
  forEachFailure([&](auto armed) {
    folder.put("new.mid", "old");
    zq_Score* score = nullptr;
    unsigned char* bytes = nullptr;
    zq_ScoreWriting writing{};
    int stored = 0;
    armed([&] {
      score = zq_createScoreFromMidiFile(midi.c_str());
      bytes = zq_createMidiDataOfScore(score, nullptr, &writing);
      stored = zq_writeScoreToMidiFile(score, target.c_str(), nullptr);
    });
    EXPECT_EQ(bytes != nullptr, writing.state == zq_ScoreWritten);
    EXPECT_TRUE(anAllocationHasFailed() || (bytes != nullptr && stored == zq_ScoreWritten && score->numberOfNotes == 3));
    EXPECT_TRUE(stored == zq_ScoreWritten || TestFolder::contentOf(target) == "old");
    s_Free(bytes);
    zq_deleteScore(score);
  });
}

TYPED_TEST(FailingMemoryOfLearningTest, GeneratingSurvives) {
  using C = typename TestFixture::Calls;
  this->runs.failEach("generate", [](auto* matrix) {
    if (C::start(matrix, firstText.data(), 7, 1) < 0) return std::string();
    int items = 0;
    double probability = 0, stopProbability = 0;
    for (int i = 0; i < 12; ++i) {
      const int* item = C::read(matrix, &probability, &stopProbability);
      if (item == nullptr || C::start(matrix, nullptr, 0, 0) < 0) return std::string();
      ++items;  // which ones depends on the kernel, which is reset to the root for lack of memory
    }
    int count = 0;
    s_Free(C::successors(matrix, &count));
    int length = 0;
    int* preProcessed = C::preProcessed(matrix, firstText.data(), 9, &length);
    s_Free(preProcessed);
    return numbered(preProcessed != nullptr, items);
  });
}

TYPED_TEST(FailingMemoryOfLearningTest, ReadingAnItemAllocatesNothing) {
  using C = typename TestFixture::Calls;
  auto* matrix = this->runs.load();
  ASSERT_NE(matrix, nullptr);
  const auto generate = [matrix] {
    int items = 0;
    double probability = 0, stopProbability = 0;
    for (int i = 0; i < 200; ++i) items += C::read(matrix, &probability, &stopProbability) != nullptr;
    return items;
  };
  EXPECT_GT(generate(), 100);
  {
    const FailingMemory failing(1, true);
    EXPECT_GT(generate(), 100);
  }
  EXPECT_FALSE(anAllocationHasFailed());
  C::destroy(matrix);
}

TYPED_TEST(FailingMemoryOfLearningTest, PruningSurvives) {
  using C = typename TestFixture::Calls;
  this->runs.failEach("prune", [](auto* matrix) { return numbered(C::prune(matrix), C::numberOfWrites(matrix)); });
  this->runs.failEach("cut", [](auto* matrix) { return numbered(C::cut(matrix, 2), C::numberOfWrites(matrix)); });
  this->runs.failEach("clear", [](auto* matrix) { return numbered(C::clear(matrix, 1), 0); });
}

}  // namespace
