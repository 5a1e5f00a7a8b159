// Inputs that make placement hard: fields of a thousand children, far apart or close together, written in random order, so that
// they interleave and collide; and unstructured text, which leaves many scattered holes. All elements must exist afterwards.
#include <algorithm>
#include <random>
#include <utility>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

constexpr int numberOfParents = 150;
constexpr int childrenOfParent = 1'024;

using Pair = std::pair<int, int>;  // parent and coordinate

/// Each parent's children are distinct random numbers below `numberOfCoordinates`.
std::vector<Pair> widePairs(int numberOfCoordinates) {
  std::mt19937 random(5);
  std::vector<Pair> pairs;
  std::vector<int> coordinates(static_cast<size_t>(numberOfCoordinates));
  for (int i = 0; i < numberOfCoordinates; i++) coordinates[static_cast<size_t>(i)] = i;
  for (int parent = 0; parent < numberOfParents; parent++) {
    std::shuffle(coordinates.begin(), coordinates.end(), random);
    for (int i = 0; i < childrenOfParent; i++) pairs.emplace_back(parent, coordinates[static_cast<size_t>(i)]);
  }
  std::shuffle(pairs.begin(), pairs.end(), random);
  return pairs;
}

Measurement writeWide(int numberOfCoordinates) {
  const std::vector<Pair> pairs = widePairs(numberOfCoordinates);
  Measurement measured;
  measured.operations = static_cast<long long>(pairs.size());
  const long long residentBefore = residentBytes();
  ZQMatrixBase* matrix = createAndInitMatrixBase();
  matrix->setDefaultMatrixPropertiesForRandomReadWrite();
  const StopWatch watch;
  measured.isRight = true;
  for (const auto& [parent, coordinate] : pairs) {
    const int vector[] = {parent, coordinate};
    measured.isRight = matrix->writeMatrixElement(vector, 2, 7LL * parent + coordinate) == 1 && measured.isRight;
  }
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = residentBytes() - residentBefore;
  for (const auto& [parent, coordinate] : pairs) {
    const int vector[] = {parent, coordinate};
    int existCode = 0;
    const bool isThere = matrix->readMatrixElement(vector, 2, &existCode) == 7LL * parent + coordinate && existCode == 3;
    measured.isRight = isThere && measured.isRight;
  }
  int written = 0, ends = 0;
  measured.isRight = matrix->performMatrixLinearTest(&written, &ends, 0) == 1 && measured.isRight;
  deleteMatrixBase(matrix);
  return measured;
}

Measurement learnLetters(int numberOfLetters) {
  std::mt19937 random(6);
  std::vector<int> letters;
  letters.reserve(static_cast<size_t>(numberOfLetters));
  for (int i = 0; i < numberOfLetters; i++) letters.push_back('a' + static_cast<int>(random() % 26u));
  constexpr int phraseLimit = 8;
  Measurement measured;
  measured.operations = static_cast<long long>(phraseLimit) * numberOfLetters - phraseLimit * (phraseLimit - 1) / 2;
  const long long residentBefore = residentBytes();
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  matrix->setDefaultMatrixPropertiesForIntegerSeries("");
  matrix->getMatrixInfo()->setMaxPhraseLengthForUpdateWithSequence(phraseLimit);
  matrix->getMatrixInfo()->setPreProcessingType(0);
  matrix->getMatrixInfo()->setIncludeOverdeterminedRules(1);
  const StopWatch watch;
  measured.isRight = matrix->updateMatrixWithLongINTSequence(letters.data(), numberOfLetters) == 1;
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = residentBytes() - residentBefore;
  int written = 0, ends = 0;
  measured.isRight = matrix->performMatrixLinearTest(&written, &ends, 0) == 1 && measured.isRight;
  deleteMatrixMedium(matrix);
  return measured;
}

void registerRow(const std::string& name, Measurement (*measure)(int), int size) {
  const auto run = [measure, size](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild([&] { return measure(size); });
      report(state, measured, measured.seconds[0]);
      state.counters["bytes"] = static_cast<double>(measured.residentBytes) / static_cast<double>(measured.operations);
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerWideFields() {
  for (int coordinates : {2'000, 8'000, 65'536}) {
    registerRow("wide/limit:2/size:" + std::to_string(coordinates / 1000) + "/zmatrix_base", writeWide, coordinates);
  }
  for (int letters : {250'000, 500'000, 1'000'000}) {
    registerRow("letters/limit:8/size:" + std::to_string(letters / 1000) + "/zmatrix_medium", learnLetters, letters);
  }
}

}  // namespace bench
