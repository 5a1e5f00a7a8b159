// The files of the three tiers in tests/data/matrices are read, written back byte for byte, and created anew: neither the format
// nor the positions of elements have changed. They have no history and no time stamps. ZMATRIX_WRITE_GOLDEN=1 in the environment
// writes them.
#include <cstdlib>

#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class GoldenFilesTest : public FileTest<Matrix> {
 public:
  GoldenFilesTest() { this->path = ZMATRIX_TEST_DATA "/matrices/" + std::string(names[this->tier]) + ".zmatrix"; }

  /// Builds the content of the files.
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
        const Vector text = valuesOf("The boats lie on their sides.");
        matrix.setMatrixAILevel(1);
        EXPECT_EQ(matrix.updateMatrixFromBasicLevel(text.data(), static_cast<int>(text.size())), 1);
      }
    }
    matrix.setCurrentMatrixID(0);
    setSearchState({});
  }

 private:
  static constexpr const char* names[] = {"base", "medium", "full"};
};
TYPED_TEST_SUITE(GoldenFilesTest, Tiers);

TYPED_TEST(GoldenFilesTest, AreReadAndWrittenBack) {
  const std::string kept = TestFolder::contentOf(this->path);
  ASSERT_GT(kept.size(), 2204u);
  OwnedMatrix<TypeParam>& loaded = this->matrix;
  ASSERT_EQ(this->loadInto(loaded, this->path), 1);
  expectEqualBytes(savedBytes(*loaded, this->folder), kept);
  OwnedMatrix<TypeParam> made;
  this->make(*made);
  EXPECT_EQ(slotsOf(*loaded), slotsOf(*made));
}

TYPED_TEST(GoldenFilesTest, AreCreatedAnew) {
  OwnedMatrix<TypeParam> made;
  this->make(*made);
  const std::string bytes = withoutTimes(savedBytes(*made, this->folder));
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(this->path, std::ios::binary) << bytes;
  expectEqualBytes(bytes, TestFolder::contentOf(this->path));
}

}  // namespace
