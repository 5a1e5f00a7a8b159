// Files of the three tiers, made once and kept in tests/data/matrices. Today's library reads them, writes them back byte for
// byte, and makes the same ones anew: neither the format nor where elements are placed has changed. They hold no history and no
// times.
//
// A file that is meant to change is taken anew with ZMATRIX_WRITE_GOLDEN=1 in the environment, and looked at.
#include <cstdlib>

#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class GoldenTest : public testing::Test {
 public:
  static std::string path() {
    const char* const names[] = {"base", "medium", "full"};
    return std::string(ZMATRIX_TEST_DATA) + "/matrices/" + names[static_cast<int>(TierUnderTest<Matrix>::tier)] + ".zmatrix";
  }

  /// The matrix that the files hold.
  static void make(Matrix& matrix) {
    setSearchState({});
    fillAtRandom(matrix, 7, 60);
    matrix.setMatrixDescription("kept");
    if constexpr (learns<Matrix>) {
      matrix.setCurrentMatrixID(1);
      matrix.setDefaultMatrixPropertiesForANSIText("harbour.txt");
      matrix.setMaxPhraseLengthForUpdateWithSequence(4);
      learnText(matrix, "The harbour is dry for two hours. The boats lie on their sides.");
      if constexpr (std::is_same_v<Matrix, ZQMatrix>) {
        const std::vector<int> text = codesOf("The boats lie on their sides.");
        matrix.setMatrixAILevel(1);
        EXPECT_EQ(matrix.updateMatrixFromBasicLevel(text.data(), static_cast<int>(text.size())), 1);
      }
    }
    matrix.setCurrentMatrixID(0);
    setSearchState({});
  }

  TestFolder folder;
};
TYPED_TEST_SUITE(GoldenTest, Tiers);

TYPED_TEST(GoldenTest, IsReadAndWrittenBack) {
  const std::string kept = TestFolder::contentOf(this->path());
  ASSERT_GT(kept.size(), 2204u);
  OwnedMatrix<TypeParam> loaded;
  ASSERT_EQ(loaded->readAndInitMatrixFromDisk(this->path().c_str(), -1), 1);
  expectEqualBytes(savedBytes(*loaded, this->folder), kept);
  OwnedMatrix<TypeParam> made;
  this->make(*made);
  EXPECT_EQ(slotsOf(*loaded), slotsOf(*made));
}

TYPED_TEST(GoldenTest, IsMadeAnew) {
  OwnedMatrix<TypeParam> made;
  this->make(*made);
  const std::string bytes = withoutTimes(savedBytes(*made, this->folder));
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(this->path(), std::ios::binary) << bytes;
  expectEqualBytes(bytes, TestFolder::contentOf(this->path()));
}

}  // namespace
