// `--level words`: the words counted and written, compared with a plain splitting of the text.
#include <algorithm>
#include <set>

#include "hosts/RunProgram.h"
#include "support/PlainWords.h"

namespace {

constexpr std::size_t longestWord = 12;

class WordsTest : public ProgramTest {
 protected:
  void expectWordsOf(const std::string& text) const {
    writeFile("text.txt", text);
    std::set<std::string> vocabulary;
    int longWords = 0;
    for (const std::string& word : wordsOf(text)) {
      if (word == "\n") continue;  // a blank line
      if (word.size() <= longestWord) vocabulary.insert(word);
      longWords += word.size() > longestWord;
    }
    // An encoding of single bytes, since the plain splitting works on bytes.
    const std::string options = " text.txt --level words --encoding windows-1252 --max-phrase " + std::to_string(longestWord);
    const std::string diagnostics = zmatrix("check --json" + options).diagnostics;
    EXPECT_EQ(diagnostics.starts_with("zmatrix: left out " + std::to_string(longWords) + " word"), longWords > 0) << diagnostics;
    const Json report = json("check --json" + options);
    EXPECT_EQ(report["sound"], true);
    ASSERT_EQ(report["matrices"].size(), 2u);
    EXPECT_EQ(report["matrices"][0]["symbols"], vocabulary.size());
    EXPECT_EQ(report["matrices"][0]["unknown_symbols"], longWords);
    EXPECT_EQ(report["matrices"][1]["holds"], "symbols");

    const RunResult written = zmatrix("continue --count 3000 --seed 5" + options);
    ASSERT_EQ(written.exitCode, 0) << written.diagnostics;
    size_t count = 0;
    std::istringstream words(written.output);
    for (std::string word; words >> word; ++count) EXPECT_EQ(vocabulary.count(word), 1u) << word;
    EXPECT_GT(count, 1000u);
    EXPECT_LE(count, 3000u);
  }
};

TEST_F(WordsTest, AreThoseOfTheSamples) {
  expectWordsOf(readWholeFile(ZMATRIX_EXAMPLES "/harbour.txt").substr(0, 6000));
  expectWordsOf(readWholeFile(ZMATRIX_EXAMPLES "/muehle.txt").substr(0, 6000));
}

TEST_F(WordsTest, AreSplitAtEveryKindOfBreak) {
  expectWordsOf(
      "The ferry is bro-\nken, and the South-\nEast wind is up.\r\n\r\n\r\nIt is a hyphen - no word.\n"
      "An incomprehensibly longish word is left out. A\xA0no-break space parts words.\n\n\n"
      "\xDC"
      "ber den See.\tHalf-\r\nway, half-\n\nway. The last word is cut-\n");
}

TEST_F(WordsTest, FollowTheStartAndCountAsItems) {
  writeFile("text.txt", "one two three four\n\none two five six\n\none two three seven");
  const std::string options = "continue text.txt --level words --seed 3";
  const std::string written = zmatrix(options + " --start 'one two' --count 1").output;
  EXPECT_TRUE(written == "one two three" || written == "one two five") << written;
  EXPECT_EQ(zmatrix(options + " --start 'one two ' --count 1 --method best").output, "one two three");
  EXPECT_EQ(zmatrix(options + " --start 'five' --count 4 --method best").output, "five six\none two");
  EXPECT_EQ(zmatrix(options + " --start 'five' --count 0").output, "five");
  const RunResult unknown = zmatrix(options + " --start 'never seen' --count 20");
  EXPECT_EQ(unknown.exitCode, 0);
  EXPECT_EQ(unknown.diagnostics.find("warning"), std::string::npos) << unknown.diagnostics;
  EXPECT_GT(unknown.output.size(), std::string("never seen").size() + 20);
}

TEST_F(WordsTest, AreReportedIfThereAreNone) {
  writeFile("long.txt", "unbelievably incomprehensible");
  expectMessage("continue long.txt --level words --max-phrase 5", 3, "all words are too long");
  writeFile("blank.txt", " \n");
  EXPECT_EQ(zmatrix("continue blank.txt --level words").exitCode, 3);
  EXPECT_EQ(zmatrix("continue blank.txt long.txt --level words").exitCode, 0);
}

}  // namespace
