// BBMatrix: that it forwards, and what the few methods add that do more.
#include <gtest/gtest.h>
#include <zmatrix/BBMatrix.h>

#include <string>

class FacadeTest : public testing::Test {
 protected:
  FacadeTest() : facade{nullptr, createMatrixBB()} {}
  ~FacadeTest() override { deleteMatrixBB(facade.matrix); }

  BBMatrix facade;
};

TEST_F(FacadeTest, WritesAndReadsElements) {
  const int path[] = {5, -3, 70};
  EXPECT_EQ(facade.writeMatrixElement(path, 3, 99), 1);
  int existCode = 0, count = 0, withSuccessor = -1, withoutPredecessor = -1;
  EXPECT_EQ(facade.readMatrixData(path, 3, &existCode, &count, &withSuccessor, &withoutPredecessor), 99);
  EXPECT_EQ(existCode * 1000 + count * 100 + withSuccessor * 10 + withoutPredecessor, 3110)
      << "both flags of the write are 0: something followed, and something came before";
}

TEST_F(FacadeTest, ProfilesSayWhetherPruningSparesSymbols) {
  facade.setDefaultMatrixPropertiesForSymbols(nullptr);
  EXPECT_EQ(facade.getMatrixType(), ZQMatrixTypeIntegerSeries);
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
  facade.setDefaultMatrixPropertiesForANSIText("a.txt");
  EXPECT_EQ(facade.getMatrixType(), ZQMatrixTypeANSIText);
  EXPECT_EQ(facade.getNameOfUpdateFile(), std::string("a.txt"));
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  facade.setDefaultMatrixPropertiesForIntegerSeries(nullptr);
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
  facade.setDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta(nullptr);
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  facade.setGlobalKeepSymbolsWhenRemoveOverdeterminedElements(0);
  facade.applyGlobalMatrixProperties();
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);

  // Even a profile that comes too late says it.
  const int path[] = {1};
  facade.writeMatrixElement(path, 1, 0);
  facade.setDefaultMatrixPropertiesForANSIText(nullptr);
  EXPECT_NE(facade.getMatrixType(), ZQMatrixTypeANSIText);
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
}

TEST_F(FacadeTest, LearnsAndContinues) {
  facade.setGlobalSuccessorMethod(1);
  facade.setDefaultMatrixPropertiesForIntegerSeries(nullptr);
  facade.setSucessorMethod(1);
  const int sequence[] = {4, 8, 15, 16, 23, 42};
  ASSERT_EQ(facade.updateMatrixWithLongINTSequence(sequence, 6), 1);
  ASSERT_EQ(facade.initializeKernelSequenceWithOriginalSequence(sequence, 3, 1), 3);
  double probability = 0, stopProbability = 0;
  const int* item = facade.readObjexFromMatrix(&probability, &stopProbability);
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(*item, 16);
  EXPECT_DOUBLE_EQ(probability, 1.0);
}
