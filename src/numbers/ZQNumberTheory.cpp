#include "numbers/ZQNumberTheory.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "frame/ZQMemory.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

constexpr int mersennePrimes[50] = {2,        3,        5,        7,        13,       17,       19,       31,       61,
                                    89,       107,      127,      521,      607,      1279,     2203,     2281,     3217,
                                    4253,     4423,     9689,     9941,     11213,    19937,    21701,    23209,    44497,
                                    86243,    110503,   132049,   216091,   756839,   859433,   1257787,  1398269,  2976221,
                                    3021377,  6972593,  13466917, 20996011, 24036583, 25964951, 30402457, 32582657, 37156667,
                                    42643801, 43112609, 57885161, 74207281, 77232917};

/// The thread's last factorisation. Entry 0 holds the number of primes and the sum of the divisors.
constinit thread_local tagPrimeFact globalPrimeFactors[101] = {};

/// 1 + p + ... + p^e.
long long sumOfPowers(tagPrimeFact factor) {
  long long sum = 1;
  for (int i = 0; i < factor.power; i++) sum = sum * factor.prime + 1;
  return sum;
}

int sumOfDivisors(int n, const PrimeFactors& factors) {
  if (n == 1) return 1;
  long long sum = 1;
  for (int i = 0; i < factors.count; i++) sum *= sumOfPowers(factors.factors[i]);
  return static_cast<int>(sum);
}

/// The sum of the divisors of `n`, which is 1 or more, by trial division.
long long sumOfDivisorsByTrial(int n) {
  long long sum = 0;
  for (int divisor = 1; static_cast<long long>(divisor) * divisor <= n; divisor++) {
    if (n % divisor != 0) continue;
    sum += divisor;
    if (n / divisor != divisor) sum += n / divisor;
  }
  return sum;
}

int computedSigma(int n) {
  if (n < 1) return 0;
  PrimeFactors factors;
  return factorise(n, &factors) ? sumOfDivisors(n, factors) : static_cast<int>(sumOfDivisorsByTrial(n));
}

/// The sum of those divisors of `n` that are multiples of 4: 4 times the divisors of n / 4. A table of primes that doesn't begin
/// with 2 is not used.
unsigned sumOfDivisorsBy4(int n) {
  if (n < 4 || n % 4 != 0) return 0;
  const PrimeTable<int>& table = SharedPrimes<int>::table();
  const bool isWhole = table.exists() && table.primes()[0] == 2;
  return 4u * static_cast<unsigned>(isWhole ? computedSigma(n / 4) : sumOfDivisorsByTrial(n / 4));
}

template <class Number>
Number powerOf(Number base, int exponent) {
  Number power = 1;
  for (; exponent > 0; exponent /= 2, base = base * base)
    if (exponent % 2 == 1) power = power * base;
  return power;
}

}  // namespace

void initMath() {
  std::fill(std::begin(globalPrimeFactors), std::end(globalPrimeFactors), tagPrimeFact{});
}

bool factorise(int n, PrimeFactors* result) {
  const PrimeTable<int>& table = SharedPrimes<int>::table();
  result->count = 0;
  if (n < 0 || !table.exists() || static_cast<int>(std::sqrt(n)) > table.maximum()) return false;
  int remaining = n;
  const int* end = table.primes() + table.count();
  for (const int* prime = table.primes(); prime != end && static_cast<long long>(*prime) * *prime <= remaining; prime++) {
    if (remaining % *prime != 0) continue;
    tagPrimeFact& factor = result->factors[result->count++];
    factor = {*prime, 0};
    for (; remaining % *prime == 0; remaining /= *prime) factor.power++;
  }
  if (remaining > 1 || result->count == 0) result->factors[result->count++] = {remaining, 1};
  return true;
}

tagPrimeFact* getPrimeFactors(int n, int* count, int* sigma, int wantCopy) {
  *count = 0;
  *sigma = 1;
  PrimeFactors factors;
  if (!factorise(n, &factors)) return nullptr;
  const int sumOfAll = sumOfDivisors(n, factors);
  tagPrimeFact* result = globalPrimeFactors;
  result[0] = {factors.count, sumOfAll};
  std::copy_n(factors.factors, factors.count, result + 1);
  if (wantCopy != 0) {
    result = systemMallocArray<tagPrimeFact>(factors.count + 1);
    if (result == nullptr) return nullptr;
    std::copy_n(globalPrimeFactors, factors.count + 1, result);
  }
  *count = factors.count;
  *sigma = sumOfAll;
  return result;
}

void deletePrimeFactor(tagPrimeFact* factors) {
  if (factors != globalPrimeFactors) systemFree(factors);
}

int sigma(int n) {
  static constinit thread_local int lastNumber = 0, lastSum = 0;
  if (n != lastNumber) {
    lastSum = computedSigma(n);
    lastNumber = n;
  }
  return lastSum;
}

int sigma4(int n) {
  static constinit thread_local int lastNumber = 0, lastSum = 0;
  const PrimesHeld held;
  if (n != lastNumber) {
    lastSum = static_cast<int>(static_cast<unsigned>(computedSigma(n)) - sumOfDivisorsBy4(n));
    lastNumber = n;
  }
  return lastSum;
}

double ipow(int base, int exponent) {
  return powerOf<double>(base, exponent);
}

long long llPow(long long base, int exponent) {
  return static_cast<long long>(powerOf<unsigned long long>(static_cast<unsigned long long>(base), exponent));
}

const int* getMersennePrimes(int* count) {
  *count = static_cast<int>(std::size(mersennePrimes));
  return mersennePrimes;
}

int isMersennePrime(int exponent) {
  return std::binary_search(std::begin(mersennePrimes), std::end(mersennePrimes), exponent) ? 1 : 0;
}

}  // namespace zmatrix
