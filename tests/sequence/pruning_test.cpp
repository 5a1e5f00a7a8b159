// Pruning at its edges, in both learning tiers: what goes, what stays, what is told, and stores that are damaged or all but
// empty.
#include <gtest/gtest.h>

#include <iterator>

#include "frame/ZQProgress.h"
#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

/// Moves the field of each phrase of the items to the right, the longest first: then each lies above the next longer one.
template <class Matrix>
void moveParentsAboveTheirChildren(Matrix& matrix, const Vector& items) {
  for (size_t length = items.size() - 1; length >= 1; --length) {
    const int top = matrix.getMaximalStack();
    for (size_t begin = 0; begin + length <= items.size(); ++begin) {
      int at = matrix.getMatrixHandleFromElementVector(items.data() + begin, static_cast<int>(length));
      while (at <= top) {
        int first = at, last = at, newIndex = -1, fieldBegin = at - items[begin + length - 1];
        const int count = matrix.getNumberOfItemsAndFirstLastElementsInSameDimension(at, &first, &last);
        const int offset = matrix.moveFieldToFreePosition(3, &fieldBegin, &newIndex, count, &first, &last, 0);
        ASSERT_GT(offset, 0);
        at += offset;
        if (last > matrix.getMaximalStack()) matrix.getMatrixFileHeader()->_setMaximalStack(last);
      }
    }
  }
}

template <class Matrix>
class PruningTest : public testing::Test {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;
  PruningTest() : matrix(Access::create()) {
    zmatrix::setSearchState({});
    messages.listen();
  }
  ~PruningTest() override {
    Access::destroy(matrix);
    zmatrix::setSearchState({});
  }

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
// itself. A pass looks from the highest slot down: it takes a whole chain where parents lie below their children, and the last
// level of it where they lie above.
TYPED_TEST(PruningTest, chainsGoFromTheirEndLevelByLevel) {
  const Vector items = {1, 2, 3, 4, 5, 6};
  for (const bool parentsLieAbove : {false, true}) {
    zmatrix::setSearchState({});
    TypeParam* pruned = TestFixture::Access::create();
    for (size_t length = 1; length <= items.size(); ++length) {
      for (size_t begin = 0; begin + length <= items.size(); ++begin) {
        const Vector phrase(items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(begin + length));
        ASSERT_EQ(TestFixture::Access::write(*pruned, phrase, 1, 0, 0, 0), 1);
      }
    }
    if (parentsLieAbove) moveParentsAboveTheirChildren(*pruned, items);
    ASSERT_EQ(zmatrix::brokenInvariant(*pruned), "");
    Vector removed;
    do {
      removed.push_back(pruned->removeOverDeterminedElementsSingleIteration(static_cast<int>(removed.size()) + 1));
    } while (removed.back() > 0);
    EXPECT_EQ(removed, parentsLieAbove ? (Vector{4, 3, 2, 1, 0}) : (Vector{10, 0}));
    EXPECT_EQ(pruned->getNumberOfMatrixElements(), 11);
    EXPECT_EQ(pruned->getNumberOfWriteElements(), 11);
    for (size_t begin = 0; begin + 2 <= items.size(); ++begin) {
      EXPECT_EQ(pruned->existMatrixData(items.data() + begin, 2), 3);
      if (begin + 3 <= items.size()) {
        EXPECT_EQ(pruned->existMatrixData(items.data() + begin, 3), -1);
      }
    }
    EXPECT_EQ(pruned->removeOverDeterminedElements(), 1);
    TestFixture::Access::destroy(pruned);
    zmatrix::setSearchState({});
  }
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

// A record that is set anew leaves the elements in the block without a count; they go when the sub-matrix is given up.
TYPED_TEST(PruningTest, recordSetAnew) {
  this->write({1, 2});
  this->matrix->setCurrentMatrixID(3);
  for (const Vector& vector : {Vector{1, 2}, Vector{1, 2, 3}, Vector{1, 7}, Vector{4}, Vector{9, 8, 7}}) this->write(vector);
  this->matrix->getMatrixInfo()->setSkillOutputLevel(3);
  this->messages.take();
  this->matrix->makeMatrixEmpty();
  EXPECT_EQ(this->messages.take(),
            "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n"
            "initMatrixInfo: warning: reinitializing will erase all information in this matrix...\n");
  EXPECT_TRUE(this->matrix->getMatrixInfo()->isEmpty());
  EXPECT_EQ(this->matrix->getMatrixInfo()->getSkillOutputLevel(), 256);
  EXPECT_EQ(this->existCode({1, 2, 3}), 3);
  this->matrix->makeMatrixEmpty();
  EXPECT_EQ(this->messages.take(), "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n");
  int written = 0, ends = 0;
  EXPECT_EQ(this->matrix->performMatrixLinearTest(&written, &ends, 0), -1);
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
  int occupied = 0;
  for (int position = 0; position < this->matrix->getMatrixBlockSize(); ++position) {
    occupied += this->matrix->elementAt(position) != nullptr;
  }
  EXPECT_EQ(occupied, 3);
  for (int k = 0; k < 40; ++k) this->write({k % 7, k, 1});
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

// What is told of a link that leads astray, once for each element whose way up or down takes it.
TYPED_TEST(PruningTest, bentLinksInTheirWords) {
  const Vector items = {1, 2, 3, 4};
  const auto fresh = [&] {
    if (this->matrix != nullptr) TestFixture::Access::destroy(this->matrix);
    this->matrix = TestFixture::Access::create();
    zmatrix::setSearchState({});
    this->messages.listen();
    for (size_t begin = 0; begin < items.size(); ++begin) {
      for (size_t end = begin + 1; end <= items.size(); ++end) {
        this->write(Vector(items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(end)));
      }
    }
    this->messages.take();
    return this->matrix->elementAt(this->matrix->getMatrixHandleFromElementVector(items.data(), 4));
  };
  const int position = (fresh(), this->matrix->getMatrixHandleFromElementVector(items.data(), 4));
  const int size = this->matrix->getMatrixBlockSize();
  const std::string begin = "******************begin removeLongElements(3)...\n";

  fresh()->setOffsetToElementInPrevDimension(-position - 5);
  this->matrix->removeOverDeterminedElementsSingleIteration(1);
  EXPECT_EQ(this->messages.take(), "removeOverDeterminedPoints: addressOfPreviousElement out of left range: -5\n");
  EXPECT_EQ(this->matrix->removeLongElements(3), 0);
  EXPECT_EQ(this->messages.take(), begin + "RemoveLongElements: addressOfPreviousElement out of left range: -5\n");
  fresh()->setOffsetToElementInPrevDimension(size - position);
  this->matrix->removeOverDeterminedElementsSingleIteration(1);
  const std::string behind = std::to_string(size) + "\n";
  EXPECT_EQ(this->messages.take(), "removeOverDeterminedPoints: addressOfPreviousElement out right range: " + behind);
  EXPECT_EQ(this->matrix->removeLongElements(3), 0);
  EXPECT_EQ(this->messages.take(), begin + "removeLongElements: addressOfPreviousElement out right range: " + behind);

  fresh()->setOffsetToElementInPrevDimension(size - 1 - position);  // an empty slot
  EXPECT_EQ(this->matrix->removeLongElements(3), 0);
  EXPECT_EQ(this->messages.take(), begin + "Impossible0!\n");
  fresh()->setOffsetToElementInNextDimension(size - 1 - position);
  EXPECT_EQ(this->matrix->removeLongElements(3), 1);
  EXPECT_EQ(this->messages.take(), begin + "Impossible2!\n");
  fresh();
  this->matrix->getMatrixInfo()->_setCurrentDimension(3);
  EXPECT_EQ(this->matrix->removeLongElements(3), 1);
  EXPECT_EQ(this->messages.take(), begin + "error in removeLongElements: iDim > dimension: 4 > 3");
}

// The way down is broken, but shorter phrases decide the element all the same: it can't be looked up, or can't be deleted.
TYPED_TEST(PruningTest, elementThatIsNotFoundAgain) {
  const Vector items = {1, 2, 3, 4};
  for (size_t begin = items.size(); begin-- > 0;) {  // the whole comes last, and so lies highest
    for (size_t end = begin + 1; end <= items.size(); ++end) {
      this->write(Vector(items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(end)));
    }
  }
  const int last = this->matrix->getMatrixHandleFromElementVector(items.data(), 4);
  ZQMatrixBaseElement* parent = this->matrix->parentOf(last);
  const int size = this->matrix->getMatrixBlockSize();
  parent->setOffsetToElementInNextDimension(size - 1 - this->matrix->getMatrixHandleFromElementVector(items.data(), 3));
  ZQDebugChannel::globalDebugLevel = 5;
  this->messages.take();
  EXPECT_EQ(this->matrix->removeOverDeterminedElementsSingleIteration(1), 1);  // the other phrase of three
  const std::string told = this->messages.take();
  const bool looksUp = TestFixture::Access::tier == plain::Tier::full;
  const std::string words = looksUp ? "removeOverdetPoints: element=NULL unexpected for indexVector: "
                                    : "delete element: uncritical warning, rc = -6\n";
  EXPECT_NE(told.find(words), std::string::npos) << told;
  EXPECT_NE(this->matrix->elementAt(last), nullptr);
}

// The kernel names an element by its handle. Whatever takes that element away, what is read next is written, or nothing is.
TYPED_TEST(PruningTest, kernelWhoseElementIsGone) {
  using Take = int (*)(TypeParam&);
  const int sequence[] = {1, 2, 3, 4, 5, 1, 2, 6, 4, 3, 3, 5}, start[] = {1, 2, 3};
  struct Way {
    Take take;
    bool leavesNothing;
  };
  const Way ways[] = {{[](TypeParam& m) {
                         return m.deleteMatrixElement(std::data({1, 2, 3, 4, 5}), 5, 0);
                       },
                       false},
                      {[](TypeParam& m) { return m.removeOverDeterminedElements(); }, false},
                      {[](TypeParam& m) { return m.removeLongElements(1); }, false},
                      {[](TypeParam& m) { return m.removeLongElements(2); }, false},
                      {[](TypeParam& m) { return m.removeLongElements(0); }, true},
                      {[](TypeParam& m) { return m.clearMatrixForID(0); }, true},
                      {[](TypeParam& m) {
                         int written = 0, ends = 0;
                         return m.removeLongElements(2) + m.performMatrixLinearTest(&written, &ends, 1);
                       },
                       false}};
  for (size_t way = 0; way < std::size(ways); ++way) {
    SCOPED_TRACE("way " + std::to_string(way));
    TypeParam* learned = TestFixture::Access::create();
    learned->getMatrixInfo()->setIsPhraseMatrix(1);
    learned->getMatrixInfo()->setMatrixType(2);
    learned->getMatrixInfo()->setMaxPhraseLengthForUpdateWithSequence(6);
    ASSERT_EQ(learned->updateMatrixWithCombinedSequence(sequence, 12, 2, 1, 0, 0), 1);
    ASSERT_EQ(learned->initializeKernelSequenceWithOriginalSequence(start, 3, 1), 3);
    const int handle = learned->getMatrixInfo()->getKernelMatrixHandle();
    ASSERT_GT(handle, 3);
    ways[way].take(*learned);
    int count = 0;
    learned->mFree(learned->getSuccessorHandlesFromKernelHandle(&count));
    learned->getNumberOfSuccessorsFromKernelHandle();
    for (int i = 0; i < 20; ++i) {
      double probability = -1, stopProbability = -1;
      const int* item = learned->readObjexFromMatrix(&probability, &stopProbability);
      if (item == nullptr) continue;
      EXPECT_FALSE(ways[way].leavesNothing);
      EXPECT_GE(learned->existMatrixData(item, 1), 2) << *item;
    }
    EXPECT_EQ(zmatrix::brokenInvariant(*learned), "");
    TestFixture::Access::destroy(learned);
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
