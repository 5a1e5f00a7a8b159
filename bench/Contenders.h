// The contenders: structures that count phrases, namely the library's tiers and common alternatives. Each is created empty,
// learns an input a given number of times, and returns its tally. The hash maps are keyed by a rolling 64-bit hash of the phrase,
// the minimum for counting; unlike the library they can't list what follows a phrase.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "Inputs.h"
#include "Measurement.h"
#include "flat/ZQMatrixCreators.h"
#include "sequence/ZQMatrixMedium.h"
#include "symbols/ZQMatrix.h"
#ifdef ZMATRIX_BENCH_ABSL
#include <absl/container/flat_hash_map.h>
#endif
#ifdef ZMATRIX_BENCH_SPARSEHASH
#include <sparsehash/dense_hash_map>
#endif
#ifdef ZMATRIX_BENCH_DATRIE
#include <datrie/trie.h>
#endif

namespace bench {

// --- hash maps

constexpr std::uint64_t hashOfNothing = 0x9E3779B97F4A7C15;

inline std::uint64_t hashWith(std::uint64_t hash, int value) {
  hash = (hash ^ static_cast<std::uint32_t>(value)) * 0xD6E8FEB86659FD93;
  return hash ^ (hash >> 32);
}

using StandardMap = std::unordered_map<std::uint64_t, int>;
#ifdef ZMATRIX_BENCH_ABSL
using AbslMap = absl::flat_hash_map<std::uint64_t, int>;
#endif
#ifdef ZMATRIX_BENCH_SPARSEHASH
struct DenseMap : google::dense_hash_map<std::uint64_t, int> {
  DenseMap() {
    set_empty_key(0);
    set_deleted_key(1);
  }
};
#endif

template <class Map>
class HashMapContender {
 public:
  bool learn(const Input& input) {
    const auto c = static_cast<size_t>(input.coordinateDimension);
    const size_t longest = c * static_cast<size_t>(input.phraseLimit);
    for (const std::vector<int>& piece : input.pieces)
      for (size_t start = 0; start + c <= piece.size(); start += c) {
        const size_t end = piece.size() - start < longest ? piece.size() : start + longest;
        std::uint64_t hash = hashOfNothing;
        for (size_t i = start; i < end;) {
          for (const size_t next = i + c; i < next; i++) hash = hashWith(hash, piece[i]);
          ++map_[hash];
        }
      }
    return true;
  }
  Tally tally() const {
    Tally sum;
    for (const auto& entry : map_) {
      sum.distinct++;
      sum.sumOfSquares += static_cast<long long>(entry.second) * entry.second;
    }
    return sum;
  }

 private:
  Map map_;
};

// --- the library

inline ZQMatrixMedium* create(ZQMatrixMedium*) {
  return createAndInitMatrixMedium();
}
inline ZQMatrix* create(ZQMatrix*) {
  return createAndInitMatrix();
}
inline void remove(ZQMatrixMedium* matrix) {
  deleteMatrixMedium(matrix);
}
inline void remove(ZQMatrix* matrix) {
  deleteMatrix(matrix);
}

template <class Matrix>
class MatrixContender {
 public:
  /// 0 leaves out phrases whose last item is already determined by a shorter context.
  explicit MatrixContender(int includeOverdeterminedRules = 1)
      : matrix_(create(static_cast<Matrix*>(nullptr))), includeOverdeterminedRules_(includeOverdeterminedRules) {}
  ~MatrixContender() { remove(matrix_); }
  MatrixContender(const MatrixContender&) = delete;
  MatrixContender& operator=(const MatrixContender&) = delete;

  bool learn(const Input& input) {
    if (matrix_ == nullptr) return false;
    if (matrix_->getMatrixInfo()->isEmpty()) setUp(input);
    const int length = static_cast<int>(input.original.size());
    if (input.isText) return matrix_->updateMatrixWithLongANSISequence(input.original.data(), length) == 1;
    return matrix_->updateMatrixWithLongINTSequence(input.original.data(), length / input.coordinateDimension) == 1;
  }
  Tally tally() const {
    Tally sum;
    for (int i = matrix_->getMaxNumberOfMatrices(); i < matrix_->getMatrixBlockSize(); i++) {
      const ZQMatrixBaseElement* element = matrix_->elementAt(i);
      if (element == nullptr || element->getWriteCount() < 1) continue;
      sum.distinct++;
      sum.sumOfSquares += static_cast<long long>(element->getWriteCount()) * element->getWriteCount();
    }
    return sum;
  }
  Matrix* getMatrix() { return matrix_; }

 private:
  void setUp(const Input& input) {
    if (input.isText)
      matrix_->setDefaultMatrixPropertiesForANSIText("");
    else
      matrix_->setDefaultMatrixPropertiesForIntegerSeries("");
    auto* info = matrix_->getMatrixInfo();
    info->setCoordinateDimension(input.coordinateDimension);
    info->setPreProcessingType(input.isText ? ZQPreProcessingTypeANSIText : 0);
    info->setMaxPhraseLengthForUpdateWithSequence(input.phraseLimit);
    info->setIncludeOverdeterminedRules(includeOverdeterminedRules_);
  }

  Matrix* matrix_;
  int includeOverdeterminedRules_;
};

// --- a double-array trie of whole keys; it can't insert below a known node

#ifdef ZMATRIX_BENCH_DATRIE
class DatrieContender {
 public:
  DatrieContender() {
    AlphaMap* letters = alpha_map_new();
    alpha_map_add_range(letters, 1, 255);
    trie_ = trie_new(letters);
    alpha_map_free(letters);
  }
  ~DatrieContender() { trie_free(trie_); }
  DatrieContender(const DatrieContender&) = delete;
  DatrieContender& operator=(const DatrieContender&) = delete;

  bool learn(const Input& input) {
    const auto longest = static_cast<size_t>(input.phraseLimit);
    std::vector<AlphaChar> key(longest + 1);
    for (const std::vector<int>& piece : input.pieces)
      for (size_t start = 0; start < piece.size(); start++)
        for (size_t length = 1; length <= longest && start + length <= piece.size(); length++) {
          key[length - 1] = static_cast<AlphaChar>(piece[start + length - 1]);
          key[length] = 0;
          TrieData count = 0;
          if (!trie_retrieve(trie_, key.data(), &count)) count = 0;
          if (!trie_store(trie_, key.data(), count + 1)) return false;
        }
    return true;
  }
  Tally tally() const {
    Tally sum;
    const auto add = [](const AlphaChar*, TrieData count, void* target) -> Bool {
      auto* tally = static_cast<Tally*>(target);
      tally->distinct++;
      tally->sumOfSquares += static_cast<long long>(count) * count;
      return TRUE;
    };
    trie_enumerate(trie_, add, &sum);
    return sum;
  }

 private:
  Trie* trie_;
};
#endif

}  // namespace bench
