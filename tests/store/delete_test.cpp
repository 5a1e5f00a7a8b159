// Deletes at their edges, in all tiers: vectors that are not there or make no sense, items of both widths, slots that are used
// again, and handles from before a delete.
#include <climits>

#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

template <class Matrix>
class DeleteTest : public testing::Test {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;

  DeleteTest() : matrix(Access::create()) {
    zmatrix::setSearchState({});
    messages.listen();
  }
  ~DeleteTest() override {
    Access::destroy(matrix);
    zmatrix::setSearchState({});
  }

  void write(const Vector& vector) { ASSERT_EQ(Access::write(*matrix, vector, 7, 1, 0, 1), 1); }
  int remove(const Vector& vector, int keepInnerElements = 0) {
    return matrix->deleteMatrixElement(vector.data(), static_cast<int>(vector.size()), keepInnerElements);
  }
  int exist(const Vector& vector) { return matrix->existMatrixData(vector.data(), static_cast<int>(vector.size())); }
  int handleOf(const Vector& vector) {
    return matrix->getMatrixHandleFromElementVector(vector.data(), static_cast<int>(vector.size()));
  }
  /// Everything a delete could change: the counters and all records.
  std::vector<long long> state() {
    const ZQMatrixBaseInfo& info = *matrix->getMatrixInfo();
    std::vector<long long> all = {
        info.getNumberOfMatrixElements(), info.getNumberOfWriteElements(),      info.getNumberOfWriteCounts(),
        info.getNumberOfEndElements(),    info.getNumberOfMatrixDeleteEvents(), info.getNumberOfMatrixWriteEvents(),
        matrix->getMaximalStack()};
    for (int position = 0; position <= matrix->getMaximalStack(); ++position) {
      const ZQMatrixBaseElement* element = matrix->elementAt(position);
      if (element == nullptr) continue;
      const plain::Element copy = Access::copyOf(element);
      for (const long long field :
           {static_cast<long long>(position), static_cast<long long>(copy.writeCount), copy.value,
            static_cast<long long>(copy.index), static_cast<long long>(copy.next), static_cast<long long>(copy.previous),
            static_cast<long long>(copy.child), static_cast<long long>(copy.parent), static_cast<long long>(copy.withSuccessor),
            static_cast<long long>(copy.withoutPredecessor), static_cast<long long>(copy.symbolID)}) {
        all.push_back(field);
      }
    }
    return all;
  }

  Matrix* matrix;
  zmatrix::CapturedMessages messages{1};
};
using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
TYPED_TEST_SUITE(DeleteTest, Tiers);

TYPED_TEST(DeleteTest, whatIsNotThereChangesNothing) {
  for (const Vector& vector : {Vector{1, 2}, Vector{1, 2, 3}, Vector{4, 5}, Vector{6}}) this->write(vector);
  this->messages.take();
  const auto before = this->state();
  const int one[] = {1};  // a length that is refused is not read along
  for (const int keep : {0, 1, -1}) {
    EXPECT_EQ(this->remove({4}, keep), 0);       // a path element alone
    EXPECT_EQ(this->remove({1, 40}, keep), -1);  // a field without this coordinate
    EXPECT_EQ(this->remove({40}, keep), -1);
    EXPECT_EQ(this->remove({6, 1}, keep), -2);  // a path that ends earlier
    EXPECT_EQ(this->remove({1, 2, 3, 4}, keep), -2);
    EXPECT_EQ(this->remove({}, keep), -2);
    EXPECT_EQ(this->matrix->deleteMatrixElement(nullptr, 3, keep), -2);
    EXPECT_EQ(this->matrix->deleteMatrixElement(nullptr, 0, keep), -2);
    EXPECT_EQ(this->remove({1, 500000}, keep), -3);  // a slot beyond the block
    EXPECT_EQ(this->remove({1, INT_MIN}, keep), -3);
    for (const int length : {-1, INT_MIN, 4096, 4097, INT_MAX}) {
      EXPECT_EQ(this->matrix->deleteMatrixElement(one, length, keep), -3) << length;
    }
  }
  EXPECT_EQ(this->remove({1, 2}, 1), 1);  // an inner element that is to stay
  EXPECT_EQ(this->state(), before);
  EXPECT_EQ(this->messages.take(), "");
}

TYPED_TEST(DeleteTest, aReadOnlyStoreIsDeletedFrom) {
  this->write({1, 2});
  this->matrix->getMatrixInfo()->setMemIsReadOnly(1);
  this->matrix->getMatrixFileHeader()->setStopFlag(0, 1);
  EXPECT_EQ(this->remove({1, 2}), 1);
  EXPECT_EQ(this->exist({1, 2}), -1);
}

TYPED_TEST(DeleteTest, brokenLinksAreToldByTheirCodes) {
  this->write({1, 2, 3});
  this->write({1, 4});
  ZQMatrixBaseElement* inner = this->matrix->elementAt(this->handleOf({1, 4}));
  inner->setOffsetToElementInNextDimension(9);  // an empty slot
  EXPECT_EQ(this->remove({1, 4, 5}), -6);
  inner->setOffsetToElementInNextDimension(100000);
  EXPECT_EQ(this->remove({1, 4, 5}), -4);
  inner->setWriteCount(-1);
  EXPECT_EQ(this->remove({1, 4}), -6);
}

TYPED_TEST(DeleteTest, itemsOfTwoAndFourCoordinates) {
  int items[] = {2500000, -7};
  long long wideItems[] = {123456789012345LL, -7};
  EXPECT_EQ(this->matrix->deleteMatrixElement32(items, 2, 0), 0);
  EXPECT_EQ(this->matrix->deleteMatrixElement64(wideItems, 2, 0), 0);
  EXPECT_EQ(this->messages.take(),
            "error from deleteMatrixElement32: illegal coordinate dimension. Please set to 2!\n"
            "error from deleteMatrixElement64: illegal coordinate dimension. Please set to 4!\n");
  for (const int width : {1, 2}) {
    this->matrix->setCurrentMatrixID(width);
    this->matrix->getMatrixInfo()->setAllowLargeIndices(width);
    const auto remove = [&](bool present, int length) {
      return width == 1 ? this->matrix->deleteMatrixElement32(present ? items : nullptr, length, 0)
                        : this->matrix->deleteMatrixElement64(present ? wideItems : nullptr, length, 0);
    };
    if (width == 1) {
      EXPECT_EQ(this->matrix->writeMatrixElement32(items, 2, 5), 1);
    } else {
      EXPECT_EQ(this->matrix->writeMatrixElement64(wideItems, 2, 5), 1);
    }
    EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 4 * width);
    EXPECT_EQ(remove(true, 1), 0);  // the first item alone is a path element
    for (const int length : {-1, 4096, INT_MAX / 2, INT_MAX, INT_MIN}) EXPECT_EQ(remove(true, length), -3) << length;
    EXPECT_EQ(remove(true, 0), -2);
    EXPECT_EQ(remove(false, 2), -2);
    EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 4 * width);
    EXPECT_EQ(remove(true, 2), 1);
    EXPECT_EQ(this->matrix->getNumberOfMatrixElements(), 0);
    EXPECT_EQ(remove(true, 2), -2);
  }
}

// By the search from the low end, which leaves out no slot but the very first, and by the coordinate that it had.
TYPED_TEST(DeleteTest, theSlotIsUsedAgain) {
  this->matrix->getMatrixInfo()->setMemorySearchMethod(3);
  for (int k = 0; k < 30; ++k) this->write({k});
  const int first = this->handleOf({12}), second = this->handleOf({14});
  for (const Vector& vector : {Vector{12}, Vector{14}}) EXPECT_EQ(this->remove(vector), 1);
  EXPECT_EQ(this->matrix->elementAt(first), nullptr);
  this->write({20, -3});
  EXPECT_EQ(this->handleOf({20, -3}), first);
  this->write({14});
  EXPECT_EQ(this->handleOf({14}), second);
  EXPECT_EQ(TestFixture::Access::copyOf(this->matrix->elementAt(second)).writeCount, 1);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

// A handle that outlived its element names a free slot, or whatever moved in.
TYPED_TEST(DeleteTest, handlesFromBeforeIt) {
  this->write({1});
  this->write({1, 2});
  this->write({1, 2, 3});
  this->write({8, 9});
  const int handle = this->handleOf({1, 2, 3}), inner = this->handleOf({1, 2});
  EXPECT_EQ(this->remove({1, 2, 3}), 1);
  int length = -1, count = -1;
  EXPECT_EQ(this->matrix->getLengthOfIndexVectorFromMatrixHandle(handle), 0);
  EXPECT_EQ(this->matrix->getIndexVectorFromMatrixHandle(handle, &length), nullptr);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(this->matrix->getMatrixElementFromMatrixHandle(handle), nullptr);
  EXPECT_EQ(this->matrix->getSuccessorHandlesFromMatrixHandle(handle, &count), nullptr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(this->matrix->hasMatrixHandleSuccessors(handle), 0);
  EXPECT_EQ(this->matrix->getNumberOfSuccessorsFromMatrixHandle(handle), 0);
  this->matrix->getObjexFromMatrixHandle(handle);
  // An inner element that only lost its write is still there, and can't be read back.
  this->write({1, 2, 3});
  EXPECT_EQ(this->remove({1, 2}), 1);
  EXPECT_EQ(this->matrix->getLengthOfIndexVectorFromMatrixHandle(inner), 2);
  EXPECT_EQ(this->matrix->getIndexVectorFromMatrixHandle(inner, &length), nullptr);
  EXPECT_EQ(this->handleOf({1, 2}), -1);
  EXPECT_EQ(this->matrix->hasMatrixHandleSuccessors(inner), 1);
  EXPECT_EQ(this->matrix->getMatrixElementFromMatrixHandle(inner)->getWriteCount(), 0);
  EXPECT_EQ(this->messages.take(), "");
}

}  // namespace
