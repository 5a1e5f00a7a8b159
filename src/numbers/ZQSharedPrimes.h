// The tables of primes of the process, which all threads read. A table is made beside the old one and then takes its place, so
// that a reader sees the old one or the new one, whole. Each thread has a view of the table that it read last and looks before
// each query whether there is a newer one: that costs a load that hardly ever misses the cache, where a lock or a count of
// readers would be written by every query. A replaced table goes when the last thread that has it in view looks again or ends.
#pragma once

#include <atomic>

#include "numbers/ZQPrimeTable.h"

namespace zmatrix {

template <class Value>
class SharedPrimes {
 public:
  /// The table as the calling thread sees it. It stands until the thread's next call here, or while PrimesHeld lives.
  static const PrimeTable<Value>& table() {
    View& mine = viewOfThread();
    if (mine.generation != newestGeneration.load(std::memory_order_acquire) && mine.timesHeld == 0) lookAgain();
    return mine.table;
  }

  /// Replaces the table by that of the primes from `lowerBound` to `upperBound`, or to 5000 if that is more. Null, with the old
  /// table in place, if the bounds are less than 2 apart; null with no table if memory has run out.
  static Value* init(long long lowerBound, long long upperBound, Value* count);

  /// Replaces the table by one that has at least the first `n` primes, or all primes of this width.
  static Value* initFirst(Value n);

  /// Frees the table; its count and its greatest prime stay.
  static void deinit();

  static void beginHold() {
    table();
    viewOfThread().timesHeld++;
  }
  static void endHold() { viewOfThread().timesHeld--; }

 private:
  struct View {
    PrimeTable<Value> table;
    unsigned long generation = 0;
    int timesHeld = 0;
  };
  struct ReleasesViewAtEndOfThread;

  /// One look-up for all members of the view.
  [[gnu::noinline]] static View& viewOfThread();
  static void lookAgain();
  template <class Replacement>
  static void publish(Replacement replacementOf);
  static void show(const PrimeTable<Value>& table, unsigned long generation);

  static constinit thread_local View view;
  static constinit std::atomic<unsigned long> newestGeneration;
};

extern template class SharedPrimes<int>;
extern template class SharedPrimes<long long>;

/// While it lives, the number functions of its thread read one and the same 32-bit table. What looks at the table more than once
/// and relies on what it saw needs one.
class PrimesHeld {
 public:
  PrimesHeld() { SharedPrimes<int>::beginHold(); }
  ~PrimesHeld() { SharedPrimes<int>::endHold(); }
  PrimesHeld(const PrimesHeld&) = delete;
  PrimesHeld& operator=(const PrimesHeld&) = delete;
};

}  // namespace zmatrix
