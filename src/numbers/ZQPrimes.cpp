#include "numbers/ZQPrimes.h"

#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

using Primes = SharedPrimes<int>;
using LargePrimes = SharedPrimes<long long>;

const PrimeTable<int>& table() {
  return Primes::table();
}

const PrimeTable<long long>& largeTable() {
  return LargePrimes::table();
}

template <class Value>
Value* primesOf(const PrimeTable<Value>& table, Value* count, Value* maxPrime) {
  *count = table.count();
  *maxPrime = table.maximum();
  return table.primes();
}

}  // namespace

// clang-format off
int* initPrimes(unsigned lowerBound, unsigned upperBound, int* count) { return Primes::init(lowerBound, upperBound, count); }
long long* initPrimesLarge(long long lowerBound, long long upperBound, long long* count) { return LargePrimes::init(lowerBound, upperBound, count); }
int* initFirstNPrimes(int n) { return Primes::initFirst(n); }
long long* initFirstNPrimesLarge(long long n) { return LargePrimes::initFirst(n); }
void deinitPrimes() { Primes::deinit(); }
void deinitPrimesLarge() { LargePrimes::deinit(); }
int* getPrimeNumbers(int* count, int* maxPrime) { return primesOf(table(), count, maxPrime); }
long long* getPrimeNumbersLarge(long long* count, long long* maxPrime) { return primesOf(largeTable(), count, maxPrime); }

int isPrime(int n) { return table().isPrime(n); }
int isPrimeLarge(long long n) { return largeTable().isPrime(n); }
double numberOfPrimesUpto(double x) { return table().numberOfPrimesUpto(x); }
double numberOfPrimesUptoLarge(double x) { return largeTable().numberOfPrimesUpto(x); }
int primePi(int n) { return table().primePi(n); }
long long primePiLarge(long long n) { return largeTable().primePi(n); }
int nthPrime(int n) { return table().nthPrime(n); }
long long nthPrimeLarge(long long n) { return largeTable().nthPrime(n); }
int notPrimePi(int n) { return table().notPrimePi(n); }
long long notPrimePiLarge(long long n) { return largeTable().notPrimePi(n); }
int nthNotPrime(int n) { return table().nthNotPrime(n); }
long long nthNotPrimeLarge(long long n) { return largeTable().nthNotPrime(n); }
// clang-format on

}  // namespace zmatrix
