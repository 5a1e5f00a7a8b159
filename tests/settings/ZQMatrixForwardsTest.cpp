// What a matrix offers of its header and of the current sub-matrix's record, each tier in its own way.
#include "settings/ZQMatrixForwards.h"

#include "support/TierTest.h"

namespace {

class ZQMatrixForwardsTest : public zmatrix::TierTest<ZQMatrix> {
 protected:
  ZQMatrixMedium& medium = *matrix;
  ZQMatrixBase& base = *matrix;
};

TEST_F(ZQMatrixForwardsTest, ReachHeaderAndCurrentRecord) {
  matrix->setCurrentMatrixID(2);
  matrix->setMidiTrackAnalize(1);
  matrix->setMatrixType(3);
  matrix->setSucessorMethod(2);
  matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(0);
  EXPECT_EQ(info()->getMidiTrackAnalyze(), 1);
  EXPECT_EQ(info()->getMatrixType(), 3);
  EXPECT_EQ(info()->getSuccessorMethod(), 2);
  EXPECT_EQ(info()->getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
  EXPECT_EQ(matrix->getMatrixInfo(0)->getMatrixType(), 0);
  matrix->setGlobalMidiSubType(4);
  matrix->setGlobalSymbolMidiSoundID(5);
  EXPECT_EQ(matrix->getMatrixFileHeader()->getGlobalMidiSubType(), 4);
  EXPECT_EQ(matrix->getGlobalSymbolMatrixProperties()->midiSoundID, ZQMatrixSoundBass);
}

TEST_F(ZQMatrixForwardsTest, ATierUsesItsOwnRecord) {
  int& firstOfKernel = info()->getKernelOriginalSequence()[0][0];
  firstOfKernel = 7;
  base.setCoordinateDimension(2);
  EXPECT_EQ(firstOfKernel, 7) << "the base knows no kernel";
  medium.setCoordinateDimension(3);
  EXPECT_EQ(info()->getKernelOriginalSequence()[0][0], 0) << "the medium tier drops it";

  EXPECT_EQ(base.getGlobalMatrixInfoParameters()->successorMethod, 0);
  EXPECT_EQ(medium.getGlobalMatrixInfoParameters()->successorMethod, 3);
  EXPECT_EQ(medium.getGlobalMatrixInfoParameters()->newSymbol, 0);
  EXPECT_EQ(matrix->getGlobalMatrixInfoParameters()->newSymbol, 256);
  matrix->releaseMemoryGlobalMatrixInfoParameters();

  medium.setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  matrix->setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(matrix->getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
}

TEST_F(ZQMatrixForwardsTest, SuccessorGeneratorsGoByMatrixID) {
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
