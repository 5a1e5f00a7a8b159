// One measurement, taken in a child process: what a structure takes in memory can only be told in a process that held nothing
// before, and a child gives all of it back however large it was.
#pragma once

#include <functional>

namespace bench {

/// What a structure says it holds; all structures that were fed the same must say the same.
struct Tally {
  long long distinct = 0;
  long long sumOfSquares = 0;

  bool operator==(const Tally&) const = default;
};

/// What a child reports. Times are in seconds; which of them mean something is up to the benchmark.
struct Measurement {
  long long operations = 0;
  double seconds[4] = {};
  long long residentBytes = 0;
  Tally tally;
  bool isRight = false;
};

/// Runs the function in a child. A child that dies gives a measurement that is not right.
Measurement measureInChild(const std::function<Measurement()>& function);

/// Bytes of this process that are in memory.
long long residentBytes();

/// The most bytes that were in memory since resetPeakBytes, which gives what there are now.
long long peakBytes();
long long resetPeakBytes();

/// Gives free memory back, so that what is taken next shows in residentBytes.
void releaseFreeMemory();

/// What a stop watch reads: processor time of this process, since one thread is measured and other work on the machine shall not
/// count; or time gone by, for what waits for a disk.
enum class Clock { processor, wall };

class StopWatch {
 public:
  explicit StopWatch(Clock clock = Clock::processor) : clock_(clock), start_(now()) {}
  double seconds() const { return now() - start_; }

 private:
  double now() const;
  Clock clock_;
  double start_;
};

}  // namespace bench
