// `zmatrix check` from outside: the statistics against a plain count of the text, in both tiers, and how it ends.
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "hosts/RunProgram.h"

namespace {

using Json = nlohmann::json;

constexpr int maxPhrase = 5;

// Sentences whose words stand apart by single blanks, so that each is learned as it stands, with an item of its own for its begin
// and its end.
const std::string sentences[] = {"The boat is in the tide.", "The man is on the quay; it is late.", "It is dark and it is cold"};

class CheckTest : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    writeFile("small.txt", sentences[0] + " " + sentences[1] + "\n\n" + sentences[2]);
  }

  Json check(const std::string& arguments, int exitCode = 0) const {
    const RunResult result = zmatrix("check " + arguments + " --json");
    EXPECT_EQ(result.exitCode, exitCode) << result.talk;
    return Json::parse(result.output, nullptr, false);
  }
};

TEST_F(CheckTest, CountsWhatThePhrasesOfTheTextAre) {
  std::map<std::string, int> phrases;
  std::set<std::string> withChildren;
  for (const std::string& sentence : sentences) {
    for (std::size_t begin = 0; begin < sentence.size(); ++begin) {
      for (std::size_t length = 1; length <= maxPhrase && begin + length <= sentence.size(); ++length) {
        ++phrases[sentence.substr(begin, length)];
      }
    }
  }
  for (const auto& [phrase, count] : phrases) withChildren.insert(phrase.substr(0, phrase.size() - 1));
  int ends = 0;
  for (const auto& [phrase, count] : phrases) ends += withChildren.count(phrase) == 0;

  for (const std::string tier : {"medium", "full"}) {
    const Json report = check("small.txt --max-phrase 5 --tier " + tier);
    EXPECT_EQ(report["tier"], tier);
    EXPECT_EQ(report["sound"], true);
    EXPECT_GE(report["block_size"], report["maximal_stack"]);
    ASSERT_EQ(report["matrices"].size(), 1u);
    const Json& matrix = report["matrices"][0];
    EXPECT_EQ(matrix["language"], "English");
    EXPECT_EQ(matrix["dimension"], maxPhrase);
    EXPECT_EQ(matrix["elements"], phrases.size());
    EXPECT_EQ(matrix["written_elements"], phrases.size());
    EXPECT_EQ(matrix["end_elements"], ends);
    for (const std::string test : {"scan", "walk"}) {
      EXPECT_EQ(matrix[test + "_sound"], true);
      EXPECT_EQ(matrix[test + "_written_elements"], phrases.size());
      EXPECT_EQ(matrix[test + "_end_elements"], ends);
    }
    EXPECT_EQ(matrix.contains("symbols"), tier == "full");
  }
}

}  // namespace
