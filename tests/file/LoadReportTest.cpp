// The report of a load: a saved file is whole; damage that counts or links show is reported.
#include "file/MatrixUnderTest.h"
#include "file/PlainMatrixFile.h"
#include "store/ZQLoadReport.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class LoadReportTest : public FileTest<Matrix> {
 public:
  zq_loadReport reportOf(const std::string& bytes) {
    this->load(bytes);
    zq_loadReport report{};
    result = getLoadReport(&*this->matrix, &report);
    return report;
  }
  int result = 0;
};
TYPED_TEST_SUITE(LoadReportTest, Tiers);

TYPED_TEST(LoadReportTest, SavedFilesAreWhole) {
  EXPECT_EQ(getLoadReport(&*this->matrix, nullptr), -1);
  for (unsigned seed = 1; seed < 6; ++seed) {
    const std::string bytes = savedBytes(*OwnedMatrix<TypeParam>(createFilled<TypeParam>(seed)), this->folder);
    const zq_loadReport report = this->reportOf(bytes);
    EXPECT_EQ(this->result, 1) << seed;
    EXPECT_EQ(report.state, zq_loadWhole);
    EXPECT_EQ(report.elementsRead, report.elementsCounted);
    EXPECT_GT(report.elementsRead, 100);
    EXPECT_EQ(report.recordsMissing + report.elementsDropped + report.isCutShort + report.hasNewLinks, 0);
    EXPECT_EQ(getLoadReport(&*this->matrix, nullptr), 1);
    EXPECT_EQ(this->load("no matrix"), -1);
    EXPECT_EQ(getLoadReport(&*this->matrix, nullptr), -1) << "no report after a refused file";
  }
  // The header counts three sub-matrices and one record follows, as in saved files.
  EXPECT_EQ(this->reportOf(plain::MatrixFile(this->tier).bytes()).state, zq_loadWhole);
  EXPECT_EQ(this->reportOf(plain::MatrixFile(0).bytes()).state, zq_loadWhole) << "a file of a lower tier";
}

TYPED_TEST(LoadReportTest, AWrongBitInARecordsMagicNumberIsReported) {
  const std::string bytes = savedBytes(*OwnedMatrix<TypeParam>(createFilled<TypeParam>(3)), this->folder);
  for (unsigned bit = 0; bit < 32; ++bit) {
    std::string damaged = bytes;
    damaged[2204 + 4 + bit / 8] = static_cast<char>(static_cast<unsigned char>(damaged[2204 + 4 + bit / 8]) ^ (1u << (bit % 8)));
    const zq_loadReport report = this->reportOf(damaged);
    EXPECT_EQ(this->result, 0) << bit;
    EXPECT_EQ(report.state, zq_loadRepaired);
    EXPECT_GE(report.recordsMissing, 1);
  }
}

TYPED_TEST(LoadReportTest, CutFilesAndWrongLinksAreReported) {
  const plain::MatrixFile file(this->tier);
  const size_t lastElement = file.place("element8.parent").offset - 28;
  zq_loadReport report = this->reportOf(file.bytes().substr(0, lastElement));
  EXPECT_EQ(report.state, zq_loadRepaired) << "the read at the end of the file counts as an element";
  report = this->reportOf(file.bytes().substr(0, file.place("element5.parent").offset));
  EXPECT_EQ(report.isCutShort, 1);
  report = this->reportOf(file.with("element8.parent", 3));
  EXPECT_EQ(report.state, zq_loadRepaired);
  EXPECT_EQ(report.hasNewLinks, 1);
  EXPECT_EQ(report.elementsDropped, 2);
  report = this->reportOf(file.with("matrixBlockSize", 7));
  EXPECT_GE(report.elementsDropped, 1);
  report = this->reportOf(file.with("element8.parent", -3));
  EXPECT_EQ(this->result, 0);
}

}  // namespace
