// Numbers: the table of primes compared with primesieve's, ranks of primes at random points compared with a plain search in the
// same table, and ocrons of integers, checked by evaluation. Answers are checked: tables and ranks must be equal, and every ocron
// must evaluate to its number.
#include <sys/resource.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "Benchmarks.h"
#include "frame/ZQMemory.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#ifdef ZMATRIX_BENCH_PRIMESIEVE
#include <primesieve.h>
#endif

using zmatrix::systemFree;

namespace bench {

namespace {

constexpr int sizesInThousands[] = {100000, 1000000};
constexpr int rankLimit = 100000000, numberOfRanks = 1000000;
constexpr int largestOcronNumber = 1000000, ocronType = 4;

long long peakBytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024LL;
}

/// Ranks near the end of a table may be estimates: tables reach beyond the largest number of a query.
constexpr unsigned tableFor(int largest) {
  return static_cast<unsigned>(largest) + static_cast<unsigned>(largest) / 20;
}

/// A checksum of a table of primes.
Tally tallyOf(const int* primes, size_t count) {
  Tally tally;
  tally.distinct = static_cast<long long>(count);
  for (size_t i = 0; i < count; i++) {
    const auto weighted = static_cast<unsigned long long>(primes[i]) * (2 * i + 1);
    tally.sumOfSquares = static_cast<long long>(static_cast<unsigned long long>(tally.sumOfSquares) + weighted);
  }
  return tally;
}

Measurement ownTable(int limit) {
  Measurement measured;
  const long long before = residentBytes();
  int count = 0;
  const StopWatch watch;
  const int* primes = zmatrix::initPrimes(0, static_cast<unsigned>(limit), &count);
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = peakBytes() - before - count * static_cast<long long>(sizeof(int));
  measured.operations = count;
  if (primes != nullptr) measured.tally = tallyOf(primes, static_cast<size_t>(count));
  return measured;
}

#ifdef ZMATRIX_BENCH_PRIMESIEVE
Measurement primesieveTable(int limit) {
  Measurement measured;
  const long long before = residentBytes();
  size_t count = 0;
  const StopWatch watch;
  int* primes = static_cast<int*>(primesieve_generate_primes(0, static_cast<uint64_t>(limit), &count, INT_PRIMES));
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = peakBytes() - before - static_cast<long long>(count * sizeof(int));
  measured.operations = static_cast<long long>(count);
  measured.tally = tallyOf(primes, count);
  return measured;
}
#endif

/// Registers the tables up to 100 million and 1,000 million, which must have the known numbers of primes and, where primesieve is
/// installed, its primes.
void registerTable(int thousands, const char* contender, Measurement (*makeTable)(int)) {
  const auto run = [thousands, makeTable](benchmark::State& state) {
    const int limit = thousands * 1000;
    for (auto _ : state) {
      Measurement measured = measureInChild([=] { return makeTable(limit); });
      measured.isRight = measured.operations == (thousands == 100000 ? 5761455 : 50847534);
#ifdef ZMATRIX_BENCH_PRIMESIEVE
      static Tally known[std::size(sizesInThousands)];
      Tally& expected = known[thousands == 100000 ? 0 : 1];
      if (expected.distinct == 0) expected = measureInChild([=] { return primesieveTable(limit); }).tally;
      measured.isRight = measured.isRight && measured.tally == expected;
#endif
      report(state, measured, measured.seconds[0]);
      state.counters["ms"] = measured.seconds[0] * 1e3;
      state.counters["extra_kB"] = static_cast<double>(measured.residentBytes) / 1024;
    }
  };
  const std::string row = "primes/limit:0/size:" + std::to_string(thousands) + "/" + contender;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

template <class Rank>
Measurement ranks(Rank rank) {
  Measurement measured;
  int count = 0;
  const int* primes = zmatrix::initPrimes(0, tableFor(rankLimit), &count);
  std::mt19937 random(5);
  std::vector<int> points(numberOfRanks), found(numberOfRanks);
  for (int& point : points) point = static_cast<int>(random() % rankLimit);
  const StopWatch watch;
  for (size_t i = 0; i < points.size(); i++) found[i] = rank(primes, count, points[i]);
  measured.seconds[0] = watch.seconds();
  measured.operations = numberOfRanks;
  measured.isRight = true;
  for (size_t i = 0; i < points.size(); i++) {
    const int below = found[i];
    measured.isRight =
        measured.isRight && (below == 0 || primes[below - 1] <= points[i]) && (below == count || primes[below] > points[i]);
  }
  return measured;
}

Measurement ownRanks() {
  return ranks([](const int*, int, int point) { return zmatrix::primePi(point); });
}

Measurement searchedRanks() {
  return ranks([](const int* primes, int count, int point) {
    return static_cast<int>(std::upper_bound(primes, primes + count, point) - primes);
  });
}

Measurement ocrons() {
  Measurement measured;
  int count = 0;
  zmatrix::setGlobalGocronParametersToDefaults();
  zmatrix::initPrimes(0, tableFor(largestOcronNumber), &count);
  measured.isRight = true;
  const StopWatch watch;
  for (int number = 2; number <= largestOcronNumber; number++) {
    int length = 0, capacity = 0, compareNumber = 0, stackDepth = 0;
    char* ocron = zmatrix::intToOcron(ocronType, &length, &capacity, number, &compareNumber, &stackDepth);
    measured.isRight = measured.isRight && compareNumber == number;
    systemFree(ocron);
  }
  measured.seconds[0] = watch.seconds();
  measured.operations = largestOcronNumber - 1;
  return measured;
}

void registerRow(const std::string& row, Measurement (*measure)()) {
  const auto run = [measure](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild(measure);
      report(state, measured, measured.seconds[0]);
    }
  };
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerNumbers() {
  for (const int thousands : sizesInThousands) {
    registerTable(thousands, "zmatrix", ownTable);
#ifdef ZMATRIX_BENCH_PRIMESIEVE
    registerTable(thousands, "primesieve", primesieveTable);
#endif
  }
  const std::string size = std::to_string(rankLimit / 1000);
  registerRow("rank/limit:0/size:" + size + "/zmatrix", ownRanks);
  registerRow("rank/limit:0/size:" + size + "/upper_bound", searchedRanks);
  registerRow("ocron/limit:4/size:" + std::to_string(largestOcronNumber / 1000) + "/zmatrix", ocrons);
}

}  // namespace bench
