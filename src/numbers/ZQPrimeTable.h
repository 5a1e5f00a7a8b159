// A table of primes and what is asked of it. ZQSharedPrimes.h has the tables that the number functions work with, one of 32 and
// one of 64 bits for the whole process. A query reads its table and never builds one.
//
// How a query finds its place is part of what it answers: R(n), Riemann's estimate, says where the rank of n lies. If that is
// inside the table, the rank is what the table says; if it is beyond, the estimate stands for it, or the answer is "can't tell".
// So the few numbers below the end of a table whose estimate lies beyond it count as beyond. Inside, the place is found by
// search, which gives what a walk from the estimate gives.
#pragma once

#include <atomic>
#include <type_traits>

namespace zmatrix {

/// The primes of a table and where they begin: one allocation that several views of the table share.
template <class Value>
struct PrimeBlock {
  static constexpr int buckets = 4096;

  explicit PrimeBlock(Value* ownedPrimes) : primes(ownedPrimes) {}
  ~PrimeBlock();
  PrimeBlock(const PrimeBlock&) = delete;
  PrimeBlock& operator=(const PrimeBlock&) = delete;

  std::atomic<long> numberOfHolders = 1;
  Value* primes;
  Value bucketStart[buckets + 2];  ///< how many primes lie below the begin of each bucket
};

/// A view of a table, which is never changed once it is made. A copy is no further holder of the block: see hold().
template <class Value>
class PrimeTable {
 public:
  static_assert(std::is_same_v<Value, int> || std::is_same_v<Value, long long>);

  /// No table.
  constexpr PrimeTable() = default;

  /// The table of the primes from `lowerBound` to `limit`, whose block the caller holds; no table if memory has run out.
  static PrimeTable between(long long lowerBound, long long limit);

  /// What is left of the table when it is freed: its count and its greatest prime.
  PrimeTable withoutPrimes() const;

  void hold() const;
  /// Lets go of the block, which goes with its last holder.
  void release() const;

  Value* primes() const { return primes_; }
  Value count() const { return count_; }
  Value maximum() const { return maximum_; }
  bool exists() const { return primes_ != nullptr && count_ > 0; }

  // --- queries

  /// 1 prime, 0 not, -1 if the table can't tell.
  int isPrime(Value n) const;
  /// The number of primes up to `x`: -1 without a table; beyond the table an estimate.
  double numberOfPrimesUpto(double x) const;
  Value primePi(Value n) const { return static_cast<Value>(numberOfPrimesUptoWhole(n)); }
  /// The n-th prime, from 1; -1 if it isn't in the table.
  Value nthPrime(Value n) const { return exists() && n >= 1 && n <= count_ ? primes_[n - 1] : -1; }
  /// `n` less the number of primes up to it; -1 for `n` above the table's greatest prime.
  Value notPrimePi(Value n) const;
  /// The n-th number that is no prime, from 1, which is the first; 0 for 0; -1 for a negative `n`, and if the table doesn't reach
  /// beyond the number.
  Value nthNotPrime(Value n) const;

 private:
  static constexpr int buckets = PrimeBlock<Value>::buckets;

  long long numberOfPrimesUptoWhole(long long n) const;
  bool liesBeyond(long long n) const { return n >= firstBeyond_; }
  Value countUpTo(long long n) const;
  void indexTable();
  Value walkToNotPrime(Value n, long long candidate) const;

  PrimeBlock<Value>* block_ = nullptr;
  Value* primes_ = nullptr;  ///< those of the block, and so is bucketStart_
  Value* bucketStart_ = nullptr;
  Value count_ = 0;
  Value maximum_ = 0;
  long long firstBeyond_ = 0;  ///< the first number whose estimate lies beyond the table
  int bucketShift_ = 0;        ///< a bucket is 2 to the power of this numbers wide
};

extern template class PrimeTable<int>;
extern template class PrimeTable<long long>;

}  // namespace zmatrix
