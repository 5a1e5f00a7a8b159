// Primes, their ranks, factors and sums of divisors. Queries are compared with plain walks from the estimate, in tables that
// begin with 2 or later, up to numbers beyond their ends.
#include <climits>
#include <cmath>
#include <numeric>

#include "NumbersFixture.h"
#include "numbers/ZQNumberTheory.h"
#include "numbers/ZQRiemannEstimate.h"

namespace {

class PrimesTest : public zmatrix::NumbersFixture {};

/// The queries as walks through the table.
class WalkingTable {
 public:
  explicit WalkingTable(std::vector<long long> primes) : primes_(std::move(primes)) {}

  long long size() const { return static_cast<long long>(primes_.size()); }
  static long long indexOf(long long n) {
    return std::max(static_cast<long long>(zmatrix::riemann_r(static_cast<double>(n))) - 1, 0LL);
  }

  long long primePi(long long n) const {
    if (n < 2) return 0;
    long long index = indexOf(n);
    if (index >= size()) return index + 1;
    while (index < size() && primes_[index] < n) index++;
    if (index == size()) index--;
    while (index >= 0 && primes_[index] > n) index--;
    return index + 1;
  }
  int isPrime(long long n) const {
    if (indexOf(n) >= size()) return -1;
    const long long rank = primePi(n);
    return rank > 0 && primes_[rank - 1] == n;
  }
  long long notPrimePi(long long n) const { return n > primes_.back() ? -1 : n - primePi(n); }
  long long nthNotPrime(long long n) const {
    const double before = static_cast<double>(n) - 1, l = std::log(before);
    auto c = static_cast<long long>(
        before * (1 + 1 / l + 2 / (l * l) + 4 / std::pow(l, 3) + 19 / (2 * std::pow(l, 4)) + 181 / (6 * std::pow(l, 5))) + 0.5);
    if (c > primes_.back() || notPrimePi(c) < 0) return -1;
    if (notPrimePi(c) >= n) {
      while (notPrimePi(c - 1) >= n) c--;
      return c;
    }
    while (c <= primes_.back() && notPrimePi(c) < n) c++;
    return c <= primes_.back() ? c : -1;
  }

 private:
  std::vector<long long> primes_;
};

std::vector<long long> primesByTrial(long long from, long long to) {
  std::vector<long long> primes;
  for (long long n = std::max(from, 2LL); n <= to; n++) {
    bool isPrime = true;
    for (long long d = 2; d * d <= n && isPrime; d++) isPrime = n % d != 0;
    if (isPrime) primes.push_back(n);
  }
  return primes;
}

TEST_F(PrimesTest, FindsThePrimesBetweenBounds) {
  const std::pair<unsigned, unsigned> bounds[] = {{0, 10},      {4000, 4100}, {0, 120011}, {2, 5003}, {1000000, 1000100},
                                                  {5024, 5038}, {5001, 5003}};
  for (const auto& [lower, upper] : bounds) {
    const std::vector<long long> expected = primesByTrial(lower, std::max(upper, 5000u));
    const int* table = zmatrix::initPrimes(lower, upper, &count);
    EXPECT_EQ(std::vector<long long>(table, table + count), expected) << lower;
    long long largeCount = 0;
    const long long* large = zmatrix::initPrimesLarge(lower, upper, &largeCount);
    EXPECT_EQ(std::vector<long long>(large, large + largeCount), expected) << lower;
  }
  // Large numbers, whose range lies in a single segment of the sieve.
  long long largeCount = 0;
  const long long* large = zmatrix::initPrimesLarge(10000000000000, 10000000000100, &largeCount);
  EXPECT_EQ(std::vector<long long>(large, large + largeCount), primesByTrial(10000000000000, 10000000000100));
}

TEST_F(PrimesTest, KeepsOrDropsTheTableIfANewOneFails) {
  int maximum = 0, found = -7;
  const int* old = zmatrix::getPrimeNumbers(&count, &maximum);
  EXPECT_EQ(zmatrix::initPrimes(5000, 5001, &found), nullptr);
  EXPECT_EQ(zmatrix::initPrimes(UINT_MAX, 10, &found), nullptr);
  EXPECT_EQ(zmatrix::getPrimeNumbers(&found, &maximum), old);
  zmatrix::deinitPrimes();
  EXPECT_EQ(zmatrix::getPrimeNumbers(&found, &maximum), nullptr);
  EXPECT_EQ(found, count);  // count and maximum stay
  EXPECT_EQ(maximum, 199999);
  EXPECT_EQ(zmatrix::notPrimePi(10), 11);
  EXPECT_EQ(zmatrix::isPrime(7), -1);
  EXPECT_EQ(zmatrix::numberOfPrimesUpto(7), -1.0);
  EXPECT_EQ(zmatrix::nthPrime(1), -1);
  EXPECT_EQ(zmatrix::nthNotPrime(1), -1);
  zmatrix::largestAllocation = 4096;
  EXPECT_EQ(zmatrix::initPrimes(0, 100000, &found), nullptr);
  EXPECT_EQ(found, 0);
  EXPECT_EQ(zmatrix::getPrimeNumbers(&found, &maximum), nullptr);
  EXPECT_EQ(found + maximum, 0);
  EXPECT_EQ(zmatrix::initFirstNPrimesLarge(LLONG_MAX), nullptr);
}

TEST_F(PrimesTest, AnswersLikeWalks) {
  const std::pair<unsigned, unsigned> bounds[] = {{0, 10}, {0, 30000}, {4000, 4100}, {1000, 5000}};
  for (const auto& [lower, upper] : bounds) {
    zmatrix::initPrimes(lower, upper, &count);
    long long largeCount = 0;
    zmatrix::initPrimesLarge(lower, upper, &largeCount);
    const WalkingTable walk(primesByTrial(lower, std::max(upper, 5000u)));
    for (int n = -3; n < 32000; n++) {
      ASSERT_EQ(zmatrix::primePi(n), walk.primePi(n)) << n;
      ASSERT_EQ(zmatrix::primePiLarge(n), walk.primePi(n)) << n;
      ASSERT_EQ(zmatrix::isPrime(n), walk.isPrime(std::max(n, 0))) << n;
      ASSERT_EQ(zmatrix::notPrimePi(n), walk.notPrimePi(n)) << n;
    }
    for (int n = 5; n < 31000; n += 3) ASSERT_EQ(zmatrix::nthNotPrime(n), walk.nthNotPrime(n)) << n;
  }
}

TEST_F(PrimesTest, AnswersAtTheLimits) {
  EXPECT_EQ(zmatrix::nthPrime(1), 2);
  EXPECT_EQ(zmatrix::nthPrime(count), 199999);
  for (int n : {INT_MIN, -1, 0, count + 1, INT_MAX}) EXPECT_EQ(zmatrix::nthPrime(n), -1);
  for (int n : {INT_MIN, -1}) EXPECT_EQ(zmatrix::nthNotPrime(n), -1);
  const std::vector<int> first = {0, 1, 4, 6, 8, 9};
  for (int n = 0; n < 6; n++) EXPECT_EQ(zmatrix::nthNotPrime(n), first[static_cast<size_t>(n)]);
  messages.take();
  EXPECT_EQ(zmatrix::nthNotPrime(INT_MAX), -1);
  EXPECT_EQ(messages.take(), "error nth notprime: startvalue 2257702280 too big\n");
  EXPECT_EQ(zmatrix::primePi(INT_MAX), static_cast<int>(zmatrix::riemann_r(INT_MAX)));  // the estimate, truncated
  EXPECT_EQ(zmatrix::numberOfPrimesUpto(NAN), 0.0);
  EXPECT_EQ(zmatrix::numberOfPrimesUpto(-INFINITY), 0.0);
  EXPECT_EQ(zmatrix::notPrimePi(INT_MIN), INT_MIN);
  EXPECT_NEAR(zmatrix::riemann_r(1e9), 50847455.4277, 1e-3);
  zmatrix::initFirstNPrimes(INT_MIN);
  EXPECT_GE(zmatrix::nthPrime(500), 3571);
}

TEST_F(PrimesTest, FactorisesAndSumsDivisors) {
  int sigma = 0;
  for (int n = 1; n < 3000; n++) {
    const tagPrimeFact* factors = zmatrix::getPrimeFactors(n, &count, &sigma, 0);
    long long product = 1, divisors = 0, divisorsWithout4 = 0;
    for (int i = 1; i <= count; i++) product *= zmatrix::llPow(factors[i].prime, factors[i].power);
    for (int d = 1; d <= n; d++) {
      if (n % d == 0) divisors += d;
      if (n % d == 0 && d % 4 != 0) divisorsWithout4 += d;
    }
    ASSERT_EQ(product, n);
    ASSERT_EQ(factors[0].prime, count);
    ASSERT_EQ(std::make_tuple(sigma, factors[0].power, zmatrix::sigma(n), zmatrix::sigma4(n)),
              std::make_tuple(divisors, divisors, divisors, divisorsWithout4));
  }
  tagPrimeFact* copy = zmatrix::getPrimeFactors(INT_MAX, &count, &sigma, 1);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy[1].prime, INT_MAX);
  EXPECT_EQ(sigma, INT_MIN);  // 2^31, in 32 bits
  zmatrix::deletePrimeFactor(copy);
  EXPECT_EQ(zmatrix::getPrimeFactors(0, &count, &sigma, 0)[1].prime, 0);
  for (int n : {-1, INT_MIN}) EXPECT_EQ(zmatrix::getPrimeFactors(n, &count, &sigma, 0), nullptr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(sigma, 1);
  for (int n : {0, -1, INT_MIN}) EXPECT_EQ(zmatrix::sigma(n) + zmatrix::sigma4(n), 0);
  zmatrix::initPrimes(0, 10, &count);
  EXPECT_EQ(zmatrix::getPrimeFactors(5003 * 5003, &count, &sigma, 0), nullptr);  // the factor is beyond the table
  EXPECT_EQ(zmatrix::sigma(5003 * 5003), 1 + 5003 + 5003 * 5003);
  EXPECT_EQ(zmatrix::isMersennePrime(43112609), 1);
  EXPECT_EQ(zmatrix::isMersennePrime(11), 0);
  EXPECT_EQ(zmatrix::llPow(2, 64), 0);
  EXPECT_EQ(zmatrix::llPow(-3, 3), -27);
}

}  // namespace
