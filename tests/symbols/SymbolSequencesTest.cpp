// Sequences as symbols: words of texts, and the longest known phrases of other sequences.
#include <gtest/gtest.h>

#include "SymbolMatrix.h"
#include "frame/ZQMemory.h"
#include "support/Account.h"

using zmatrix::systemFree;

namespace {

using zmatrix::Vector;

TEST(SymbolSequencesTest, AreTheWordsOfTheText) {
  const std::string ends[] = {" ",       "\n", "\n\n", "-\n",   "\r\n",  "\r\n\r\n",
                              "\t \xA0", ". ", "!\n",  "-\n\n", "\n \n", ";\r\n \r\n"};
  unsigned state = 7;
  const auto below = [&state](unsigned limit) { return (state = state * 1103515245u + 12345u) / 65536u % limit; };
  for (int round = 0; round < 40; ++round) {
    std::string text = round % 3 == 0 ? "\n\n" : "";
    for (int i = 0; i < 60; ++i) {
      const std::string begins[] = {"a", "B", "\xC4", "\xE4", "1", "-"};
      text += begins[below(6)] + std::string(below(5), static_cast<char>('a' + below(3))) + ends[below(12)];
    }
    if (round % 2 == 0) text += "end";
    SymbolMatrix matrix(20);
    EXPECT_EQ(matrix.learn(text), 1);
    const SymbolMatrix::Found symbols = matrix.symbolsOf(text);
    EXPECT_EQ(symbols.numberOfUnknown, 0);
    Words words = wordsOf(text);
    EXPECT_EQ(matrix.spell(symbols.entries), words) << text;
    EXPECT_EQ(matrix.brokenLink(), "");
    ASSERT_FALSE(HasFailure());
  }
}

TEST(SymbolSequencesTest, ReportUnknownWords) {
  zmatrix::CapturedMessages messages(0);
  zmatrix::Account tell([&] { return messages.take(); });
  const auto learn = [&](SymbolMatrix& matrix, const std::string& text) {
    messages.listen();
    const int result = matrix.learn(text);
    tell("learn " + text, result, matrix->getNumberOfSymbols());
  };
  const auto look = [&](SymbolMatrix& matrix, const std::string& text) {
    const SymbolMatrix::Found symbols = matrix.symbolsOf(text);
    tell(text, symbols.entries, symbols.numberOfUnknown);
    for (const std::string& word : matrix.spell(symbols.entries)) tell("- " + word);
    tell("handles", static_cast<int>(matrix.handlesOf(text).entries.size()));
  };
  SymbolMatrix matrix(5), harbour, last;
  learn(matrix, "fives sixsix four");
  look(matrix, "fives sixsix four");
  learn(harbour, "harbour town");
  look(harbour, "harb zoo town");
  look(harbour, "");
  learn(last, "one");
  last->getMatrixInfo()->setNewSymbol(499999);
  learn(last, "one two three");
  look(last, "one two three");
}

TEST(SymbolSequencesTest, UseTheMarkersOfTheCaller) {
  SymbolMatrix matrix;
  matrix->setDefaultMatrixPropertiesForSymbols(nullptr);
  const int sequence[] = {1, 2, 3, 4, 5}, markers[] = {1, 1, 2, 3, 2};
  EXPECT_EQ(matrix->updateMatrixWithCombinedSequenceDebug(sequence, 5, 2, 1, 0, 0, markers, nullptr, nullptr, nullptr, nullptr,
                                                          nullptr),
            1);
  // The first begin is followed by another one and ignored. The last item is a word of its own and begins no longer word.
  EXPECT_EQ(matrix->getNumberOfSymbols(), 2);
  EXPECT_EQ(matrix.symbolsOfAny({1, 2, 3, 4, 5}), (Vector{258, 257}));
}

/// A sub-matrix of numbers in which some phrases have symbols.
class AnySequenceTest : public testing::Test {
 public:
  void write(Vector path, int symbolMarker) {
    matrix->writeMatrixData(path.data(), static_cast<int>(path.size()), 1, 0, 0, symbolMarker);
  }
  SymbolMatrix matrix;
};

TEST_F(AnySequenceTest, TakesTheLongestPhrase) {
  for (const Vector& path : {Vector{1}, Vector{1, 2, 3}, Vector{4, 5}}) write(path, 1);  // 257, 258, 259
  write({1, 2}, 0);
  write({4}, 0);
  write({6, 7}, 1);  // 260, a child of an item without a write
  EXPECT_EQ(matrix.symbolsOfAny({1, 2, 3, 9, 1, 2, 4, 5, 4, 6, 7, 1}), (Vector{258, 257, 259, 257}));
  EXPECT_EQ(matrix.symbolsOfAny({9, 9}), Vector{});
  int count = -1;
  const Vector sequence = {8, 4, 5};
  int* handles = matrix->getSymbolHandlesFromAnyLongSequence(sequence.data(), 3, &count);
  ASSERT_EQ(count, 1);
  EXPECT_EQ(handles[0], matrix->getMatrixHandleFromElementVector(sequence.data() + 1, 2));
  systemFree(handles);

  matrix->setMatrixDebugOn(6);
  zmatrix::CapturedMessages messages(6);
  matrix.symbolsOfAny({4, 5});
  EXPECT_EQ(messages.take(), "getSymbolsFromAnyLong..(): Symbol found 259\norig: M(4,5)  p()=1/1 \n\n");
  matrix->getMatrixInfo()->setMaximalMatrixIndex(258);
  EXPECT_EQ(matrix.symbolsOfAny({4, 5}), Vector{});
  EXPECT_EQ(messages.take(), "getSymbolsFromAnyLong..(): Symbol 259 exceeds max. matrix index 258\n");
}

TEST_F(AnySequenceTest, TakesWholeItems) {
  matrix->setCoordinateDimension(2);
  write({1, 2}, 0);
  write({1, 2, 3, 4}, 1);
  write({3, 4}, 1);
  EXPECT_EQ(matrix.symbolsOfAny({3, 4, 1, 2, 3, 4, 1, 2, 9}), (Vector{258, 257}));
}

}  // namespace
