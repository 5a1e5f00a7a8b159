// Pruning at its edges, in both learning tiers: what goes, what stays, what is told, and stores that are damaged or all but
// empty.
#include <gtest/gtest.h>

#include "frame/ZQProgress.h"
#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

template <class Matrix>
class PruningTest : public testing::Test {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;
  PruningTest() : matrix(Access::create()) { messages.listen(); }
  ~PruningTest() override { Access::destroy(matrix); }

  void write(const Vector& vector, int symbolMarker = 0) { ASSERT_EQ(Access::write(*matrix, vector, 1, 0, 0, symbolMarker), 1); }
  int existCode(const Vector& vector) { return matrix->existMatrixData(vector.data(), static_cast<int>(vector.size())); }

  Matrix* matrix;
  zmatrix::CapturedMessages messages{1};
};
using Tiers = testing::Types<ZQMatrixMedium, ZQMatrix>;
TYPED_TEST_SUITE(PruningTest, Tiers);

TYPED_TEST(PruningTest, nothingToRemove) {
  for (const Vector& vector : {Vector{1, 2}, Vector{1, 3}, Vector{2}, Vector{3}}) this->write(vector);
  EXPECT_EQ(this->matrix->getMatrixInfo()->getIsOverDetermined(), 1);
  this->messages.take();
  EXPECT_EQ(this->matrix->removeOverDeterminedElements(), 1);
  EXPECT_EQ(this->messages.take(), "successfully removed 0 overdetermined end points for matrixID 0\n");
  EXPECT_EQ(this->matrix->getMatrixInfo()->getIsOverDetermined(), 0);
  EXPECT_EQ(this->matrix->getNumberOfWriteElements(), 4);
}

TYPED_TEST(PruningTest, emptyMatrix) {
  EXPECT_EQ(this->matrix->removeOverDeterminedElements(), 0);
  EXPECT_EQ(this->messages.take(),
            "removeOverdeterminedElements: matrix is empty!\n"
            "Errorcode removing overdetermined end points for matrixID 0:-1\n"
            "successfully removed 0 overdetermined end points for matrixID 0\n");
  EXPECT_EQ(this->matrix->removeLongElements(2), 1);
  EXPECT_EQ(this->messages.take(), "******************begin removeLongElements(2)...\nremoveLongElements: matrix is empty!\n");
}

// Each path of three items or more is decided by two shorter ones, but only a leaf can go, and what is left then is a leaf
// itself.
TYPED_TEST(PruningTest, chainGoesFromItsEnd) {
  const Vector items = {1, 2, 3, 4, 5};
  for (size_t begin = 0; begin < items.size(); ++begin) {
    for (size_t end = begin + 1; end <= items.size(); ++end) this->write(Vector(items.begin() + begin, items.begin() + end));
  }
  int passes = 0, removed = 0;
  for (int once = 1; once > 0 && passes < 9; removed += once) {
    const int before = this->matrix->getNumberOfWriteElements();
    once = this->matrix->removeOverDeterminedElementsSingleIteration(++passes);
    EXPECT_EQ(before - this->matrix->getNumberOfWriteElements(), once);
  }
  EXPECT_GE(passes, 2);
  EXPECT_LE(passes, 4);
  EXPECT_EQ(removed, 6);
  EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 9);
  EXPECT_EQ(this->existCode({1, 2, 3}), -1);
  EXPECT_EQ(this->existCode({3, 4}), 3);
  EXPECT_EQ(this->existCode({3}), 2);
}

TYPED_TEST(PruningTest, longPaths) {
  this->write({1});
  this->write({1, 2});
  this->write({1, 2, 3});
  EXPECT_EQ(this->matrix->removeLongElements(2), 1);
  EXPECT_EQ(this->existCode({1, 2, 3}), -1);
  EXPECT_EQ(this->existCode({1, 2}), 3);
  EXPECT_EQ(this->matrix->getNumberOfWriteElements(), 2);
  EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 2);
  EXPECT_EQ(this->matrix->removeLongElements(-5), 2);  // as 0: the root stays
  EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 0);
  this->write({4, 5});
  EXPECT_EQ(this->existCode({4, 5}), 3);
}

TYPED_TEST(PruningTest, clearsOneOfSeveral) {
  for (int id = 0; id < 3; ++id) {
    this->matrix->setCurrentMatrixID(id);
    this->write({1, 2, 3 + id});
    this->write({1, 2, 9});
  }
  this->matrix->getMatrixInfo(1)->setSkillOutputLevel(3);
  EXPECT_EQ(this->matrix->clearMatrixForID(1), 1);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 2);
  EXPECT_TRUE(this->matrix->getMatrixInfo(1)->isEmpty());
  EXPECT_EQ(this->matrix->getMatrixInfo(1)->getSkillOutputLevel(), 256);
  EXPECT_EQ(this->existCode({1, 2, 5}), 3);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
  for (const int outOfRange : {-1, 4, INT_MAX}) EXPECT_EQ(this->matrix->clearMatrixForID(outOfRange), -1);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 2);
  // Elements without a write are taken out without being counted.
  this->matrix->setCurrentMatrixID(3);
  EXPECT_EQ(TestFixture::Access::write(*this->matrix, {1, 600000}, 1, 0, 0, 0), 0);
  this->matrix->setCurrentMatrixID(0);
  this->messages.take();
  EXPECT_EQ(this->matrix->clearMatrixForID(3), -1);
  EXPECT_EQ(this->messages.take(),
            "******************begin removeLongElements(0)...\n"
            "error from clearMatrixWithID(): removeLongElements() returned error!\n");
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 3);
}

TYPED_TEST(PruningTest, givesUpEmptySubMatrices) {
  for (const int id : {0, 2}) {
    this->matrix->setCurrentMatrixID(id);
    this->write({1, 2});
  }
  this->matrix->setCurrentMatrixID(3);
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 3);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
  EXPECT_EQ(this->matrix->getMatrixData()[3], nullptr);
  this->messages.take();
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), -1);
  EXPECT_EQ(this->messages.take(), "message from removeEmptyMatrices(): no empty matrices for removing found!\n");
  for (int id = 0; id < 3; ++id) {
    this->matrix->setCurrentMatrixID(id);
    for (int k = 0; k < 50; ++k) this->write({k, -k});
  }
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
  this->matrix->getMatrixFileHeader()->setStopFlag(3, 1);
  EXPECT_EQ(this->matrix->getMatrixFileHeader()->getStopFlag(3), 0);
}

TYPED_TEST(PruningTest, allEmptyKeepsOne) {
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
  this->messages.take();
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), -1);
  EXPECT_EQ(this->messages.take(),
            "message from removeEmptyMatrices(): cannot remove, matrix must at least contain one sub matrix!\n");
  EXPECT_EQ(this->matrix->clearMatrixForID(0), -1);
  EXPECT_EQ(this->messages.take(),
            "error from clearMatrixWithID(): cannot remove, matrix must at least contain one sub matrix!\n");
  this->write({1, 2});
  this->matrix->setMaxNumberOfMatrices(4);  // refused: it holds something
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
}

// Each link of each element is bent in turn: no pass may read outside the block or go on for ever.
TYPED_TEST(PruningTest, bentLinks) {
  for (const int offset : {0, 1, -1, -7, 5, 100000, -100000, INT_MAX, INT_MIN + 1}) {
    for (int which = 0; which < 4; ++which) {
      for (int handleStep = 0; handleStep < 10; ++handleStep) {
        TypeParam* bent = TestFixture::Access::create();
        for (int k = 0; k < 4; ++k) {
          for (const Vector& vector : {Vector{k, k + 1, 5}, Vector{k + 1, 5}, Vector{5}}) {
            TestFixture::Access::write(*bent, vector, 1, 0, 0, 0);
          }
        }
        ZQMatrixBaseElement* element = nullptr;
        for (int position = 4, seen = 0; position <= bent->getMaximalStack(); ++position) {
          if (bent->getMatrixData()[position] != nullptr && seen++ == handleStep) element = bent->getMatrixData()[position];
        }
        ASSERT_NE(element, nullptr);
        if (which == 0) element->setOffsetToElementInPrevDimension(offset);
        if (which == 1) element->setOffsetToElementInNextDimension(offset);
        if (which == 2) element->setOffsetToNextElementInDimension(offset > 0 ? offset : 0);
        if (which == 3) element->setOffsetToPreviousElementInDimension(offset < 0 ? offset : 0);
        const int before = bent->getNumberOfMatrixElements();
        bent->removeOverDeterminedElements();
        bent->removeLongElements(1);
        int written = 0, ends = 0;
        bent->performMatrixLinearTest(&written, &ends, 0);
        bent->performMatrixConsistencyTest(&written, &ends, 0);
        EXPECT_LE(bent->getNumberOfMatrixElements(), before);
        TestFixture::Access::destroy(bent);
      }
    }
  }
}

TEST(FullPruningTest, keepsSymbols) {
  for (const int keep : {0, 1}) {
    ZQMatrix* matrix = createAndInitMatrix();
    matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(keep);
    const Vector items = {1, 2, 3, 4};
    for (size_t begin = 0; begin < items.size(); ++begin) {
      for (size_t end = begin + 1; end <= items.size(); ++end) {
        const bool isWhole = end - begin == items.size();
        ASSERT_EQ(matrix->writeMatrixData(items.data() + begin, static_cast<int>(end - begin), 1, 0, 0, isWhole), 1);
      }
    }
    ASSERT_EQ(matrix->getNumberOfSymbols(), 1);
    EXPECT_EQ(matrix->removeOverDeterminedElements(), 1);
    EXPECT_EQ(matrix->getNumberOfSymbols(), keep);
    EXPECT_EQ(matrix->existMatrixData(items.data(), 4), keep ? 3 : -1);
    deleteMatrix(matrix);
  }
}

TEST(ProgressOfPruning, tellsThePass) {
  static std::string text;
  static int last;
  last = -1;
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  for (int k = 0; k < 100; ++k) matrix->writeMatrixData(Vector{k, 1}.data(), 2, 1, 0, 0);
  setMatrixProgressDisplayFunction([](progressCallBackData_tag* data) {
    text = data->progressText;
    EXPECT_GE(data->progressItem, 0);
    EXPECT_LE(data->progressItem, data->progressItemCount);
    last = data->progressItemCount - data->progressItem;
  });
  matrix->removeOverDeterminedElementsSingleIteration(3);
  EXPECT_EQ(text, "removeOverdetermined elements pass no. 3...");
  EXPECT_EQ(last, 0);
  matrix->removeLongElements(1);
  EXPECT_EQ(text, "removing elements: second pass");
  setMatrixProgressDisplayFunction(nullptr);
  deleteMatrixMedium(matrix);
}

}  // namespace
