// The accessors of a matrix to its header and to the record of the current sub-matrix, where the tiers differ.
#include "settings/ZQMatrixAccessors.h"

#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

class AccessorsTest : public zmatrix::TierTest<ZQMatrix> {
 public:
  ZQMatrixMedium& medium = *matrix;
  ZQMatrixBase& base = *matrix;
};

TEST_F(AccessorsTest, EachTierUsesItsOwnRecord) {
  const int seven = 7;
  info()->storeKernelOriginal(&seven, 1);
  base.setCoordinateDimension(2);
  EXPECT_EQ(info()->getKernelOriginalSequence()[0][0], 7) << "the base tier has no kernel";
  medium.setCoordinateDimension(3);
  EXPECT_EQ(info()->getKernelOriginalSequence()[0][0], 0) << "the medium tier clears the kernel";

  EXPECT_EQ(base.getMatrixInfo()->getGlobalMatrixInfoParameters()->successorMethod, 0);
  EXPECT_EQ(medium.getMatrixInfo()->getGlobalMatrixInfoParameters()->successorMethod, 3);
  EXPECT_EQ(medium.getMatrixInfo()->getGlobalMatrixInfoParameters()->newSymbol, 0);
  EXPECT_EQ(info()->getGlobalMatrixInfoParameters()->newSymbol, 256);
  info()->releaseMemoryGlobalMatrixInfoParameters();

  medium.setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  matrix->setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
}

TEST_F(AccessorsTest, SuccessorGeneratorsBelongToMatrixIDs) {
  ZQDebugChannel::globalDebugLevel = 0;
  EXPECT_EQ(matrix->getSuccessorRandomValue(3), 292715034);
  EXPECT_EQ(matrix->getActualSuccessorRandomValue(3), 292715034);
  EXPECT_EQ(matrix->getActualSuccessorRandomValue(2), 31459);
  matrix->setSuccessorRandomValue(3, 5);
  EXPECT_EQ(matrix->getActualSuccessorRandomValue(3), 5);
  for (int id : {-1, 4, INT_MAX}) {
    matrix->setSuccessorRandomValue(id, 1);
    matrix->setSuccessorRandomType(id, 1);
    EXPECT_EQ(matrix->getSuccessorRandomValue(id), 0);
    EXPECT_EQ(matrix->getActualSuccessorRandomValue(id), 0);
    EXPECT_EQ(matrix->getSuccessorRandomType(id), 0);
  }
  EXPECT_EQ(take(), "");
  matrix->getMatrixInfo(1)->setNumberOfWriteElements(1);
  matrix->setSuccessorRandomType(1, 9);
  EXPECT_EQ(take(), "setSuccessorRandomType: can only be set for an empty matrix\n");
  matrix->getMatrixInfo(1)->setNumberOfMatrixElements(1);
  matrix->setSuccessorRandomType(1, 9);
  EXPECT_EQ(matrix->getSuccessorRandomType(1), 9);
  EXPECT_EQ(take(), "");
}

}  // namespace
