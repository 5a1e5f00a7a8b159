// The tables of primes of the process, which all threads read. A new table is completed before it replaces the old one, so that a
// reader always has a whole table. Each thread keeps a copy of the table that it read last, and checks before each query whether
// there is a newer one: this costs a load that nearly always hits the cache, where a lock or a count of readers would be written
// by every query. A replaced table is freed when the last thread with a copy of it fetches the new table or ends.
#pragma once

#include <atomic>

#include "numbers/ZQPrimeTable.h"

namespace zmatrix {

template <class Value>
class SharedPrimes {
 public:
  /// The table for the calling thread. It is valid until the thread's next call, or while a PrimesHeld exists.
  static const PrimeTable<Value>& table() {
    View& current = viewOfThread();
    if (current.generation != newestGeneration.load(std::memory_order_acquire) && current.timesHeld == 0) lookAgain();
    return current.table;
  }

  /// Replaces the table by that of the primes from `lowerBound` to `upperBound`, or to 5000 if that is more. Null, with the old
  /// table in place, if the bounds are less than 2 apart; null with no table if memory has run out.
  static Value* init(long long lowerBound, long long upperBound, Value* count);

  /// Replaces the table by one that has at least the first `n` primes, or all primes of this width.
  static Value* initFirst(Value n);

  /// Frees the table; its count and its greatest prime are kept.
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

  /// Finds the address of the thread-local view once for all its members.
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

/// While it exists, the number functions of its thread use the same 32-bit table. Required by code that reads the table several
/// times and relies on equal contents.
class PrimesHeld {
 public:
  PrimesHeld() { SharedPrimes<int>::beginHold(); }
  ~PrimesHeld() { SharedPrimes<int>::endHold(); }
  PrimesHeld(const PrimesHeld&) = delete;
  PrimesHeld& operator=(const PrimesHeld&) = delete;
};

}  // namespace zmatrix
