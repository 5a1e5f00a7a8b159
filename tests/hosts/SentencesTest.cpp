// Continued texts: how sentences begin, where the text ends, and how much is copied.
#include <algorithm>
#include <sstream>

#include "hosts/RunProgram.h"

namespace {

class SentencesTest : public ProgramTest {
 protected:
  SentencesTest() {
    // Names within sentences begin with the same capitals as sentences.
    writeFile("names.txt",
              "The dog met Tom and Tim at noon. It barked at Ida, and Tom ran to Ina. The cat saw Tim, who saw Ida. Is it in? "
              "It is, said Tom to Ina and Tess. The bird saw Ida and Tim and Tom.\n\nThe cat met Ina at two. It saw Tess run.");
  }

  Names linesOf(const std::string& arguments) const {
    const RunResult result = zmatrix(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.diagnostics;
    EXPECT_EQ(result.output.back(), '\n');
    std::istringstream text(result.output);
    Names lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }
};

// The text with single blanks for white space.
std::string plain(const std::string& text) {
  std::string result;
  for (const char byte : text) {
    const bool isWhite = static_cast<unsigned char>(byte) <= ' ';
    if (!isWhite || result.empty() || result.back() != ' ') result += isWhite ? ' ' : byte;
  }
  return result;
}

// The share of `written` that lies in copies from `text` of at least `length` bytes, found by searching for each of them.
double shareCopied(const std::string& written, const std::string& text, std::size_t length) {
  std::vector<bool> isCopied(written.size(), false);
  for (std::size_t at = 0; at + length <= written.size(); ++at) {
    if (text.find(written.substr(at, length)) == std::string::npos) continue;
    for (std::size_t byte = at; byte < at + length; ++byte) isCopied[byte] = true;
  }
  return static_cast<double>(std::count(isCopied.begin(), isCopied.end(), true)) / static_cast<double>(written.size());
}

TEST_F(SentencesTest, BeginAsLearnedOnesBegin) {
  for (const std::string& line : linesOf("continue names.txt --max-phrase 7 --seed 4 --lines 100")) {
    EXPECT_TRUE(line.starts_with("The ") || line.starts_with("It ") || line.starts_with("Is it ")) << line;
  }
  for (int seed = 0; seed < 8; ++seed) {
    const std::string line =
        linesOf("continue names.txt --level words --max-words 3 --sentences 1 --seed " + std::to_string(seed)).front();
    EXPECT_TRUE(line.starts_with("The ") || line.starts_with("It ") || line.starts_with("Is ")) << line;
  }
  // After a start that ends a sentence a new one begins.
  for (int seed = 0; seed < 8; ++seed) {
    const std::string line =
        zmatrix("continue names.txt --max-phrase 7 --start 'So Tom. ' --count 30 --seed " + std::to_string(seed)).output;
    EXPECT_TRUE(line.starts_with("So Tom. The ") || line.starts_with("So Tom. I")) << line;
    EXPECT_FALSE(line.starts_with("So Tom. Ida") || line.starts_with("So Tom. Ina")) << line;
  }
  // With phrases this short a sentence begin can't be recognised; it must still write all lines.
  EXPECT_EQ(linesOf("continue names.txt --max-phrase 2 --lines 30").size(), 30u);
}

TEST_F(SentencesTest, EndAfterTheGivenNumber) {
  EXPECT_EQ(linesOf("continue names.txt --lines 7 --count 100000").size(), 7u);
  writeFile("asks.txt", "Is it in? Is it out? Is it in? Is it out? Is it in?");
  EXPECT_EQ(zmatrix("continue asks.txt --sentences 3 --method best").output, "Is it in?\nIs it in?\nIs it in?\n");
  EXPECT_EQ(zmatrix("continue asks.txt --sentences 2 --level words --max-words 5 --start 'Is it out? Is'").output,
            "Is it out? Is it in? Is it out?\n");
  writeFile("dots.txt", "Mr. J. Bly came on the 3. of May. He left in 1853. It was late.");
  EXPECT_EQ(zmatrix("continue dots.txt --sentences 1 --level words --max-words 5 --start 'Mr. J.'").output,
            "Mr. J. Bly came on the 3. of May.\n");
  EXPECT_EQ(zmatrix("continue dots.txt --sentences 2 --level words --max-words 5 --start 'Mr. J.'").output,
            "Mr. J. Bly came on the 3. of May. He left in 1853.\n");
  EXPECT_EQ(zmatrix("continue asks.txt --sentences 3 --method best --count 5").output, "Is it");
  expectMessage("continue asks.txt --sentences 3 --method best --count 5", 0, "stopped after 5 characters");
  EXPECT_EQ(zmatrix("continue asks.txt --sentences 3 --lines 2").exitCode, 2);
  writeFile("numbers.txt", "1 2 3 4 5 6");
  EXPECT_EQ(zmatrix("continue numbers.txt --lines 2").exitCode, 2);
}

TEST_F(SentencesTest, ReportTheShareOfCopies) {
  std::string learned = readWholeFile(ZMATRIX_EXAMPLES "/harbour.txt");
  learned.erase(std::remove_if(learned.begin(), learned.end(), [](char byte) { return byte < 0 || byte == '-'; }), learned.end());
  writeFile("text.txt", learned);
  const std::string text = plain(learned);
  for (const std::string level : {" --max-phrase 10", " --level words --max-words 3"}) {
    const std::string how = level.substr(0, level.find(" --max"));
    ASSERT_EQ(zmatrix("learn text.txt -o model" + level).exitCode, 0);
    const Json least = json("generate model --json --count 2000 --seed 3" + how);
    const Json measured = json("generate model --json --count 2000 --seed 3 --against text.txt" + how);
    EXPECT_EQ(json("continue text.txt --json --count 2000 --seed 3" + level), measured);
    EXPECT_EQ(measured["text"], least["text"]);
    EXPECT_EQ(measured["text"].get<std::string>(), zmatrix("generate model --count 2000 --seed 3" + how).output);
    EXPECT_EQ(least["compared_with"], "model");
    EXPECT_EQ(measured["items"], 2000);
    const std::string written = plain(measured["text"].get<std::string>());
    for (const std::size_t length : {25, 50, 100}) {
      const std::string key = std::to_string(length);
      const double share = measured["copied_in_runs_of"][key];
      EXPECT_NEAR(share, shareCopied(written, text, length), 0.0001) << key << level;
      EXPECT_LE(least["copied_in_runs_of"][key].get<double>(), share + 0.0001) << key << level;
    }
    EXPECT_GT(least["copied_in_runs_of"]["25"], 0.1) << level;
  }
}

}  // namespace
