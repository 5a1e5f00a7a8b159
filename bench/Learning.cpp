// Learning, compared with other contenders. Every contender's tally is compared with that of std::unordered_map for the same
// input, after the first and after the second learning.
#include <algorithm>
#include <map>
#include <memory>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

template <class Contender>
Measurement learnTwice(const Input& input) {
  Measurement measured;
  measured.operations = input.getNumberOfPhrases();
  const long long residentBefore = residentBytes();
  Contender contender;
  const StopWatch first;
  bool isRight = contender.learn(input);
  measured.seconds[0] = first.seconds();
  measured.residentBytes = residentBytes() - residentBefore;
  measured.tally = contender.tally();
  const StopWatch second;
  isRight = contender.learn(input) && isRight;
  measured.seconds[1] = second.seconds();
  const Tally doubled{measured.tally.distinct, 4 * measured.tally.sumOfSquares};
  measured.isRight = isRight && contender.tally() == doubled;
  return measured;
}

/// The correct tally of an input, computed once.
const Tally& expectedTally(const Input& input) {
  static std::map<const Input*, Tally> tallies;
  auto found = tallies.find(&input);
  if (found == tallies.end()) {
    const Measurement reference = measureInChild([&] {
      Measurement measured;
      HashMapContender<StandardMap> contender;
      contender.learn(input);
      measured.tally = contender.tally();
      return measured;
    });
    found = tallies.emplace(&input, reference.tally).first;
  }
  return found->second;
}

/// Learning without phrases whose last item is determined by a shorter context: there must be fewer, and none with a higher
/// count.
Measurement learnUndetermined(const Input& input) {
  Measurement measured;
  measured.operations = input.getNumberOfPhrases();
  const long long residentBefore = residentBytes();
  MatrixContender<ZQMatrixMedium> contender(0);
  const StopWatch watch;
  measured.isRight = contender.learn(input);
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = residentBytes() - residentBefore;
  measured.tally = contender.tally();
  return measured;
}

using SharedInput = std::shared_ptr<const Input>;

template <class Contender>
void registerContender(const std::string& group, const SharedInput& input, const std::string& name) {
  const auto run = [input](benchmark::State& state) {
    const Tally& expected = expectedTally(*input);
    for (auto _ : state) {
      Measurement measured = measureInChild([&] { return learnTwice<Contender>(*input); });
      measured.isRight = measured.isRight && measured.tally == expected && expected.distinct > 0;
      report(state, measured, measured.seconds[0]);
      state.counters["again_ns"] = measured.seconds[1] * 1e9 / static_cast<double>(measured.operations);
      state.counters["bytes"] =
          static_cast<double>(measured.residentBytes) / static_cast<double>(expected.distinct > 0 ? expected.distinct : 1);
      state.counters["distinct"] = static_cast<double>(expected.distinct);
    }
  };
  const std::string row = group + "/" + input->name + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void registerContenders(const std::string& group, const SharedInput& input) {
  registerContender<MatrixContender<ZQMatrixMedium>>(group, input, "zmatrix_medium");
  // The full tier learns like the medium tier, with larger records: one size is enough.
  constexpr size_t bytesForFull = 200'000;
  if (input->isText && input->original.size() <= bytesForFull && input->original.size() * 2 > bytesForFull)
    registerContender<MatrixContender<ZQMatrix>>(group, input, "zmatrix_full");
  registerContender<HashMapContender<StandardMap>>(group, input, "unordered_map");
#ifdef ZMATRIX_BENCH_ABSL
  registerContender<HashMapContender<AbslMap>>(group, input, "absl");
#endif
#ifdef ZMATRIX_BENCH_SPARSEHASH
  registerContender<HashMapContender<DenseMap>>(group, input, "dense_hash_map");
#endif
#ifdef ZMATRIX_BENCH_DATRIE
  // Its insertion searches one list of all free slots: longer phrases or more text would take hours.
  constexpr size_t mostBytesForDatrie = 50'000;
  if (input->isText && input->phraseLimit <= 4 && input->original.size() <= mostBytesForDatrie)
    registerContender<DatrieContender>(group, input, "libdatrie");
#endif
}

void registerUndetermined(const SharedInput& input) {
  const auto run = [input](benchmark::State& state) {
    const Tally& all = expectedTally(*input);
    for (auto _ : state) {
      Measurement measured = measureInChild([&] { return learnUndetermined(*input); });
      const Tally& kept = measured.tally;
      measured.isRight = measured.isRight && kept.distinct > 0 && kept.distinct < all.distinct && kept.sumOfSquares > 0 &&
                         kept.sumOfSquares < all.sumOfSquares;
      report(state, measured, measured.seconds[0]);
      state.counters["distinct"] = static_cast<double>(kept.distinct);
      state.counters["kept_percent"] = 100.0 * static_cast<double>(kept.distinct) / static_cast<double>(all.distinct);
      state.counters["bytes"] = static_cast<double>(measured.residentBytes) / static_cast<double>(all.distinct);
    }
  };
  const std::string row = "undetermined/" + input->name + "/zmatrix_medium";
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerLearning(const std::string& text) {
  constexpr size_t sizes[] = {50'000, 100'000, 200'000, 400'000};
  for (int limit : {4, 16, 64}) {
    if (text.size() < sizes[0]) registerContenders("learn", std::make_shared<const Input>(textInput(text, text.size(), limit)));
    for (size_t size : sizes)
      if (size <= text.size()) registerContenders("learn", std::make_shared<const Input>(textInput(text, size, limit)));
  }
  for (int limit : {16, 64})
    registerUndetermined(std::make_shared<const Input>(textInput(text, std::min<size_t>(text.size(), 200'000), limit)));
  for (int items : {50'000, 100'000, 200'000, 400'000})
    registerContenders("triples", std::make_shared<const Input>(tripleInput(items, 4)));
}

}  // namespace bench
