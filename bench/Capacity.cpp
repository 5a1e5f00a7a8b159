// Fills a block by learning until the library refuses: the block must then have reached its cap, further learning must be refused
// too, and the last text learned must still continue. It takes up to 8 GB of memory, so it runs on demand only.
#include <random>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

constexpr int slotsAtCap = 134'217'728;

Measurement fill() {
  constexpr int itemsOfPiece = 100'000, phraseLimit = 64, mostPieces = 60;
  Measurement measured;
  const long long residentBefore = residentBytes();
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  if (matrix == nullptr) return measured;
  matrix->setDefaultMatrixPropertiesForIntegerSeries("");
  auto* info = matrix->getMatrixInfo();
  info->setPreProcessingType(0);
  info->setMaxPhraseLengthForUpdateWithSequence(phraseLimit);
  std::mt19937 random(4);
  std::vector<int> items(itemsOfPiece);
  const auto learnPiece = [&] {
    for (int& item : items) item = static_cast<int>(random() % 4);
    return matrix->updateMatrixWithLongINTSequence(items.data(), itemsOfPiece) == 1;
  };
  int pieces = 0;
  const StopWatch watch;
  while (pieces < mostPieces && learnPiece()) pieces++;
  measured.seconds[0] = watch.seconds();
  measured.operations = matrix->getNumberOfMatrixElements();
  measured.residentBytes = residentBytes() - residentBefore;
  measured.isRight = matrix->getMatrixBlockSize() == slotsAtCap && pieces > 0 && pieces < mostPieces && !learnPiece();
  double probability = 0, stopProbability = 0;
  matrix->initializeKernelSequenceWithOriginalSequence(items.data(), 8, 1);
  measured.isRight =
      measured.isRight && matrix->readObjexFromMatrix(&probability, &stopProbability) != nullptr && probability > 0;
  deleteMatrixMedium(matrix);
  return measured;
}

}  // namespace

void registerCapacity() {
  const auto run = [](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild(fill);
      report(state, measured, measured.seconds[0]);
      state.counters["elements"] = static_cast<double>(measured.operations);
      state.counters["bytes"] = static_cast<double>(measured.residentBytes) / static_cast<double>(measured.operations);
    }
  };
  benchmark::RegisterBenchmark("cap/limit:64/size:134218/zmatrix_medium", run)
      ->Iterations(1)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace bench
