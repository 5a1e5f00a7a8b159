// The tables of primes behind the number functions, one of 32 and one of 64 bits for the whole process. A query only reads its
// table and never builds one.
//
// Riemann's estimate R(n) is part of each result: it gives the approximate rank of `n`. If that rank is inside the table, the
// result comes from the table; if it is beyond, the result is the estimate, or "can't tell". So the few numbers at the end of the
// table whose estimate exceeds its length count as beyond it.
#pragma once

#include <type_traits>

namespace zmatrix {

template <class Value>
class PrimeTable {
 public:
  static_assert(std::is_same_v<Value, int> || std::is_same_v<Value, long long>);

  /// The process's table of this width.
  static PrimeTable& ofProcess();

  /// Replaces the table by that of the primes from `lowerBound` to `upperBound`, or to 5000 if that is more. Null, with the old
  /// table in place, if the bounds are less than 2 apart or there is no working memory; null without a table if there is no
  /// memory for the table.
  Value* init(long long lowerBound, long long upperBound, Value* count);

  /// Replaces the table by one that has at least the first `n` primes, or all primes of this width.
  Value* initFirst(Value n);

  /// Frees the table; its count and its greatest prime are kept.
  void deinit();

  Value* primes() const { return primes_; }
  Value count() const { return count_; }
  Value maximum() const { return maximum_; }
  bool exists() const { return primes_ != nullptr && count_ > 0; }

  // --- queries

  /// 1 for a prime, 0 for another number, -1 beyond the table.
  int isPrime(Value n) const;
  /// The number of primes up to `x`: -1 without a table, an estimate beyond it.
  double numberOfPrimesUpto(double x) const;
  Value primePi(Value n) const { return static_cast<Value>(numberOfPrimesUptoWhole(n)); }
  /// The n-th prime, from 1; -1 if it isn't in the table.
  Value nthPrime(Value n) const { return exists() && n >= 1 && n <= count_ ? primes_[n - 1] : -1; }
  /// `n` less the number of primes up to it; -1 for `n` above the table's greatest prime.
  Value notPrimePi(Value n) const;
  /// The n-th number that is no prime; the first is 1, and 0 gives 0. -1 for a negative `n`, and if the number lies beyond the
  /// table.
  Value nthNotPrime(Value n) const;

 private:
  static constexpr int buckets = 4096;

  long long numberOfPrimesUptoWhole(long long n) const;
  bool liesBeyond(long long n) const { return n >= firstBeyond_; }
  Value countUpTo(long long n) const;
  void indexTable();
  Value walkToNotPrime(Value n, long long candidate) const;

  Value* primes_ = nullptr;
  Value count_ = 0;
  Value maximum_ = 0;
  long long firstBeyond_ = 0;       ///< the first number whose estimated rank lies beyond the table
  int bucketShift_ = 0;             ///< a bucket covers 2 to the power of this many numbers
  Value bucketStart_[buckets + 2];  ///< the number of primes below each bucket
};

extern template class PrimeTable<int>;
extern template class PrimeTable<long long>;

}  // namespace zmatrix
