// Refreshing the links of all symbols, after texts that have moved the phrases of earlier ones; the updates with words and in
// bulk.
#include "symbols/ZQSymbolLinks.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <set>

#include "SymbolMatrix.h"
#include "sequence/ZQBulkUpdate.h"
#include "symbols/ZQFullTier.h"
#include "symbols/ZQWordsUpdate.h"

namespace {

std::string wordOf(SymbolMatrix& matrix, int symbol) {
  int length = -1;
  const auto phrase = zmatrix::taken(zmatrix::createPhraseOfSymbol(matrix.get(), symbol, &length), length);
  EXPECT_EQ(static_cast<int>(phrase.size()), length);
  return {phrase.begin(), phrase.end()};
}

TEST(SymbolLinksTest, LeadToTheirPhrasesAfterRefreshing) {
  SymbolMatrix matrix;
  std::set<std::string> words;
  bool wentStale = false;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    const std::string text = unstructuredText(seed, 1500, 3);
    ASSERT_EQ(matrix.learn(text), 1);
    for (const std::string& word : wordsOf(text)) words.insert(word);
    words.erase("\n");
    wentStale = wentStale || matrix.brokenLink() != "";
    EXPECT_EQ(zmatrix::refreshSymbolLinks(matrix.get()), static_cast<int>(words.size()));
    EXPECT_EQ(matrix.brokenLink(), "");
  }
  EXPECT_TRUE(wentStale);
  const int newest = matrix->getMatrixInfo()->getNewSymbol();
  int written = 0, ends = 0;
  matrix.select(1);
  std::set<std::string> expanded;
  for (int symbol = 257; symbol <= newest; ++symbol) expanded.insert(wordOf(matrix, symbol));
  EXPECT_EQ(expanded, words);
  EXPECT_EQ(wordOf(matrix, newest + 1), "");
  EXPECT_EQ(matrix->performMatrixLinearTest(&written, &ends, 0), 1);
}

TEST(WordsUpdateTest, GivesTheWordsAndSequencesOfTheFullUpdate) {
  const std::string text = unstructuredText(5, 400, 6);
  const zmatrix::Vector values = zmatrix::valuesOf(text);
  SymbolMatrix whole, words;
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(whole.learn(text), 1);
    if (round == 0) {
      EXPECT_EQ(zmatrix::updateMatrixWithWordsOfLongANSISequence(words.get(), values.data(), 0, nullptr), 0);
      EXPECT_EQ(words.learn("x"), 1);  // applies the settings for texts
      EXPECT_EQ(whole.learn("x"), 1);
    }
    ASSERT_EQ(
        zmatrix::updateMatrixWithWordsOfLongANSISequence(words.get(), values.data(), static_cast<int>(values.size()), nullptr),
        1);
    EXPECT_EQ(words->getNumberOfSymbols(), whole->getNumberOfSymbols());
    EXPECT_LT(words->getNumberOfWriteElements(), whole->getNumberOfWriteElements() / 4);
    EXPECT_EQ(words.spell(words.symbolsOf(text).entries), whole.spell(whole.symbolsOf(text).entries));
    words.select(1);
    whole.select(1);
    EXPECT_EQ(words->getNumberOfWriteCounts(), whole->getNumberOfWriteCounts());
    EXPECT_EQ(words->getNumberOfWriteElements(), whole->getNumberOfWriteElements());
    words.select(0);
    whole.select(0);
  }
  EXPECT_EQ(zmatrix::brokenInvariant(*words.get()), "");
  words->setMatrixAILevel(0);
  EXPECT_EQ(zmatrix::updateMatrixWithWordsOfLongANSISequence(words.get(), values.data(), 5, nullptr), 0);
}

// Several sequences, so that existing fields get more children; wide indices, so that fields move.
TEST(BulkUpdateTest, GivesThePhrasesAndCountsOfSingleUpdates) {
  std::mt19937 random(14);
  std::geometric_distribution<int> rank(0.02);
  SymbolMatrix first, second;
  ZQMatrix &single = *first.get(), &bulk = *second.get();
  for (ZQMatrix* matrix : {&single, &bulk}) {
    matrix->setDefaultMatrixPropertiesForSymbols(nullptr);
    matrix->setMaxPhraseLengthForUpdateWithSequence(4);
  }
  std::vector<int> all;
  for (int round = 0; round < 4; ++round) {
    std::vector<int> sequence;
    for (int i = 0; i < 1500; ++i) sequence.push_back(257 + rank(random) * 97 % 4001);
    const int length = static_cast<int>(sequence.size());
    ASSERT_EQ(single.updateMatrixWithLongINTSequenceExt(sequence.data(), length, ZQMatrixTypeIntegerSeries, 1, 0, 0), 1);
    ASSERT_EQ(zmatrix::ZQBulkUpdate<zmatrix::ZQFullTier>(bulk, sequence.data(), length).run(4), 1);
    all.insert(all.end(), sequence.begin(), sequence.end());
  }
  EXPECT_EQ(bulk.getNumberOfWriteElements(), single.getNumberOfWriteElements());
  EXPECT_EQ(bulk.getNumberOfWriteCounts(), single.getNumberOfWriteCounts());
  EXPECT_EQ(bulk.getMatrixInfo()->getNumberOfStartElements(), single.getMatrixInfo()->getNumberOfStartElements());
  const auto countsOf = [](ZQMatrix& matrix, const int* phrase, int length) {
    std::array<int, 4> counts{};
    const long long value = matrix.readMatrixData(phrase, length, &counts[0], &counts[1], &counts[2], &counts[3]);
    return std::make_pair(value, counts);
  };
  for (size_t start = 0; start + 4 <= all.size(); ++start) {
    for (int length = 1; length <= 4; ++length)
      ASSERT_EQ(countsOf(bulk, &all[start], length), countsOf(single, &all[start], length)) << start << ", " << length;
  }
  EXPECT_EQ(zmatrix::brokenInvariant(bulk), "");
  int written = 0, ends = 0;
  EXPECT_EQ(bulk.performMatrixLinearTest(&written, &ends, 0), 1);
  const int* none = nullptr;
  EXPECT_EQ(zmatrix::ZQBulkUpdate<zmatrix::ZQFullTier>(bulk, none, 0).run(4), 1);
  const int tooHigh = 500001;
  const zmatrix::CapturedMessages silent(-1);
  EXPECT_EQ(zmatrix::ZQBulkUpdate<zmatrix::ZQFullTier>(bulk, &tooHigh, 1).run(4), -1);
}

}  // namespace
