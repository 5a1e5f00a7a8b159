#include "numbers/ZQSharedPrimes.h"

#include <algorithm>
#include <limits>
#include <mutex>

#include "frame/ZQDebugChannel.h"
#include "numbers/ZQTruncated.h"

namespace zmatrix {

namespace {

constexpr long long smallestLimit = 5000;
constexpr long long smallestNumberOfPrimes = 500;

/// The table of the process. It is a holder of its block, as is each thread with a copy of it.
template <class Value>
struct Published {
  std::mutex mutex;  // locked while the table is copied and its block gets a holder, never while primes are computed or freed
  PrimeTable<Value> table;
};
template <class Value>
constinit Published<Value> published;

double expectedNumberOfPrimes(double bound) {
  return std::trunc(1.05 * bound / (std::log(bound) - 1));
}

/// A bound below which there are at least the first `n` primes; n of 500 or more.
double boundOfFirstPrimes(long long n) {
  const auto number = static_cast<double>(n);
  double bound = std::trunc(number * std::log(number) + number * std::log(std::log(number)) + 0.5);
  double expected = expectedNumberOfPrimes(bound);
  while (expected < number) {
    dbPrintf(2, "initFirstNPrimes unexpected: no_primes_expected(%d) < numberOfPrimesRequested(%d)\n", static_cast<int>(expected),
             static_cast<int>(n));
    const double m = std::trunc(expected * 1.05), logarithm = std::log(m), second = std::log(logarithm);
    bound = std::trunc((second - 2) * (m / logarithm) + m * second + m * logarithm - m + 0.5);
    expected = expectedNumberOfPrimes(bound);
  }
  return bound;
}

}  // namespace

template <class Value>
constinit thread_local typename SharedPrimes<Value>::View SharedPrimes<Value>::view;

template <class Value>
constinit std::atomic<unsigned long> SharedPrimes<Value>::newestGeneration = 0;

template <class Value>
struct SharedPrimes<Value>::ReleasesViewAtEndOfThread {
  void watch() {}  // makes the compiler register the destructor with the thread
  ~ReleasesViewAtEndOfThread() {
    view.table.release();
    view = View();
  }
};

template <class Value>
typename SharedPrimes<Value>::View& SharedPrimes<Value>::viewOfThread() {
  return view;
}

/// Replaces the thread's copy; the caller's hold on the block becomes that of the copy.
template <class Value>
void SharedPrimes<Value>::show(const PrimeTable<Value>& table, unsigned long generation) {
  static thread_local ReleasesViewAtEndOfThread endOfThread;
  endOfThread.watch();
  view.table.release();
  view.table = table;
  view.generation = generation;
}

template <class Value>
void SharedPrimes<Value>::lookAgain() {
  std::unique_lock lock(published<Value>.mutex);
  const PrimeTable<Value> newest = published<Value>.table;
  const unsigned long generation = newestGeneration.load(std::memory_order_relaxed);
  newest.hold();
  lock.unlock();
  show(newest, generation);
}

/// Replaces the process's table; the caller's hold on the block becomes that of the table.
template <class Value>
template <class Replacement>
void SharedPrimes<Value>::publish(Replacement replacementOf) {
  std::unique_lock lock(published<Value>.mutex);
  const PrimeTable<Value> old = published<Value>.table;
  published<Value>.table = replacementOf(old);
  newestGeneration.fetch_add(1, std::memory_order_release);
  lock.unlock();
  old.release();
}

template <class Value>
Value* SharedPrimes<Value>::init(long long lowerBound, long long upperBound, Value* count) {
  const long long limit = std::clamp<long long>(upperBound, smallestLimit, std::numeric_limits<Value>::max());
  lowerBound = std::max(lowerBound, 0LL);
  if (limit - lowerBound < 2) return nullptr;

  PrimeTable<Value> made = PrimeTable<Value>::between(lowerBound, limit);
  if (made.primes() == nullptr) {
    // There may be memory for one table but not for two.
    publish([](const PrimeTable<Value>&) { return PrimeTable<Value>(); });
    lookAgain();
    made = PrimeTable<Value>::between(lowerBound, limit);
  }
  // The caller gets this table, even if another thread replaces it at once. Generation 0 is never the newest here, so that the
  // thread's next query fetches the newest table.
  made.hold();
  publish([&made](const PrimeTable<Value>&) { return made; });
  *count = made.count();
  show(made, 0);
  return made.primes();
}

template <class Value>
Value* SharedPrimes<Value>::initFirst(Value n) {
  Value count = 0;
  return init(0, truncated(boundOfFirstPrimes(std::max<long long>(n, smallestNumberOfPrimes))), &count);
}

template <class Value>
void SharedPrimes<Value>::deinit() {
  publish([](const PrimeTable<Value>& old) { return old.withoutPrimes(); });
  lookAgain();
}

template class SharedPrimes<int>;
template class SharedPrimes<long long>;

}  // namespace zmatrix
