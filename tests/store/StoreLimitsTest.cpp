// Limits of the store in all tiers: result codes for absent vectors, lengths and coordinates at the limit, packed items of 32 and
// 64 bits, stale handles, growth that fails or is refused.
#include <utility>

#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::Vector;

template <class Matrix>
class StoreLimitsTest : public zmatrix::TierTest<Matrix> {
 public:
  StoreLimitsTest() { ZQDebugChannel::globalDebugLevel = 0; }
};
TYPED_TEST_SUITE(StoreLimitsTest, zmatrix::Tiers);

// A vector of exactly the maximal length can be written but not read.
TYPED_TEST(StoreLimitsTest, LengthsAndCoordinatesBeyondTheLimitsAreRefused) {
  EXPECT_EQ(this->write(Vector(4096, 1)), 1);
  EXPECT_EQ(this->exist(Vector(4096, 1)), -2);
  EXPECT_EQ(this->exist(Vector(4095, 1)), 1);
  EXPECT_EQ(this->write(Vector(4097, 1)), 0);
  EXPECT_EQ(this->take(), "error: maximal dimension exceeded: 4097\n");
  this->info()->setMaxDimOfMatrix(5000);
  for (const int k : {500000, -500000}) EXPECT_EQ(this->write({k}), 1);
  for (const int k : {500001, -500001}) EXPECT_EQ(this->write({k}), 0);
  const std::string refusal =
      "writeMatrixData: error: max matrix Index 500000 exceeded:  500001\nplease increase this value (setMaximalMatrixIndex())\n";
  EXPECT_EQ(this->take(), refusal + refusal);
  EXPECT_EQ(this->write({INT_MIN}), 0);
  EXPECT_EQ(this->broken(), "");
}

TYPED_TEST(StoreLimitsTest, DeletesOfAbsentVectorsChangeNothing) {
  for (const Vector& vector : {Vector{1, 2}, Vector{1, 2, 3}, Vector{4, 5}, Vector{6}}) this->write(vector, 1, 1);
  const auto records = this->records();
  const Vector counters = this->counters();
  const std::pair<Vector, int> cases[] = {
      {{4}, 0},                                // a path element without a write
      {{1, 40}, -1},      {{40}, -1},          // a field without this coordinate
      {{6, 1}, -2},       {{1, 2, 3, 4}, -2},  // a path that ends earlier
      {{}, -2},           {{1, 500000}, -3},   // a slot beyond the block
      {{1, INT_MIN}, -3},
  };
  const int one[] = {1};  // must not be read behind its end
  for (const int keep : {0, 1, -1}) {
    for (const auto& [vector, code] : cases) EXPECT_EQ(this->remove(vector, keep), code);
    for (const int length : {3, 0}) EXPECT_EQ(this->matrix->deleteMatrixElement(nullptr, length, keep), -2);
    for (const int length : {-1, INT_MIN, 4096, 4097, INT_MAX}) {
      EXPECT_EQ(this->matrix->deleteMatrixElement(one, length, keep), -3) << length;
    }
  }
  EXPECT_EQ(this->remove({1, 2}, 1), 1);  // an inner element that is kept
  EXPECT_TRUE(this->records() == records);
  EXPECT_EQ(this->counters(), counters);
  EXPECT_EQ(this->take(), "");
}

// Handles of a free slot, of another sub-matrix, outside the block, and of an element that has lost its write.
TYPED_TEST(StoreLimitsTest, HandlesWithoutAPathGiveNothing) {
  zmatrix::Account tell([this] { return this->take(); });
  for (const Vector& vector : {Vector{1}, Vector{1, 2}, Vector{1, 2, 3}, Vector{8, 9}}) this->write(vector);
  const int handle = this->handleOf({1, 2, 3}), inner = this->handleOf({1, 2});
  const auto look = [&](const std::string& step, int position) {
    int length = -1, count = -1;
    const int* vector = this->matrix->getIndexVectorFromMatrixHandle(position, &length);
    const int* successors = this->matrix->getSuccessorHandlesFromMatrixHandle(position, &count);
    tell(step, Vector{this->matrix->getLengthOfIndexVectorFromMatrixHandle(position), vector != nullptr, length,
                      successors != nullptr, count, this->matrix->hasMatrixHandleSuccessors(position),
                      this->matrix->getNumberOfSuccessorsFromMatrixHandle(position),
                      this->matrix->getMatrixElementFromMatrixHandle(position) != nullptr});
    for (const int* block : {vector, successors}) this->matrix->mFree(const_cast<int*>(block));
    this->matrix->getObjexFromMatrixHandle(position);
  };
  this->matrix->setCurrentMatrixID(4);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
  this->matrix->setCurrentMatrixID(1);
  this->write({1});
  look("of another sub-matrix", handle);
  this->matrix->setCurrentMatrixID(0);
  EXPECT_EQ(this->remove({1, 2, 3}), 1);
  look("a free slot", handle);
  for (const int wrong : {-1, INT_MIN, 64001, INT_MAX}) look("outside the block", wrong);
  this->write({1, 2, 3});
  EXPECT_EQ(this->remove({1, 2}), 1);
  look("one that has lost its write", inner);
  EXPECT_EQ(this->handleOf({1, 2}), -1);
}

/// The functions for items of one width under common names.
template <class Matrix, class Item>
struct ItemsOf {
  static constexpr bool isWide = sizeof(Item) == 8;
  static constexpr const char* bits = isWide ? "64" : "32";
  static constexpr auto write = [](Matrix& m, Item* items, int length, long long value) {
    if constexpr (isWide) return m.writeMatrixElement64(items, length, value);
    if constexpr (!isWide) return m.writeMatrixElement32(items, length, value);
  };
  static constexpr auto exist = [](Matrix& m, Item* items, int length) {
    if constexpr (isWide) return m.existMatrixData64(items, length);
    if constexpr (!isWide) return m.existMatrixData32(items, length);
  };
  static constexpr auto read = [](Matrix& m, Item* items, int length) {
    int code = 0;
    if constexpr (isWide) return m.readMatrixElement64(items, length, &code);
    if constexpr (!isWide) return m.readMatrixElement32(items, length, &code);
  };
  static constexpr auto remove = [](Matrix& m, Item* items, int length) {
    if constexpr (isWide) return m.deleteMatrixElement64(items, length, 0);
    if constexpr (!isWide) return m.deleteMatrixElement32(items, length, 0);
  };
};

/// An item is split by truncating division, so each coordinate has its sign.
template <class Item, class Test>
void tryPackedItems(Test& test, int limit, const std::vector<Item>& values) {
  using Items = ItemsOf<std::remove_reference_t<decltype(*test.matrix)>, Item>;
  auto& matrix = *test.matrix;
  const int c = Items::isWide ? 4 : 2;
  Item two[] = {2500, -2500};
  const std::string complaint =
      std::string("Element") + Items::bits + ": illegal coordinate dimension. Please set to " + std::to_string(c) + "!\n";
  EXPECT_EQ(Items::write(matrix, two, 2, 9), 0);
  EXPECT_EQ(Items::remove(matrix, two, 2), 0);
  EXPECT_EQ(test.take(), "error from writeMatrix" + complaint + "error from deleteMatrix" + complaint);
  test.info()->setMaximalMatrixIndex(limit);
  test.info()->setAllowLargeIndices(Items::isWide ? 2 : 1);
  test.take();
  for (Item item : values) {
    Vector coordinates;
    Item divisor = 1;
    for (int i = 1; i < c; ++i) divisor *= limit;
    for (Item rest = item; divisor > 0; rest %= divisor, divisor /= limit)
      coordinates.push_back(static_cast<int>(rest / divisor));
    EXPECT_EQ(Items::write(matrix, &item, 1, item), 1);
    EXPECT_EQ(test.exist(coordinates), 3) << item;
    EXPECT_EQ(Items::read(matrix, &item, 1), item);
  }
  const int elements = matrix.getNumberOfMatrixElements();
  EXPECT_EQ(Items::write(matrix, two, 2, 9), 1);
  EXPECT_EQ(Items::exist(matrix, two, 2), 3);
  EXPECT_EQ(Items::remove(matrix, two, 1), 0);  // the first item alone is a path element
  for (const int length : {-1, 4096, INT_MAX / 2, INT_MAX, INT_MIN}) EXPECT_EQ(Items::remove(matrix, two, length), -3) << length;
  EXPECT_EQ(Items::remove(matrix, two, 0), -2);
  EXPECT_EQ(Items::remove(matrix, nullptr, 2), -2);
  EXPECT_EQ(Items::exist(matrix, nullptr, 0), -2);
  EXPECT_EQ(Items::remove(matrix, two, 2), 1);
  EXPECT_EQ(matrix.getNumberOfMatrixElements(), elements);
}

TYPED_TEST(StoreLimitsTest, PackedItemsReadBackAsWritten) {
  tryPackedItems<int>(*this, 1000, {7, 999999, -123456});
  int tooLarge = INT_MIN;
  EXPECT_EQ(this->matrix->writeMatrixElement32(&tooLarge, 1, 9), 0);
  this->matrix->setCurrentMatrixID(1);
  this->take();
  tryPackedItems<long long>(*this, 500000, {0, 123456789012345678, -123456789012345678, LLONG_MAX, LLONG_MIN});
  long long huge = LLONG_MIN;
  EXPECT_GT(this->matrix->getMatrixHandleFromElementVector64(&huge, 1), 0);
  // With a small limit the first coordinate is too large for an index and for an int; with a limit of 0 there is no divisor.
  for (const int limit : {3, 1, 0}) {
    this->matrix->setCurrentMatrixID(limit == 3 ? 2 : 3);
    this->info()->setAllowLargeIndices(2);
    this->info()->setMaximalMatrixIndex(limit);
    EXPECT_EQ(this->matrix->writeMatrixElement64(&huge, 1, 1), 0);
    EXPECT_LT(this->matrix->existMatrixData64(&huge, 1), 1);
  }
}

// Only the header is set to the size of the largest block, so that no such block is allocated.
TYPED_TEST(StoreLimitsTest, GrowthStopsAtTheLargestBlock) {
  this->write({1, 2});
  this->matrix->getMatrixFileHeader()->_setMatrixBlockSize(134217728);
  ZQMatrixBaseElement** const block = this->matrix->getMatrixData();
  EXPECT_EQ(this->matrix->expandMatrixBlock(0), 0);
  EXPECT_EQ(this->take(),
            "warning from expandMatrixBlock: Reallocation: blocksize reduced: 134217728"
            "error from expandMatrixBlock: Reallocation of _matrixData failed _matrixBlockSize too large: 134217728!");
  EXPECT_EQ(this->matrix->getMatrixData(), block);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 134217728);
  this->matrix->getMatrixFileHeader()->_setMatrixBlockSize(64000);
  EXPECT_EQ(this->exist({1, 2}), 3);
  EXPECT_EQ(this->matrix->expandMatrixBlock(70000), 1);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 113260);
  EXPECT_EQ(this->write({1, 3}), 1);
  EXPECT_EQ(this->broken(), "");
}

// Memory runs out in each of the places that grow the block: a move, a search, the first allocation. The write fails, and the
// matrix can be deleted.
TYPED_TEST(StoreLimitsTest, GrowthThatFailsLeavesADeletableMatrix) {
  const std::string torn = "error from expandMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: 161!\n";
  for (int place = 0; place < 3; ++place) {
    SCOPED_TRACE(place);
    this->matrix->setInitialMatrixBlocksize(100);
    for (int k = 0; k < 90; ++k) this->write({k});
    this->take();
    zmatrix::largestAllocation = 160 * sizeof(void*);
    if (place == 0) {
      EXPECT_EQ(this->write({300}), 0);
    } else if (place == 1) {
      for (int k = 0; k < 12; ++k) EXPECT_LE(this->write({k, 1}), 1);
      EXPECT_EQ(this->write({1, 1, 1}), 0);
    } else {
      this->matrix->setInitialMatrixBlocksize(161);
    }
    EXPECT_TRUE(this->told(place < 2 ? torn : "error from setInitialMatrixBlock: ReAllocation"));
    EXPECT_EQ(this->matrix->getMatrixData(), nullptr);
    zmatrix::largestAllocation = static_cast<size_t>(-1);
    this->makeAnew();
    ZQDebugChannel::globalDebugLevel = 0;
  }
}

}  // namespace
