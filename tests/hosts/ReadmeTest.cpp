// The program, texts, tune and numbers in the README are what the examples and the command print.
#include <sstream>

#include "hosts/RunProgram.h"

namespace {

const std::string readme = readWholeFile(ZMATRIX_README);

// The content of the first fenced block of this language.
std::string fencedBlock(const std::string& language) {
  const std::size_t fence = readme.find("```" + language + "\n");
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

// A stream of the words of the output.
std::istringstream wordsWritten(const RunResult& result) {
  EXPECT_EQ(result.exitCode, 0) << result.diagnostics;
  return std::istringstream(result.output);
}

// Expects the words of a line to be the next words written, and returns their number.
int compareLine(const std::string& line, std::istringstream& written) {
  std::istringstream shown(line);
  std::string word, shownWord;
  int count = 0;
  while (shown >> shownWord) {
    EXPECT_TRUE(written >> word);
    EXPECT_EQ(shownWord, word) << "in: " << line;
    ++count;
  }
  return count;
}

// The demo folds its texts to columns: apart from white space each column of the README is the beginning of an output.
TEST_F(ReadmeTest, ShowsWhatTheDemoPrints) {
  for (const auto& [sample, start] : {std::pair{"harbour.txt", "The harbour "}, {"muehle.txt", "Der Bach "}}) {
    const std::string line = "continue " + example(sample) + " --start '" + start + "' --seed 7 --count ";
    std::istringstream byLetters = wordsWritten(zmatrix(line + "700"));
    std::istringstream byWords = wordsWritten(zmatrix(line + "130 --level words"));
    std::istringstream shown(readme.substr(readme.find("continuing \"" + std::string(start) + "\"\n")));
    std::string row;
    std::getline(shown, row);
    std::getline(shown, row);
    EXPECT_EQ(row.rfind("by letters ", 0), 0u) << row;
    int letters = 0, words = 0;
    while (std::getline(shown, row) && row != "...") {
      const std::size_t bar = row.find(" | ");
      ASSERT_NE(bar, std::string::npos) << row;
      letters += compareLine(row.substr(0, bar), byLetters);
      words += compareLine(row.substr(bar + 3), byWords);
    }
    EXPECT_GT(letters, 40);
    EXPECT_GT(words, 40);
  }
}

TEST_F(ReadmeTest, ShowsTheTuneAndTheNumbersOfTheDemo) {
  const std::string scores = example("canon.krn") + " " + example("song.krn");
  ASSERT_EQ(zmatrix("continue " + scores + " --count 300 --seed 5 --out t.mid").exitCode, 0);
  const std::string bars = run("python3 " + example("show_tune.py") + " t.mid 4").output;
  EXPECT_GT(bars.size(), 80u);
  EXPECT_NE(readme.find("\n" + bars), std::string::npos) << bars;
  for (const std::string series : {"primes.txt' --coding difference", "smooth.txt' --coding ocron"}) {
    const RunResult result = zmatrix("continue '" ZMATRIX_EXAMPLES "/" + series + " --count 12 --seed 5 --skip-bad");
    std::string line = " ->";
    std::istringstream numbers(result.output);
    for (std::string number; numbers >> number;) line += " " + number;
    EXPECT_NE(readme.find(line + "\n"), std::string::npos) << line;
  }
}

}  // namespace
