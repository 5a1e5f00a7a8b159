// From a text to 10,000 generated items: the library compared with a Markov chain of words, one of characters, and, where it is
// installed, the model of a compressor. Measures processor time and peak memory. An item is a word for the chain of words and a
// character for all others. All items must be generated.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>

#include "Benchmarks.h"
#include "Contenders.h"
#include "WordChain.h"

namespace bench {

namespace {

constexpr int numberOfItems = 10'000;
constexpr int phraseLimit = 16;

using SharedInput = std::shared_ptr<const Input>;

std::string textOf(const std::vector<int>& characters) {
  std::string text;
  for (int character : characters) text.push_back(static_cast<char>(character));
  return text;
}

/// Learns, then generates; measures both times and the peak memory.
template <class Learn, class Next>
Measurement learnAndGenerate(Learn learn, Next next) {
  Measurement measured;
  const long long before = resetPeakBytes();
  const StopWatch watch;
  measured.isRight = learn();
  measured.seconds[1] = watch.seconds();
  for (int i = 0; i < numberOfItems && measured.isRight; i++) measured.isRight = next();
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = peakBytes() - before;
  measured.operations = numberOfItems;
  return measured;
}

Measurement byMatrix(const Input& input) {
  MatrixContender<ZQMatrixMedium> contender;
  double probability = 0, stopProbability = 0;
  const auto learn = [&] {
    if (!contender.learn(input)) return false;
    contender.getMatrix()->getMatrixInfo()->setEnableStopItem(0);
    return true;
  };
  const auto next = [&] { return contender.getMatrix()->readObjexFromMatrix(&probability, &stopProbability) != nullptr; };
  return learnAndGenerate(learn, next);
}

/// The last 15 characters determine the next, as in the library at a phrase limit of 16, but without shorter contexts.
Measurement byCharacters(const Input& input) {
  WordChain chain(phraseLimit - 1);
  std::mt19937 random(1);
  const auto learn = [&] {
    for (const std::vector<int>& sentence : input.pieces) chain.learn(sentence);
    return true;
  };
  return learnAndGenerate(learn, [&] { return chain.next(random) > 0; });
}

Measurement byWords(const Input& input) {
  Vocabulary vocabulary;
  WordChain chain(2);
  std::mt19937 random(1);
  const auto learn = [&] {
    for (const std::vector<int>& sentence : input.pieces) chain.learn(vocabulary.wordsOf(textOf(sentence)));
    return true;
  };
  return learnAndGenerate(learn, [&] { return chain.next(random) > 0; });
}

#ifdef ZMATRIX_BENCH_PPMD
/// Runs the compressor in a process of its own, which prints its figures.
Measurement byCompressor(const Input& input) {
  namespace fs = std::filesystem;
  const fs::path text = fs::temp_directory_path() / ("zmatrix_bench_" + std::to_string(getpid()) + ".txt");
  std::ofstream(text, std::ios::binary) << textOf(input.original);
  std::string command = ZMATRIX_BENCH_PPMD;
  for (const std::string& argument : {text.string(), std::to_string(phraseLimit), std::to_string(numberOfItems)})
    command.append(" ").append(argument);
  Measurement measured;
  if (FILE* answer = popen(command.c_str(), "r")) {
    measured.isRight = fscanf(answer, "%lf %lf %lld %lld", &measured.seconds[1], &measured.seconds[0], &measured.residentBytes,
                              &measured.operations) == 4 &&
                       measured.operations == numberOfItems;
    measured.isRight = pclose(answer) == 0 && measured.isRight;
  }
  fs::remove(text);
  return measured;
}
#endif

void registerRow(const SharedInput& input, const std::string& name, Measurement (*function)(const Input&)) {
  const auto run = [input, function](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild([&] { return function(*input); });
      report(state, measured, measured.seconds[0]);
      state.counters["ms"] = measured.seconds[0] * 1e3;
      state.counters["item_ns"] = (measured.seconds[0] - measured.seconds[1]) * 1e9 / numberOfItems;
      state.counters["peak_MB"] = static_cast<double>(measured.residentBytes) / 1e6;
    }
  };
  const std::string row = "peers/" + input->name + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerPeers(const std::string& text) {
  for (size_t size : {200'000, 1'000'000}) {
    if (size > text.size()) continue;
    const auto input = std::make_shared<const Input>(textInput(text, size, phraseLimit));
    registerRow(input, "zmatrix_medium", byMatrix);
    registerRow(input, "character_chain", byCharacters);
    registerRow(input, "word_chain", byWords);
#ifdef ZMATRIX_BENCH_PPMD
    registerRow(input, "ppmd", byCompressor);
#endif
  }
}

}  // namespace bench
