// zmatrix_bench [--text FILE] [--midi FOLDER] [--kern FOLDER] [--cap] [options of Google Benchmark]: without a text the two short
// example texts are learned; --cap also fills a block to its cap. Fails if an answer is wrong or no benchmark was run.
#include <cstdio>
#include <cstring>

#include "Benchmarks.h"
#include "Inputs.h"

namespace {

// Removes an option and its value from the arguments and returns the value; the rest is passed to Google Benchmark.
std::string takeArgument(const char* option, int& argc, char** argv) {
  for (int i = 1; i + 1 < argc; i++) {
    if (strcmp(argv[i], option) != 0) continue;
    std::string value = argv[i + 1];
    for (int k = i; k + 2 <= argc; k++) argv[k] = argv[k + 2];  // including the null at the end
    argc -= 2;
    return value;
  }
  return {};
}

bool takeCapArgument(int& argc, char** argv) {
  for (int i = 1; i < argc; i++) {
    if (strcmp(argv[i], "--cap") != 0) continue;
    for (int k = i; k < argc; k++) argv[k] = argv[k + 1];
    argc--;
    return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string text = bench::readText(takeArgument("--text", argc, argv));
  if (text.empty()) {
    fputs("the text can't be read or is empty\n", stderr);
    return 3;
  }
  const std::string midiFolder = takeArgument("--midi", argc, argv);
  const std::string kernFolder = takeArgument("--kern", argc, argv);
  const bool fillsToCap = takeCapArgument(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::registerLearning(text);
  bench::registerWords(text);
  bench::registerGeneration(text);
  bench::registerPeers(text);
  bench::registerRandomAccess();
  bench::registerWideFields();
  bench::registerUpkeep(text);
  bench::registerMusic(midiFolder);
  bench::registerKern(kernFolder);
  bench::registerNumbers();
  if (fillsToCap) bench::registerCapacity();
  const size_t benchmarksRun = benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return benchmarksRun > 0 && bench::allAnswersAreRight ? 0 : 1;
}
