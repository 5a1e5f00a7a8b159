// The rules of Humdrum, a small file for each: which are reported, and which refuse the file.
#include <gtest/gtest.h>

#include "music/kern/KernUnderTest.h"
#include "music/kern/ZQKernValidator.h"
#include "support/KeptText.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::kern;
using zmatrix::KernUnderTest;

/// The broken rules with their places: "E13@2.3" is error 13 in line 2, column 3.
class Findings : public zmatrix::KernObserver {
 public:
  void brokeRule(zmatrix::KernRule rule, const zmatrix::KernPlace& place) override {
    const zmatrix::KernRuleText& text = zmatrix::textOf(rule);
    rules += (rules.empty() ? "" : " ") + std::string(text.isError ? "E" : "W") + std::to_string(text.number) + "@" +
             std::to_string(place.line) + (place.column > 0 ? "." + std::to_string(place.column) : "");
    messages += text.message;
  }
  std::string rules, messages;
};

class KernValidatorTest : public testing::Test {
 public:
  std::string check(const std::string& text) {
    zmatrix::KernLines lines;
    Findings findings;
    EXPECT_TRUE(lines.open(folder.put("a.krn", text).c_str()));
    numberOfRefusals = zmatrix::KernValidator(lines, findings).check();
    EXPECT_EQ(captured.take(), findings.messages);
    return findings.rules;
  }
  zmatrix::TestFolder folder;
  zmatrix::CapturedMessages captured{0};
  int numberOfRefusals = -1;
};

TEST_F(KernValidatorTest, ReportsEachRuleWithItsPlace) {
  zmatrix::expectKeptCases("kern_rules.txt", [this](const std::string& records) {
    const std::string rules = check(kern(records));
    return rules + (rules.empty() ? "" : " ") + "refusals " + std::to_string(numberOfRefusals);
  });
}

TEST_F(KernValidatorTest, SplitsLinesAtItsBuffer) {
  zmatrix::expectKeptCases("kern_lines.txt", [this](const std::string& text) { return check(text); });
  const std::string longest(1022, 'x');
  EXPECT_EQ(check("**kern\n" + longest + "\n*-\n"), "");
  EXPECT_EQ(check("**kern\n" + longest + "x\n*-\n"), "E2@2") << "the line feed is a line of its own";
  EXPECT_EQ(check("**kern\n!!" + longest + "\tx\n*-\n"), "E13@2") << "the rest of a comment counts as data";
}

TEST_F(KernValidatorTest, PrintsTheFrameOfASummaryAtLevel8) {
  ZQDebugChannel::globalDebugLevel = 8;
  zmatrix::KernLines lines;
  zmatrix::KernObserver observer;
  ASSERT_TRUE(lines.open(folder.put("a.krn", "**kern\n4c\n*-\n").c_str()));
  zmatrix::KernValidator(lines, observer).check();
  EXPECT_EQ(captured.take(),
            "Inventory of Interpretations:\t\t\t\tHUMDRUM FILE SUMMARY\n\n\tInterpretations\tOccurrences\n"
            "\nInventory of data token signifiers:\t\n\t\t\t\t\t\n\t\t\t\t\t\n\n"
            "Number of global comments:      0\tNumber of local comments:       0\n"
            "Maximum # of concurrent spines: 0\tMinimum # of concurrent spines: 0\n"
            "Number of data records:         0\tNumber of null tokens:          0\n\n"
            "\nChanges in number of spines:\n\tNew spines:        0\n\tTerminated spines: 0\n"
            "\tSplit spines:      0\n\tJoined spines:     0\n\tExchanges spines:  0\n");
}

}  // namespace
