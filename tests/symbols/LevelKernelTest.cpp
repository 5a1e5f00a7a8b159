// A start sets a kernel on each level.
#include <gtest/gtest.h>

#include "SymbolMatrix.h"

namespace {

using zmatrix::valuesOf;
using zmatrix::Vector;

class LevelKernelTest : public testing::Test {
 public:
  void SetUp() override {
    matrix.learn("the cat sat on the mat");
    the = matrix.symbolsOf("the").entries[0];
  }
  int start(const std::string& text, int flag) {
    const Vector values = valuesOf(text);
    const int result = matrix->initializeKernelSequenceWithOriginalSequence(values.data(), static_cast<int>(values.size()), flag);
    EXPECT_EQ(matrix->getCurrentMatrixID(), 0);
    return result;
  }
  Words wordsOfKernel() {
    Vector symbols;
    for (int i = 0; i < info(1)->getLengthOfKernelPreProcessedSequence(); ++i) {
      symbols.push_back(info(1)->getKernelPreProcessedSequence()[0][i]);
    }
    return matrix.spell(symbols);
  }
  ZQMatrixInfo* info(int id) { return matrix->getMatrixInfo(id); }

  SymbolMatrix matrix;
  int the = 0;
};

TEST_F(LevelKernelTest, WithoutInitialValuesOnlyTheCurrentLevelIsSet) {
  EXPECT_EQ(start("the cat", 0), 7);
  EXPECT_EQ(info(0)->getLengthOfKernelPreProcessedSequence(), 7);
  EXPECT_EQ(info(1)->getLengthOfKernelPreProcessedSequence(), 0);
  matrix.select(1);
  EXPECT_EQ(matrix->initializeKernelSequenceWithOriginalSequence(&the, 1, 0), 1);
  EXPECT_EQ(matrix->initializeKernelSequenceWithOriginalSequence(&the, 1, 1), 1);
  EXPECT_EQ(info(1)->getKernelMatrixHandle(), matrix->getMatrixHandleFromElementVector(&the, 1));
  matrix->setMatrixAILevel(0);
  EXPECT_EQ(matrix->initializeKernelSequenceWithOriginalSequence(nullptr, 0, 1), 1);  // level not in use: unchanged
  EXPECT_EQ(matrix->getCurrentMatrixID(), 1);
}

TEST_F(LevelKernelTest, WithInitialValuesAllLevelsAreSet) {
  EXPECT_EQ(start("the cat", 1), 7);
  EXPECT_EQ(wordsOfKernel(), (Words{"the", "cat"}));
  EXPECT_EQ(info(0)->getLengthOfKernelPreProcessedSequence(), 7);

  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(start("dog sat zebra on", 1), 3);  // unknown words are left out
  EXPECT_EQ(wordsOfKernel(), (Words{"sat", "on"}));
  EXPECT_NE(messages.take().find("initializeKernelWithOriginalSequence: numberOfUnknown Symbols: 2\n"), std::string::npos);
  start("sat\n\non", 1);
  EXPECT_EQ(wordsOfKernel(), Words{"on"});
  EXPECT_EQ(messages.take(),
            "warning: unsecure method for recomputing ANSI originalSequence from preprocessed Sequence, offset = 4\n"
            "initializeKernelWithOriginalSequence: numberOfPredefined Symbols: 1\n");
}

TEST_F(LevelKernelTest, AStartLongerThanAnyPathResetsIt) {
  start("the cat", 1);
  EXPECT_EQ(start(std::string(5000, 'a'), 0), 0);
  EXPECT_EQ(info(0)->getLengthOfKernelPreProcessedSequence(), 0);
}

}  // namespace
