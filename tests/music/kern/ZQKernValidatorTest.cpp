// The rules of Humdrum, one small file each: which are told, and which refuse the file.
#include <gtest/gtest.h>

#include "music/kern/KernUnderTest.h"
#include "music/kern/ZQKernValidator.h"

namespace {

using zmatrix::kern;
using zmatrix::KernUnderTest;

/// The broken rules with their places: "E13@2" for error 13 in line 2, ".3" behind it for column 3.
class Findings : public zmatrix::KernObserver {
 public:
  void brokeRule(zmatrix::KernRule rule, const zmatrix::KernPlace& place) override {
    const zmatrix::KernRuleText& text = zmatrix::textOf(rule);
    said += (said.empty() ? "" : " ") + std::string(text.isError ? "E" : "W") + std::to_string(text.number) + "@" +
            std::to_string(place.line) + (place.column > 0 ? "." + std::to_string(place.column) : "");
    messages += text.message;
  }
  std::string said, messages;
};

class KernValidatorTest : public testing::Test {
 protected:
  std::string check(const std::string& text) {
    zmatrix::KernLines lines;
    Findings findings;
    EXPECT_TRUE(lines.open(folder.put("a.krn", text).c_str()));
    numberOfRefusals = zmatrix::KernValidator(lines, findings).check();
    EXPECT_EQ(captured.take(), findings.messages);
    return findings.said;
  }
  zmatrix::TestFolder folder;
  zmatrix::CapturedMessages captured{0};
  int numberOfRefusals = -1;
};

TEST_F(KernValidatorTest, TellsEachRuleWithItsPlace) {
  const struct {
    const char* records;
    const char* findings;
    int refusals;
  } cases[] = {
      {"**kern **kern\n4c 4e\n*- *-", "", 0},
      {"**kern\n*+\n4c 4e\n*- *-", "E1@3", 0},
      {"**kern\n*+\n* *\n*- *-", "E1@3.2", 0},
      {"**kern\n*+\n* **text\n*- *-", "", 0},
      {"**kern\n\n*-", "E2@2", 1},
      {"**kern\n 4c\n*-", "E3@2", 1},
      {"**kern\n !! x\n*-", "E3@2", 1},
      {"**kern\n4c \n \n*-", "E4@2 E3@3 E4@3", 3},
      {"**kern **kern\n4c  4e\n*- *-", "E5@2", 1},
      {"**kern **kern\n* x\n*- *-", "E6@2.2", 0},
      {"** **kern\n*- *-", "E7@1.1", 0},
      {"**kern\n* *\n*-", "E8@2 E8@3", 0},
      {"! !\n**kern **kern\n*- *-", "E9@1", 0},
      {"**kern\n! !\n! x\n! !!\n*-", "E10@2 E10@3 E11@3.2 E10@4 W1@4.2", 0},
      {"4c\n**kern\n*-", "E12@1", 0},
      {"**kern\n4c 4e\n*-", "E13@2", 0},
      {"**kern\n4c", "E14@2", 1},
      {"* **text *- *M4/4", "E15@1.1 E17@1.1 E17@1.3 E16@1.3 E17@1.4 E14@1", 1},
      {"**kern **kern\n*^ *k[]\n*v *v *\n*- *-", "E18@2.2", 0},
      {"**kern **kern **kern\n*x * *\n*x *x *\n*x *x *x\n*- *- *-", "E19@2.1 E19@4.1", 0},
      {"**kern **text\n* *v\n*v *v\n*-", "E20@2.2 E22@3.2", 0},
      {"**kern **kern\n*v *\n*x *x\n*v *v\n*-", "E21@2.1", 0},
      {"**kern **text\n*x *x\n*^ *\n*v *v *\n*- *-", "", 0},
      {"**kern **kern\n_4c 4e_\n4c__4e ._4e_.\n*- *-", "E23@2.1 E24@2.2 E25@3.1 E26@3.2", 0},
      {"**kern **a **b **c **d\n!!x\n!x !!x !x **x *x\n4c !!x !x **x *x\n*- *- *- *- *-",
       "W1@3.2 E11@3.4 E11@3.5 W2@4.2 W3@4.3 W4@4.4 W5@4.5", 0},
      {"**kern\n*-\n**kern\n*-", "", 0},
      {"**kern\n*-\n4c", "E12@3 E14@3", 1},
  };
  for (const auto& [records, findings, refusals] : cases) {
    EXPECT_EQ(check(kern(records)), findings) << records;
    EXPECT_EQ(numberOfRefusals, refusals) << records;
  }
}

TEST_F(KernValidatorTest, SeesLinesAsItsBufferTakesThem) {
  EXPECT_EQ(check(""), "");
  EXPECT_EQ(check("**kern\n*-"), "E14@2") << "a last line without a line feed isn't seen";
  EXPECT_EQ(check("**kern\r\n\r\n4c\r\n*-\r\n"), "E14@4") << "a carriage return belongs to its token";
  EXPECT_EQ(check("**kern\t**kern\r\n*-\t*-\r\n"), "E18@2.2");
  EXPECT_EQ(check("**kern\r4c\r*-\r"), "");
  EXPECT_EQ(check(std::string("**kern\n\0\n*-\n", 12)), "E2@2") << "a line ends at a NUL byte";
  EXPECT_EQ(check("\xEF\xBB\xBF**kern\n*-\n"), "E12@1 E17@2.1 E16@2.1 E14@2")
      << "a byte order mark makes data of the first record";
  const std::string longest(1022, 'x');
  EXPECT_EQ(check("**kern\n" + longest + "\n*-\n"), "");
  EXPECT_EQ(check("**kern\n" + longest + "x\n*-\n"), "E2@2") << "the line feed comes alone";
  EXPECT_EQ(check("**kern\n!!" + longest + "\tx\n*-\n"), "E13@2") << "the rest of a comment counts as data";
}

TEST_F(KernValidatorTest, PrintsTheFrameOfASummaryAtLevel8) {
  ZQDebugChannel::globalDebugLevel = 8;
  zmatrix::KernLines lines;
  zmatrix::KernObserver nobody;
  ASSERT_TRUE(lines.open(folder.put("a.krn", "**kern\n4c\n*-\n").c_str()));
  zmatrix::KernValidator(lines, nobody).check();
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
