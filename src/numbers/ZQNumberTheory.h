// Factors, sums of divisors and powers. What factors a number needs the 32-bit table of primes.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// Clears the thread's last factorisation.
void initMath();

/// The prime factors of `n`, ascending, behind an entry that holds their number and the sum of the divisors of `n`. Null, with
/// *count 0 and *sigma 1, if the table is missing or doesn't reach the root of `n`, and for a negative `n`. 0 and 1 are factors
/// of themselves. With `wantCopy` 0 the entries are the thread's and stand until its next factorisation.
tagPrimeFact* getPrimeFactors(int n, int* count, int* sigma, int wantCopy);
void deletePrimeFactor(tagPrimeFact* factors);

/// The sum of the divisors of `n`, and of those that 4 doesn't divide: 0 below 1. The low 32 bits of sums beyond.
int sigma(int n);
int sigma4(int n);

/// A power; an exponent below 1 gives 1. llPow gives the low 64 bits.
double ipow(int base, int exponent);
long long llPow(long long base, int exponent);

/// The exponents of the first 50 known Mersenne primes.
const int* getMersennePrimes(int* count);
int isMersennePrime(int exponent);

/// Inside the library: the factors of a number, at most 9, and no allocation.
struct PrimeFactors {
  int count = 0;
  tagPrimeFact factors[10];
};

/// False if the table of primes doesn't serve.
bool factorise(int n, PrimeFactors* result);

}  // namespace zmatrix
