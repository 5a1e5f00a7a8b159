// The self-tests of the three tiers: messages, trimming, reading back, links of symbols. Their counts are compared with a map of
// paths in VerificationScriptTest.cpp.

#include "support/Account.h"
#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace {

using zmatrix::Vector;

template <class Matrix>
class VerificationTest : public zmatrix::TierTest<Matrix> {};
TYPED_TEST_SUITE(VerificationTest, zmatrix::Tiers);

TYPED_TEST(VerificationTest, EmptyMatricesAndUnknownTestsAreRefused) {
  zmatrix::Account tell([this] { return this->take(); });
  tell("scan", this->scan());
  tell("walk", this->walk());
  int written = 5, ends = 5;
  const int result = this->matrix->perform1stMemoryTest(3, &written, &ends, 0);
  tell("test 3", result, written, ends);
}

TYPED_TEST(VerificationTest, WrongCountersAreReported) {
  this->write({1, 2});
  auto* info = this->info();
  zmatrix::Account tell([this] { return this->take(); });
  tell("scan", this->scan());
  info->setNumberOfWriteElements(4);
  tell("4 write elements", this->scan());
  tell("write elements", info->getNumberOfWriteElements());
  info->setNumberOfWriteElements(1);
  info->setNumberOfEndElements(3);
  tell("3 end elements", this->scan());
  tell("end elements", info->getNumberOfEndElements());
  info->setNumberOfEndElements(1);
  info->setNumberOfMatrixWriteEvents(9);
  tell("9 write events", this->scan());
  info->setNumberOfMatrixElements(8);
  info->setNumberOfWriteCounts(6);
  tell("8 elements, 6 write counts: walk", this->walk());
}

// A trim counts only written paths within the limits seen; other elements stay readable, also after save and load.
TYPED_TEST(VerificationTest, TrimKeepsUncountedElementsReadable) {
  this->write({1, 2});
  this->write({1, 3});
  this->matrix->setMaximalMatrixIndex(1000);  // resets the limits seen
  this->walk(1);
  EXPECT_EQ(this->exist({1, 2}), 3);
  EXPECT_EQ(this->remove({1, 3}), 1);
  EXPECT_EQ(this->write({1, 2, 7}), 1);
  EXPECT_EQ(this->exist({1, 2}), 2);
  this->makeAnew();
  this->write({1});
  EXPECT_EQ(this->write({1, 2, 3, 500001}), 0);
  this->scan(1);
  EXPECT_EQ(this->exist({1, 2, 3}), 3);
  const zmatrix::TestFolder folder;
  const std::string path = folder.path() + "/m";
  ASSERT_EQ(this->matrix->saveMatrixToDisk(path.c_str()), 1);
  ASSERT_EQ(this->matrix->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  EXPECT_EQ(this->exist({1, 2, 3}), 3);
}

// The header keeps an impossible size; the self-tests look at the existing slots.
TYPED_TEST(VerificationTest, ImpossibleBlockSizesAreIgnored) {
  this->write({1, 2});
  for (const int size : {INT_MIN, -5, 0}) {
    this->matrix->setInitialMatrixBlocksize(size);
    EXPECT_EQ(this->scan(), (Vector{1, 1, 1})) << size;
    EXPECT_EQ(this->scan(1), (Vector{1, 1, 1})) << size;
    EXPECT_EQ(this->walk(), (Vector{1, 1, 1})) << size;
  }
}

TYPED_TEST(VerificationTest, TrimShrinksBlockAndArrays) {
  int n = 0;
  while (this->matrix->getMaximalStack() < 100) this->write({n++});
  this->matrix->getMatrixFileHeader()->_setMaximalStack(5000);
  this->take();
  EXPECT_EQ(this->scan(1), (Vector{1, n, n}));
  EXPECT_EQ(this->take(),
            "begin performMatrixLinearTest for matrixID 0...\nmatrix will be trimmed...\n"
            "matrixLinear-Test: _matrixBlockSize reduced from 64000 to 163 items\n");
  EXPECT_EQ(this->matrix->getMaximalStack(), 100);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 163);
  EXPECT_EQ(this->info()->getInternalCurrentDimension(), 1);
  EXPECT_EQ(this->info()->getMaximalIndices()[0], n - 1);
  EXPECT_EQ(this->broken(), "");
  for (int k = 0; k < 300; ++k) this->write({k, k % 5, -k, 1});  // the trimmed block and arrays grow again
  EXPECT_EQ(this->scan(), (Vector{1, n + 300, 300}));
  this->write({400});
  this->remove({400}, 1);
  this->scan();  // corrects the sum, which the walk would report
  EXPECT_EQ(this->walk(1), (Vector{1, n + 300, 300}));
  EXPECT_EQ(this->info()->getMaximalIndices()[0], 299);
  EXPECT_EQ(this->info()->getMinimalIndices()[2], -299);
  EXPECT_EQ(this->broken(), "");
}

// The block is cut behind the last slot of all sub-matrices, so handles stay valid. The walk doesn't trim if there are several.
TYPED_TEST(VerificationTest, TrimKeepsOtherSubMatrices) {
  this->write({1, 2});
  this->matrix->setCurrentMatrixID(2);
  for (int k = 0; k < 40; ++k) this->write({k, 1});
  const int handle = this->handleOf({39, 1}), stack = this->matrix->getMaximalStack();
  this->matrix->setCurrentMatrixID(0);
  EXPECT_EQ(this->walk(1), (Vector{1, 1, 1}));
  EXPECT_TRUE(
      this->told("ConsistencyTestparameter trim = 1 set to 0: matrix will not be trimmed because matrix contains more "
                 "than 1 sub matrices...\n"));
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), 64000);
  EXPECT_EQ(this->scan(1), (Vector{1, 1, 1}));
  EXPECT_EQ(this->matrix->getMaximalStack(), stack);
  EXPECT_EQ(this->matrix->getMatrixBlockSize(), static_cast<int>((stack + 1) * 1.618));
  for (int id = 0; id < 4; ++id) {
    EXPECT_EQ(this->matrix->getMatrixDataEntryArray()[id], this->matrix->getMatrixData() + id);
  }
  this->matrix->setCurrentMatrixID(2);
  EXPECT_EQ(this->handleOf({39, 1}), handle);
  EXPECT_EQ(this->scan(1), (Vector{1, 40, 40}));  // nothing more to cut
  EXPECT_EQ(this->matrix->getMaximalStack(), stack);
  EXPECT_EQ(this->broken(), "");
}

TYPED_TEST(VerificationTest, ReadBackComparesValues) {
  this->write({1, 2});
  this->write({1, 2, 3});
  int *none = nullptr, one[] = {1, 2}, two[] = {1, 2, 3}, path[] = {1}, missing[] = {4};
  int* vectors[] = {one, two, path, missing};
  int lengths[] = {2, 3, 1, 1}, errors = -1, tests = -1;
  long long values[] = {7, 8, 0, 0};
  zmatrix::Account tell([this] { return this->take(); });
  tell("nothing", this->matrix->perform2ndMemoryTest(1, nullptr, none, values, &errors, &tests));
  const int result = this->matrix->perform2ndMemoryTest(4, vectors, lengths, values, &errors, &tests);
  tell("four", result, errors, tests);
}

TYPED_TEST(VerificationTest, ReadBackTakesPackedItems) {
  int items[] = {123456789, -5}, wrong[] = {123456789, -6}, errors = -1, tests = -1;
  int* vectors[] = {items, wrong, nullptr};
  int lengths[] = {2, 2, 2};
  long long values[] = {11, 12, 13}, wideItems[] = {123456789, -5};
  zmatrix::Account tell([this] { return this->take(); });
  for (const int width : {1, 2, 3}) {
    this->matrix->setCurrentMatrixID(width);
    this->info()->setAllowLargeIndices(width == 2 ? 2 : 1);
    if (width == 3) this->info()->setAllowLargeIndices(2);  // from 1 to 2 the dimension isn't changed
    if (width == 1) this->matrix->writeMatrixElement32(items, 2, 11);
    if (width == 2) this->matrix->writeMatrixElement64(wideItems, 2, 11);
    this->take();
    const int result = this->matrix->perform2ndMemoryTest(width == 3 ? 1 : 3, vectors, lengths, values, &errors, &tests);
    tell("sub-matrix " + std::to_string(width), result, errors, tests);
  }
}

class MediumVerificationTest : public zmatrix::TierTest<ZQMatrixMedium> {};

TEST_F(MediumVerificationTest, PhraseMatrixNeedsAContextForEachRule) {
  info()->setIsPhraseMatrix(1);
  info()->setMatrixType(2);
  const int sequence[] = {1, 2, 3, 4, 1, 5, 3, 6};
  ASSERT_EQ(matrix->updateMatrixWithCombinedSequence(sequence, 8, 2, 1, 0, 0), 1);
  EXPECT_EQ(scan()[0], 1);
  static_cast<ZQMatrixMediumElement*>(matrix->getMatrixDataEntry()[0])->setWriteCountWithSuccessor(0);
  take();
  EXPECT_EQ(walk()[0], 0);
  EXPECT_TRUE(told("error matrixLinear-Test for matrix ID 0: point without rule  unexpected for phrase-Matrix\n"));
}

class FullVerificationTest : public zmatrix::TierTest<ZQMatrix> {};

TEST_F(FullVerificationTest, FollowsSymbols) {
  zmatrix::Account tell([this] { return take(); });
  write({1, 2}, 1);
  tell("no symbol level", scan());
  matrix->setCurrentMatrixIDLevelUp(1);
  tell("an empty one", scan());
  const int phrase = handleOf({1, 2});
  matrix->setCurrentMatrixID(1);
  write({257});
  auto* symbol = static_cast<ZQMatrixElement*>(elementOf({257}));
  symbol->setSymbolDownLinkHandle(phrase);
  take();
  tell("without a basic level", scan());
  matrix->setCurrentMatrixIDLevelDown(0);
  tell("linked both ways", scan());
  for (const int handle : {1000000, handleOf({257})}) {
    symbol->setSymbolDownLinkHandle(handle);
    tell("a wrong handle", scan());
  }
  matrix->setCurrentMatrixID(0);
  tell("walk", walk());
  symbol->setSymbolDownLinkHandle(phrase);
  tell("the right one", walk());
}

}  // namespace
