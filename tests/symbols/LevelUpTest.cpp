// The symbol level: creation, feeding, links to phrases, refusals.
#include <gtest/gtest.h>

#include "SymbolMatrix.h"
#include "flat/ZQMatrixCreators.h"
#include "frame/ZQMemory.h"
#include "support/Account.h"

namespace {

using zmatrix::Vector;

class LevelUpTest : public testing::Test {
 public:
  /// Learns a text without symbols, then allows them.
  void learnBasicLevel() {
    matrix->setMatrixAILevel(0);
    EXPECT_EQ(matrix.learn("one two"), 1);
    matrix->setMatrixAILevel(1);
    messages.listen();
  }

  SymbolMatrix matrix;
  const Vector text = zmatrix::valuesOf("one two");
  zmatrix::CapturedMessages messages{0};
};

TEST_F(LevelUpTest, IsCreatedOnceAndFedAgain) {
  zmatrix::ZQDebugChannel::globalDebugLevel = 2;
  zmatrix::Account tell([&] { return messages.take(); }, matrix.folderPath());
  for (const char* words : {"one two", "one two", "two three"}) {
    const int result = matrix.learn(words);
    tell(words, result, matrix->getCurrentMatrixID(), matrix->getNumberOfMatrices(), matrix->getCurrentMatrixIDLevelUp(),
         matrix->getCurrentMatrixIDLevelDown(), matrix->getNumberOfSymbols());
    const std::string nameOfFile = matrix->getNameOfUpdateFile();
    matrix.select(1);
    tell("symbols", matrix->getCurrentMatrixIDLevelDown(), matrix->getActualAILevelIndex(), matrix->getMatrixType(),
         matrix->getKeepSymbolsWhenRemoveOverdeterminedElements(), matrix->getNumberOfWriteCounts(),
         matrix->getNumberOfWriteElements());
    EXPECT_EQ(matrix->getNameOfUpdateFile(), nameOfFile);
    EXPECT_TRUE(std::string(matrix->getNamesOfUpdateFiles()).starts_with(nameOfFile + "\n"));
    matrix.select(0);
  }
  EXPECT_EQ(matrix.symbolsOf("three two one").entries, (Vector{259, 258, 257}));
  EXPECT_EQ(matrix.brokenLink(), "");
}

TEST_F(LevelUpTest, IsOnlyCreatedForPhrasesOfTexts) {
  learnBasicLevel();
  matrix->setMatrixAILevel(0);
  zmatrix::Account tell([&] { return messages.take(); });
  const auto update = [&](const std::string& step) {
    const int result = matrix->updateMatrixFromBasicLevel(text.data(), 7);
    tell(step, result, matrix->getCurrentMatrixIDLevelUp(), matrix->getNumberOfSymbols());
  };
  update("level 0");
  matrix->setMatrixAILevel(1);
  matrix.select(3);
  update("no phrases");
  matrix->setIsPhraseMatrix(1);
  matrix->setMatrixType(ZQMatrixTypeMIDINoteAndQuanta);
  update("notes");
  matrix.select(0);
  update("text");
  EXPECT_EQ(matrix.brokenLink(), "");
}

TEST_F(LevelUpTest, RefusalsLeaveTheBasicLevelUnchanged) {
  learnBasicLevel();
  zmatrix::Account tell([&] { return messages.take(); });
  const auto refuse = [&](const std::string& step) {
    const int result = matrix->updateMatrixFromBasicLevel(text.data(), 7);
    tell(step, result, matrix->getCurrentMatrixID(), matrix->getCurrentMatrixIDLevelUp(), matrix->getNumberOfMatrixElements(),
         matrix->getNumberOfSymbols());
    EXPECT_EQ(zmatrix::brokenInvariant(*matrix.get()), "");
  };
  const int one = 1;
  for (int id = 1; id < matrix->getMaxNumberOfMatrices(); ++id) {
    matrix.select(id);
    matrix->writeMatrixElement(&one, 1, 1);
  }
  matrix.select(0);
  refuse("no sub-matrix is left");
  for (const int link : {0, matrix->getMaxNumberOfMatrices(), 1 << 30}) {
    matrix->setCurrentMatrixIDLevelUp(link);
    refuse("a link that leads nowhere");
  }
  matrix->setCurrentMatrixIDLevelUp(2);
  refuse("a sub-matrix that holds no sequence of symbols");
}

TEST_F(LevelUpTest, IsNeverTheBasicLevelItself) {
  learnBasicLevel();
  matrix->makeMatrixEmpty();  // the elements and their symbols stay
  matrix->setDefaultMatrixPropertiesForANSIText(nullptr);
  ASSERT_EQ(matrix->getNextFreeMatrixID(), 0);
  ASSERT_EQ(matrix.symbolsOf("one two").entries, (Vector{257, 258}));
  messages.take();
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_EQ(messages.take(), "updateMatrixFromBasicLevel: warning symbolLevel found is illegal\n");
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), -1);
  EXPECT_EQ(matrix->getMatrixType(), 3);
}

TEST(LoadedLevelUpTest, IsRestoredByALoad) {
  const std::string text = unstructuredText(21, 300, 6);
  const zmatrix::TestFolder folder;
  const std::string file = folder.path() + "/words.zmatrix";
  SymbolMatrix matrix(8);
  EXPECT_EQ(matrix.learn(text), 1);
  EXPECT_EQ(matrix->saveMatrixToDisk(file.c_str()), 1);
  const Words words = wordsOf(text);
  const SymbolMatrix::Found symbols = matrix.symbolsOf(text);

  SymbolMatrix loaded(createAndInitMatrixWithFile(file.c_str(), -1));
  ASSERT_NE(loaded.get(), nullptr);
  EXPECT_EQ(loaded->getMatrixAILevel(), 1);
  EXPECT_EQ(loaded->getCurrentMatrixIDLevelUp(), 1);
  EXPECT_EQ(loaded.symbolsOf(text).entries, symbols.entries);
  EXPECT_EQ(loaded.spell(symbols.entries), words);
  EXPECT_EQ(loaded.brokenLink(), "");
  EXPECT_EQ(loaded.learn("brandnew " + text), 1);
  EXPECT_EQ(loaded.spell(loaded.symbolsOf("brandnew").entries), Words{"brandnew"});
  EXPECT_EQ(loaded.brokenLink(), "");
  EXPECT_EQ(loaded->getNumberOfSymbols(), matrix->getNumberOfSymbols() + 1);
}

TEST_F(LevelUpTest, StoresHandlesOfKnownSymbols) {
  matrix.learn("one two");
  matrix.select(1);
  messages.take();
  const int symbols[] = {258, 400, 257}, handles[] = {-3, 44, 0};
  EXPECT_EQ(matrix->updateSymbolDownLinkHandlesForSymbols(symbols, handles, 3), 1);
  EXPECT_EQ(messages.take(),
            "warning: insertSymbolHandlesForSymbols(): symbol 258 has illegal handle -3\n"
            "insertSymbolHandlesForSymbols(): error: element not found for symbol 400 with handle 44\n");
  EXPECT_EQ(matrix->getSymbolDownLinkHandleFromSymbol(258), -3);
  EXPECT_EQ(matrix->getSymbolDownLinkHandleFromSymbol(257), 0);
  EXPECT_EQ(matrix->getSymbolDownLinkHandleFromSymbol(400), -1);
}

}  // namespace
