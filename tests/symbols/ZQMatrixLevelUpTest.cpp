// The symbol level: how it comes to be, is fed, and keeps naming its phrases; and what is refused.
#include <gtest/gtest.h>

#include "SymbolMatrix.h"
#include "flat/ZQMatrixCreators.h"
#include "frame/ZQMemory.h"

namespace {

using Integers = std::vector<int>;

TEST(LevelUpTest, IsMadeOnceAndFedAgain) {
  SymbolMatrix matrix;
  zmatrix::CapturedMessages messages(2);
  EXPECT_EQ(matrix.learn("one two"), 1);
  std::string told = messages.take();
  EXPECT_NE(told.find("updateMatrixFromBasicLevel: new symbol matrix prepared\n"
                      "updateMatrixFromBasicLevel: number of matrices increased to 2\n"
                      "error: checkGlobalSymbolMatrixPropertiesForSymbols: isPhraseMatrix illegal: 0\n"
                      "updateMatrixFromBasicLevel: checkGlobalMatrixPropertiesForSymbols() failed. Applying default values\n"),
            std::string::npos);
  EXPECT_EQ(matrix->getCurrentMatrixID(), 0);
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), 1);
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelDown(), -1);
  EXPECT_EQ(matrix->getNumberOfSymbols(), 2);
  const std::string nameOfFile = matrix->getNameOfUpdateFile();

  matrix.select(1);
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelDown(), 0);
  EXPECT_EQ(matrix->getActualAILevelIndex(), 1);
  EXPECT_EQ(matrix->getMatrixType(), 2);
  EXPECT_EQ(matrix->getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
  EXPECT_EQ(matrix->getNameOfUpdateFile(), nameOfFile);
  EXPECT_EQ(matrix->getNamesOfUpdateFiles(), nameOfFile + "\n");
  EXPECT_EQ(matrix->getNumberOfWriteCounts(), 3);  // one, two, one two

  matrix.select(0);
  EXPECT_EQ(matrix.learn("one two"), 1);
  told = messages.take();
  EXPECT_NE(told.find("updating next level symbol-matrix with id 1 (is not empty)\n"), std::string::npos);
  EXPECT_NE(told.find("setDefaultMatrixPropertiesForSymbols: can only be applied for an empty matrix\n"), std::string::npos);
  EXPECT_EQ(matrix.learn("two three"), 1);
  EXPECT_EQ(matrix->getNumberOfSymbols(), 3);
  EXPECT_EQ(matrix->getNumberOfMatrices(), 2);
  EXPECT_EQ(matrix.symbolsOf("three two one").entries, (Integers{259, 258, 257}));
  EXPECT_EQ(matrix.brokenLink(), "");
  matrix.select(1);
  EXPECT_EQ(matrix->getNumberOfWriteCounts(), 9);
  EXPECT_EQ(matrix->getNumberOfWriteElements(), 5);
}

TEST(LevelUpTest, TakesTheBlockForSymbolsIfTheHostHasSetIt) {
  SymbolMatrix matrix;
  matrix->setGlobalSymbolDefaultMatrixPropertiesForSymbols();
  matrix->setGlobalSymbolMaxPhraseLengthForUpdateWithSequence(2);
  matrix->setGlobalSymbolKeepSymbolsWhenRemoveOverdeterminedElements(1);
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(matrix.learn("one two three"), 1);
  EXPECT_EQ(messages.take(), "");
  const std::string nameOfFile = matrix->getNameOfUpdateFile();
  matrix.select(1);
  EXPECT_EQ(matrix->getNumberOfWriteCounts(), 5);
  EXPECT_EQ(matrix->getKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  EXPECT_EQ(matrix->getNamesOfUpdateFiles(), nameOfFile + "\n");
}

TEST(LevelUpTest, StaysOutWhereItIsNotWanted) {
  SymbolMatrix matrix;
  matrix->setMatrixAILevel(0);
  EXPECT_EQ(matrix.learn("one two"), 1);
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), -1);
  EXPECT_EQ(matrix->getNumberOfSymbols(), 2);
  const Integers text = valuesOf("one two");
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_EQ(messages.take(), "updateMatrixFromBasicLevel: matrixAILevel 0 unexpected.\n");
  matrix->setMatrixAILevel(1);
  matrix.select(3);
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_EQ(messages.take(), "updateMatrixFromBasicLevel: cannot process a non-phrase matrix\n");
  matrix->setIsPhraseMatrix(1);
  matrix->setMatrixType(ZQMatrixTypeMIDINoteAndQuanta);
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_EQ(messages.take(), "");
  matrix.select(0);
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 1);
  EXPECT_EQ(matrix.brokenLink(), "");
}

TEST(LevelUpTest, RefusesWithoutTouchingTheBasicLevel) {
  SymbolMatrix matrix;
  matrix->setMatrixAILevel(0);
  EXPECT_EQ(matrix.learn("one two"), 1);
  matrix->setMatrixAILevel(1);
  const int numberOfElements = matrix->getNumberOfMatrixElements();
  const Integers text = valuesOf("one two");
  const auto expectRefusal = [&](const std::string& message) {
    zmatrix::CapturedMessages messages(0);
    EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
    EXPECT_EQ(messages.take(), message);
    EXPECT_EQ(matrix->getCurrentMatrixID(), 0);
    EXPECT_EQ(matrix->getNumberOfMatrixElements(), numberOfElements);
    EXPECT_EQ(zmatrix::brokenInvariant(*matrix.get()), "");
  };
  const int one = 1;
  for (int id = 1; id < matrix->getMaxNumberOfMatrices(); ++id) {
    matrix.select(id);
    matrix->writeMatrixElement(&one, 1, 1);
  }
  matrix.select(0);
  expectRefusal("Cannot create next level matrix with id -1. Max. number of matrices exceeded\n");
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), -1);
  for (const int link : {0, matrix->getMaxNumberOfMatrices(), 1 << 30}) {
    matrix->setCurrentMatrixIDLevelUp(link);
    expectRefusal("updateMatrixFromBasicLevel: warning symbolLevel found is illegal\n");
  }
  matrix->setCurrentMatrixIDLevelUp(2);  // holds something that is no sequence of symbols
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_NE(messages.take().find("actual setting for isPhraseMatrix is illegal 0\n"), std::string::npos);
  EXPECT_EQ(matrix->getNumberOfMatrixElements(), numberOfElements);
  EXPECT_EQ(matrix->getNumberOfSymbols(), 2);
}

TEST(LevelUpTest, IsNeverTheBasicLevelItself) {
  SymbolMatrix matrix;
  matrix->setMatrixAILevel(0);
  EXPECT_EQ(matrix.learn("one two"), 1);
  matrix->setMatrixAILevel(1);
  zmatrix::CapturedMessages messages(0);
  matrix->makeMatrixEmpty();  // the elements stay, with their symbols
  matrix->setDefaultMatrixPropertiesForANSIText(nullptr);
  ASSERT_EQ(matrix->getNextFreeMatrixID(), 0);
  ASSERT_EQ(matrix.symbolsOf("one two").entries, (Integers{257, 258}));
  messages.take();
  const Integers text = valuesOf("one two");
  EXPECT_EQ(matrix->updateMatrixFromBasicLevel(text.data(), 7), 0);
  EXPECT_EQ(messages.take(), "updateMatrixFromBasicLevel: warning symbolLevel found is illegal\n");
  EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), -1);
  EXPECT_EQ(matrix->getMatrixType(), 3);
}

TEST(LevelUpTest, IsThereAgainAfterALoad) {
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

TEST(LevelUpTest, IsFedAnewAfterItWasEmptied) {
  for (const bool byClearing : {false, true}) {
    SymbolMatrix matrix;
    EXPECT_EQ(matrix.learn("one two three"), 1);
    if (byClearing) {
      EXPECT_EQ(matrix->clearMatrixForID(1), 1);
    } else {
      matrix.select(1);
      EXPECT_GE(matrix->removeLongElements(0), 0);
    }
    EXPECT_EQ(matrix->getMatrixInfo(1)->getNumberOfMatrixElements(), 0);
    matrix.select(0);
    EXPECT_EQ(matrix.symbolsOf("one two").entries, (Integers{257, 258}));
    EXPECT_EQ(matrix.spell({257}), Words{""});
    EXPECT_EQ(matrix.learn("three one"), 1);
    EXPECT_EQ(matrix->getCurrentMatrixIDLevelUp(), 1);
    EXPECT_EQ(matrix.spell({259, 257}), (Words{"three", "one"}));
    EXPECT_EQ(matrix.spell({258}), Words{""});
  }
}

TEST(LevelUpTest, StoresHandlesForSymbolsThatItKnows) {
  SymbolMatrix matrix;
  matrix.learn("one two");
  matrix.select(1);
  zmatrix::CapturedMessages messages(0);
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
