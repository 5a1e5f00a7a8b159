// The store at its limits: packed items of 32 and 64 bits, growth that fails or is refused, more roots, symbols that follow their
// phrase, and the single cases that a random script would hit too rarely.
#include <climits>
#include <utility>

#include "frame/ZQMemory.h"
#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

template <class Matrix>
class StoreLimits : public testing::Test {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;
  StoreLimits() : matrix(Access::create()) {
    zmatrix::setSearchState({});
    messages.listen();
  }
  ~StoreLimits() override {
    zmatrix::largestAllocation = static_cast<size_t>(-1);
    if (matrix != nullptr) Access::destroy(matrix);
    zmatrix::setSearchState({});
  }
  int write(const Vector& vector) { return Access::write(*matrix, vector, 7, 0, 0, 0); }
  int exist(Vector vector) { return matrix->existMatrixData(vector.data(), static_cast<int>(vector.size())); }
  int remove(Vector vector, int keep) {
    return matrix->deleteMatrixElement(vector.data(), static_cast<int>(vector.size()), keep);
  }
  int handleOf(Vector vector) { return matrix->getMatrixHandleFromElementVector(vector.data(), static_cast<int>(vector.size())); }
  ZQMatrixBaseInfo& info() { return *matrix->getMatrixInfo(); }
  void limitMemory(int slots) { zmatrix::largestAllocation = static_cast<size_t>(slots) * sizeof(void*); }

  Matrix* matrix;
  zmatrix::CapturedMessages messages{0};
};
using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
TYPED_TEST_SUITE(StoreLimits, Tiers);

TYPED_TEST(StoreLimits, existCodes) {
  this->write({1, 2, 3});
  for (const auto& [vector, code] : std::vector<std::pair<Vector, int>>{
           {{1, 2, 3}, 3}, {{1, 2}, 1}, {{1, 5}, 0}, {{1, 2, 3, 4}, -1}, {{1, -500000}, -2}, {{1, 2000000000}, -2}, {{}, -2}}) {
    EXPECT_EQ(this->exist(vector), code);
  }
  this->write({1, 2});
  EXPECT_EQ(this->exist({1, 2}), 2);
  EXPECT_EQ(this->exist({INT_MAX}), -2);
  EXPECT_EQ(this->exist({INT_MIN, INT_MIN}), -2);
  EXPECT_EQ(this->matrix->existMatrixData(nullptr, -1), -2);
  EXPECT_EQ(this->messages.take(), "");
}

// A vector as long as the limit can be written and not read.
TYPED_TEST(StoreLimits, lengthsAndCoordinatesAtTheLimit) {
  EXPECT_EQ(this->write(Vector(4096, 1)), 1);
  EXPECT_EQ(this->exist(Vector(4096, 1)), -2);
  EXPECT_EQ(this->exist(Vector(4095, 1)), 1);
  EXPECT_EQ(this->write(Vector(4097, 1)), 0);
  EXPECT_EQ(this->messages.take(), "error: maximal dimension exceeded: 4097\n");
  this->info().setMaxDimOfMatrix(5000);
  for (const int k : {500000, -500000}) EXPECT_EQ(this->write({k}), 1);
  for (const int k : {500001, -500001}) EXPECT_EQ(this->write({k}), 0);
  const std::string refusal =
      "writeMatrixData: error: max matrix Index 500000 exceeded:  500001\nplease increase this value (setMaximalMatrixIndex())\n";
  EXPECT_EQ(this->messages.take(), refusal + refusal);
  EXPECT_EQ(this->write({INT_MIN}), 0);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

TYPED_TEST(StoreLimits, deleteCases) {
  auto counters = [this] {
    return Vector{this->info().getNumberOfMatrixElements(), this->info().getNumberOfWriteElements(),
                  this->info().getNumberOfWriteCounts(), this->info().getNumberOfEndElements()};
  };
  this->write({1, 2, 3});
  EXPECT_EQ(this->remove({1, 2}, 0), 0);
  EXPECT_EQ(this->remove({1, 2, 3}, 1), 1);
  EXPECT_EQ(counters(),
            (Vector{0, 0, 1, 1}));  // both drifts: the removed count is the last one's, the root's last child stays counted
  EXPECT_EQ(this->matrix->getMatrixDataEntry()[0]->getOffsetToElementInNextDimension(), 0);
  this->write({1, 2});
  this->write({1, 2, 3});
  EXPECT_EQ(this->remove({1, 2}, 1), 1);
  EXPECT_EQ(this->exist({1, 2}), 2);
  EXPECT_EQ(this->remove({1, 2, 3}, 0), 1);
  EXPECT_EQ(counters(), (Vector{2, 1, 2, 2}));
  EXPECT_EQ(this->exist({1, 2}), 3);
  EXPECT_EQ(this->remove({1, 7}, 0), -1);
  EXPECT_EQ(this->remove({1, 2, 7}, 0), -2);
  EXPECT_EQ(this->remove({}, 0), -2);
  EXPECT_EQ(this->matrix->deleteMatrixElement(nullptr, 3, 0), -2);
  int one = 1;
  EXPECT_EQ(this->matrix->deleteMatrixElement(&one, -1, 0), -3);
  EXPECT_EQ(counters(), (Vector{2, 1, 2, 2}));
}

TYPED_TEST(StoreLimits, handlesOfOtherMatricesAndOutsideTheBlock) {
  this->write({-1, 2, -3});
  const int handle = this->handleOf({-1, 2, -3});
  int length = -1;
  int* path = this->matrix->getIndexVectorFromMatrixHandle(handle, &length);
  EXPECT_EQ(Vector(path, path + length), (Vector{-1, 2, -3}));
  this->matrix->mFree(path);
  this->matrix->setCurrentMatrixID(4);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
  this->matrix->setCurrentMatrixID(1);
  this->write({1});
  EXPECT_EQ(this->matrix->getLengthOfIndexVectorFromMatrixHandle(handle), -1);
  EXPECT_EQ(this->messages.take(),
            "error: getLengthOdIndexVectorFromMatrixHandle: backward chain ends for ID 0 (expected: 1) \n");
  for (const int wrong : {-1, INT_MIN, 64001, INT_MAX}) {
    EXPECT_EQ(this->matrix->getLengthOfIndexVectorFromMatrixHandle(wrong), -1);
    EXPECT_EQ(this->matrix->getIndexVectorFromMatrixHandle(wrong, &length), nullptr);
    EXPECT_EQ(this->matrix->getSuccessorHandlesFromMatrixHandle(wrong, &length), nullptr);
    EXPECT_EQ(this->matrix->hasMatrixHandleSuccessors(wrong), 0);
    this->matrix->getMatrixElementFromMatrixHandle(wrong);  // it may not read outside the block
  }
}

// An item is split by truncating division, so that the sign goes into every coordinate.
TYPED_TEST(StoreLimits, packedItems) {
  int items[] = {2500, -2500};
  EXPECT_EQ(this->matrix->writeMatrixElement32(items, 2, 9), 0);
  EXPECT_EQ(this->messages.take(), "error from writeMatrixElement32: illegal coordinate dimension. Please set to 2!\n");
  this->info().setMaximalMatrixIndex(1000);
  this->info().setAllowLargeIndices(1);
  this->messages.take();
  EXPECT_EQ(this->matrix->writeMatrixElement32(items, 2, 9), 1);
  EXPECT_EQ(this->exist({2, 500, -2, -500}), 3);
  EXPECT_EQ(this->matrix->existMatrixData32(items, 2), 3);
  int code = 0;
  EXPECT_EQ(this->matrix->readMatrixElement32(items, 2, &code), 9);
  int tooLarge = INT_MIN;
  EXPECT_EQ(this->matrix->writeMatrixElement32(&tooLarge, 1, 9), 0);
  EXPECT_EQ(this->matrix->deleteMatrixElement32(items, 2, 0), 1);
  EXPECT_EQ(this->matrix->existMatrixData32(nullptr, 0), -2);
  EXPECT_EQ(this->exist({2, 500}), -1);

  this->matrix->setCurrentMatrixID(1);
  this->info().setAllowLargeIndices(2);
  for (const long long item : {0LL, 123456789012345678LL, -123456789012345678LL, LLONG_MAX, LLONG_MIN}) {
    long long packed = item;
    const long long m = 500000, square = m * m, cube = square * m, r1 = item % cube, r2 = r1 % square;
    EXPECT_EQ(this->matrix->writeMatrixElement64(&packed, 1, item), 1);
    EXPECT_EQ(this->exist({static_cast<int>(item / cube), static_cast<int>(r1 / square), static_cast<int>(r2 / m),
                           static_cast<int>(r2 % m)}),
              3);
    EXPECT_EQ(this->matrix->readMatrixElement64(&packed, 1, &code), item);
    EXPECT_GT(this->matrix->getMatrixHandleFromElementVector64(&packed, 1), 0);
  }
  // A small limit makes the first coordinate too large for any index, and for an int; a limit of 0 leaves nothing to divide by.
  long long huge = LLONG_MIN;
  for (const int limit : {3, 1, 0}) {
    this->matrix->setCurrentMatrixID(limit == 3 ? 2 : 3);
    this->info().setAllowLargeIndices(2);
    this->info().setMaximalMatrixIndex(limit);
    EXPECT_EQ(this->matrix->writeMatrixElement64(&huge, 1, 1), 0);
    EXPECT_LT(this->matrix->existMatrixData64(&huge, 1), 1);
  }
}

// Past the largest block nothing grows; the header alone is told that the block is that large, so that nothing of the kind is
// allocated.
TYPED_TEST(StoreLimits, growthEndsAtTheCap) {
  this->write({1, 2});
  this->matrix->getMatrixFileHeader()->_setMatrixBlockSize(134217728);
  ZQMatrixBaseElement** const block = this->matrix->getMatrixData();
  EXPECT_EQ(this->matrix->expandMatrixBlock(0), 0);
  EXPECT_EQ(this->messages.take(),
            "warning from expandMatrixBlock: Reallocation: blocksize reduced: 134217728"
            "error from expandMatrixBlock: Reallocation of _matrixData failed _matrixBlockSize too large: 134217728!");
  EXPECT_EQ(this->matrix->getMatrixData(), block);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 134217728);
  this->matrix->getMatrixFileHeader()->_setMatrixBlockSize(64000);
  EXPECT_EQ(this->exist({1, 2}), 3);
  EXPECT_EQ(this->matrix->expandMatrixBlock(70000), 1);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 113260);
  EXPECT_EQ(this->write({1, 3}), 1);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

// Memory runs out at each of the places that grow: a move, a search, a first size. The write fails, and the matrix can be
// deleted.
TYPED_TEST(StoreLimits, growthThatFailsLeavesADeletableMatrix) {
  const std::string torn = "error from expandMatrixBlock: ReAllocation of _matrixData failed _matrixBlockSize too large: 161!\n";
  for (int place = 0; place < 3; ++place) {
    SCOPED_TRACE(place);
    this->matrix->setInitialMatrixBlocksize(100);
    for (int k = 0; k < 90; ++k) this->write({k});
    this->messages.take();
    this->limitMemory(160);
    if (place == 0) {
      EXPECT_EQ(this->write({300}), 0);
    } else if (place == 1) {
      for (int k = 0; k < 12; ++k) EXPECT_LE(this->write({k, 1}), 1);
      EXPECT_EQ(this->write({1, 1, 1}), 0);
    } else {
      this->matrix->setInitialMatrixBlocksize(161);
    }
    EXPECT_NE(this->messages.take().find(place < 2 ? torn : "error from setInitialMatrixBlock: ReAllocation"), std::string::npos);
    EXPECT_EQ(this->matrix->getMatrixData(), nullptr);
    TestFixture::Access::destroy(this->matrix);
    zmatrix::largestAllocation = static_cast<size_t>(-1);
    this->matrix = TestFixture::Access::create();
    this->messages.listen();
  }
}

// A symbol's element keeps naming its phrase while the phrase's field is moved to and fro by later writes.
TEST(StoreSymbols, linksFollowRelocatedPhrases) {
  StoreTwin<ZQMatrix> twin(300);
  twin.setLevelUp(0, 2);
  std::vector<Vector> phrases;
  for (int k = 0; k < 40; ++k) phrases.push_back({k % 5, 3 * k});
  for (const Vector& phrase : phrases) twin.write(phrase, 1, 0, 0, 1);
  for (int round = 0; round < 2; ++round) {  // the first round makes the symbols' elements, which may still move each other
    for (const Vector& phrase : phrases) twin.linkSymbol(phrase);
  }
  const int movesBefore = twin.store.moves;
  for (int k = 0; k < 60; ++k) twin.write({k % 5, -4 * k - 1, k % 3}, 1);
  EXPECT_GT(twin.store.moves, movesBefore + 5);
  for (const Vector& phrase : phrases) {
    const int handle = twin.store.handleOf(phrase);
    const int symbol = static_cast<ZQMatrixElement*>(twin.matrix->getMatrixData()[handle])->getSymbolID();
    twin.select(2);
    EXPECT_EQ(twin.matrix->getSymbolDownLinkHandleFromSymbol(symbol), handle);
    twin.select(0);
  }
  twin.compare();
}

}  // namespace
