// BBMatrix: forwarding, and the methods that do more than forward.
#include <gtest/gtest.h>
#include <zmatrix/BBMatrix.h>

#include <string>

class FacadeTest : public testing::Test {
 public:
  FacadeTest() : facade{nullptr, createMatrixBB()} {}
  ~FacadeTest() override { deleteMatrixBB(facade.matrix); }

  BBMatrix facade;
};

TEST_F(FacadeTest, ForwardsAllArguments) {
  const int path[] = {5, -3, 70};
  EXPECT_EQ(facade.writeMatrixElement(path, 3, 99), 1);
  int existCode = 0, count = 0, withSuccessor = -1, withoutPredecessor = -1;
  EXPECT_EQ(facade.readMatrixData(path, 3, &existCode, &count, &withSuccessor, &withoutPredecessor), 99);
  EXPECT_EQ(existCode * 1000 + count * 100 + withSuccessor * 10 + withoutPredecessor, 3110)
      << "both flags of the write are 0, so it has a successor and a predecessor";
}

TEST_F(FacadeTest, ProfilesSetWhetherPruningKeepsSymbols) {
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

  // A profile on a filled matrix sets only this.
  const int path[] = {1};
  facade.writeMatrixElement(path, 1, 0);
  facade.setDefaultMatrixPropertiesForANSIText(nullptr);
  EXPECT_NE(facade.getMatrixType(), ZQMatrixTypeANSIText);
  EXPECT_EQ(facade.getKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
}
