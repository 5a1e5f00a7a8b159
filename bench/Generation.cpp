// Generation: the time per item after a text was learned, and the time of the search for the longest known suffix alone if each
// suffix is searched from the root, instead of from the results for the last item. Every item must be a character of the text,
// and both searches must give the same result.
#include <algorithm>
#include <memory>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

/// Sets the begin of the text as start and turns stopping off.
void startWith(const Input& input, ZQMatrixMedium* matrix) {
  constexpr int lengthOfStart = 20;
  matrix->getMatrixInfo()->setEnableStopItem(0);
  const int length = std::min(lengthOfStart, static_cast<int>(input.original.size()));
  matrix->initializeKernelSequenceWithOriginalSequence(input.original.data(), length, 1);
}

Measurement generate(const Input& input) {
  constexpr int numberOfItems = 50'000;
  Measurement measured;
  MatrixContender<ZQMatrixMedium> contender;
  if (!contender.learn(input)) return measured;
  ZQMatrixMedium* matrix = contender.getMatrix();
  startWith(input, matrix);
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

/// The current kernel; together with the next item it is the sequence in which the next kernel is searched.
std::vector<int> kernelOf(ZQMatrixMediumInfo* info) {
  const int* row = info->getKernelPreProcessedSequence()[0];
  return {row, row + info->getLengthOfKernelPreProcessedSequence()};
}

Measurement searchLiterally(const Input& input) {
  constexpr int numberOfItems = 5'000;
  Measurement measured;
  MatrixContender<ZQMatrixMedium> contender;
  if (!contender.learn(input)) return measured;
  ZQMatrixMedium* matrix = contender.getMatrix();
  ZQMatrixMediumInfo* info = matrix->getMatrixInfo();
  startWith(input, matrix);
  measured.isRight = true;
  double probability = 0, stopProbability = 0;
  for (int i = 0; i < numberOfItems; i++) {
    std::vector<int> sequence = kernelOf(info);
    measured.isRight = matrix->readObjexFromMatrix(&probability, &stopProbability) != nullptr && measured.isRight;
    const std::vector<int> kernel = kernelOf(info);
    if (kernel.empty()) continue;
    sequence.push_back(kernel.back());
    int handle = -1;
    size_t known = 0;
    const StopWatch watch;
    for (size_t suffix = 1; suffix <= sequence.size(); suffix++) {  // shortest first, each from the root
      const int found = matrix->getMatrixHandleFromElementVector(&sequence[sequence.size() - suffix], static_cast<int>(suffix));
      if (found < 0 || matrix->hasMatrixHandleSuccessors(found) < 1) break;
      handle = found;
      known = suffix;
      if (static_cast<int>(suffix) >= info->getSkillOutputLevel()) break;
    }
    measured.seconds[0] += watch.seconds();
    measured.isRight = measured.isRight && handle == info->getKernelMatrixHandle() && known == kernel.size();
    measured.operations++;
  }
  return measured;
}

void registerRow(const std::shared_ptr<const Input>& input, const std::string& name, Measurement (*function)(const Input&)) {
  const auto run = [input, function](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild([&] { return function(*input); });
      report(state, measured, measured.seconds[0]);
    }
  };
  const std::string row = "generate/" + input->name + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerGeneration(const std::string& text) {
  for (int limit : {4, 16, 64}) {
    const auto input = std::make_shared<const Input>(textInput(text, std::min<size_t>(text.size(), 200'000), limit));
    registerRow(input, "zmatrix_medium", generate);
    registerRow(input, "literal_search", searchLiterally);
  }
}

}  // namespace bench
