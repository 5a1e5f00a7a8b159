// Info records of the three tiers: guarded setters, dimensions, names of update files, update sequences.
#include <climits>
#include <string>

#include "settings/InitialisedRecord.h"
#include "settings/ZQMatrixFields.h"
#include "support/CapturedMessages.h"
#include "support/KeptText.h"

namespace {

using zmatrix::CapturedMessages;
using zmatrix::InitialisedRecord;

// The result and messages of each setter with rules of its own, for an empty record and a filled one. Values that are stored
// without a message are left out.
TEST(InfoRecordTest, GuardedSettersKeepTheirRulesAndMessages) {
  CapturedMessages messages(0);
  std::string text;
  for (const zmatrix::FieldRow& row : zmatrix::fieldsUpTo(ZQMatrixInfoTypeFull)) {
    if (row.setter == nullptr) continue;
    for (const bool isFilled : {false, true}) {
      text += zmatrix::verdicts(row.name + std::string(isFilled ? " filled" : " empty"), [&](int value) {
        InitialisedRecord<ZQMatrixInfo> record;
        record.setNumberOfMatrixElements(isFilled);
        record.setNumberOfWriteElements(isFilled);
        const int before = row.valueIn(record);
        row.set(static_cast<ZQMatrixInfo&>(record), value);
        const int after = row.valueIn(record);
        const std::string message = messages.take();
        if (after == value && message.empty()) return message;
        return (after == value    ? "stored, "
                : after == before ? "left, "
                                  : "stored as " + std::to_string(after) + ", ") +
               (message.empty() ? "\n" : message);
      });
    }
  }
  zmatrix::expectKeptText("record_setters.txt", text);
}

TEST(InfoRecordTest, LargeIndicesForceTheDimensionOnce) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  CapturedMessages messages(0);
  record.setAllowLargeIndices(1);
  EXPECT_EQ(messages.take(), "warning: setAllowLargeIndices(1) forces coordDimension to 2!\n");
  EXPECT_EQ(record.getCoordinateDimension(), 2);
  ASSERT_NE(record.getKernelOriginalSequence(), nullptr);
  EXPECT_EQ(record.getKernelOriginalSequence()[1][255], 0) << "a row for each coordinate of the forced dimension";
  record.setAllowLargeIndices(2);
  EXPECT_EQ(messages.take(),
            "warning: setAllowLargeIndices(2) forces coordDimension to 4!\n"
            "error: setCoordinateDimension can not be set if allowLargeIndices >0!\n");
  EXPECT_EQ(record.getAllowLargeIndices(), 2);
  EXPECT_EQ(record.getCoordinateDimension(), 2);
}

TEST(InfoRecordTest, TheMaximalIndexMustExceedTheIndicesSeen) {
  InitialisedRecord<ZQMatrixBaseInfo> record;
  CapturedMessages messages(0);
  for (int dimension = 0; dimension < 3; ++dimension) {
    EXPECT_EQ(record.checkMatrixDimension(dimension), 1);
    EXPECT_EQ(record.updateMatrixIndexInfo(dimension, 100), 1);
    record.updateMatrixIndexInfo(dimension, -3);
  }
  record.setNumberOfMatrixElements(3);
  for (int tooSmall : {100, 102}) {
    record.setMaximalMatrixIndex(tooSmall);
    EXPECT_EQ(messages.take(),
              "error: setMaximalIndex for non-empty matrix failed because matrix contains values with higher indices\n");
  }
  EXPECT_EQ(record.getMaximalIndices()[0], 100);
  EXPECT_EQ(record.getMinimalIndices()[0], -3);
  record.setMaximalMatrixIndex(103);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(record.getMaximalIndices()[0], -104);
  EXPECT_EQ(record.getMinimalIndices()[31], 104);

  record.deInitMatrixInfo();
  record.setMaximalMatrixIndex(5);
  EXPECT_EQ(messages.take(), "error: setMaximalIndex can only be called after initMatrix!\n");
  EXPECT_EQ(record.updateMatrixIndexInfo(0, 1), 0);
  EXPECT_EQ(messages.take(), "updateMatrixInfo: dimIndex >= _internalCurrentDimension unexpected\n");

  InitialisedRecord<ZQMatrixBaseInfo> empty;
  for (int hostile : {INT_MAX, INT_MIN, -1}) empty.setMaximalMatrixIndex(hostile);
  EXPECT_EQ(empty.getMaximalMatrixIndex(), -1);
}

TEST(InfoRecordTest, DimensionsGrowByTheirFactorUpToTheLimit) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  CapturedMessages messages(0);
  EXPECT_EQ(record.checkMatrixDimension(31), 1);
  EXPECT_EQ(record.getInternalCurrentDimension(), 32);
  EXPECT_EQ(record.getCurrentDimension(), 32);
  EXPECT_EQ(record.checkMatrixDimension(50), 1);
  EXPECT_EQ(record.getInternalCurrentDimension(), 80) << "50 * 1.618, truncated";
  EXPECT_EQ(record.getMinimalIndices()[79], 500001);
  EXPECT_EQ(record.getMaximalIndices()[79], -500001);
  EXPECT_EQ(record.getMatrixPtr()[80], 0);
  int numberOfDimensions = 0;
  EXPECT_EQ(record.getUniqueRulesInDimension(&numberOfDimensions)[50], 0);
  EXPECT_EQ(numberOfDimensions, 51);
  EXPECT_EQ(record.checkMatrixDimension(4095), 1);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(record.checkMatrixDimension(4096), 0);
  EXPECT_EQ(messages.take(), "checkMatrixDimension: dimIndex >= _maximalDimension unexpected\n");

  record.setMaxDimOfMatrix(10);
  EXPECT_EQ(record.checkMatrixDimension(20), 0) << "the limit holds within the capacity too";
}

TEST(InfoRecordTest, DimensionsWithoutMemoryAreRefused) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  record.setMaxDimOfMatrix(INT_MAX);
  zmatrix::largestAllocation = 1000 * sizeof(int);
  EXPECT_EQ(record.checkMatrixDimension(INT_MAX - 1), 0);
  EXPECT_EQ(record.getCurrentDimension(), 0);
  EXPECT_EQ(record.checkMatrixDimension(100), 1);
  zmatrix::largestAllocation = static_cast<size_t>(-1);
  record._setInternalCurrentDimension(1);
  EXPECT_EQ(record.checkMatrixDimension(1), 1) << "grows although 1 * 1.618, truncated, is 1";
  record.getMatrixPtr()[2] = 1;
}

TEST(InfoRecordTest, AddsNamesFromItsOwnList) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  record.addNameOfUpdateFile(std::string(200, 'a').c_str());
  record.addNameOfUpdateFile(record.getNamesOfUpdateFiles());
  record.addNameOfUpdateFile(record.getNamesOfUpdateFiles() + 400);
  const std::string name(200, 'a');
  EXPECT_EQ(std::string(record.getNamesOfUpdateFiles()), name + "\n" + name + "\n\n" + "a\n\n\n");
}

TEST(InfoRecordTest, NamesAreWholeInTheListAndCutInTheField) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  const std::string longName(300, 'n');
  for (const std::string& name : {std::string("first.txt"), longName}) {
    record.setNameOfUpdateFile(name.c_str());
    record.addNameOfUpdateFile(name.c_str());
  }
  EXPECT_EQ(std::string(record.getNameOfUpdateFile()), std::string(256, 'n'));
  EXPECT_EQ(std::string(record.getNamesOfUpdateFiles()), "first.txt\n" + longName + "\n");

  ZQMatrixProperties* snapshot = record.getGlobalMatrixInfoParameters();
  ASSERT_NE(snapshot, nullptr);
  EXPECT_STREQ(snapshot->namesOfUpdateFiles, record.getNamesOfUpdateFiles());
  EXPECT_NE(snapshot->namesOfUpdateFiles, record.getNamesOfUpdateFiles()) << "a copy";
  EXPECT_EQ(snapshot->minimalIndices, record.getMinimalIndices());
  EXPECT_EQ(snapshot->maxPhraseLengthForUpdateWithSequence, 64);
  EXPECT_EQ(snapshot->successorRandomValue, 31459);
  EXPECT_EQ(snapshot->ocronType, 0) << "number codes are not copied";
  EXPECT_EQ(snapshot->matrixID, 2);
  snapshot->musicStyle = 9;
  EXPECT_EQ(record.getGlobalMatrixInfoParameters(), snapshot);
  EXPECT_EQ(snapshot->musicStyle, 0) << "each call fills it again";
  record.releaseMemoryGlobalMatrixInfoParameters();
}

TEST(InfoRecordTest, UpdateSequencesAreReplacedOrAppended) {
  InitialisedRecord<ZQMatrixMediumInfo> record;
  record.setCoordinateDimension(2);
  CapturedMessages messages(0);
  const int first[] = {1, -300, 2, 300};
  const int wider[] = {1000, 1};
  const std::string firstRows("\x01\xd4\xfe\x02\x2c\x01", 6);
  record.generateUpdateInfoSequence(wider, 2);
  record.generateUpdateInfoSequence(first, 4);
  const std::string endRows(12, '\n');
  EXPECT_EQ(std::string(record.getUpdateSequence(), 18), firstRows + endRows);
  EXPECT_EQ(record.getLengthOfUpdateSequence(), 6);
  EXPECT_EQ(record.getTotalLengthOfAllUpdateSequences(), 3);

  record.setAddSequenceToUpdateInfoMode(1);
  record.generateUpdateInfoSequence(wider, 2);
  const std::string error =
      "########## Error from generateUpdateInfoSequence: SizeOfCoordinateDimensions unexpected\n"
      "########## update sequence may contain invalid data...\n";
  EXPECT_EQ(messages.take(), error + error) << "one for each coordinate that differs";
  EXPECT_EQ(record.getLengthOfUpdateSequence(), 11);
  EXPECT_EQ(std::string(record.getUpdateSequence(), 33), firstRows + endRows + std::string("\xe8\x01\x00", 3) + endRows);

  record.generateUpdateInfoSequence(nullptr, 4);
  record.generateUpdateInfoSequence(first, INT_MIN);
  EXPECT_EQ(record.getLengthOfUpdateSequence(), 11);
  record.setLengthOfUpdateSequence(INT_MAX);
  record.generateUpdateInfoSequence(first, 4);
  EXPECT_EQ(record.getLengthOfUpdateSequence(), INT_MAX) << "unchanged if there is no room";

  InitialisedRecord<ZQMatrixMediumInfo> withoutCoordinates;
  withoutCoordinates.setCoordinateDimension(0);
  withoutCoordinates.generateUpdateInfoSequence(first, 4);
  EXPECT_EQ(withoutCoordinates.getUpdateSequence(), nullptr);
}

}  // namespace
