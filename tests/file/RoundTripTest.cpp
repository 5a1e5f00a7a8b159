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

TYPED_TEST(RoundTripTest, OnlyTheFirstSubMatrixInUse) {
  OwnedMatrix<TypeParam> matrix;
  setSearchState({});
  const int vector[] = {5};
  matrix->writeMatrixElement(vector, 1, 42);
  for (const int numberOfMatrices : {1, 3}) {  // the number never falls, though only one record is written
    matrix->setNumberOfMatrices(numberOfMatrices);
    ASSERT_EQ(matrix->saveMatrixToDisk(this->path.c_str()), 1);
    CapturedMessages messages(0);
    EXPECT_EQ(this->loaded->readAndInitMatrixFromDisk(this->path.c_str(), -1), 1);
    EXPECT_EQ(this->loaded->getNumberOfMatrices(), numberOfMatrices);
    EXPECT_EQ(slotsOf(*this->loaded).size(), 5u);
    EXPECT_TRUE(slotsOf(*this->loaded).contains(4));
  }
}

// All elements lie behind the record: one that is refused for its size would take them along.
TYPED_TEST(RoundTripTest, AVeryLongPathMakesALargeRecord) {
  OwnedMatrix<TypeParam> deep;
  deep->getMatrixInfo()->setMaxDimOfMatrix(20000);
  const std::vector<int> longPath(13000, 7);
  ASSERT_EQ(TierUnderTest<TypeParam>::write(*deep, longPath, 42, 0, 0, 0), 1);
  ASSERT_EQ(deep->saveMatrixToDisk(this->path.c_str()), 1);
  EXPECT_GT(deep->getMatrixInfo()->getUpdateInfoSize(), 100000);
  ASSERT_EQ(this->loaded->readAndInitMatrixFromDisk(this->path.c_str(), -1), 1);
  EXPECT_EQ(slotsOf(*this->loaded), slotsOf(*deep));
  EXPECT_EQ(this->loaded->getMatrixInfo()->getCurrentDimension(), 13000);
  std::string bytes = TestFolder::contentOf(this->path);
  ++bytes[2204];  // a size that is wrong by one
  ASSERT_EQ(this->loaded->readAndInitMatrixFromDisk(this->folder.put("m", bytes).c_str(), -1), 1);
  EXPECT_EQ(this->loaded->getMatrixInfo()->getCurrentDimension(), 0);
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
  EXPECT_FALSE(info.provideKernelOriginalRows(INT_MAX));
  EXPECT_EQ(matrix->saveMatrixToDisk(path.c_str()), 1);
  EXPECT_LT(std::filesystem::file_size(path), 5000u);
  ASSERT_EQ(loaded->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  EXPECT_EQ(loaded->getMatrixInfo(0)->getLengthOfKernelOriginalSequence(), 0);
  EXPECT_EQ(loaded->existMatrixData(vector, 1), 3);
}

// What an empty sub-matrix costs in memory is no measure of what its record takes in the file.
TEST(WideMatricesTest, AllComeBack) {
  constexpr int number = 300;
  const TestFolder folder;
  const std::string path = folder.path() + "/wide";
  OwnedMatrix<ZQMatrixMedium> saved, loaded;
  saved->setMaxNumberOfMatrices(number);
  saved->setNumberOfMatrices(number);
  for (int id = 0; id < number; ++id) {
    saved->setCurrentMatrixID(id);
    saved->getMatrixInfo()->setCoordinateDimension(64);
  }
  const int vector[64] = {1};
  EXPECT_EQ(saved->writeMatrixElement(vector, 64, 1), 1);
  ASSERT_EQ(saved->saveMatrixToDisk(path.c_str()), 1);
  ASSERT_EQ(loaded->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  EXPECT_EQ(loaded->getLoadReport().state, zq_loadWhole);
  for (int id = 0; id < number; ++id) {
    loaded->setCurrentMatrixID(id);
    EXPECT_EQ(loaded->getMatrixInfo()->getCoordinateDimension(), 64) << id;
    ASSERT_NE(loaded->getMatrixInfo()->getKernelOriginalSequence(), nullptr);
    EXPECT_EQ(loaded->getMatrixInfo()->getKernelOriginalSequence()[63][255], 0);
  }
}

}  // namespace
