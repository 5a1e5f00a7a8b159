// Generation: how long one item takes after a text was learned. Every item must come, and must be a character of the text.
#include <algorithm>
#include <memory>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

Measurement generate(const Input& input) {
  constexpr int numberOfItems = 50'000, lengthOfStart = 20;
  Measurement measured;
  MatrixContender<ZQMatrixMedium> contender;
  if (!contender.learn(input)) return measured;
  ZQMatrixMedium* matrix = contender.getMatrix();
  matrix->getMatrixInfo()->setEnableStopItem(0);
  const int length = std::min(lengthOfStart, static_cast<int>(input.original.size()));
  matrix->initializeKernelSequenceWithOriginalSequence(input.original.data(), length, 1);

  bool isInText[256] = {};
  for (const std::vector<int>& piece : input.pieces)
    for (int value : piece) isInText[value & 0xFF] = true;
  measured.isRight = true;
  double probability = 0, stopProbability = 0;
  const StopWatch watch;
  for (int i = 0; i < numberOfItems; i++) {
    const int* item = matrix->readObjexFromMatrix(&probability, &stopProbability);
    measured.isRight = measured.isRight && item != nullptr && isInText[*item & 0xFF] && probability > 0;
  }
  measured.seconds[0] = watch.seconds();
  measured.operations = numberOfItems;
  return measured;
}

}  // namespace

void registerGeneration(const std::string& text) {
  for (int limit : {4, 16, 64}) {
    const auto input = std::make_shared<const Input>(textInput(text, std::min<size_t>(text.size(), 200'000), limit));
    const auto run = [input](benchmark::State& state) {
      for (auto _ : state) {
        const Measurement measured = measureInChild([&] { return generate(*input); });
        report(state, measured, measured.seconds[0]);
      }
    };
    const std::string row = "generate/" + input->name + "/zmatrix_medium";
    benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
  }
}

}  // namespace bench
