// A block filled until the library refuses: it must have grown to its cap by then, later writes must be refused too, and what was
// written before must still be read. It takes some minutes and up to 7 GB of memory, so it runs on demand only.
#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

constexpr int slotsAtCap = 134'217'728;

/// Three coordinates below 1024 for a number; neighbours lie far apart, so that fields grow in turn and have to move.
void vectorOf(int number, int* vector) {
  vector[0] = number & 1023;
  vector[1] = number >> 10 & 1023;
  vector[2] = number >> 20 & 1023;
}

Measurement fill() {
  Measurement measured;
  const long long residentBefore = residentBytes();
  ZQMatrixBase* matrix = createAndInitMatrixBase();
  if (matrix == nullptr) return measured;
  matrix->setDefaultMatrixPropertiesForRandomReadWrite();
  int vector[3];
  int written = 0;
  const StopWatch watch;
  for (bool isWritten = true; isWritten && written < slotsAtCap; written += isWritten ? 1 : 0) {
    vectorOf(written, vector);
    isWritten = matrix->writeMatrixElement(vector, 3, written) == 1;
  }
  measured.seconds[0] = watch.seconds();
  measured.operations = written;
  measured.residentBytes = residentBytes() - residentBefore;
  measured.tally.distinct = matrix->getNumberOfMatrixElements();
  measured.isRight = matrix->getMatrixBlockSize() == slotsAtCap && written > 0 && written < slotsAtCap;
  const int newField[3] = {1024, 0, 0};
  measured.isRight = measured.isRight && matrix->writeMatrixElement(newField, 3, 1) == 0;
  for (int number = 0; number < written; number += 997) {
    int existCode = 0;
    vectorOf(number, vector);
    measured.isRight = measured.isRight && matrix->readMatrixElement(vector, 3, &existCode) == number && existCode >= 2;
  }
  deleteMatrixBase(matrix);
  return measured;
}

}  // namespace

void registerCapacity() {
  const auto run = [](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild(fill);
      report(state, measured, measured.seconds[0]);
      state.counters["elements"] = static_cast<double>(measured.tally.distinct);
      state.counters["bytes"] = static_cast<double>(measured.residentBytes) / static_cast<double>(measured.tally.distinct + 1);
    }
  };
  benchmark::RegisterBenchmark("cap/limit:3/size:134218/zmatrix_base", run)
      ->Iterations(1)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace bench
