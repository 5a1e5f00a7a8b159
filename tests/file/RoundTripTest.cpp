// A saved matrix comes back whole: every slot, every field, the kernel, the random states; and it goes on as the one that was
// saved does.
#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class RoundTripTest : public testing::Test {
 public:
  using Access = TierUnderTest<Matrix>;

  RoundTripTest() : path(folder.path() + "/model.zmatrix") {}
  ~RoundTripTest() override {
    Access::destroy(saved);
    Access::destroy(loaded);
    setSearchState({});
  }

  void saveAndLoad() {
    ASSERT_EQ(saved->saveMatrixToDisk(path.c_str()), 1);
    ASSERT_EQ(loaded->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  }

  TestFolder folder;
  std::string path;
  Matrix* saved = createFilled<Matrix>();
  Matrix* loaded = Access::create();
};
TYPED_TEST_SUITE(RoundTripTest, Tiers);

// All that a file holds is in its bytes, so that equal bytes of a second save leave nothing out.
TYPED_TEST(RoundTripTest, EveryFieldComesBack) {
  this->saveAndLoad();
  // The history aside: the loaded one carries that of the file on.
  this->saved->setCurrentMatrixID(0);
  this->saved->getMatrixFileHeader()->setOffsetToUpdateInfos(0);
  this->loaded->getMatrixFileHeader()->setOffsetToUpdateInfos(0);
  expectEqualBytes(savedBytes(*this->loaded, this->folder), savedBytes(*this->saved, this->folder));
  EXPECT_STREQ(this->loaded->getMatrixDescription(), "a matrix of all kinds");
  EXPECT_EQ(this->loaded->getUserRandomValue(), this->saved->getUserRandomValue());
  EXPECT_EQ(this->loaded->getMatrixOriginFilename(), this->path);
  EXPECT_STREQ(this->loaded->getMatrixDestinationFilename(), "");
  EXPECT_EQ(this->loaded->getNumberOfMatrices(), 3);
}

TYPED_TEST(RoundTripTest, ALoadedMatrixGoesOnAsTheSavedOneDoes) {
  this->saveAndLoad();
  const plain::SearchState begin{700, 5, 800, 900};
  std::string said[2];
  for (TypeParam* matrix : {this->saved, this->loaded}) {
    setSearchState(begin);
    matrix->setCurrentMatrixID(1);
    if constexpr (learns<TypeParam>) {
      std::string& text = said[matrix == this->loaded];
      text = generate(*matrix, 60);
      learnText(*matrix, "The boats come back, and the harbour master looks at the sides of the wall. ");
      text += generate(*matrix, 60);
      matrix->removeOverDeterminedElements();
    }
    fillAtRandom(*matrix, 99, 500);
  }
  EXPECT_EQ(said[0], said[1]);
  EXPECT_EQ(slotsOf(*this->loaded), slotsOf(*this->saved));
  EXPECT_EQ(this->loaded->getMatrixBlockSize(), this->saved->getMatrixBlockSize());
}

TYPED_TEST(RoundTripTest, MoreSubMatricesThanTheObjectHasAndFewer) {
  OwnedMatrix<TypeParam> many, few;
  many->setMaxNumberOfMatrices(9);
  many->setCurrentMatrixID(8);
  const int vector[] = {5, 6};
  many->writeMatrixElement(vector, 2, 42);
  ASSERT_EQ(many->saveMatrixToDisk(this->path.c_str()), 1);
  ASSERT_EQ(few->readAndInitMatrixFromDisk(this->path.c_str(), -1), 1);
  EXPECT_EQ(few->getMaxNumberOfMatrices(), 9);
  EXPECT_EQ(few->getNumberOfMatrices(), 9);
  few->setCurrentMatrixID(8);
  EXPECT_EQ(few->existMatrixData(vector, 2), 3);
  ASSERT_EQ(this->saved->saveMatrixToDisk(this->path.c_str()), 1);
  ASSERT_EQ(few->readAndInitMatrixFromDisk(this->path.c_str(), -1), 1);
  EXPECT_EQ(few->getMaxNumberOfMatrices(), 4);
  EXPECT_EQ(slotsOf(*few), slotsOf(*this->saved));
}

// A matrix that never held anything has no record in its file, nor the roots beyond its stack. It comes back empty.
TYPED_TEST(RoundTripTest, AnEmptyMatrixComesBackEmpty) {
  OwnedMatrix<TypeParam> empty;
  empty->setMaxNumberOfMatrices(200);
  ASSERT_EQ(empty->saveMatrixToDisk(this->path.c_str()), 1);
  EXPECT_EQ(this->loaded->readAndInitMatrixFromDisk(this->path.c_str(), -1), 1);
  EXPECT_EQ(this->loaded->getMatrixInfo(0)->getNumberOfMatrixElements(), 0);
  const int vector[] = {5};
  EXPECT_EQ(this->loaded->existMatrixData(vector, 1), -1);
  EXPECT_EQ(this->loaded->writeMatrixElement(vector, 1, 42), 1);
  EXPECT_EQ(this->loaded->existMatrixData(vector, 1), 3);
}

// What a host may set at will asks neither a save nor a load for absurd memory.
TEST(AbsurdNumbersTest, AreRefusedOrLeftOut) {
  TestFolder folder;
  const std::string path = folder.path() + "/absurd.zmatrix";
  OwnedMatrix<ZQMatrixMedium> matrix, loaded;
  CapturedMessages messages(0);
  matrix->setInitialMatrixBlocksize(INT_MAX);
  EXPECT_EQ(messages.take(),
            "error from setInitialMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: 2147483647!\n");
  EXPECT_EQ(matrix->getMatrixBlockSize(), 64000);
  const int vector[] = {5};
  EXPECT_EQ(matrix->writeMatrixElement(vector, 1, 42), 1);
  ZQMatrixMediumInfo& info = *matrix->getMatrixInfo(0);
  info.setLengthOfKernelOriginalSequence(INT_MAX);
  info.setLengthOfKernelPreProcessedSequence(INT_MAX);
  info._setInternalLengthOfKernelOriginalSequence(INT_MAX);
  EXPECT_FALSE(info.provideKernelOriginal(INT_MAX));
  EXPECT_EQ(matrix->saveMatrixToDisk(path.c_str()), 1);
  EXPECT_LT(std::filesystem::file_size(path), 5000u);
  ASSERT_EQ(loaded->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  EXPECT_EQ(loaded->getMatrixInfo(0)->getLengthOfKernelOriginalSequence(), 0);
  EXPECT_EQ(loaded->existMatrixData(vector, 1), 3);
}

}  // namespace
