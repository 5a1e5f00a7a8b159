// The self-tests of the three tiers: what they count and tell, how they trim, and that damaged links are reported and end them.
#include <algorithm>
#include <numeric>
#include <random>

#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

struct Outcome {
  int result = -9, written = -9, ends = -9;
  bool operator==(const Outcome&) const = default;
};

template <class Matrix>
class SelfTestTest : public testing::Test {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;
  static constexpr bool isBase = Access::tier == plain::Tier::base;

  SelfTestTest() : matrix(Access::create()) {
    zmatrix::setSearchState({});
    messages.listen();
  }
  ~SelfTestTest() override {
    Access::destroy(matrix);
    zmatrix::setSearchState({});
  }

  void write(const Vector& vector, int startFlag = 0) { ASSERT_EQ(Access::write(*matrix, vector, 7, startFlag, 0, 0), 1); }
  Outcome linear(int trim = 0) {
    Outcome outcome;
    outcome.result = matrix->performMatrixLinearTest(&outcome.written, &outcome.ends, trim);
    return outcome;
  }
  Outcome consistency(int trim = 0) {
    Outcome outcome;
    outcome.result = matrix->performMatrixConsistencyTest(&outcome.written, &outcome.ends, trim);
    return outcome;
  }
  ZQMatrixBaseElement* elementOf(const Vector& vector) {
    int position = matrix->getCurrentMatrixID();
    for (const int k : vector) position = matrix->childAt(position, k);
    return matrix->elementAt(position);
  }
  bool told(const std::string& sentence) { return messages.take().find(sentence) != std::string::npos; }

  Matrix* matrix;
  zmatrix::CapturedMessages messages{1};
};
using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
TYPED_TEST_SUITE(SelfTestTest, Tiers);

TYPED_TEST(SelfTestTest, emptyAndUnknown) {
  EXPECT_EQ(this->linear(), (Outcome{-1, 0, 0}));
  EXPECT_EQ(this->messages.take(),
            "begin performMatrixLinearTest for matrixID 0...\nmatrix will not be trimmed...\n"
            "performMatrixLinearTest: matrix is empty!\n");
  EXPECT_EQ(this->consistency(), (Outcome{-1, 0, 0}));
  EXPECT_EQ(this->messages.take(), "PerformMatrixConsistencyTest: matrix is empty!\n");
  int written = 5, ends = 5;
  EXPECT_EQ(this->matrix->perform1stMemoryTest(3, &written, &ends, 0), -2);
  EXPECT_EQ(this->messages.take(), "performMatrix1stMemoryTest failed with rc = -2\n");
  EXPECT_EQ(written + ends, 0);
}

TYPED_TEST(SelfTestTest, countsAndDeletes) {
  this->write({1, 2});
  this->write({1, 3});
  this->messages.take();
  EXPECT_EQ(this->linear(), (Outcome{1, 2, 2}));
  EXPECT_EQ(this->consistency(), (Outcome{1, 2, 2}));
  EXPECT_EQ(this->messages.take(), "begin performMatrixLinearTest for matrixID 0...\nmatrix will not be trimmed...\n");
  this->matrix->getMatrixInfo()->setNumberOfMatrixWriteEvents(9);
  this->linear();
  EXPECT_TRUE(this->told("overallWriteCount possibly differs from _numberOfWriteEvents -_numberOfDeleteEvents: 2 <-> 9 - 0\n"));
  Vector gone = {1, 3};
  EXPECT_EQ(this->matrix->deleteMatrixElement(gone.data(), 2, 1), 1);
  EXPECT_EQ(this->linear(), (Outcome{1, 1, 1}));
  EXPECT_FALSE(this->told("possibly differs"));
  EXPECT_EQ(this->consistency(), (Outcome{1, 1, 1}));
}

TYPED_TEST(SelfTestTest, countersThatDiffer) {
  this->write({1, 2});
  ZQMatrixBaseInfo* info = this->matrix->getMatrixInfo();
  info->setNumberOfWriteElements(4);
  EXPECT_EQ(this->linear(), (Outcome{0, 1, 1}));
  EXPECT_TRUE(this->told("error matrixLinear-Test: numberOfWriteElementsInMatrix differs from _numberOfWriteElements 1 <-> 4"));
  EXPECT_EQ(info->getNumberOfWriteElements(), 4);
  info->setNumberOfWriteElements(1);
  info->setNumberOfEndElements(3);
  EXPECT_EQ(this->linear().result, this->isBase ? 0 : 1);
  EXPECT_TRUE(this->told(std::string(this->isBase ? "error matrixLinear-Test: " : "warning:  matrixLinear-Test: ") +
                         "numberOfEndElementsInMatrix differs from _numberOfEndElements 1 <-> 3\n"));
  EXPECT_EQ(info->getNumberOfEndElements(), this->isBase ? 3 : 1);
  info->setNumberOfEndElements(1);
  info->setNumberOfMatrixElements(8);
  info->setNumberOfWriteCounts(6);
  EXPECT_EQ(this->consistency(), (Outcome{0, 1, 1}));
  EXPECT_EQ(this->messages.take(),
            "error matrixConsistencyTest: getNumberOfWriteCounts(6) != overallWriteCount(1)!\n"
            "error matrixConsistency-Test:: numberOfOccupiedPositions differs from _numberOfElements: 2<->8\n");
}

TYPED_TEST(SelfTestTest, trim) {
  int n = 0;
  while (this->matrix->getMaximalStack() < 100) this->write({n++});
  this->matrix->getMatrixFileHeader()->_setMaximalStack(5000);
  const int last = 100, size = 163;
  this->messages.take();
  EXPECT_EQ(this->linear(1), (Outcome{1, n, n}));
  EXPECT_EQ(this->messages.take(),
            "begin performMatrixLinearTest for matrixID 0...\nmatrix will be trimmed...\n"
            "matrixLinear-Test: _matrixBlockSize reduced from 64000 to " +
                std::to_string(size) + " items\n");
  EXPECT_EQ(this->matrix->getMaximalStack(), last);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), size);
  EXPECT_EQ(this->matrix->getMatrixInfo()->getInternalCurrentDimension(), 1);
  EXPECT_EQ(this->matrix->getMatrixInfo()->getMaximalIndices()[0], n - 1);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
  for (int k = 0; k < 300; ++k) this->write({k, k % 5, -k, 1});  // the trimmed block and arrays grow again
  EXPECT_EQ(this->linear(), (Outcome{1, n + 300, 300}));
  this->messages.take();
  this->write({400});
  Vector gone = {400};
  this->matrix->deleteMatrixElement(gone.data(), 1, 1);
  this->linear();
  this->messages.take();
  EXPECT_EQ(this->consistency(1), (Outcome{1, n + 300, 300}));
  EXPECT_EQ(this->matrix->getMatrixInfo()->getMaximalIndices()[0], 299);
  EXPECT_EQ(this->matrix->getMatrixInfo()->getMinimalIndices()[2], -299);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

// The block is cut behind the last slot of all sub-matrices; handles from before stay good.
TYPED_TEST(SelfTestTest, trimKeepsWhatOtherSubMatricesHold) {
  this->write({1, 2});
  this->matrix->setCurrentMatrixID(2);
  for (int k = 0; k < 40; ++k) this->write({k, 1});
  const Vector path = {39, 1};
  const int handle = this->matrix->getMatrixHandleFromElementVector(path.data(), 2), stack = this->matrix->getMaximalStack();
  this->matrix->setCurrentMatrixID(0);
  EXPECT_EQ(this->linear(1), (Outcome{1, 1, 1}));
  EXPECT_EQ(this->matrix->getMaximalStack(), stack);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), static_cast<int>((stack + 1) * 1.618));
  for (int id = 0; id < 4; ++id) {
    EXPECT_EQ(this->matrix->getMatrixDataEntryArray()[id], this->matrix->getMatrixData() + id);
  }
  this->matrix->setCurrentMatrixID(2);
  EXPECT_EQ(this->matrix->getMatrixHandleFromElementVector(path.data(), 2), handle);
  EXPECT_EQ(this->linear(), (Outcome{1, 40, 40}));
  EXPECT_EQ(this->linear(1).result, 1);  // nothing more to cut
  EXPECT_EQ(this->matrix->getMaximalStack(), stack);
  EXPECT_EQ(zmatrix::brokenInvariant(*this->matrix), "");
}

TYPED_TEST(SelfTestTest, severalSubMatricesAreNotTrimmedByTheWalk) {
  this->write({1, 2});
  this->matrix->setCurrentMatrixID(2);
  this->write({3});
  this->messages.take();
  EXPECT_EQ(this->consistency(1), (Outcome{1, 1, 1}));
  EXPECT_TRUE(
      this->told("ConsistencyTestparameter trim = 1 set to 0: matrix will not be trimmed because matrix contains more "
                 "than 1 sub matrices...\n"));
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 64000);
}

TYPED_TEST(SelfTestTest, bentLinks) {
  for (int k = 1; k < 9; ++k) this->write({k, 2 * k, 3});
  ZQMatrixBaseElement* element = this->elementOf({5, 10, 3});
  const int parent = element->getOffsetToElementInPrevDimension();
  this->messages.take();
  element->setOffsetToElementInPrevDimension(-100000);
  EXPECT_EQ(this->linear().result, 0);
  EXPECT_TRUE(this->told("error performMatrixLinearTest for matrixID 0: addressOfPreviousElement out of left range: -"));
  EXPECT_EQ(this->consistency().result, 0);
  element->setOffsetToElementInPrevDimension(100000);
  EXPECT_EQ(this->linear().result, 0);
  EXPECT_TRUE(this->told("error performMatrixLinearTest for matrixID 0: addressOfPreviousElement out right range: 1"));
  element->setOffsetToElementInPrevDimension(0);  // a circle of one
  EXPECT_EQ(this->linear(), (Outcome{0, 7, 7}));
  EXPECT_EQ(this->consistency(), (Outcome{0, 7, 7}));
  element->setOffsetToElementInPrevDimension(parent);
  EXPECT_EQ(this->linear().result, 1);
  ZQMatrixBaseElement* inner = this->elementOf({5, 10});
  const int up = inner->getOffsetToElementInPrevDimension();
  inner->setOffsetToElementInPrevDimension(-parent);  // a circle of two
  EXPECT_EQ(this->linear(), (Outcome{0, 7, 7}));
  EXPECT_EQ(this->consistency(), (Outcome{0, 7, 7}));
  inner->setOffsetToElementInPrevDimension(up);
  ZQMatrixBaseElement* sibling = this->elementOf({3});
  sibling->setOffsetToNextElementInDimension(-1);
  EXPECT_EQ(this->linear().result, 1);  // which looks at parents only
  EXPECT_EQ(this->consistency(), (Outcome{0, 3, 3}));
}

// The box of indices holds 10 to the 30 vectors; only those that exist may be visited.
TYPED_TEST(SelfTestTest, wideBox) {
  std::mt19937 engine(3);
  for (int i = 0; i < 300; ++i) {
    Vector vector(10);
    for (int& k : vector) k = static_cast<int>(engine() % 1000) - 500;
    this->write(vector);
  }
  EXPECT_EQ(this->consistency(), this->linear());
  EXPECT_EQ(this->consistency().result, 1);
}

TYPED_TEST(SelfTestTest, readBack) {
  this->write({1, 2});
  this->write({1, 2, 3});
  int *none = nullptr, one[] = {1, 2}, two[] = {1, 2, 3}, path[] = {1}, missing[] = {4};
  int* vectors[] = {one, two, path, missing};
  int lengths[] = {2, 3, 1, 1}, errors = -1, tests = -1;
  long long values[] = {7, 8, 0, 0};
  this->messages.take();
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(1, nullptr, none, values, &errors, &tests), -1);
  EXPECT_TRUE(this->told("Can't perform second Memory test, because no values for"));
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(4, vectors, lengths, values, &errors, &tests), 1);
  EXPECT_EQ(errors, 3);
  EXPECT_EQ(tests, 4);
  const std::string told = this->messages.take();
  EXPECT_NE(told.find("read-value 7 differs from expected value 8 . Coordinates: 1,2,3\n"), std::string::npos);
  EXPECT_NE(told.find("retCode 1 unexpected in second memory test for: 1\n"), std::string::npos);
  EXPECT_NE(told.find("3: read-error 0 from readMatrixData: 4\n"), std::string::npos) << told;
}

TYPED_TEST(SelfTestTest, readBackOfWideItems) {
  int items[] = {123456789, -5}, wrong[] = {123456789, -6}, errors = -1, tests = -1;
  int* vectors[] = {items, wrong, nullptr};
  int lengths[] = {2, 2, 2};
  long long values[] = {11, 12, 13}, wideItems[] = {123456789, -5};
  this->matrix->getMatrixInfo()->setAllowLargeIndices(1);
  EXPECT_EQ(this->matrix->writeMatrixElement32(items, 2, 11), 1);
  this->matrix->setCurrentMatrixID(1);
  this->matrix->getMatrixInfo()->setAllowLargeIndices(2);
  EXPECT_EQ(this->matrix->writeMatrixElement64(wideItems, 2, 11), 1);
  for (const int id : {0, 1}) {
    this->matrix->setCurrentMatrixID(id);
    this->messages.take();
    EXPECT_EQ(this->matrix->perform2ndMemoryTest(1, vectors, lengths, values, &errors, &tests), 1);
    EXPECT_EQ(errors, 0);
    EXPECT_EQ(this->messages.take(), "");
    EXPECT_EQ(this->matrix->perform2ndMemoryTest(3, vectors, lengths, values, &errors, &tests), 1);
    EXPECT_EQ(errors, 2);
    const std::string told = this->messages.take();
    EXPECT_NE(told.find("1: read-error "), std::string::npos);
    EXPECT_NE(told.find("2: read-error 0 from readMatrixData: \n"), std::string::npos);
  }
  // From 1 to 2 the dimension stays behind.
  this->matrix->setCurrentMatrixID(2);
  this->matrix->getMatrixInfo()->setAllowLargeIndices(1);
  this->matrix->getMatrixInfo()->setAllowLargeIndices(2);
  this->messages.take();
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(1, vectors, lengths, values, &errors, &tests), 1);
  EXPECT_EQ(errors, 1);
  EXPECT_EQ(this->messages.take(), "Illegal combination of coordDimension (2) and allowLargeIndices (2)\n");
}

// Both walks, and each again, count per length what is written, what is a rule and what a shorter context decides.
TEST(MediumSelfTest, recountsByLength) {
  using Access = zmatrix::TierUnderTest<ZQMatrixMedium>;
  ZQMatrixMedium* matrix = Access::create();
  for (const Vector& vector : {Vector{1}, Vector{1, 2}, Vector{1, 3}, Vector{2}, Vector{1, 2, 4}, Vector{2, 4}}) {
    ASSERT_EQ(Access::write(*matrix, vector, 1, 0, 0, 0), 1);
  }
  ZQMatrixMediumInfo* info = matrix->getMatrixInfo();
  const auto counts = [](int* values, int size) { return Vector(values, values + std::min(size, 3)); };
  for (const int which : {1, 2, 1, 2}) {
    int written = 0, ends = 0, size = 0;
    EXPECT_EQ(matrix->perform1stMemoryTest(which, &written, &ends, 0), 1);
    int* values = info->getWriteElementsInDimension(&size);
    EXPECT_EQ(counts(values, size), (Vector{2, 3, 1})) << which;
    values = info->getUniqueRulesInDimension(&size);
    EXPECT_EQ(counts(values, size), (Vector{0, 1, 1})) << which;
    values = info->getRulesInDimension(&size);
    EXPECT_EQ(counts(values, size), (Vector{0, 3, 1})) << which;  // the root counts no successor of a write
  }
  Access::destroy(matrix);
}

TEST(MediumSelfTest, recountsRules) {
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  matrix->getMatrixInfo()->setIsPhraseMatrix(1);
  matrix->getMatrixInfo()->setMatrixType(2);
  const int sequence[] = {1, 2, 3, 4, 1, 5, 3, 6};
  ASSERT_EQ(matrix->updateMatrixWithCombinedSequence(sequence, 8, 2, 1, 0, 0), 1);
  zmatrix::CapturedMessages messages(1);
  int written = 0, ends = 0, rules = 0, unique = 0, over = 0, dimensions = 0;
  EXPECT_EQ(matrix->performMatrixLinearTest(&written, &ends, 0), 1) << messages.take();
  for (int position = 4; position <= matrix->getMaximalStack(); ++position) {
    int length = 0;
    int* path = matrix->getIndexVectorFromMatrixHandle(position, &length);
    if (path == nullptr) continue;
    auto** slot = reinterpret_cast<ZQMatrixMediumElement**>(matrix->getMatrixData() + position);
    rules += matrix->isRuleMatrixData(slot);
    unique += matrix->isDeterminedMatrixData(path, length) > 0;
    over += matrix->isDeterminedMatrixData(path, length) >= 2;
    matrix->mFree(path);
  }
  EXPECT_GT(over, 0);
  EXPECT_GT(unique, over);
  EXPECT_EQ(matrix->getMatrixInfo()->getNumberOfRuleElements(), rules);
  EXPECT_EQ(matrix->getMatrixInfo()->getNumberOfUniqueRuleElements(), unique);
  EXPECT_EQ(matrix->getMatrixInfo()->getNumberOfOverDeterminedRules(), over);
  const int* inDimension = matrix->getMatrixInfo()->getRulesInDimension(&dimensions);
  EXPECT_EQ(std::accumulate(inDimension, inDimension + dimensions, 0), rules);
  EXPECT_EQ(inDimension[0], 6);
  // A rule that loses its context is one no more.
  static_cast<ZQMatrixMediumElement*>(matrix->getMatrixDataEntry()[0])->setWriteCountWithSuccessor(0);
  EXPECT_EQ(matrix->performMatrixConsistencyTest(&written, &ends, 0), 0);
  EXPECT_NE(messages.take().find("error matrixLinear-Test for matrix ID 0: point without rule  unexpected for phrase-Matrix\n"),
            std::string::npos);
  deleteMatrixMedium(matrix);
}

class FullSelfTest : public SelfTestTest<ZQMatrix> {};

// Every fault that the counters can have, in the order in which they are told.
TEST_F(FullSelfTest, countersInTheirOrder) {
  write({1, 2}, 1);
  messages.take();
  ZQMatrixInfo& info = *matrix->getMatrixInfo();
  info._setCurrentDimension(3);
  info.setNumberOfWriteElements(2);
  info.setNumberOfEndElements(5);
  info.setNumberOfStartElements(6);
  info.incrementNumberOfSymbols();
  EXPECT_EQ(linear(), (Outcome{0, 1, 1}));
  EXPECT_EQ(messages.take(),
            "begin performMatrixLinearTest for matrixID 0...\nmatrix will not be trimmed...\n"
            "matrixLinearTest: error: dimension(3) != dimension1(2)\n"
            "error matrixLinear-Test: numberOfWriteElementsInMatrix differs from _numberOfWriteElements 1 <-> 2"
            "warning:  matrixLinear-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements 1 <-> 5\n"
            "error matrixLinear-Test: numberOfStartElementsInMatrix differs from _numberOfStart 1 <-> 6\n"
            "error: matrixLinear-Test: numberOfSymbols differs from _numberOfSymbols 0 <-> 1\n");
}

TEST_F(FullSelfTest, followsSymbols) {
  ASSERT_EQ(matrix->writeMatrixData(Vector{1, 2}.data(), 2, 1, 0, 0, 1), 1);
  messages.take();
  EXPECT_EQ(linear().result, 1);
  EXPECT_TRUE(told("warning performMatrixLinearTest for matrixID 0: symbol 257 found but symbol level matrix does not exist\n"));
  matrix->setCurrentMatrixIDLevelUp(1);
  EXPECT_EQ(linear().result, 0);
  EXPECT_TRUE(told("error performMatrixLinearTest for matrixID 0: symbol 257 found, but downHandle -1 is invalid!\n"));
  const int phrase = matrix->getMatrixHandleFromElementVector(Vector{1, 2}.data(), 2);
  matrix->setCurrentMatrixID(1);
  write({257});
  auto* symbol = static_cast<ZQMatrixElement*>(elementOf({257}));
  symbol->setSymbolDownLinkHandle(phrase);
  EXPECT_EQ(linear().result, 0);
  EXPECT_TRUE(told("error performMatrixLinearTest for matrixID 1: downlinkHandle " + std::to_string(phrase) +
                   " found basic level matrix does not exist\n"));
  matrix->setCurrentMatrixIDLevelDown(0);
  EXPECT_EQ(linear().result, 1);
  symbol->setSymbolDownLinkHandle(1000000);
  EXPECT_EQ(linear().result, 0);
  EXPECT_TRUE(told("downHandle 1000000 is invalid!\n"));
  symbol->setSymbolDownLinkHandle(matrix->getMatrixHandleFromElementVector(Vector{257}.data(), 1));
  EXPECT_EQ(linear().result, 0);
  EXPECT_TRUE(told("points to element without symbol!\n"));
  matrix->setCurrentMatrixID(0);
  EXPECT_EQ(consistency().result, 0);
  EXPECT_TRUE(told("does not belong to a valid entry in basic level matrixID 0!\n"));
  symbol->setSymbolDownLinkHandle(phrase);
  EXPECT_EQ(consistency().result, 1);
  matrix->getMatrixInfo()->incrementNumberOfSymbols();
  EXPECT_EQ(linear().result, 0);
  EXPECT_TRUE(told("error: matrixLinear-Test: numberOfSymbols differs from _numberOfSymbols 1 <-> 2\n"));
}

}  // namespace
