// Pruning in both learning tiers: which elements are removed, messages, damaged stores, nearly empty matrices.
#include <functional>

#include "frame/ZQProgress.h"
#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::Vector;

/// Moves the field of each phrase of the items to the right, the longest first, so that each lies above the next longer one.
template <class Matrix>
void moveParentsAboveTheirChildren(zmatrix::TierMatrix<Matrix>& test, const Vector& items) {
  for (size_t length = items.size() - 1; length >= 1; --length) {
    const int top = test.matrix->getMaximalStack();
    for (size_t begin = 0; begin + length <= items.size(); ++begin) {
      int at = test.matrix->getMatrixHandleFromElementVector(items.data() + begin, static_cast<int>(length));
      while (at <= top) at += test.moveFieldOf(at, items[begin + length - 1]);
    }
  }
}

template <class Matrix>
class PruningTest : public zmatrix::TierTest<Matrix> {};
TYPED_TEST_SUITE(PruningTest, zmatrix::LearningTiers);

// Each path of three or more items is determined by two shorter ones, but only leaves are removed, which makes their parents
// leaves. A pass goes from the highest slot down: it removes a whole chain if the parents lie below their children, and only the
// last level if they lie above.
TYPED_TEST(PruningTest, RemovesChainsFromTheirEnd) {
  const Vector items = {1, 2, 3, 4, 5, 6};
  for (const bool parentsLieAbove : {false, true}) {
    this->makeAnew();
    for (int length = 1; length <= 6; ++length) {
      for (int begin = 0; begin + length <= 6; ++begin) this->write({items.begin() + begin, items.begin() + begin + length});
    }
    if (parentsLieAbove) moveParentsAboveTheirChildren(*this, items);
    ASSERT_EQ(this->broken(), "");
    Vector removed;
    do {
      removed.push_back(this->matrix->removeOverDeterminedElementsSingleIteration(static_cast<int>(removed.size()) + 1));
    } while (removed.back() > 0);
    EXPECT_EQ(removed, parentsLieAbove ? (Vector{4, 3, 2, 1, 0}) : (Vector{10, 0}));
    EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 11);
    EXPECT_EQ(this->matrix->getNumberOfWriteElements(), 11);
    for (int begin = 0; begin + 2 <= 6; ++begin) EXPECT_EQ(this->matrix->existMatrixData(items.data() + begin, 2), 3);
    EXPECT_EQ(this->info()->getIsOverDetermined(), 1);
    EXPECT_EQ(this->matrix->removeOverDeterminedElements(), 1);
    EXPECT_EQ(this->info()->getIsOverDetermined(), 0);
  }
}

TYPED_TEST(PruningTest, ClearLeavesOtherSubMatrices) {
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
  EXPECT_EQ(this->exist({1, 2, 5}), 3);
  EXPECT_EQ(this->broken(), "");
  for (const int outOfRange : {-1, 4, INT_MAX}) EXPECT_EQ(this->matrix->clearMatrixForID(outOfRange), -1);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 2);
  // Removed elements without a write are not counted, so nothing seems to be removed.
  this->matrix->setCurrentMatrixID(3);
  EXPECT_EQ(this->write({1, 600000}), 0);
  this->matrix->setCurrentMatrixID(0);
  this->take();
  EXPECT_EQ(this->matrix->clearMatrixForID(3), -1);
  EXPECT_EQ(this->take(),
            "******************begin removeLongElements(0)...\n"
            "error from clearMatrixWithID(): removeLongElements() returned error!\n");
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 3);
}

TYPED_TEST(PruningTest, RemovesEmptySubMatricesAtTheEnd) {
  for (const int id : {0, 2}) {
    this->matrix->setCurrentMatrixID(id);
    this->write({1, 2});
  }
  this->matrix->setCurrentMatrixID(3);
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 3);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
  EXPECT_EQ(this->matrix->getMatrixData()[3], nullptr);
  this->take();
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), -1);
  EXPECT_EQ(this->take(), "message from removeEmptyMatrices(): no empty matrices for removing found!\n");
  for (int id = 0; id < 3; ++id) {
    this->matrix->setCurrentMatrixID(id);
    for (int k = 0; k < 50; ++k) this->write({k, -k});
  }
  EXPECT_EQ(this->broken(), "");
  this->matrix->getMatrixFileHeader()->setStopFlag(3, 1);
  EXPECT_EQ(this->matrix->getMatrixFileHeader()->getStopFlag(3), 0);
}

TYPED_TEST(PruningTest, KeepsOneSubMatrixIfAllAreEmpty) {
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
  this->take();
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), -1);
  EXPECT_EQ(this->take(), "message from removeEmptyMatrices(): cannot remove, matrix must at least contain one sub matrix!\n");
  EXPECT_EQ(this->matrix->clearMatrixForID(0), -1);
  EXPECT_EQ(this->take(), "error from clearMatrixWithID(): cannot remove, matrix must at least contain one sub matrix!\n");
  this->write({1, 2});
  this->matrix->setMaxNumberOfMatrices(4);  // refused, since it isn't empty
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
}

// Resetting a record leaves its elements in the block uncounted; they are removed with the sub-matrix.
TYPED_TEST(PruningTest, RemovesElementsOfARecordThatWasReset) {
  this->write({1, 2});
  this->matrix->setCurrentMatrixID(3);
  for (const Vector& vector : {Vector{1, 2}, Vector{1, 2, 3}, Vector{1, 7}, Vector{4}, Vector{9, 8, 7}}) this->write(vector);
  this->info()->setSkillOutputLevel(3);
  this->take();
  this->matrix->makeMatrixEmpty();
  EXPECT_EQ(this->take(),
            "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n"
            "initMatrixInfo: warning: reinitializing will erase all information in this matrix...\n");
  EXPECT_TRUE(this->info()->isEmpty());
  EXPECT_EQ(this->info()->getSkillOutputLevel(), 256);
  EXPECT_EQ(this->exist({1, 2, 3}), 3);
  this->matrix->makeMatrixEmpty();
  EXPECT_EQ(this->take(), "initMatrixInfo: warning: matrixInfo already initialized, reinitializing...\n");
  EXPECT_EQ(this->scan()[0], -1);
  EXPECT_EQ(this->matrix->removeEmptyMatrices(), 1);
  EXPECT_EQ(this->matrix->getMaxNumberOfMatrices(), 1);
  int occupied = 0;
  for (int position = 0; position < this->matrix->getMatrixBlockSize(); ++position) {
    occupied += this->matrix->elementAt(position) != nullptr;
  }
  EXPECT_EQ(occupied, 3);
  for (int k = 0; k < 40; ++k) this->write({k % 7, k, 1});
  EXPECT_EQ(this->broken(), "");
}

// A message for each element whose path uses the wrong link.
TYPED_TEST(PruningTest, ReportsWrongLinks) {
  const Vector items = {1, 2, 3, 4};
  zmatrix::Account tell([this] { return this->take(); });
  const auto prune = [&](const std::string& step, auto bend) {
    for (const bool isCut : {false, true}) {
      this->makeAnew();
      this->writePhrases(items);
      this->take();
      bend(this->elementOf(items), this->handleOf(items));
      const int result =
          isCut ? this->matrix->removeLongElements(3) : this->matrix->removeOverDeterminedElementsSingleIteration(1);
      tell(step + (isCut ? ": cut" : ": prune"), result, this->matrix->getNumberOfMatrixElements());
    }
  };
  const int size = this->matrix->getMatrixBlockSize();
  prune("parent below the block", [](auto* element, int at) { element->setOffsetToElementInPrevDimension(-at - 5); });
  prune("parent above it", [&](auto* element, int at) { element->setOffsetToElementInPrevDimension(size - at); });
  prune("parent in an empty slot", [&](auto* element, int at) { element->setOffsetToElementInPrevDimension(size - 1 - at); });
  prune("child in an empty slot", [&](auto* element, int at) { element->setOffsetToElementInNextDimension(size - 1 - at); });
  prune("a cycle", [&](auto* element, int at) { element->setOffsetToElementInNextDimension(this->handleOf({1, 2, 3}) - at); });
  prune("too long a path", [this](auto*, int) { this->info()->_setCurrentDimension(3); });
}

// Shorter phrases determine the element, but a broken child link hides it: it can't be looked up or deleted.
TYPED_TEST(PruningTest, ReportsAnElementThatCannotBeFound) {
  const Vector items = {1, 2, 3, 4};
  for (size_t begin = items.size(); begin-- > 0;) {  // the whole is written last and lies highest
    for (size_t end = begin + 1; end <= items.size(); ++end) {
      this->write(Vector(items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(end)));
    }
  }
  const int last = this->handleOf(items);
  ZQMatrixBaseElement* parent = this->matrix->parentOf(last);
  const int size = this->matrix->getMatrixBlockSize();
  parent->setOffsetToElementInNextDimension(size - 1 - this->handleOf({1, 2, 3}));
  ZQDebugChannel::globalDebugLevel = 5;
  this->take();
  EXPECT_EQ(this->matrix->removeOverDeterminedElementsSingleIteration(1), 1);  // the other phrase of three
  const std::string printed = this->take();
  const bool looksUp = TestFixture::Access::tier == plain::Tier::full;
  const std::string message = looksUp ? "removeOverdetPoints: element=NULL unexpected for indexVector: "
                                      : "delete element: uncritical warning, rc = -6\n";
  EXPECT_NE(printed.find(message), std::string::npos) << printed;
  EXPECT_NE(this->matrix->elementAt(last), nullptr);
}

// The kernel has the handle of an element. After that element is removed, a read gives an existing item or nothing.
TYPED_TEST(PruningTest, AKernelSurvivesTheRemovalOfItsElement) {
  const int sequence[] = {1, 2, 3, 4, 5, 1, 2, 6, 4, 3, 3, 5}, start[] = {1, 2, 3};
  const std::function<void(TypeParam&)> ways[] = {[this](TypeParam&) {
                                                    this->remove({1, 2, 3, 4, 5});
                                                  },
                                                  [](TypeParam& m) { m.removeOverDeterminedElements(); },
                                                  [](TypeParam& m) { m.removeLongElements(1); },
                                                  [](TypeParam& m) { m.removeLongElements(2); },
                                                  [this](TypeParam& m) { m.removeLongElements(2), this->scan(1); },
                                                  [](TypeParam& m) { m.removeLongElements(0); },
                                                  [](TypeParam& m) { m.clearMatrixForID(0); }};
  for (int way = 0; way < 7; ++way) {
    SCOPED_TRACE(way);
    this->makeAnew();
    this->info()->setIsPhraseMatrix(1);
    this->info()->setMatrixType(2);
    this->info()->setMaxPhraseLengthForUpdateWithSequence(6);
    ASSERT_EQ(this->matrix->updateMatrixWithCombinedSequence(sequence, 12, 2, 1, 0, 0), 1);
    ASSERT_EQ(this->matrix->initializeKernelSequenceWithOriginalSequence(start, 3, 1), 3);
    ASSERT_GT(this->info()->getKernelMatrixHandle(), 3);
    ways[way](*this->matrix);
    int count = 0;
    this->matrix->mFree(this->matrix->getSuccessorHandlesFromKernelHandle(&count));
    this->matrix->getNumberOfSuccessorsFromKernelHandle();
    for (int i = 0; i < 20; ++i) {
      double probability = -1, stopProbability = -1;
      const int* item = this->matrix->readObjexFromMatrix(&probability, &stopProbability);
      if (item == nullptr) continue;
      EXPECT_LT(way, 5) << "nothing is left";
      EXPECT_GE(this->exist({*item}), 2) << *item;
    }
    EXPECT_EQ(this->broken(), "");
  }
}

using FullPruningTest = zmatrix::TierTest<ZQMatrix>;

TEST_F(FullPruningTest, KeepsSymbols) {
  for (const int keep : {0, 1}) {
    makeAnew();
    matrix->setKeepSymbolsWhenRemoveOverdeterminedElements(keep);
    writePhrases({1, 2, 3, 4}, true);
    ASSERT_EQ(matrix->getNumberOfSymbols(), 1);
    EXPECT_EQ(matrix->removeOverDeterminedElements(), 1);
    EXPECT_EQ(matrix->getNumberOfSymbols(), keep);
    EXPECT_EQ(exist({1, 2, 3, 4}), keep ? 3 : -1);
  }
}

}  // namespace
