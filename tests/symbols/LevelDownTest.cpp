// From symbols back to phrases: as arrays, as messages, as text in a file.
#include <gtest/gtest.h>

#include <filesystem>

#include "SymbolMatrix.h"
#include "frame/ZQMemory.h"
#include "support/Account.h"

using zmatrix::systemFree;

namespace {

using zmatrix::TestFolder;
using zmatrix::valuesOf;
using zmatrix::Vector;

class LevelDownTest : public testing::Test {
 public:
  std::string illegalHandle(int handle) {
    return "getPreviousLevelObjectsFromOriginalSymbol: illegal handle: " + std::to_string(handle) + "\n";
  }

  SymbolMatrix matrix;
};

TEST_F(LevelDownTest, GivesThePhraseOrNothing) {
  matrix.learn("harbour\n\ntown");
  matrix.select(1);
  EXPECT_EQ(matrix.phraseOf(257), "harbour");
  EXPECT_EQ(matrix.phraseOf(258), "town");
  int count = -1;
  int** items = matrix->createPreviousLevelObjexsFromOriginalSymbol(258, &count);
  ASSERT_EQ(count, 4);
  EXPECT_EQ(items[0][0], 't');
  EXPECT_EQ(items[3][0], 'n');
  systemFree(items);

  zmatrix::CapturedMessages messages(0);
  zmatrix::Account tell([&] { return messages.take(); });
  const auto expectNothing = [&](const std::string& step, int symbol) {
    int length = -1;
    EXPECT_EQ(matrix->createPreviousLevelElementsFromOriginalSymbol(symbol, &length), nullptr);
    EXPECT_EQ(matrix->createPreviousLevelObjexsFromOriginalSymbol(symbol, &count), nullptr);
    tell(step, length, count, matrix->getCurrentMatrixID());
  };
  expectNothing("the line feed, which has no phrase", '\n');
  for (const int unknown : {999, -5}) expectNothing("an unknown symbol", unknown);
  const int symbol = 257, beyond = 1000000, itself = matrix->getMatrixHandleFromElementVector(&symbol, 1);
  matrix->updateSymbolDownLinkHandlesForSymbols(&symbol, &beyond, 1);
  expectNothing("a handle beyond the stack", 257);
  matrix->updateSymbolDownLinkHandlesForSymbols(&symbol, &itself, 1);
  expectNothing("the symbol's own handle", 257);
  matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(4);
  expectNothing("a level beyond the sub-matrices", 258);
}

TEST_F(LevelDownTest, PrintsItemsAccordingToTheirLevel) {
  matrix.learn("cat");
  zmatrix::CapturedMessages messages(0);
  zmatrix::Account tell([&] { return messages.take(); });
  const auto print = [&](const std::string& step, int item) {
    matrix->dbPrintSuccessorObjex(&item, 1);
    tell(step, matrix->getCurrentMatrixID());
  };
  print("a letter", 'x');
  matrix->dbPrintSuccessorObjex(nullptr, 0);
  matrix.select(1);
  print("a symbol", 257);
  print("an unknown symbol", 258);
  matrix.select(0);
  matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(2);
  matrix.select(1);
  print("a symbol of a level above", 257);
}

TEST_F(LevelDownTest, PrintsPhrasesOfNumbersItemByItem) {
  matrix->setCoordinateDimension(2);
  matrix->setMatrixType(ZQMatrixTypeIntegerSeries);
  const Vector phrase = {5, 6, 7, 8};
  matrix->writeMatrixElement(phrase.data(), 4, 1);
  const int symbol = 300, handle = matrix->getMatrixHandleFromElementVector(phrase.data(), 4);
  matrix.select(1);
  matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(0);
  matrix->writeMatrixElement(&symbol, 1, 1);
  matrix->updateSymbolDownLinkHandlesForSymbols(&symbol, &handle, 1);
  matrix.raiseStack();
  zmatrix::CapturedMessages messages(0);
  matrix->dbPrintSuccessorObjex(&symbol, 1);
  EXPECT_EQ(messages.take(), "(300:) (5,6,)(7,8,)");
}

class TextOfLevelsTest : public LevelDownTest {
 public:
  int write(int numberOfItems) { return matrix->readAnsiObjexsAndWriteToAnsiFile(numberOfItems, file.c_str()); }
  void expectRefusal(int result, const std::string& message) {
    zmatrix::CapturedMessages messages(0);
    EXPECT_EQ(write(1), result);
    EXPECT_EQ(messages.take(), message);
    EXPECT_FALSE(std::filesystem::exists(file));
  }

  TestFolder folder;
  std::string file = folder.path() + "/out.txt";
};

TEST_F(TextOfLevelsTest, IsWrittenInWordsOrCharacters) {
  matrix.learn("the cat\n\nsat");
  matrix.raiseStack();
  const Vector start = valuesOf("the");
  EXPECT_EQ(matrix->initializeKernelSequenceWithOriginalSequence(start.data(), 3, 1), 3);
  matrix->getMatrixInfo()->setSuccessorMethod(ZQSuccessorMethodMostProbable);
  EXPECT_EQ(write(4), 1);
  EXPECT_EQ(TestFolder::contentOf(file), "the cat");
  matrix.select(1);
  EXPECT_EQ(write(0), 1);
  EXPECT_EQ(TestFolder::contentOf(file), "the ");
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(write(3), 1);  // cat, the line feed without a phrase, sat
  EXPECT_EQ(TestFolder::contentOf(file), "the cat sat ");
  EXPECT_EQ(messages.take(), illegalHandle(0));
  EXPECT_EQ(matrix->getCurrentMatrixID(), 1);
}

TEST_F(TextOfLevelsTest, WritesLineFeedsForWrongSymbols) {
  matrix.learn("cat");
  matrix.select(1);
  matrix->getMatrixInfo()->setSuccessorMethod(ZQSuccessorMethodMostProbable);
  const Vector sequence = {-3, -3, -3};
  matrix->updateMatrixWithLongINTSequence(sequence.data(), 3);
  matrix->getMatrixInfo()->setEnableStopItem(0);
  matrix->getMatrixInfo()->setRestartWithTrueStartItem(0);
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(write(2), 1);
  EXPECT_EQ(TestFolder::contentOf(file), "\n\n");
  const std::string message = illegalHandle(0) + "readAnsiObjexsAndWriteToAnsiFile: illegal symbol value: -3\n";
  EXPECT_EQ(messages.take(), message + message);
}

TEST_F(TextOfLevelsTest, RefusesWrongSettings) {
  expectRefusal(-1, "error: readAnsiObjexsAndWriteToAnsiFile: matrix is not ANSI type: 0\n");
  matrix->setMatrixType(ZQMatrixTypeANSIText);
  expectRefusal(-2, "readAnsiObjexsAndWriteToAnsiFile: matrix is empty!\n");
  matrix.select(1);
  matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(0);
  expectRefusal(-2, "readAnsiObjexsAndWriteToAnsiFile: matrix is empty!\n");
  const int reserved = matrix->getMaxNumberOfMatrices();
  for (const int link : {1, reserved}) {
    matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(link);
    expectRefusal(-1, "error: readAnsiObjexsAndWriteToAnsiFile: symbol has invalid downlink ID: " + std::to_string(link) + "\n");
  }
  matrix->getMatrixInfo()->setCurrentMatrixIDLevelDown(0);
  matrix->getMatrixInfo(0)->setCurrentMatrixIDLevelDown(2);
  expectRefusal(-1, "### error readAnsiObjexsAndWriteToAnsiFile: cannot write Objex for AILevel 2\n");
  matrix.select(3);
  matrix.learn("cat");
  matrix.select(0);
  file = folder.path() + "/absent/out.txt";
  matrix.select(matrix->getMatrixIDForLanguage(3, 4, 1000));
  expectRefusal(-5, "readAnsiObjexsAndWriteToAnsiFile: could not open ansifile " + file + " for writing\n");
}

}  // namespace
