// Maintenance of a learned matrix: testing, pruning, saving and loading. Each answer is checked: a test must find the matrix
// sound, pruning must remove elements and leave it sound, and a loaded matrix must hold as many elements as the saved one. The
// reference for saving and loading is a copy of the file's bytes by the system; for loading also reading the file into newly
// allocated memory, which no load can avoid.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

template <class Matrix>
bool isSound(Matrix* matrix, int testNumber) {
  int written = 0, ends = 0;
  return matrix->perform1stMemoryTest(testNumber, &written, &ends, 0) == 1 && written > 0;
}

template <class Matrix>
Measurement test(const Input& input) {
  Measurement measured;
  MatrixContender<Matrix> contender;
  if (!contender.learn(input)) return measured;
  measured.operations = contender.getMatrix()->getNumberOfMatrixElements();
  measured.isRight = true;
  for (int testNumber : {1, 2}) {
    const StopWatch watch;
    measured.isRight = isSound(contender.getMatrix(), testNumber) && measured.isRight;
    measured.seconds[testNumber - 1] = watch.seconds();
  }
  return measured;
}

template <class Matrix>
Measurement prune(const Input& input) {
  Measurement measured;
  MatrixContender<Matrix> contender;
  if (!contender.learn(input)) return measured;
  Matrix* matrix = contender.getMatrix();
  measured.operations = matrix->getNumberOfMatrixElements();
  const StopWatch watch;
  measured.isRight = matrix->removeOverDeterminedElements() == 1;
  measured.seconds[0] = watch.seconds();
  const int left = matrix->getNumberOfMatrixElements();
  measured.isRight = measured.isRight && left > 0 && left < measured.operations && isSound(matrix, 1);
  measured.seconds[1] = static_cast<double>(left) / static_cast<double>(measured.operations);
  return measured;
}

/// A temporary file name; the file is removed at the end.
class TemporaryFile {
 public:
  TemporaryFile() : path_(fs::temp_directory_path() / ("zmatrix_bench_" + std::to_string(getpid()) + ".zmatrix")) {}
  ~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
  }
  std::string name() const { return path_.string(); }
  double size() const { return static_cast<double>(fs::file_size(path_)); }

 private:
  fs::path path_;
};

double secondsOfCopy(const TemporaryFile& source) {
  const fs::path copy = source.name() + ".copy";
  const StopWatch watch(Clock::wall);
  fs::copy_file(source.name(), copy, fs::copy_options::overwrite_existing);
  const double seconds = watch.seconds();
  fs::remove(copy);
  return seconds;
}

double secondsOfReading(const TemporaryFile& source) {
  const auto size = static_cast<size_t>(source.size());
  const StopWatch watch(Clock::wall);
  FILE* file = std::fopen(source.name().c_str(), "rb");
  char* bytes = static_cast<char*>(std::malloc(size));
  const bool isRead = file != nullptr && bytes != nullptr && std::fread(bytes, 1, size, file) == size;
  const double seconds = watch.seconds();
  std::free(bytes);
  if (file != nullptr) std::fclose(file);
  return isRead ? seconds : 0;
}

ZQMatrixMedium* load(ZQMatrixMedium*, const char* path) {
  return createAndInitMatrixMediumWithFile(path, 0);
}
ZQMatrix* load(ZQMatrix*, const char* path) {
  return createAndInitMatrixWithFile(path, 0);
}

template <class Matrix>
Measurement saveAndLoad(const Input& input) {
  Measurement measured;
  TemporaryFile file;
  {
    MatrixContender<Matrix> contender;
    if (!contender.learn(input)) return measured;
    measured.operations = contender.getMatrix()->getNumberOfMatrixElements();
    const StopWatch saving(Clock::wall);
    measured.isRight = contender.getMatrix()->saveMatrixToDisk(file.name().c_str()) == 1;
    measured.seconds[0] = saving.seconds();
  }
  measured.residentBytes = static_cast<long long>(file.size());
  const StopWatch loading(Clock::wall);
  Matrix* loaded = load(static_cast<Matrix*>(nullptr), file.name().c_str());
  measured.seconds[1] = loading.seconds();
  measured.isRight = measured.isRight && loaded != nullptr && loaded->getNumberOfMatrixElements() == measured.operations;
  if (loaded != nullptr) remove(loaded);
  measured.seconds[2] = secondsOfCopy(file);
  measured.seconds[3] = secondsOfReading(file);
  measured.isRight = measured.isRight && measured.seconds[3] > 0;
  return measured;
}

void registerRow(const std::string& group, const std::shared_ptr<const Input>& input, const std::string& name,
                 Measurement (*function)(const Input&), void (*addCounters)(benchmark::State&, const Measurement&)) {
  const auto run = [input, function, addCounters](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild([&] { return function(*input); });
      report(state, measured, measured.seconds[0]);
      if (measured.isRight) addCounters(state, measured);
    }
  };
  const std::string row = group + "/" + input->name + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void addTestCounters(benchmark::State& state, const Measurement& measured) {
  state.counters["walk_down_ns"] = measured.seconds[1] * 1e9 / static_cast<double>(measured.operations);
  state.counters["elements"] = static_cast<double>(measured.operations);
}
void addPruningCounters(benchmark::State& state, const Measurement& measured) {
  state.counters["left_percent"] = 100 * measured.seconds[1];
  state.counters["elements"] = static_cast<double>(measured.operations);
}
void addFileCounters(benchmark::State& state, const Measurement& measured) {
  const double megabytes = static_cast<double>(measured.residentBytes) / 1e6;
  state.counters["elements"] = static_cast<double>(measured.operations);
  state.counters["bytes"] = static_cast<double>(measured.residentBytes) / static_cast<double>(measured.operations);
  state.counters["save_MB_s"] = megabytes / measured.seconds[0];
  state.counters["load_MB_s"] = megabytes / measured.seconds[1];
  state.counters["copy_MB_s"] = megabytes / measured.seconds[2];
  state.counters["read_MB_s"] = megabytes / measured.seconds[3];
}

}  // namespace

void registerUpkeep(const std::string& text) {
  for (int limit : {16, 64}) {
    const auto input = std::make_shared<const Input>(textInput(text, std::min<size_t>(text.size(), 200'000), limit));
    registerRow("test", input, "zmatrix_medium", test<ZQMatrixMedium>, addTestCounters);
    registerRow("test", input, "zmatrix_full", test<ZQMatrix>, addTestCounters);
    registerRow("prune", input, "zmatrix_medium", prune<ZQMatrixMedium>, addPruningCounters);
    registerRow("prune", input, "zmatrix_full", prune<ZQMatrix>, addPruningCounters);
  }
  // More than ten million elements, if the text is long enough.
  const auto large = std::make_shared<const Input>(textInput(text, std::min<size_t>(text.size(), 300'000), 64));
  registerRow("file", large, "zmatrix_medium", saveAndLoad<ZQMatrixMedium>, addFileCounters);
  registerRow("file", large, "zmatrix_full", saveAndLoad<ZQMatrix>, addFileCounters);
}

}  // namespace bench
