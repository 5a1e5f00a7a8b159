#include "flat/ZQMatrixCreators.h"
#include "frame/ZQProgress.h"
#include "settings/ZQMatrixMediumInfo.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

using zmatrix::globalProgressData;
using zmatrix::matrixProgressDisplay;

namespace {

std::vector<std::pair<int, int>> reports;

void rememberReport(progressCallBackData_tag* data) {
  ASSERT_EQ(data, &globalProgressData);
  reports.emplace_back(data->progressItem, data->progressItemCount);
}

class ProgressTest : public testing::Test {
 protected:
  void SetUp() override {
    reports.clear();
    zmatrix::progressThrottle = {};
    setMatrixProgressDisplayFunction(rememberReport);
  }
  void TearDown() override {
    setMatrixProgressDisplayFunction(nullptr);
    zmatrix::progressThrottle = {};
  }

  static void run(int first, int last, int itemCount) {
    for (int item = first; item <= last; item++) matrixProgressDisplay(item, itemCount);
  }
};

TEST_F(ProgressTest, ReportsAboutAHundredTimesAndTheLastItem) {
  for (int itemCount : {1, 7, 50, 99, 100, 1000, 1001, 123456}) {
    reports.clear();
    zmatrix::progressThrottle = {};
    run(0, itemCount, itemCount);
    EXPECT_LE(reports.size(), 102u) << itemCount;
    EXPECT_GE(reports.size(), std::min<size_t>(static_cast<size_t>(itemCount) / 2 + 1, 90)) << itemCount;
    EXPECT_EQ(reports.front().first, 0);
    EXPECT_EQ(reports.back(), std::make_pair(itemCount, itemCount));
    for (size_t i = 1; i + 1 < reports.size(); i++)
      EXPECT_EQ(reports[i].first - reports[i - 1].first, std::max(itemCount / 100, 1) + 1) << itemCount;
  }
}

TEST_F(ProgressTest, ALowerItemOrAnotherCountBeginsANewOperation) {
  run(0, 60, 100);
  EXPECT_EQ(reports.size(), 31u);
  run(60, 60, 100);  // repeating the last item is no new operation
  EXPECT_EQ(reports.size(), 31u);
  run(59, 59, 100);
  EXPECT_EQ(reports.back(), std::make_pair(59, 100));
  run(60, 60, 101);
  EXPECT_EQ(reports.back(), std::make_pair(60, 101));
}

TEST_F(ProgressTest, AcceptsExtremeNumbers) {
  for (int itemCount : {INT_MIN, -1, 0, 1, INT_MAX})
    for (int item : {INT_MIN, -1, 0, INT_MAX - 1, INT_MAX, INT_MAX}) matrixProgressDisplay(item, itemCount);
  EXPECT_EQ(reports.back(), std::make_pair(INT_MAX, INT_MAX));
}

TEST(SmallQueriesTest, GiveTheValuesOfTheirTables) {
  EXPECT_EQ(getExpectedMatrixMemory(1, 1, 1, 0), 64000);
  EXPECT_EQ(getExpectedMatrixMemory(0, 1, 1, 1), 0);
  EXPECT_EQ(getExpectedMatrixMemory(1, 0, 1, 1), 0);
  EXPECT_EQ(getExpectedMatrixMemory(1, 1, 0, 1), 0);
  EXPECT_EQ(getExpectedMatrixMemory(1, 1, 1, -1), 0);
  const std::pair<int, int> neededItems[] = {{-1, 0},   {0, 0},    {1, 1},    {999, 999}, {1000, 0}, {1001, 0},
                                             {1002, 1}, {1003, 1}, {1004, 1}, {1005, 0},  {1010, 0}, {INT_MAX, 0}};
  for (auto [type, items] : neededItems) EXPECT_EQ(zmatrix::numberOfItemsToRestore(type), items) << type;
}

}  // namespace
