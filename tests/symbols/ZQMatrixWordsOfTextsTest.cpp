// Whole texts, learned on both levels: as many symbols as a count of the words has, and nothing but the text's words when it is
// continued. Set ZMATRIX_TEXTS to a folder to have all its texts taken as well.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

#include "SymbolMatrix.h"

namespace {

using zmatrix::TestFolder;

constexpr int phraseLimit = 24;
constexpr size_t longestText = 200000;

void expectItsWords(const std::string& text) {
  SymbolMatrix matrix(phraseLimit);
  matrix->setGlobalSymbolDefaultMatrixPropertiesForSymbols();
  matrix->setGlobalSymbolMaxPhraseLengthForUpdateWithSequence(4);
  ASSERT_EQ(matrix.learn(text), 1);

  const Words words = wordsOf(text);
  Words known;
  int numberOfLongWords = 0;
  for (const std::string& word : words) {
    const bool isLong = word.size() > phraseLimit;
    numberOfLongWords += isLong;
    if (!isLong) known.push_back(word);
  }
  const SymbolMatrix::Found symbols = matrix.symbolsOf(text);
  EXPECT_EQ(matrix.spell(symbols.entries), known);
  EXPECT_EQ(symbols.numberOfUnknown, numberOfLongWords);
  EXPECT_EQ(symbols.numberOfPredefined, std::count(words.begin(), words.end(), "\n"));
  std::set<std::string> vocabulary(known.begin(), known.end());
  vocabulary.erase("\n");
  EXPECT_EQ(matrix->getNumberOfSymbols(), static_cast<int>(vocabulary.size()));
  EXPECT_EQ(matrix.brokenLink(), "");

  matrix.select(1);
  const TestFolder folder;
  const std::string file = folder.path() + "/out.txt";
  ASSERT_EQ(matrix->readAnsiObjexsAndWriteToAnsiFile(3000, file.c_str()), 1);
  std::istringstream generated(TestFolder::contentOf(file));
  int numberOfGenerated = 0;
  for (std::string word; std::getline(generated, word, ' ');) {
    word.erase(0, word.find_first_not_of('\n'));
    if (word.empty()) continue;
    ++numberOfGenerated;
    EXPECT_TRUE(vocabulary.count(word) == 1) << word;
  }
  EXPECT_GT(numberOfGenerated, 1500);
}

TEST(WordsOfTexts, OfExamples) {
  int numberOfTexts = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(ZMATRIX_EXAMPLES)) {
    if (entry.path().extension() != ".txt") continue;
    SCOPED_TRACE(entry.path());
    expectItsWords(TestFolder::contentOf(entry.path()));
    ++numberOfTexts;
  }
  EXPECT_GT(numberOfTexts, 0);
}

TEST(WordsOfTexts, OfAFolder) {
  const char* folder = getenv("ZMATRIX_TEXTS");
  if (folder == nullptr) GTEST_SKIP() << "ZMATRIX_TEXTS names no folder";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".txt") continue;
    SCOPED_TRACE(entry.path());
    expectItsWords(TestFolder::contentOf(entry.path()).substr(0, longestText));
  }
}

}  // namespace
