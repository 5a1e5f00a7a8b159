// A loaded matrix equals the saved one in every slot, field, kernel and random state, and behaves like it from then on.
#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class RoundTripTest : public FileTest<Matrix> {
 public:
  void saveAndLoad() {
    ASSERT_EQ(this->saveTo(this->path, saved), 1);
    ASSERT_EQ(this->loadInto(loaded, this->path), 1);
  }

  OwnedMatrix<Matrix> saved{createFilled<Matrix>()};
  OwnedMatrix<Matrix>& loaded = this->matrix;
};
TYPED_TEST_SUITE(RoundTripTest, Tiers);

// If the saves of both matrices have equal bytes, no field is missing.
TYPED_TEST(RoundTripTest, EveryFieldComesBack) {
  this->saveAndLoad();
  // Without the history, which only the loaded matrix has.
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

TYPED_TEST(RoundTripTest, ALoadedMatrixBehavesLikeTheSavedOne) {
  this->saveAndLoad();
  const plain::SearchState begin{700, 5, 800, 900};
  std::string generated[2];
  for (OwnedMatrix<TypeParam>* each : {&this->saved, &this->loaded}) {
    TypeParam& used = **each;
    setSearchState(begin);
    used.setCurrentMatrixID(1);
    if constexpr (learns<TypeParam>) {
      std::string& text = generated[each == &this->loaded];
      text = generate(used, 60);
      learnText(used, "The boats come back, and the harbour master looks at the sides of the wall. ");
      text += generate(used, 60);
      used.removeOverDeterminedElements();
    }
    fillAtRandom(used, 99, 500);
  }
  EXPECT_EQ(generated[0], generated[1]);
  EXPECT_EQ(slotsOf(*this->loaded), slotsOf(*this->saved));
  EXPECT_EQ(this->loaded->getMatrixBlockSize(), this->saved->getMatrixBlockSize());
}

TYPED_TEST(RoundTripTest, ALoadChangesTheNumberOfSubMatrices) {
  OwnedMatrix<TypeParam> many;
  OwnedMatrix<TypeParam>& few = this->loaded;
  many->setMaxNumberOfMatrices(9);
  many->setCurrentMatrixID(8);
  const int vector[] = {5, 6};
  many->writeMatrixElement(vector, 2, 42);
  ASSERT_EQ(this->saveTo(this->path, many), 1);
  ASSERT_EQ(this->loadInto(few, this->path), 1);
  EXPECT_EQ(few->getMaxNumberOfMatrices(), 9);
  EXPECT_EQ(few->getNumberOfMatrices(), 9);
  few->setCurrentMatrixID(8);
  EXPECT_EQ(few->existMatrixData(vector, 2), 3);
  this->saveAndLoad();
  EXPECT_EQ(few->getMaxNumberOfMatrices(), 4);
  EXPECT_EQ(slotsOf(*few), slotsOf(*this->saved));
}

// The file of an empty matrix has no record, and no roots beyond the stack.
TYPED_TEST(RoundTripTest, AnEmptyMatrixIsLoadedEmpty) {
  OwnedMatrix<TypeParam> empty;
  empty->setMaxNumberOfMatrices(200);
  ASSERT_EQ(this->saveTo(this->path, empty), 1);
  EXPECT_EQ(this->loadInto(this->loaded, this->path), 1);
  EXPECT_EQ(this->loaded->getMatrixInfo(0)->getNumberOfMatrixElements(), 0);
  const int vector[] = {5};
  EXPECT_EQ(this->loaded->existMatrixData(vector, 1), -1);
  EXPECT_EQ(this->loaded->writeMatrixElement(vector, 1, 42), 1);
  EXPECT_EQ(this->loaded->existMatrixData(vector, 1), 3);
}

// Fields that hosts can set freely must not make a save or a load allocate absurd sizes.
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
