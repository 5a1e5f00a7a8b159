// The sieve of Eratosthenes behind the tables of primes: segmented, so that its working memory stays in the processor's cache for
// any limit, and over the residues coprime to 30 only, so that a byte stands for 30 numbers.
#pragma once

#include <cstdint>

namespace zmatrix {

/// An upper bound for the number of primes in lowerBound..limit; limit at least 5000.
long long mostPrimesBetween(long long lowerBound, long long limit);

/// Writes the primes of lowerBound..limit, ascending. Returns their number, or -1 if there is no working memory or `capacity` is
/// too small. Value is int, long long or uint32_t, and `limit` must fit into it. The working memory is 49 KB and 36 bytes per
/// prime up to the root of `limit`.
template <class Value>
long long writePrimesBetween(long long lowerBound, long long limit, Value* primes, long long capacity);

}  // namespace zmatrix
