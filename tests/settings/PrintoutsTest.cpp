// The print-outs of a header and of the records of each tier, byte for byte, with the defaults of all settings.
#include "support/KeptText.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;
using zmatrix::ZQMatrixFileHeader;

namespace {

class PrintoutsTest : public zmatrix::TierTest<ZQMatrix> {};

TEST_F(PrintoutsTest, ShowTheDefaultsOfAHeader) {
  ZQMatrixFileHeader header;
  ASSERT_EQ(header.initFileHeader(ZQMatrixInfoTypeMedium), 1);
  messages.listen();
  header.printMatrixFileHeader();
  zmatrix::expectKeptText("new_header.txt", take());
}

// Sub-matrix 1 has a feed, a kernel, counts and symbols; the print-outs of a tier show the parts that it has.
TEST_F(PrintoutsTest, ShowTheRecordsOfEachTier) {
  matrix->setCurrentMatrixID(1);
  const int sequence[] = {-5, 300};
  info()->generateUpdateInfoSequence(sequence, 2);
  info()->addNameOfUpdateFile("first.txt");
  info()->setLanguage(2);
  info()->setUpdateInfoSize(77);
  ASSERT_EQ(matrix->initializeKernelSequenceWithOriginalSequence(sequence, 2, 0), -1);
  for (int k = 1; k < 4; ++k) write({k, -k}, 1, 1);
  write({1, -1}, 0, 1);
  info()->setNumberOfWriteCounts(16);
  info()->getWriteElementsInDimension(nullptr)[1] = 7;
  matrix->getMatrixFileHeader()->_setMaximalStack(200);
  for (int id = 0; id < 4; ++id) matrix->getMatrixInfo(id)->setTimeStamp(0);
  ZQMatrixMedium& medium = *matrix;
  ZQMatrixBase& base = *matrix;
  take();
  matrix->setCurrentMatrixID(2);
  write({9});
  matrix->getMatrixInfo(0)->setUpdateInfoType(ZQMatrixInfoTypeBase);
  info()->setUpdateInfoType(ZQMatrixInfoTypeMedium);
  take();
  ZQDebugChannel::globalDebugLevel = 0;
  matrix->printMatrixOverallInfo();
  EXPECT_EQ(take(), "");
  ZQDebugChannel::globalDebugLevel = 3;
  matrix->printMatrixOverallInfo();
  EXPECT_FALSE(told("->_")) << "the limits of indices come at level 4";
  ZQDebugChannel::globalDebugLevel = 4;
  matrix->printMatrixOverallInfo();
  zmatrix::expectKeptText("overall_info.txt", take());
  base.showBasicProperties();
  medium.showBasicProperties();
  matrix->showBasicProperties();
  zmatrix::expectKeptText("basic_properties.txt", take());
  medium.printMatrixOverallInfo();
  base.printMatrixOverallInfo();
  zmatrix::expectKeptText("overall_info_of_lower_tiers.txt", take());
}

}  // namespace
