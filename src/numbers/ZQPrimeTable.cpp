#include "numbers/ZQPrimeTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQPrimeSieve.h"
#include "numbers/ZQRiemannEstimate.h"
#include "numbers/ZQTruncated.h"

namespace zmatrix {

namespace {

/// The estimated index of `n`, from 0, in a table of all primes.
long long estimatedIndex(long long n) {
  return std::max(truncated(riemann_r(static_cast<double>(n))) - 1, 0LL);
}

/// The first number whose estimated index is not below `count`.
long long firstWithIndex(long long count) {
  long long low = 0, high = std::numeric_limits<long long>::max();
  while (low < high) {
    const long long middle = low + (high - low) / 2;
    if (estimatedIndex(middle) >= count)
      high = middle;
    else
      low = middle + 1;
  }
  return low;
}

}  // namespace

template <class Value>
PrimeBlock<Value>::~PrimeBlock() {
  systemFree(primes);
}

template <class Value>
PrimeTable<Value> PrimeTable<Value>::between(long long lowerBound, long long limit) {
  PrimeTable table;
  const long long capacity = mostPrimesBetween(lowerBound, limit);
  SystemOwned<Value> primes(systemMallocArray<Value>(capacity));
  const long long found = primes != nullptr ? writePrimesBetween(lowerBound, limit, primes.get(), capacity) : -1;
  if (found < 0) return table;
  if (found + 1 < capacity) {
    auto* smaller = static_cast<Value*>(systemRealloc(primes.get(), static_cast<size_t>(found + 1) * sizeof(Value)));
    if (smaller != nullptr) {
      static_cast<void>(primes.release());
      primes.reset(smaller);
    }
  }
  table.block_ = new (std::nothrow) PrimeBlock<Value>(primes.get());
  if (table.block_ == nullptr) return table;
  table.primes_ = primes.release();
  table.bucketStart_ = table.block_->bucketStart;
  table.count_ = static_cast<Value>(found);
  table.maximum_ = found > 0 ? table.primes_[found - 1] : 0;
  table.indexTable();
  return table;
}

template <class Value>
PrimeTable<Value> PrimeTable<Value>::withoutPrimes() const {
  PrimeTable rest;
  rest.count_ = count_;
  rest.maximum_ = maximum_;
  return rest;
}

template <class Value>
void PrimeTable<Value>::hold() const {
  if (block_ != nullptr) block_->numberOfHolders.fetch_add(1, std::memory_order_relaxed);
}

template <class Value>
void PrimeTable<Value>::release() const {
  if (block_ != nullptr && block_->numberOfHolders.fetch_sub(1, std::memory_order_acq_rel) == 1) delete block_;
}

template <class Value>
void PrimeTable<Value>::indexTable() {
  firstBeyond_ = firstWithIndex(count_);
  bucketShift_ = 0;
  while (maximum_ >> bucketShift_ >= buckets) bucketShift_++;
  Value index = 0;
  for (long long bucket = 0; bucket <= buckets; bucket++) {
    // The last bucket may end beyond 63 bits.
    const bool isWithin = bucket <= maximum_ >> bucketShift_;
    if (isWithin)
      index = static_cast<Value>(std::lower_bound(primes_ + index, primes_ + count_, bucket << bucketShift_) - primes_);
    else
      index = count_;
    bucketStart_[bucket] = index;
  }
  bucketStart_[buckets + 1] = count_;
}

/// The number of entries that are at most `n`, for an `n` of 0 or more.
template <class Value>
Value PrimeTable<Value>::countUpTo(long long n) const {
  if (n >= maximum_) return count_;
  const long long bucket = n >> bucketShift_;
  const Value* first = primes_ + bucketStart_[bucket];
  Value length = bucketStart_[bucket + 1] - bucketStart_[bucket];
  // Binary search without branches, which a processor would often mispredict.
  while (length > 0) {
    const Value half = length / 2;
    first += first[half] <= n ? length - half : 0;
    length = half;
  }
  return static_cast<Value>(first - primes_);
}

template <class Value>
int PrimeTable<Value>::isPrime(Value n) const {
  if (!exists()) return -1;
  const long long number = std::max<long long>(n, 0);
  if (liesBeyond(number)) return -1;
  const Value rank = countUpTo(number);
  return rank > 0 && primes_[rank - 1] == number ? 1 : 0;
}

template <class Value>
long long PrimeTable<Value>::numberOfPrimesUptoWhole(long long n) const {
  if (!exists()) return -1;
  if (n < 2) return 0;
  return liesBeyond(n) ? estimatedIndex(n) + 1 : countUpTo(n);
}

template <class Value>
double PrimeTable<Value>::numberOfPrimesUpto(double x) const {
  return static_cast<double>(numberOfPrimesUptoWhole(truncated(x)));
}

template <class Value>
Value PrimeTable<Value>::notPrimePi(Value n) const {
  if (n > maximum_) return -1;
  // A freed table keeps its maximum and has a primePi of -1, so that the result is n + 1.
  using Unsigned = std::make_unsigned_t<Value>;
  return static_cast<Value>(static_cast<Unsigned>(n) - static_cast<Unsigned>(primePi(n)));
}

template <class Value>
Value PrimeTable<Value>::nthNotPrime(Value n) const {
  static constexpr Value first[] = {0, 1, 4, 6, 8};
  if (!exists() || n < 0) return -1;
  if (n <= 4) return first[n];

  const double before = static_cast<double>(n) - 1, l = std::log(before);
  const double series = 1 + 1 / l + 2 / (l * l) + 4 / (l * l * l) + 19 / (2 * std::pow(l, 4)) + 181 / (6 * std::pow(l, 5));
  const long long candidate = truncated(before * series + 0.5);
  if (candidate > maximum_) {
    dbPrintf(0, "error nth notprime: startvalue %lld too big\n", candidate);
    return -1;
  }
  if (liesBeyond(candidate)) return walkToNotPrime(n, candidate);
  // The first m with m - pi(m) = n. The iteration m = n + pi(m) converges to it from below.
  long long m = n, next = 0;
  while (!liesBeyond(m) && m <= maximum_ && (next = static_cast<long long>(n) + countUpTo(m)) != m) m = next;
  return liesBeyond(m) || m > maximum_ ? walkToNotPrime(n, candidate) : static_cast<Value>(m);
}

/// Walks from the candidate down to the first number of rank `n`, or up to it, where ranks are estimates.
template <class Value>
Value PrimeTable<Value>::walkToNotPrime(Value n, long long candidate) const {
  const auto rankOf = [this](long long number) { return notPrimePi(static_cast<Value>(number)); };
  long long number = candidate;
  const Value rank = rankOf(number);
  if (rank < 0) return -1;
  if (rank >= n) {
    while (rankOf(number - 1) >= n) number--;
    return static_cast<Value>(number);
  }
  while (number < maximum_)
    if (rankOf(++number) >= n) return static_cast<Value>(number);
  return -1;  // the rank n lies beyond the table
}

template struct PrimeBlock<int>;
template struct PrimeBlock<long long>;
template class PrimeTable<int>;
template class PrimeTable<long long>;

}  // namespace zmatrix
