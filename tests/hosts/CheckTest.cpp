// `zmatrix check`: the statistics compared with a plain count of the text's phrases, in both tiers.
#include <map>
#include <set>

#include "hosts/RunProgram.h"

namespace {

constexpr int maxPhrase = 5;

// Words are separated by single blanks, so each sentence is learned unchanged and as a sequence of its own.
const std::string sentences[] = {"The boat is in the tide.", "The man is on the quay; it is late.", "It is dark and it is cold"};

class CheckTest : public ProgramTest {};

TEST_F(CheckTest, CountsThePhrasesOfTheText) {
  writeFile("small.txt", sentences[0] + " " + sentences[1] + "\n\n" + sentences[2]);
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
    const Json report = json("check small.txt --json --max-phrase 5 --tier " + tier);
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
