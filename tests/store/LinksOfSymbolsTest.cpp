// Symbols of the full tier when the store moves, deletes or drops the elements they link to: each symbol from 256 on keeps the
// link to its phrase, and invalid links between levels are ignored.
#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::Vector;

class LinksOfSymbolsTest : public zmatrix::TierTest<ZQMatrix> {
 public:
  LinksOfSymbolsTest() {
    matrix->setInitialMatrixBlocksize(80);
    messages.listen();
    ZQDebugChannel::globalDebugLevel = 0;
  }

  ZQMatrixElement* elementOf(const Vector& vector) { return static_cast<ZQMatrixElement*>(TierTest::elementOf(vector)); }
  /// Writes the phrase with a symbol, and the symbol in sub-matrix 1 with a link to the phrase. Returns the symbol.
  int link(const Vector& phrase) {
    write(phrase, 1);
    const int symbol = elementOf(phrase)->getSymbolID();
    matrix->setCurrentMatrixID(1);
    write({symbol});
    matrix->setCurrentMatrixID(0);
    setLink(symbol, handleOf(phrase));
    return symbol;
  }
  void setLink(int symbol, int handle) {
    matrix->setCurrentMatrixID(1);
    elementOf({symbol})->setSymbolDownLinkHandle(handle);
    matrix->setCurrentMatrixID(0);
  }
  int linkOf(int symbol) {
    matrix->setCurrentMatrixID(1);
    const int handle = matrix->getSymbolDownLinkHandleFromSymbol(symbol);
    matrix->setCurrentMatrixID(0);
    return handle;
  }
  int move(const Vector& phrase) { return moveFieldOf(handleOf(phrase), phrase.back()); }
};

TEST_F(LinksOfSymbolsTest, LinksOutOfRangeAreIgnored) {
  const int symbol = link({1, 2});
  for (const int levelUp : {4, 77, INT_MAX, 3, 0}) {  // no sub-matrix, an empty one, the phrase's own
    matrix->setCurrentMatrixIDLevelUp(levelUp);
    const int before = linkOf(symbol);
    EXPECT_NE(move({1, 2}), 0);
    EXPECT_EQ(linkOf(symbol), before);
    EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(1, 0), levelUp >= 4 ? 1 : 0) << levelUp;
  }
  matrix->setCurrentMatrixIDLevelUp(1);
  for (const int handle : {INT_MAX, INT_MIN, -1, 0, 3, 4, 79, 80}) {
    setLink(symbol, handle);
    EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(1, 0), 0) << handle;
    EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(2, 0), 0) << handle;
    EXPECT_NE(move({1, 2}), 0);
    matrix->setCurrentMatrixID(1);
    EXPECT_NE(move({symbol}), 0);
    matrix->perform1stMemoryTestSimplyfied(1, 0);
    matrix->setCurrentMatrixID(0);
  }
  for (const int wrong : {INT_MAX, INT_MIN, -5}) {
    elementOf({1, 2})->setSymbolID(wrong);
    EXPECT_NE(move({1, 2}), 0);
    matrix->perform1stMemoryTestSimplyfied(1, 0);
  }
}

TEST_F(LinksOfSymbolsTest, NoIDIsGivenTwice) {
  const Vector phrase = {1, 2};
  zmatrix::Account tell([this] { return take(); });
  const auto tellPhrase = [&](const std::string& step) {
    const ZQMatrixElement* element = handleOf(phrase) >= 0 ? elementOf(phrase) : nullptr;
    tell(step, element != nullptr ? element->getSymbolID() : -1, matrix->getNumberOfSymbols(),
         matrix->getMatrixInfo()->getNewSymbol(), matrix->getSymbolDownLinkHandleFromSymbol(257));
  };
  write(phrase);
  tellPhrase("no symbol");
  for (int i = 0; i < 2; ++i) {
    write(phrase, 1);
    tellPhrase("a symbol");
  }
  matrix->deleteMatrixElement(phrase.data(), 2, 0);
  tellPhrase("deleted");
  write(phrase, 1);
  tellPhrase("a symbol again");
  write({1, 2, 3});
  elementOf(phrase)->setSymbolDownLinkHandle(9);
  const ZQMatrixElement* inner = elementOf(phrase);
  matrix->deleteMatrixElement(phrase.data(), 2, 0);  // stays as a path element, without its symbol
  tell("an inner one deleted", inner->getSymbolID(), inner->getSymbolDownLinkHandle(), matrix->getNewSymbolID());
  write(phrase, -1);
  tellPhrase("a negative one");
}

// The symbol level is cleared and removed while the phrases still link to it.
TEST_F(LinksOfSymbolsTest, SymbolsSurviveTheirLevel) {
  matrix->setCurrentMatrixIDLevelUp(1);
  const int one = link({1, 2}), two = link({3, 4, 5});
  setLink(one, handleOf({1, 2}));  // learning the second symbol has moved the first
  setLink(two, handleOf({3, 4, 5}));
  EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(1, 0), 1) << take();
  EXPECT_EQ(matrix->clearMatrixForID(1), 1);
  EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(1, 0), 0);
  EXPECT_EQ(matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(matrix->getMaxNumberOfMatrices(), 1);
  take();
  EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(1, 0), 1);
  EXPECT_EQ(take(),
            "warning performMatrixLinearTest for matrixID 0: symbol 257 found but symbol level matrix does not exist\n"
            "warning performMatrixLinearTest for matrixID 0: symbol 258 found but symbol level matrix does not exist\n");
  for (int k = 0; k < 60; ++k) write({k % 6, 3 * k, k}, k % 2);
  EXPECT_EQ(matrix->perform1stMemoryTestSimplyfied(2, 0), 1);
  EXPECT_EQ(broken(), "");
}

}  // namespace
