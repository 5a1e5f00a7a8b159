// Index vectors with a record for each level of preprocessing: growth, ownership, copies, numbers out of range.
#include "sequence/ZQMatrixSequenceIndexVector.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/Vectors.h"

using zmatrix::systemFree;
using zmatrix::systemMallocArray;

namespace {

using zmatrix::Vector;

Vector dataOf(const ZQMatrixSequenceIndexVector& vector) {
  return {vector.getIndexVector(), vector.getIndexVector() + vector.getLengthOfIndexVector()};
}

int* newBlock(std::initializer_list<int> values) {
  int* block = systemMallocArray<int>(static_cast<long long>(values.size()));
  std::copy(values.begin(), values.end(), block);
  return block;
}

TEST(SequenceIndexVectorTest, GrowsWithItsData) {
  ZQMatrixSequenceIndexVector vector;
  Vector expected, capacities;
  for (int i = 0; i < 100; i++) {
    vector.addSequenceItem(i * i);
    expected.push_back(i * i);
    if (capacities.empty() || capacities.back() != vector._getInternalLengthOfIndexVector())
      capacities.push_back(vector._getInternalLengthOfIndexVector());
  }
  EXPECT_EQ(dataOf(vector), expected);
  EXPECT_EQ(capacities, (Vector{16, 25, 40, 64, 103}));
  EXPECT_EQ(vector.getIndexItemAtIndex(99), 99 * 99);
  EXPECT_EQ(vector.getIndexItemAtIndex(100), 0);
  EXPECT_EQ(vector.getIndexItemAtIndex(-1), 0);

  vector.setIndexVector(vector.getIndexVector() + 90, 10);  // a part of its own data
  EXPECT_EQ(dataOf(vector), Vector(expected.end() - 10, expected.end()));
  vector.setIndexVector(expected.data(), 100);
  vector.setIndexVector(nullptr, 5);
  vector.setIndexVector(expected.data(), -1);
  EXPECT_EQ(dataOf(vector), expected);
  Vector longer(103, 3);
  vector.setIndexVector(longer.data(), 103);
  EXPECT_EQ(vector._getInternalLengthOfIndexVector(), 104);

  vector.removeAllSequenceItems();
  EXPECT_EQ(vector.getLengthOfIndexVector(), 0);
  EXPECT_EQ(vector._getInternalLengthOfIndexVector(), 10);
}

TEST(SequenceIndexVectorTest, TakesOverABlock) {
  ZQMatrixSequenceIndexVector vector;
  EXPECT_TRUE(vector.setIndexVectorReference(newBlock({7}), 1));
  EXPECT_EQ(vector._getInternalLengthOfIndexVector(), 1);
  vector.addSequenceItem(8);  // 1.618 * 1, truncated, is no growth, so it doubles
  EXPECT_EQ(vector._getInternalLengthOfIndexVector(), 2);
  EXPECT_EQ(dataOf(vector), (Vector{7, 8}));
  EXPECT_TRUE(vector.setIndexVectorReference(vector.getIndexVector(), 1));
  EXPECT_EQ(dataOf(vector), Vector{7});

  EXPECT_TRUE(vector.setIndexVectorReference(nullptr, 5));
  EXPECT_EQ(vector.getLengthOfIndexVector(), 0);
  int* refused = newBlock({1, 2});
  EXPECT_FALSE(vector.setIndexVectorReference(refused, 2));
  vector.setIndexVector(refused, 2);
  systemFree(refused);
  EXPECT_EQ(vector.getLengthOfIndexVector(), 0);
  vector.addSequenceItem(9);
  EXPECT_EQ(vector._getInternalLengthOfIndexVector(), 10);
  EXPECT_EQ(dataOf(vector), Vector{9});
}

TEST(SequenceIndexVectorTest, KeepsARecordForEachLevel) {
  ZQMatrixSequenceIndexVector vector;
  const Vector expectedCapacities = {1, 2, 4, 4, 8};
  for (int level = 0; level < 5; level++) {
    vector.setCurrentLevelOfPreprocOperations(level);
    EXPECT_EQ(vector._getInternalLengthOfIndexVectorInfos(), expectedCapacities[static_cast<size_t>(level)]);
    vector.setCoordDimensionAfterPreproc(level + 1);
    vector._setUsedPreprocessingType(level + 10);
    vector.setUsedPreprocessingTypeAtIndex(level, 100 + level);
    for (int i = 0; i < 30 + level; i++) vector.addOriginalSequenceItem(i + level);
  }
  vector.setCurrentLevelOfPreprocOperations(20);
  EXPECT_EQ(vector._getInternalLengthOfIndexVectorInfos(), 22);
  EXPECT_EQ(vector.getLengthOfIndexVectorInfos(), 21);
  vector.setCurrentLevelOfPreprocOperations(INT_MAX);  // no memory for so many records
  EXPECT_EQ(vector.getCurrentLevelOfPreprocOperations(), 20);

  ZQMatrixSequenceIndexVector copy;
  vector.addSequenceItem(5);
  copy.copyFrom(&vector);
  copy.copyFrom(&copy);
  copy.copyFrom(nullptr);
  EXPECT_EQ(dataOf(copy), Vector{5});
  EXPECT_EQ(copy._getInternalLengthOfIndexVectorInfos(), 22);
  EXPECT_EQ(copy.getCurrentLevelOfPreprocOperations(), 20);
  for (int level = 0; level < 5; level++) {
    vector.setCurrentLevelOfPreprocOperations(level);
    copy.setCurrentLevelOfPreprocOperations(level);
    EXPECT_EQ(copy.getUsedPreprocessingType(), level + 10);
    EXPECT_EQ(copy.getCoordDimensionAfterPreproc(), level + 1);
    EXPECT_EQ(copy.getUsedPreprocessingTypeAtIndex(level), 100 + level);
    EXPECT_EQ(copy.getUsedPreprocessingTypeAtIndex(level + 1), -1);
    EXPECT_EQ(copy.getNumberOfOriginalItemsNeededForInversePreProcess(), 30 + level);
    EXPECT_EQ(copy.getOriginalIndexItemAtIndex(29), 29 + level);
    EXPECT_EQ(copy.getOriginalIndexItemAtIndex(30 + level), 0);
    EXPECT_NE(copy.getOriginalIndexItems(), vector.getOriginalIndexItems());
    EXPECT_NE(copy.getUsedPreprocessingVector(), vector.getUsedPreprocessingVector());
  }
  copy.setPropertiesFrom(&vector);
  EXPECT_EQ(copy.getLengthOfIndexVectorInfos(), 21);
}

TEST(SequenceIndexVectorTest, IgnoresNumbersOutOfRange) {
  deleteZQMatrixSequenceIndexVector(nullptr);
  ZQMatrixSequenceIndexVector vector;
  EXPECT_EQ(vector.getUsedPreprocessingType(), -1) << "no level yet";
  EXPECT_EQ(vector.getOriginalIndexItems(), nullptr);
  for (int number : {INT_MIN, -1, 0, 1, 5, INT_MAX}) {
    vector.setLengthOfIndexVectorInfos(number);
    for (int level : {INT_MIN, -2, -1, 3, INT_MAX}) {
      vector.setCurrentLevelOfPreprocOperations(level);
      vector.setCoordDimensionAfterPreproc(number);
      vector.setUsedPreprocessingTypeAtIndex(number, 1);
      vector.setOriginalIndexItems(nullptr, number);
      vector.addOriginalSequenceItem(1);
      vector.getOriginalIndexItemAtIndex(number);
    }
  }
  const int types[] = {3, 1002};
  vector.setApplyPreprocessingTypeVector(types, 2);
  EXPECT_EQ(vector.getCoordDimension(), 2);
  EXPECT_EQ(vector.getApplyPreprocessingTypeAtIndex(1), 1002);
  vector.setApplyPreprocessingTypeAtIndex(7, 2);  // one behind the last is in range
  EXPECT_EQ(vector.getApplyPreprocessingTypeAtIndex(2), 7);
  vector.setCoordDimension(INT_MAX);
  vector.setApplyPreprocessingTypeAtIndex(7, 3);
  for (int index : {INT_MIN, -1, 3, INT_MAX}) EXPECT_EQ(vector.getApplyPreprocessingTypeAtIndex(index), -1);
  vector.setApplyPreprocessingTypeVector(nullptr, 2);
  vector.setApplyPreprocessingTypeVector(types, -1);
  EXPECT_EQ(vector.getApplyPreprocessingTypeAtIndex(0), 3);
}

}  // namespace
