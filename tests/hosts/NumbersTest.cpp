// Series of numbers: the formats of their files, learning and continuing them by each coding, and exit codes.
#include <sstream>

#include "hosts/RunProgram.h"

namespace {

using Numbers = std::vector<long long>;

Numbers numbersIn(const std::string& text) {
  std::istringstream lines(text);
  Numbers numbers;
  for (std::string line; std::getline(lines, line);) numbers.push_back(std::stoll(line));
  return numbers;
}

class NumbersTest : public ProgramTest {
 protected:
  Numbers continued(const std::string& arguments) const {
    const RunResult result = zmatrix("continue " + arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments << "\n" << result.diagnostics;
    return numbersIn(result.output);
  }
};

TEST_F(NumbersTest, ReadsAllUsualFormats) {
  const char* const files[] = {"1 2 4 5 7 8 10 11 13 14",
                               "1\n2\n4\n5\n7\n8\n10\n11\n13\n14\n",
                               "1, 2, 4;5;7\t8,,10\r\n11 13 +14",
                               "# steps\n1 2 4 # and so on\n5 7 8 10 11 13 14",
                               "A000001 ,1,2,4,5,7,8,10,11,13,14,\n",
                               ("\xEF\xBB\xBF"
                                "1 2 4 5 7 8 10 11 13 14")};
  for (const std::string file : files) {
    writeFile("series.txt", file);
    EXPECT_EQ(continued("series.txt --count 4 --method best"), (Numbers{16, 17, 19, 20})) << file;
  }
  writeFile("two.txt", "A000001 ,1,1,1,1,\nA000002 ,7,7,7,7,\n");
  const std::string plain = zmatrix("continue two.txt --coding plain --count 200 --start 1 --method random").output;
  EXPECT_EQ(plain.find("7\n1\n"), std::string::npos) << "each line of a table is a series of its own";
}

TEST_F(NumbersTest, LearnsByTheGivenCoding) {
  writeFile("squares.txt", "1 4 9 16 25 36 49 64 81 100");
  EXPECT_EQ(continued("squares.txt --coding difference2 --count 3"), (Numbers{121, 144, 169})) << "continues at the end";
  EXPECT_EQ(continued("squares.txt --coding difference2 --count 2 --start '-5 0 7'"), (Numbers{-5, 0, 7, 16, 27}));
  EXPECT_EQ(continued("squares.txt --coding plain --count 2 --start '9 16'"), (Numbers{9, 16, 25, 36}));
}

TEST_F(NumbersTest, LearnsTheArithmeticOfSeries) {
  std::string series = "2";
  for (int number = 3; number <= 120; ++number) series += " " + std::to_string(number);
  writeFile("series.txt", series);
  for (const std::string coding : {"ocron --ocron-type 5", "prime-ocron", "gocron --max-index 10000000", "nth-prime"}) {
    ASSERT_EQ(zmatrix("learn series.txt -o model --coding " + coding).exitCode, 0) << coding;
    const std::string generated = zmatrix("generate model --count 30 --seed 3 --start '30 31'").output;
    EXPECT_EQ(numbersIn(generated).size(), 32u) << coding;
    EXPECT_EQ(generated, zmatrix("continue series.txt --count 30 --seed 3 --start '30 31' --coding " + coding).output) << coding;
  }
  // Each number of the series follows from the two before it in these codings too.
  const Numbers expected = {9, 10, 11, 12, 13};
  EXPECT_EQ(continued("series.txt --coding nth-prime --start '9 10' --count 3"), expected);
  EXPECT_EQ(continued("series.txt --coding ocron --max-phrase 64 --start '9 10' --count 3 --method best"), expected);
}

TEST_F(NumbersTest, EndsWithOneCodePerKindOfFault) {
  writeFile("good.txt", "1 2 3 5 8");
  writeFile("bad.txt", "1 2\n3 four 5\n");
  writeFile("big.txt", "1 2\n3 4000000000 5 9999999999999999999999 7\n");
  writeFile("far.txt", "1 1000000 2 20000000 3");
  writeFile("text.txt", "It is a text. The boat is in.");
  ASSERT_EQ(zmatrix("learn good.txt -o model").exitCode, 0);
  expectCodes("faults_of_numbers.txt");
}

}  // namespace
