// A measurement, taken in a child process: the memory of a structure can only be measured in a process without earlier
// allocations, and the end of the child releases all of it.
#pragma once

#include <functional>

namespace bench {

/// The content of a structure; all structures with the same input must have the same tally.
struct Tally {
  long long distinct = 0;
  long long sumOfSquares = 0;

  bool operator==(const Tally&) const = default;
};

/// The result of a child process. Times are in seconds; their meaning depends on the benchmark.
struct Measurement {
  long long operations = 0;
  double seconds[4] = {};
  long long residentBytes = 0;
  Tally tally;
  bool isRight = false;
};

/// Runs the function in a child process. If that crashes, the measurement is marked as wrong.
Measurement measureInChild(const std::function<Measurement()>& function);

/// The resident bytes of this process.
long long residentBytes();

/// The maximum of residentBytes since resetPeakBytes, which returns the current value.
long long peakBytes();
long long resetPeakBytes();

/// Returns free heap memory to the system, so that later allocations show in residentBytes.
void releaseFreeMemory();

/// The clock of a stop watch: processor time of this process, which other work on the machine doesn't affect, or wall time, for
/// work that waits for a disk.
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
