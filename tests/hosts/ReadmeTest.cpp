// What the README shows is what one gets: its C program is examples/first.c, its texts are the demo's.
#include <sstream>
#include <string>

#include "hosts/RunProgram.h"

namespace {

const std::string readme = readWholeFile(ZMATRIX_README);

// The lines between the fence that opens with `opening` and its end.
std::string fencedBlock(const std::string& opening) {
  const std::size_t fence = readme.find("```" + opening + "\n");
  if (fence == std::string::npos) return "";
  const std::size_t begin = readme.find('\n', fence) + 1;
  return readme.substr(begin, readme.find("```", begin) - begin);
}

class ReadmeTest : public ProgramTest {};

TEST_F(ReadmeTest, ShowsTheFirstProgramAndWhatItPrints) {
  EXPECT_EQ(fencedBlock("c"), readWholeFile(ZMATRIX_EXAMPLES "/first.c"));
  const RunResult result = run("'" ZMATRIX_FIRST_PROGRAM "'");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, readWholeFile(ZMATRIX_EXAMPLES "/first.out"));
  EXPECT_NE(readme.find("```text\n" + result.output + "```"), std::string::npos) << result.output;
}

// The demo folds its texts to a terminal's width; apart from blanks and line ends the README's lines are the beginning of them.
TEST_F(ReadmeTest, ShowsWhatTheDemoPrints) {
  struct Text {
    const char* sample;
    const char* start;
  };
  for (const Text text : {Text{"harbour.txt", "The harbour "}, Text{"muehle.txt", "Der Bach "}}) {
    const RunResult result = zmatrix("continue '" ZMATRIX_EXAMPLES "/" + std::string(text.sample) + "' --start '" + text.start +
                                     "' --count 700 --seed 7");
    ASSERT_EQ(result.exitCode, 0) << result.talk;
    std::istringstream words(latin1ToUtf8(result.output));
    std::istringstream shown(readme.substr(readme.find("continuing \"" + std::string(text.start) + "\"\n")));
    std::string line, word, shownWord;
    std::getline(shown, line);
    int wordsShown = 0;
    while (shown >> shownWord && shownWord != "...") {
      ASSERT_TRUE(words >> word);
      EXPECT_EQ(shownWord, word) << "word " << wordsShown << " of " << text.start;
      ++wordsShown;
    }
    EXPECT_GT(wordsShown, 20);
  }
}

}  // namespace
