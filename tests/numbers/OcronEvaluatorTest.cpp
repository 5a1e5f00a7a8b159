// Evaluation of ocrons: values, result codes, messages, and overflow of 64 bits.
#include <climits>
#include <random>

#include "NumbersFixture.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronEvaluator.h"
#include "support/KeptText.h"

namespace {

class OcronEvaluatorTest : public zmatrix::NumbersFixture {
 public:
  /// The arguments of an evaluator, which writes to the text.
  char* use(const std::string& ocron) {
    messages.take();
    text = ocron;
    length = static_cast<int>(ocron.size());
    return text.data();
  }
  long long value(int type, const std::string& ocron) {
    char* const string = use(ocron);
    return zmatrix::ocronToLongLong(type, string, length, &stackDepth);
  }
  long long logarithmic(const std::string& ocron) {
    char* const string = use(ocron);
    return zmatrix::ocron4ToLogLongLong(string, length, &stackDepth, &logBase);
  }
  long long virtualValue(const std::string& ocron) {
    char* const string = use(ocron);
    return zmatrix::ocron7ToLongLong(string, length, &stackDepth, &logBase);
  }
  /// The first line of the messages since the last call.
  std::string message() {
    const std::string all = messages.take();
    return all.substr(0, all.find('\n'));
  }

  std::string text;
  int length = 0, stackDepth = 0, logBase = 0;
};

TEST_F(OcronEvaluatorTest, GivesValuesCodesAndMessages) {
  zmatrix::expectKeptCases("ocron_values.txt", [this](const std::string& line) {
    const std::string ocron = repeated(line.substr(std::min<size_t>(2, line.size())));
    stackDepth = -1;
    logBase = 0;
    const long long result = line[0] == 'L'   ? logarithmic(ocron)
                             : line[0] == 'V' ? virtualValue(ocron)
                                              : value(line[0] - '0', ocron);
    return std::to_string(result) + " depth " + std::to_string(stackDepth) + " base " + std::to_string(logBase) + "\n" +
           message();
  });
  logBase = 3;
  EXPECT_EQ(logarithmic("222P2*^^"), -11);
  EXPECT_EQ(
      message(),
      "ocron4ToLogLongLong: long long pow overflow (logarithmic representation not possible, different base values) '*' 2 * 64");
  char* const tooLarge = use(repeated("2{31}*{30}"));
  EXPECT_EQ(zmatrix::ocronToint(4, tooLarge, length, &stackDepth), -1);
}

TEST_F(OcronEvaluatorTest, NeedsATextAndPrimes) {
  for (int type = 3; type <= 7; type++) EXPECT_EQ(zmatrix::ocronToLongLong(type, nullptr, 3, &stackDepth), -2);
  const std::pair<int, const char*> names[] = {
      {3, "ocron3ToLongLong"}, {4, "ocron4ToLongLong"}, {5, "ocron5ToLongLong"}, {6, "ocron6ToInt"}, {7, "ocron7ToLongLong"}};
  for (const auto& [type, name] : names) {
    text = "2P";
    EXPECT_EQ(zmatrix::ocronToLongLong(type, text.data(), 3, &stackDepth), -3);
    EXPECT_EQ(message(), std::string(name) + ": strlen(ocronString) 2 != lengthOfOcron: 3");
  }
  zmatrix::deinitPrimes();
  EXPECT_EQ(value(6, "P"), -4);
  EXPECT_EQ(message(), "ocron6ToInt: primeNumbers not initialized! ");
  EXPECT_EQ(value(4, "2"), -4);
  EXPECT_EQ(message(), "ocron4ToLongLong: primeNumbers not initialized! ");
  EXPECT_EQ(value(7, "2"), 0);
}

TEST_F(OcronEvaluatorTest, NeedsOnePrimeMoreThanTheRank) {
  zmatrix::initPrimes(0, 10, &count);
  ASSERT_EQ(count, 669);
  for (int type = 3; type <= 6; type++)
    for (int rank : {668, 669}) {
      int capacity = 0, compareNumber = 0;
      std::string ocron = textOf(zmatrix::intToOcron(type, &length, &capacity, rank, &compareNumber, &stackDepth));
      ASSERT_EQ(compareNumber, rank);
      EXPECT_EQ(value(type, ocron + "P"), rank == 668 ? 4993 : type == 6 ? 4999 : -6) << type;
    }
  EXPECT_EQ(zmatrix::nthPrime(669), 4999);
}

TEST_F(OcronEvaluatorTest, SurvivesRandomStrings) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; i++) {
    std::string ocron;
    for (size_t n = random() % 24; n > 0; n--) ocron += "22*P^Q\n"[random() % 7];
    for (int type = 3; type <= 7; type++) value(type, ocron);
    logBase = 0;
    logarithmic(ocron);
  }
  for (int type = 3; type <= 7; type++)
    for (const char symbol : {'2', 'P', '*', '^', 'Q', '\xff'}) value(type, std::string(40000, symbol));
  EXPECT_EQ(value(3, std::string(200, '2') + std::string(126, '*')), value(3, std::string(127, '2') + std::string(126, '*')));
}

TEST_F(OcronEvaluatorTest, ComputesExactLogarithmsOnly) {
  for (int exponent = 1; exponent < 63; exponent++) EXPECT_EQ(zmatrix::longLogFromValueWithBase(1LL << exponent, 2), exponent);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(9, 27, 3), 5);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(1, 8, 2), 3);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(9, 28, 3), 0);
  EXPECT_EQ(zmatrix::longLogFromPowerWithBase(8, 1LL << 62, 2), static_cast<long long>(3ULL << 62));
  EXPECT_EQ(zmatrix::longLogFromPowerWithBase((1LL << 62) + 1, 5, 2),
            0);  // its rounded logarithm is an integer, its logarithm is not
  for (long long bad : {0LL, -8LL, LLONG_MIN})
    for (int base : {INT_MIN, -2, 0, 1, 2}) EXPECT_EQ(zmatrix::longLogFromValueWithBase(bad, base), 0);
  EXPECT_EQ(zmatrix::longLongAbs(LLONG_MIN), LLONG_MIN);
  EXPECT_EQ(zmatrix::longLongAbs(-5), 5);
}

}  // namespace
