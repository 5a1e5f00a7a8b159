// `zmatrix learn`, `generate` and `info`: models are kept whole, also when the process is killed or the file is damaged.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "hosts/RunProgram.h"

namespace {

// The samples are cut, so that they are learned fast under sanitizers.
std::string beginningOf(const std::string& sample, std::size_t size) {
  return readWholeFile(ZMATRIX_EXAMPLES "/" + sample).substr(0, size);
}

long linesOf(const std::string& text) {
  return std::count(text.begin(), text.end(), '\n');
}

class ModelTest : public ProgramTest {
 protected:
  ModelTest() {
    writeFile("small.txt", "The boat is in. The rope is wet, and the sail is down. The man is on the quay. It is late.");
    writeFile("more.txt", "The tide is out. The man is in the boat, and the rope is down.");
    writeFile("english.txt", beginningOf("harbour.txt", 5000));
    writeFile("german.txt", beginningOf("muehle.txt", 2500));
  }
};

TEST_F(ModelTest, LearnThenGenerateEqualsContinue) {
  const std::string options[] = {" --start 'The harbour ' --count 300 --seed 7",
                                 " --start 'Der Bach ' --count 300 --method middle", " --count 200"};
  for (const std::string learning : {"--tier medium", "--tier full --max-phrase 6", "--level words"}) {
    ASSERT_EQ(zmatrix("learn english.txt german.txt -o model " + learning).exitCode, 0);
    for (const std::string& option : options) {
      const std::string written = zmatrix("generate model" + option).output;
      EXPECT_FALSE(written.empty());
      EXPECT_EQ(written, zmatrix("continue english.txt german.txt " + learning + option).output) << learning << option;
    }
  }
  expectMessage("generate model --level letters", 3, "learned by words only");
}

TEST_F(ModelTest, UpdatesAModel) {
  ASSERT_EQ(zmatrix("learn small.txt -o model --max-phrase 5").exitCode, 0);
  ASSERT_EQ(zmatrix("learn more.txt -o model --update").exitCode, 0);
  EXPECT_EQ(zmatrix("generate model --count 300 --seed 3").output,
            zmatrix("continue small.txt more.txt --max-phrase 5 --count 300 --seed 3").output);
  const Json info = json("info --json model");
  ASSERT_EQ(info["matrices"].size(), 1u);
  EXPECT_EQ(info["matrices"][0]["max_phrase"], 5);
  EXPECT_EQ(info["matrices"][0]["files_learned"], (Json{"small.txt", "more.txt"}));
  EXPECT_EQ(info["updates"], 2);
  ASSERT_EQ(info["history"].size(), 2u);
  EXPECT_EQ(info["history"][0]["file"], "small.txt");
  EXPECT_EQ(info["history"][1]["file"], "more.txt");
  EXPECT_LT(info["history"][0]["elements"], info["history"][1]["elements"]);
  EXPECT_EQ(info["history"][1]["elements"], info["matrices"][0]["elements"]);
}

TEST_F(ModelTest, EndsWithOneCodePerKindOfFault) {
  ASSERT_EQ(zmatrix("learn small.txt -o model").exitCode, 0);
  const std::string bytes = readFile("model");
  writeFile("cut", bytes.substr(0, 1000));
  std::string unknownTier = bytes;
  unknownTier[584] = 7;       // the tier in the header
  unknownTier[2204 + 8] = 7;  // and in the record, which is read then
  writeFile("unknown", unknownTier);
  writeFile("blank.txt", " \n");
  run("mkdir folder; touch empty");
  expectCodes("faults_of_model.txt");
  EXPECT_EQ(readFile("model"), bytes) << "failed runs leave the model as it was";
}

TEST_F(ModelTest, ReportsDamageBrieflyAndRefusesToSpreadIt) {
  const RunResult learned = zmatrix("learn english.txt -o model --tier full --test --encoding windows-1252");
  ASSERT_EQ(learned.exitCode, 0);
  EXPECT_EQ(linesOf(learned.diagnostics), 1) << "the library's remarks on each symbol are not shown";
  const std::string half = readFile("model").substr(0, readFile("model").size() / 2);
  writeFile("model", half);
  EXPECT_EQ(json("check model --json", 5)["sound"], false);
  expectMessage("check model --verbose", 5, " similar messages)");
  EXPECT_LT(linesOf(zmatrix("check model --verbose").diagnostics), 40);
  for (const char* line : {"generate model --count 50 --force", "info model"}) {
    expectMessage(line, 0, "warning: model is damaged (cut off, ");
  }
  EXPECT_EQ(zmatrix("generate model --count 50").exitCode, 5);
  EXPECT_EQ(zmatrix("learn small.txt --update -o model").exitCode, 5);
  EXPECT_EQ(readFile("model"), half);
  EXPECT_EQ(zmatrix("learn small.txt --update --force -o model").exitCode, 0);
  EXPECT_EQ(zmatrix("generate model --count 50").exitCode, 5) << "the lost elements are still counted";
}

// Every other round kills the process soon after the save has begun, the others at a random moment. ZMATRIX_KILLS sets the number
// of rounds.
TEST_F(ModelTest, TheModelIsWholeAfterAKillAtAnyMoment) {
  const char* wanted = std::getenv("ZMATRIX_KILLS");
  const int rounds = wanted != nullptr ? std::atoi(wanted) : 8;
  const std::string learn = "'" ZMATRIX_COMMAND "' learn english.txt -q -o model --max-phrase ";
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(run(learn + "12").exitCode, 0);
  const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;
  std::mt19937 random(20);
  std::uniform_real_distribution<double> share(0, 1);
  int killed = 0, killedWhileSaving = 0;
  for (int round = 0; round < rounds; ++round) {
    const std::string anyMoment = "sleep " + std::to_string(share(random) * whole.count());
    const std::string whileSaving = "while kill -0 $started; do set -- .zmatrix-save-*; test -e \"$1\" && break; done; sleep " +
                                    std::to_string(share(random) / 50);
    const RunResult result = run("rm -f .zmatrix-save-*; " + learn + (round % 4 < 2 ? "13" : "12") + " & started=$!; " +
                                 (round % 2 == 0 ? anyMoment : whileSaving) + "; kill -9 $started; wait $started; code=$?; " +
                                 "ls .zmatrix-save-*; exit $code");
    killed += result.exitCode == 128 + 9;
    killedWhileSaving += !result.output.empty();
    ASSERT_EQ(zmatrix("check model -q").exitCode, 0) << "round " << round;
  }
  EXPECT_GT(killed, 0);
  std::printf("%d rounds: %d killed, %d of them while saving\n", rounds, killed, killedWhileSaving);
}

}  // namespace
