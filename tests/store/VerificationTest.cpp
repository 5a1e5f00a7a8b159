// The self-tests of the three tiers: what they tell, how they trim, and that what they read back and whom symbols name is right.
// What they count is held against a map of paths in VerificationScriptTest.cpp.
#include <random>

#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace {

using zmatrix::Vector;

template <class Matrix>
class SelfTestTest : public zmatrix::TierTest<Matrix> {};
TYPED_TEST_SUITE(SelfTestTest, zmatrix::Tiers);

const std::string scanBegins = "begin performMatrixLinearTest for matrixID 0...\nmatrix will not be trimmed...\n";

TYPED_TEST(SelfTestTest, EmptyAndUnknown) {
  EXPECT_EQ(this->scan(), (Vector{-1, 0, 0}));
  EXPECT_EQ(this->take(), scanBegins + "performMatrixLinearTest: matrix is empty!\n");
  EXPECT_EQ(this->walk(), (Vector{-1, 0, 0}));
  EXPECT_EQ(this->take(), "PerformMatrixConsistencyTest: matrix is empty!\n");
  int written = 5, ends = 5;
  EXPECT_EQ(this->matrix->perform1stMemoryTest(3, &written, &ends, 0), -2);
  EXPECT_EQ(this->take(), "performMatrix1stMemoryTest failed with rc = -2\n");
  EXPECT_EQ(written + ends, 0);
}

TYPED_TEST(SelfTestTest, CountersThatDiffer) {
  this->write({1, 2});
  auto* info = this->info();
  const std::string ends = "numberOfEndElementsInMatrix differs from _numberOfEndElements 1 <-> 3\n";
  EXPECT_EQ(this->scan(), (Vector{1, 1, 1}));
  EXPECT_EQ(this->take(), scanBegins);
  info->setNumberOfWriteElements(4);
  EXPECT_EQ(this->scan(), (Vector{0, 1, 1}));
  EXPECT_EQ(this->take(), scanBegins +
                              "error matrixLinear-Test: numberOfWriteElementsInMatrix differs from "
                              "_numberOfWriteElements 1 <-> 4");
  EXPECT_EQ(info->getNumberOfWriteElements(), 4);
  info->setNumberOfWriteElements(1);
  info->setNumberOfEndElements(3);
  EXPECT_EQ(this->scan()[0], this->isBase ? 0 : 1);
  EXPECT_EQ(this->take(), scanBegins + (this->isBase ? "error matrixLinear-Test: " : "warning:  matrixLinear-Test: ") + ends);
  EXPECT_EQ(info->getNumberOfEndElements(), this->isBase ? 3 : 1);
  info->setNumberOfEndElements(1);
  info->setNumberOfMatrixWriteEvents(9);
  EXPECT_EQ(this->scan()[0], 1);
  EXPECT_TRUE(this->told("overallWriteCount possibly differs from _numberOfWriteEvents -_numberOfDeleteEvents: 1 <-> 9 - 0\n"));
  info->setNumberOfMatrixElements(8);
  info->setNumberOfWriteCounts(6);
  EXPECT_EQ(this->walk(), (Vector{0, 1, 1}));
  EXPECT_EQ(this->take(),
            "error matrixConsistencyTest: getNumberOfWriteCounts(6) != overallWriteCount(1)!\n"
            "error matrixConsistency-Test:: numberOfOccupiedPositions differs from _numberOfElements: 2<->8\n");
}

// A trim counts written paths only, and only those within the limits seen; what else there is stays readable, in a file as well.
TYPED_TEST(SelfTestTest, WhatATrimDoesNotCountStaysReadable) {
  this->write({1, 2});
  this->write({1, 3});
  this->matrix->setMaximalMatrixIndex(1000);  // forgets the limits seen
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

// A size of no block stays in the header; the tests look at the slots that there are.
TYPED_TEST(SelfTestTest, ASizeThatMakesNoSense) {
  this->write({1, 2});
  for (const int size : {INT_MIN, -5, 0}) {
    this->matrix->setInitialMatrixBlocksize(size);
    EXPECT_EQ(this->scan(), (Vector{1, 1, 1})) << size;
    EXPECT_EQ(this->scan(1), (Vector{1, 1, 1})) << size;
    EXPECT_EQ(this->walk(), (Vector{1, 1, 1})) << size;
  }
}

TYPED_TEST(SelfTestTest, Trim) {
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
  this->scan();  // sets the sum right, which the walk would find fault with
  EXPECT_EQ(this->walk(1), (Vector{1, n + 300, 300}));
  EXPECT_EQ(this->info()->getMaximalIndices()[0], 299);
  EXPECT_EQ(this->info()->getMinimalIndices()[2], -299);
  EXPECT_EQ(this->broken(), "");
}

// The block is cut behind the last slot of all sub-matrices; handles from before stay good. The walk trims none of several.
TYPED_TEST(SelfTestTest, TrimKeepsWhatOtherSubMatricesHold) {
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

// The box of indices holds 10 to the 30 vectors; only those that exist may be visited.
TYPED_TEST(SelfTestTest, WideBox) {
  std::mt19937 engine(3);
  for (int i = 0; i < 300; ++i) {
    Vector vector(10);
    for (int& k : vector) k = static_cast<int>(engine() % 1000) - 500;
    this->write(vector);
  }
  EXPECT_EQ(this->walk(), (Vector{1, 300, 300}));
  EXPECT_EQ(this->scan(), (Vector{1, 300, 300}));
}

TYPED_TEST(SelfTestTest, ReadBack) {
  this->write({1, 2});
  this->write({1, 2, 3});
  int *none = nullptr, one[] = {1, 2}, two[] = {1, 2, 3}, path[] = {1}, missing[] = {4};
  int* vectors[] = {one, two, path, missing};
  int lengths[] = {2, 3, 1, 1}, errors = -1, tests = -1;
  long long values[] = {7, 8, 0, 0};
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(1, nullptr, none, values, &errors, &tests), -1);
  EXPECT_TRUE(this->told("Can't perform second Memory test, because no values for"));
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(4, vectors, lengths, values, &errors, &tests), 1);
  EXPECT_EQ(errors, 3);
  EXPECT_EQ(tests, 4);
  const std::string told = this->take();
  for (const char* words : {"read-value 7 differs from expected value 8 . Coordinates: 1,2,3\n",
                            "retCode 1 unexpected in second memory test for: 1\n", "3: read-error 0 from readMatrixData: 4\n"}) {
    EXPECT_NE(told.find(words), std::string::npos) << told;
  }
}

TYPED_TEST(SelfTestTest, ReadBackOfWideItems) {
  int items[] = {123456789, -5}, wrong[] = {123456789, -6}, errors = -1, tests = -1;
  int* vectors[] = {items, wrong, nullptr};
  int lengths[] = {2, 2, 2};
  long long values[] = {11, 12, 13}, wideItems[] = {123456789, -5};
  for (const int width : {1, 2}) {
    this->matrix->setCurrentMatrixID(width);
    this->info()->setAllowLargeIndices(width);
    EXPECT_EQ(
        width == 1 ? this->matrix->writeMatrixElement32(items, 2, 11) : this->matrix->writeMatrixElement64(wideItems, 2, 11), 1);
    this->take();
    EXPECT_EQ(this->matrix->perform2ndMemoryTest(3, vectors, lengths, values, &errors, &tests), 1);
    EXPECT_EQ(errors, 2);
    const std::string told = this->take();
    EXPECT_EQ(told.find("0: read-error"), std::string::npos);
    EXPECT_NE(told.find("1: read-error "), std::string::npos);
    EXPECT_NE(told.find("2: read-error 0 from readMatrixData: \n"), std::string::npos);
  }
  this->matrix->setCurrentMatrixID(3);  // from 1 to 2 the dimension stays behind
  for (const int width : {1, 2}) this->info()->setAllowLargeIndices(width);
  this->take();
  EXPECT_EQ(this->matrix->perform2ndMemoryTest(1, vectors, lengths, values, &errors, &tests), 1);
  EXPECT_EQ(errors, 1);
  EXPECT_EQ(this->take(), "Illegal combination of coordDimension (2) and allowLargeIndices (2)\n");
}

class MediumSelfTest : public zmatrix::TierTest<ZQMatrixMedium> {};

TEST_F(MediumSelfTest, APhraseMatrixNeedsAContextForEachRule) {
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

class FullSelfTest : public zmatrix::TierTest<ZQMatrix> {};

// Every fault that the counters can have, in the order in which they are told.
TEST_F(FullSelfTest, CountersInTheirOrder) {
  write({1, 2}, 0, 1);
  info()->_setCurrentDimension(3);
  info()->setNumberOfWriteElements(2);
  info()->setNumberOfEndElements(5);
  info()->setNumberOfStartElements(6);
  info()->incrementNumberOfSymbols();
  EXPECT_EQ(scan(), (Vector{0, 1, 1}));
  EXPECT_EQ(take(), scanBegins +
                        "matrixLinearTest: error: dimension(3) != dimension1(2)\n"
                        "error matrixLinear-Test: numberOfWriteElementsInMatrix differs from _numberOfWriteElements 1 <-> 2"
                        "warning:  matrixLinear-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements 1 <-> 5\n"
                        "error matrixLinear-Test: numberOfStartElementsInMatrix differs from _numberOfStart 1 <-> 6\n"
                        "error: matrixLinear-Test: numberOfSymbols differs from _numberOfSymbols 0 <-> 1\n");
}

TEST_F(FullSelfTest, FollowsSymbols) {
  const std::string scanned = "performMatrixLinearTest for matrixID ";
  write({1, 2}, 1);
  EXPECT_EQ(scan()[0], 1);
  EXPECT_TRUE(told("warning " + scanned + "0: symbol 257 found but symbol level matrix does not exist\n"));
  matrix->setCurrentMatrixIDLevelUp(1);
  EXPECT_EQ(scan()[0], 0);
  EXPECT_TRUE(told("error " + scanned + "0: symbol 257 found, but downHandle -1 is invalid!\n"));
  const int phrase = handleOf({1, 2});
  matrix->setCurrentMatrixID(1);
  write({257});
  auto* symbol = static_cast<ZQMatrixElement*>(elementOf({257}));
  symbol->setSymbolDownLinkHandle(phrase);
  EXPECT_EQ(scan()[0], 0);
  EXPECT_TRUE(
      told("error " + scanned + "1: downlinkHandle " + std::to_string(phrase) + " found basic level matrix does not exist\n"));
  matrix->setCurrentMatrixIDLevelDown(0);
  EXPECT_EQ(scan()[0], 1);
  for (const auto& [handle, words] :
       {std::pair{1000000, "downHandle 1000000 is invalid!\n"}, {handleOf({257}), "points to element without symbol!\n"}}) {
    symbol->setSymbolDownLinkHandle(handle);
    EXPECT_EQ(scan()[0], 0);
    EXPECT_TRUE(told(words));
  }
  matrix->setCurrentMatrixID(0);
  EXPECT_EQ(walk()[0], 0);
  EXPECT_TRUE(told("does not belong to a valid entry in basic level matrixID 0!\n"));
  symbol->setSymbolDownLinkHandle(phrase);
  EXPECT_EQ(walk()[0], 1);
}

}  // namespace
