// The kernel sequences of a record: resets, growth, and copies for hosts.
#include <climits>
#include <iterator>
#include <numeric>

#include "settings/InitialisedRecord.h"
#include "support/CapturedMessages.h"
#include "support/Vectors.h"

using zmatrix::systemFree;

namespace {

using zmatrix::Vector;
using Record = zmatrix::InitialisedRecord<ZQMatrixMediumInfo>;

Vector flat(int* (ZQMatrixMediumInfo::*copy)(int*, int*), ZQMatrixMediumInfo& record) {
  int length = -1, dimension = -1;
  const Vector items = zmatrix::taken((record.*copy)(&length, &dimension), length);
  EXPECT_EQ(dimension, record.getCoordinateDimension());
  return items;
}

TEST(KernelSequenceTest, ResetWritesTheDefaultItemOfTheMatrixType) {
  const struct {
    int matrixType, dimension, preProcessingType;
    Vector expected;
  } cases[] = {{0, 2, 1, {0, 0}},
               {1, 2, 1002, {65, 0}},
               {1, 1, 1, {65}},
               {2, 1, 2, {0, 0}},
               {3, 1, 1, {7}},
               {4, 3, 1003, {65, 0, 3072}},
               {5, 4, 1004, {65, 0, 3072, 0}},
               {5, 5, 1, {65, 0, 3072, 0, 7}},
               {6, 1, 1, {7}},
               {-1, 1, 1, {7}},
               {2, 1, 0, {}}};
  for (const auto& tried : cases) {
    Record record(0);
    record.setCoordinateDimension(tried.dimension);
    record.setMatrixType(tried.matrixType);
    record.setPreProcessingType(tried.preProcessingType);
    const Vector sevens(static_cast<size_t>(tried.dimension), 7);
    record.storeKernelOriginal(sevens.data(), 1);
    record.storeKernelInitialValues(sevens.data(), 1);
    record.setLengthOfKernelPreProcessedSequence(5);
    EXPECT_EQ(record.resetKernelSequence(3, 1) * tried.dimension, static_cast<int>(tried.expected.size()));
    EXPECT_EQ(flat(&ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector, record), tried.expected);
    EXPECT_EQ(flat(&ZQMatrixMediumInfo::getKernelOriginalSequenceInitialValuesFlatIndexVector, record), tried.expected);
    EXPECT_EQ(record.getLengthOfKernelPreProcessedSequence(), 0);
    EXPECT_EQ(record.getKernelMatrixHandle(), 3);
  }
}

TEST(KernelSequenceTest, ResetWithoutInitialValuesKeepsTheItemsBeforeTheKernel) {
  Record record(0);
  record.storeKernelOriginal(std::data({10, 11, 12, 13, 14}), 5);
  record.storeKernelInitialValues(std::data({20, 21, 22, 23, 24}), 5);
  record.storeKernelPreProcessed(std::data({30, 31, 32}), 3);
  EXPECT_EQ(flat(&ZQMatrixMediumInfo::getKernelPreProcessedSequenceIndexVector, record), (Vector{30, 31, 32}));
  EXPECT_EQ(record.resetKernelSequence(0, 0), 2);
  EXPECT_EQ(flat(&ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector, record), (Vector{20, 21}));
  EXPECT_EQ(record.getKernelPreProcessedSequence()[0][0], 0);

  zmatrix::CapturedMessages messages(8);
  record.setLengthOfKernelPreProcessedSequence(3);
  EXPECT_EQ(record.resetKernelSequence(0, 0), -1);
  EXPECT_EQ(messages.take(),
            "initializeKernelSequenceWithObjectOriginalSequence(): _lengthOfKernelOriginalSequence(2) - "
            "_lengthOfKernelPreProcessedSequence(3)) <0)\n");
  EXPECT_TRUE(flat(&ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector, record).empty());
}

TEST(KernelSequenceTest, LongKernelsSurviveResets) {
  Record record(0);
  ASSERT_TRUE(record.provideKernelOriginal(1000));
  record._setInternalLengthOfKernelOriginalSequence(0);
  Vector initialValues(1000);
  std::iota(initialValues.begin(), initialValues.end(), 0);
  record.storeKernelInitialValues(initialValues.data(), 1000);
  record.setLengthOfKernelOriginalSequence(1000);
  EXPECT_EQ(record.resetKernelSequence(0, 0), 1000);
  EXPECT_EQ(record.getInternalLengthOfKernelOriginalSequence(), 256);
  EXPECT_EQ(record.getInternalLengthOfKernelPreProcessedSequence(), 256);
  EXPECT_EQ(record.getKernelOriginalSequence()[0][999], 999);

  record._setInternalLengthOfKernelOriginalSequence(1618);
  EXPECT_EQ(record.getKernelOriginalSequence()[0][1617], 0) << "a row is as long as the internal length says";
  EXPECT_EQ(record.getKernelOriginalSequenceInitialValues()[0][1617], 0);
  record._setInternalLengthOfKernelOriginalSequence(INT_MAX);
  EXPECT_EQ(record.getKernelOriginalSequence()[0][999], 999) << "no longer rows for absurd lengths";

  record.setPreProcessingType(999);  // more items than new rows have
  EXPECT_EQ(record.resetKernelSequence(0, 1), 999);

  Record fresh(0);
  fresh.setPreProcessingType(999);
  EXPECT_EQ(fresh.resetKernelSequence(0, 0), 999);
  fresh.setCoordinateDimension(3);
  EXPECT_EQ(fresh.getKernelOriginalSequence()[2][998], 0) << "new rows are as long as the sequence";
}

TEST(KernelSequenceTest, ObjexVectorsAreOneBlock) {
  Record record(0);
  record.setCoordinateDimension(2);
  record.storeKernelOriginal(std::data({0, 0, 1, -1, 2, -2}), 3);
  int count = 0, dimension = 0;
  const zmatrix::SystemOwned<int*> items(record.createKernelOriginalSequenceObjexVector(&count, &dimension));
  ASSERT_EQ(count, 3);
  EXPECT_EQ(dimension, 2);
  EXPECT_EQ(reinterpret_cast<int**>(items.get()[0]), items.get() + 3) << "the items follow their pointers";
  EXPECT_EQ(items.get()[2][1], -2);

  zmatrix::CapturedMessages messages(8);
  EXPECT_EQ(record.initializeKernelSequenceWithObjectOriginalSequence(items.get(), count), 0);
  EXPECT_EQ(messages.take(), "initializeKernelSequenceWithObjectOriginalSequence(): not yet implemented\n");
  EXPECT_EQ(record.initializeKernelSequenceWithObjectOriginalSequence(nullptr, 0), 0);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(record.getKernelSequenceObjectVector(&count, nullptr), record.getKernelPreProcessedSequence());
  EXPECT_EQ(messages.take(), "getKernelSequenceObjectVector89: not yet implemented\n");

  record.deInitMatrixInfo();
  EXPECT_EQ(record.createKernelOriginalSequenceObjexVector(&count, &dimension), nullptr);
}

}  // namespace
