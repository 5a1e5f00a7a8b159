// Factors, sums of divisors and powers. Functions that factor a number need the 32-bit table of primes.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// Clears the thread's last factorisation.
void initMath();

/// The prime factors of `n`, ascending, in the entries from 1 on; entry 0 holds their number and the sum of the divisors of `n`.
/// 0 and 1 are their own factors. Null, with *count 0 and *sigma 1, if there is no table, if it ends below the root of `n`, and
/// for a negative `n`. With `wantCopy` 0 the result is the thread's array, valid until its next factorisation; else a copy for
/// deletePrimeFactor.
tagPrimeFact* getPrimeFactors(int n, int* count, int* sigma, int wantCopy);
void deletePrimeFactor(tagPrimeFact* factors);

/// The sum of all divisors of `n`, and the sum of those that are no multiples of 4: 0 for `n` below 1. A larger sum is reduced to
/// its low 32 bits.
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

/// False if the table of primes is missing or too small.
[[nodiscard]] bool factorise(int n, PrimeFactors* result);

}  // namespace zmatrix
