// Evaluation: what strings are worth, every code and message, and the ends of 64 bits.
#include <climits>
#include <random>
#include <tuple>

#include "NumbersTest.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronEvaluator.h"

namespace {

class OcronEvaluatorTest : public zmatrix::NumbersTest {
 protected:
  long long value(int type, std::string ocron) {
    messages.take();
    text = std::move(ocron);
    return zmatrix::ocronToLongLong(type, text.data(), static_cast<int>(text.size()), &stackDepth);
  }
  long long logarithmic(std::string ocron) {
    messages.take();
    text = std::move(ocron);
    return zmatrix::ocron4ToLogLongLong(text.data(), static_cast<int>(text.size()), &stackDepth, &logBase);
  }
  /// What the last call printed behind the evaluator's name.
  std::string told() {
    const std::string all = messages.take();
    return all.substr(0, all.find('\n'));
  }

  std::string text;
  int stackDepth = 0, logBase = 0;
};

/// 2 to the power of `exponent` as so many twos on the stack.
std::string twos(int exponent) {
  return std::string(static_cast<size_t>(exponent), '2');
}

/// The same multiplied symbol by symbol.
std::string powerOfTwo(int exponent) {
  return twos(exponent) + std::string(static_cast<size_t>(exponent - 1), '*');
}

const std::string sixtyThree = "22^P2P2^*", sixtyFour = "22P2*^";

TEST_F(OcronEvaluatorTest, FillsInAndMultipliesInTypes3And4Alone) {
  for (int type : {3, 4}) {
    EXPECT_EQ(value(type, "2P"), 3);
    EXPECT_EQ(value(type, "P"), 3);
    EXPECT_EQ(stackDepth, 1);
    for (const char* four : {"2*", "*", "22"}) EXPECT_EQ(value(type, four), 4);
  }
  EXPECT_EQ(value(4, "2P^"), 9);
  EXPECT_EQ(value(4, "2P2PP^"), 243);
  EXPECT_EQ(value(4, "22P2"), 12);
  EXPECT_EQ(stackDepth, 3);
  EXPECT_EQ(value(5, "22PQ"), 11);
  EXPECT_EQ(value(6, "PP"), 3);
  EXPECT_EQ(value(6, "*"), 1);
  EXPECT_EQ(value(6, "P**"), 8);
}

TEST_F(OcronEvaluatorTest, TellsItsFailures) {
  struct Failure {
    int type;
    std::string ocron;
    long long code;
    const char* told;
  };
  const Failure failures[] = {
      {3, "2x", -4, "ocron3ToLongLong: illegal char found in virtual ocron: x"},
      {3, "2^", -4, "ocron3ToLongLong: illegal char found in virtual ocron: ^"},
      {4, "2Q", -4, "ocron4ToLongLong: illegal char found in virtual ocron: Q"},
      {5, "2\n-", 2, ""},  // not looked at
      {6, "P2", -4, "ocron6ToLongLong: illegal char found in virtual ocron: 2"},
      {7, "2Q", -4, "ocron7ToLongLong: illegal char found in virtual ocron: Q"},
      {3, "\n22", -11, "ocron3ToLongLong: illegal ocronStackPtr on return : 0"},
      {4, "\n22", -13, "ocron4ToLongLong: illegal ocronStackPtr on return : 0"},
      {5, "\n22", -15, "ocron5ToInt: illegal ocronStackPtr on return : 0"},
      {5, "22", -15, "ocron5ToInt: illegal ocronStackPtr on return : 2"},
      {5, "2*", -10, "ocron5ToInt: illegal ocronStackPtr for operator '*' 1"},
      {5, "2^", -12, "ocron5ToInt: illegal ocronStackPtr for operator '^' 1"},
      {5, "2Q", -8, "ocron5ToInt: illegal ocronStackPtr for operator '*' 1"},
      {5, "P", -7, "ocron5ToInt: illegal ocron stack value 0! "},
      {3, "2PPPPPPPPP", -6, "ocron3ToLongLong: number of preInitialized primes (17984) too small for 52711! "},
      {5, "2" + sixtyFour + "Q", -9, "ocron5ToInt: number of preInitialized primes (17984) too small for 52711! "},
      {3, powerOfTwo(62) + "22**", -9, "ocron3ToLongLong: long long overflow '*' 4611686018427387904 * 4"},
      {5, powerOfTwo(62) + "22**", -11, "ocron5ToInt: long long overflow '*' 4611686018427387904 * 4"},
      {4, "2" + sixtyFour + "^", -11, "ocron4ToLongLong: long long overflow '^' 2 ^ 64"},
      {5, "2" + sixtyFour + "^", -13, "ocron5ToInt: long long overflow '^' 2 * 64"},
      {6, "PPPPPPPPPPPPPP", -1, ""},
      {2, "2", -1, ""},
      {8, "2", -1, ""},
      {4, "", -1, ""},
  };
  for (const Failure& failure : failures) {
    EXPECT_EQ(value(failure.type, failure.ocron), failure.code) << failure.ocron;
    EXPECT_EQ(told(), failure.told) << failure.ocron;
  }
  for (int type = 3; type <= 7; type++) EXPECT_EQ(zmatrix::ocronToLongLong(type, nullptr, 3, &stackDepth), -2);
  const std::pair<int, const char*> names[] = {
      {3, "ocron3ToLongLong"}, {4, "ocron4ToLongLong"}, {5, "ocron5ToLongLong"}, {6, "ocron6ToInt"}, {7, "ocron7ToLongLong"}};
  for (const auto& [type, name] : names) {
    text = "2P";
    EXPECT_EQ(zmatrix::ocronToLongLong(type, text.data(), 3, &stackDepth), -3);
    EXPECT_EQ(told(), std::string(name) + ": strlen(ocronString) 2 != lengthOfOcron: 3");
  }
  zmatrix::deinitPrimes();
  EXPECT_EQ(value(6, "P"), -4);
  EXPECT_EQ(told(), "ocron6ToInt: primeNumbers not initialized! ");
  EXPECT_EQ(value(4, "2"), -4);
  EXPECT_EQ(told(), "ocron4ToLongLong: primeNumbers not initialized! ");
  EXPECT_EQ(value(7, "2"), 0);
}

TEST_F(OcronEvaluatorTest, NeedsOnePrimeMoreThanTheRank) {
  zmatrix::initPrimes(0, 10, &count);
  ASSERT_EQ(count, 669);
  for (int type = 3; type <= 6; type++)
    for (int rank : {668, 669}) {
      int length = 0, capacity = 0, compareNumber = 0;
      std::string ocron = textOf(zmatrix::intToOcron(type, &length, &capacity, rank, &compareNumber, &stackDepth));
      ASSERT_EQ(compareNumber, rank);
      EXPECT_EQ(value(type, ocron + "P"), rank == 668 ? 4993 : type == 6 ? 4999 : -6) << type;
    }
  EXPECT_EQ(zmatrix::nthPrime(669), 4999);
}

TEST_F(OcronEvaluatorTest, WrapsAt2ToThe63) {
  EXPECT_EQ(value(3, twos(62)), 1LL << 62);
  EXPECT_EQ(value(3, twos(63)), LLONG_MIN);  // what is multiplied at the end isn't looked at
  EXPECT_EQ(value(3, twos(64)), 0);
  const std::pair<int, int> products[] = {{3, -10}, {4, -12}, {5, -14}};
  for (const auto& [type, code] : products) {
    EXPECT_EQ(value(type, powerOfTwo(63)), code);
    EXPECT_NE(told().find(": illegal value for ocronStack[0] : 0"), std::string::npos);  // its low 32 bits
  }
  for (const auto& [type, code] : {products[1], products[2]}) {
    EXPECT_EQ(value(type, "2" + sixtyThree + "^"), code);
    EXPECT_NE(told().find(": illegal value for ocronStack[0] : -1"), std::string::npos);
  }
  EXPECT_EQ(logarithmic("2" + sixtyThree + "^"), -12);
  int depth = 0;
  text = powerOfTwo(31);
  EXPECT_EQ(zmatrix::ocronToint(4, text.data(), static_cast<int>(text.size()), &depth), -1);
}

TEST_F(OcronEvaluatorTest, GoesOnInLogarithms) {
  const std::string beyond = "2" + sixtyFour + "^";
  const std::tuple<std::string, long long, const char*> known[] = {
      {beyond, 64, ""},
      {beyond + "*", 65, ""},  // a 2 is filled in
      {beyond + "^", 128, ""},
      {beyond + "2*", 128, ""},  // a 2 that is pushed ends the logarithm: 64 times 2
      {powerOfTwo(62) + "22P^*", 65, ""},
      {"2P" + sixtyFour + "^", -11, "long long overflow '^' (no logarithm found) 3 ^ 64"},
      {powerOfTwo(62) + "2P22***", -9, "long long overflow (lo logarithm found)'*' 4611686018427387904 * 12"},
      {beyond + "P", -13, "cannot apply P-Operator to logarithmic value..."},
      {"2" + powerOfTwo(62) + "22P^**", -14,
       "long long overflow (logarithmic representation not possible, different base values) '*' 2 * 65"},
      {powerOfTwo(62) + beyond + "^", -15,
       "long long logarithmic Pow overflow (logarithmic representation not possible, different base values) '*' "
       "4611686018427387904 * 64"},
      {"x", -12, "illegal value for ocronStack[0] : 0"},
  };
  for (const auto& [ocron, expected, sentence] : known) {
    logBase = 0;
    const long long result = logarithmic(ocron);
    EXPECT_EQ(result, expected) << ocron;
    EXPECT_EQ(told(), *sentence != 0 ? "ocron4ToLogLongLong: " + std::string(sentence) : "") << ocron;
    EXPECT_EQ(logBase, expected > 0 || expected <= -13 ? 2 : 0) << ocron;
  }
  logBase = 0;
  EXPECT_EQ(logarithmic("2" + beyond + "*"), 8);  // the logarithm is taken for a value: 2 and the logarithm of 64
  logBase = 3;
  EXPECT_EQ(logarithmic(beyond), -11);
  EXPECT_EQ(
      told(),
      "ocron4ToLogLongLong: long long pow overflow (logarithmic representation not possible, different base values) '*' 2 * 64");
}

TEST_F(OcronEvaluatorTest, EvaluatesVirtualOcrons) {
  const auto virtualValue = [this](std::string ocron) {
    text = std::move(ocron);
    return zmatrix::ocron7ToLongLong(text.data(), static_cast<int>(text.size()), &stackDepth, &logBase);
  };
  EXPECT_EQ(virtualValue("22^P"), 7);
  EXPECT_EQ(logBase, 0);
  EXPECT_EQ(virtualValue("2" + sixtyFour + "^"), 128);
  EXPECT_EQ(logBase, 2);
  EXPECT_EQ(virtualValue("2P" + sixtyFour + "^"), 0);
  EXPECT_EQ(logBase, 0);
  EXPECT_EQ(virtualValue("\n2"), 2);  // nothing is left, and a power without operands is 4, 2 to the power of 2
}

TEST_F(OcronEvaluatorTest, StandsRandomStrings) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; i++) {
    std::string ocron;
    for (unsigned n = random() % 24; n > 0; n--) ocron += "22*P^Q\n"[random() % 7];
    for (int type = 3; type <= 7; type++) value(type, ocron);
    logBase = 0;
    logarithmic(ocron);
  }
  for (int type = 3; type <= 7; type++)
    for (const char symbol : {'2', 'P', '*', '^', 'Q', '\xff'}) value(type, std::string(40000, symbol));
  EXPECT_EQ(value(3, std::string(200, '2') + std::string(126, '*')), value(3, std::string(127, '2') + std::string(126, '*')));
}

TEST_F(OcronEvaluatorTest, KnowsExactLogarithms) {
  for (int exponent = 1; exponent < 63; exponent++) EXPECT_EQ(zmatrix::longLogFromValueWithBase(1LL << exponent, 2), exponent);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(9, 27, 3), 5);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(1, 8, 2), 3);
  EXPECT_EQ(zmatrix::longLogFromProductWithBase(9, 28, 3), 0);
  EXPECT_EQ(zmatrix::longLogFromPowerWithBase(8, 1LL << 62, 2), static_cast<long long>(3ULL << 62));
  EXPECT_EQ(zmatrix::longLogFromPowerWithBase((1LL << 62) + 1, 5, 2), 0);  // near enough for its logarithm, but not exact
  for (long long bad : {0LL, -8LL, LLONG_MIN})
    for (int base : {INT_MIN, -2, 0, 1, 2}) EXPECT_EQ(zmatrix::longLogFromValueWithBase(bad, base), 0);
  EXPECT_EQ(zmatrix::longLongAbs(LLONG_MIN), LLONG_MIN);
  EXPECT_EQ(zmatrix::longLongAbs(-5), 5);
}

}  // namespace
