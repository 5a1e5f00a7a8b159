// Single vectors of four coordinates below 256, written, read and deleted in three random orders. Each read must return what was
// written, and nothing may exist after the deletion.
#include <algorithm>
#include <array>
#include <random>
#include <set>

#include "Benchmarks.h"
#include "Contenders.h"

namespace bench {

namespace {

using Vector = std::array<int, 4>;
constexpr int numberOfVectors = 200'000;

class MatrixStore {
 public:
  MatrixStore() : matrix_(createAndInitMatrixBase()) { matrix_->setDefaultMatrixPropertiesForRandomReadWrite(); }
  ~MatrixStore() { deleteMatrixBase(matrix_); }
  MatrixStore(const MatrixStore&) = delete;
  MatrixStore& operator=(const MatrixStore&) = delete;

  void write(const Vector& vector, long long value) { matrix_->writeMatrixElement(vector.data(), 4, value); }
  long long read(const Vector& vector) {
    int existCode = 0;
    const long long value = matrix_->readMatrixElement(vector.data(), 4, &existCode);
    return existCode >= 2 ? value : -1;
  }
  void remove(const Vector& vector) { matrix_->deleteMatrixElement(vector.data(), 4, 0); }

 private:
  ZQMatrixBase* matrix_;
};

template <class Map>
class MapStore {
 public:
  void write(const Vector& vector, int value) { map_[hashOf(vector)] = value; }
  long long read(const Vector& vector) {
    const auto found = map_.find(hashOf(vector));
    return found != map_.end() ? found->second : -1;
  }
  void remove(const Vector& vector) { map_.erase(hashOf(vector)); }

 private:
  static std::uint64_t hashOf(const Vector& vector) {
    std::uint64_t hash = hashOfNothing;
    for (int coordinate : vector) hash = hashWith(hash, coordinate);
    return hash;
  }
  Map map_;
};

std::vector<Vector> randomVectors() {
  std::mt19937 random(2);
  std::set<Vector> vectors;
  while (static_cast<int>(vectors.size()) < numberOfVectors) {
    const auto bits = static_cast<unsigned>(random());
    vectors.insert({static_cast<int>(bits & 255), static_cast<int>(bits >> 8 & 255), static_cast<int>(bits >> 16 & 255),
                    static_cast<int>(bits >> 24)});
  }
  return {vectors.begin(), vectors.end()};
}

template <class Store>
Measurement writeReadDelete() {
  const std::vector<Vector> vectors = randomVectors();
  std::vector<size_t> order[3];
  std::mt19937 random(3);
  for (auto& indices : order) {
    for (size_t i = 0; i < vectors.size(); i++) indices.push_back(i);
    std::shuffle(indices.begin(), indices.end(), random);
  }
  Measurement measured;
  measured.operations = numberOfVectors;
  measured.isRight = true;
  releaseFreeMemory();
  const long long residentBefore = residentBytes();
  Store store;
  const StopWatch writing;
  for (size_t i : order[0]) store.write(vectors[i], static_cast<int>(i));
  measured.seconds[0] = writing.seconds();
  measured.residentBytes = residentBytes() - residentBefore;
  const StopWatch reading;
  for (size_t i : order[1]) measured.isRight = store.read(vectors[i]) == static_cast<long long>(i) && measured.isRight;
  measured.seconds[1] = reading.seconds();
  const StopWatch deleting;
  for (size_t i : order[2]) store.remove(vectors[i]);
  measured.seconds[2] = deleting.seconds();
  for (const Vector& vector : vectors) measured.isRight = store.read(vector) == -1 && measured.isRight;
  return measured;
}

template <class Store>
void registerStore(const std::string& name) {
  const auto run = [](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild(writeReadDelete<Store>);
      report(state, measured, measured.seconds[0]);
      state.counters["read_ns"] = measured.seconds[1] * 1e9 / numberOfVectors;
      state.counters["delete_ns"] = measured.seconds[2] * 1e9 / numberOfVectors;
      state.counters["bytes"] = static_cast<double>(measured.residentBytes) / numberOfVectors;
    }
  };
  const std::string row = "random/limit:4/size:" + std::to_string(numberOfVectors / 1000) + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerRandomAccess() {
  registerStore<MatrixStore>("zmatrix_base");
  registerStore<MapStore<StandardMap>>("unordered_map");
#ifdef ZMATRIX_BENCH_ABSL
  registerStore<MapStore<AbslMap>>("absl");
#endif
#ifdef ZMATRIX_BENCH_SPARSEHASH
  registerStore<MapStore<DenseMap>>("dense_hash_map");
#endif
}

}  // namespace bench
