// Generation: the context, the next item, the word of a symbol, and the successors of a context for callers that choose
// themselves.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "LearningMatrix.h"

/// Rows of line feeds that the library appends to each series in the history.
inline constexpr int rowsBehindASeries = 4;

/// A little-endian integer of |size| bytes (1, 2 or 4); a negative size means signed.
int unpackInteger(const char* bytes, int size);

template <class Functions>
class ContinuingMatrix : public LearningMatrix<Functions> {
 public:
  using Learner = LearningMatrix<Functions>;
  using Learner::Learner;
  using Learner::record;
  using Learner::select;
  using typename Learner::Successor;

  std::vector<int> lastSeriesLearned([[maybe_unused]] int id) override {
    std::vector<int> items;
    if constexpr (Functions::learns) {
      select(id);
      const ZQMatrixProperties& info = record(id);
      const char* bytes = Functions::lastSeries(matrix());
      const auto* sizes = Functions::sizesOfCoordinates(matrix());
      const int coordinates = (info.lengthOfUpdateSequence - rowsBehindASeries) * info.coordinateDimension;
      for (int at = 0; bytes != nullptr && sizes != nullptr && at < coordinates; ++at) {
        const int size = sizes[at % info.coordinateDimension];
        items.push_back(unpackInteger(bytes, size));
        bytes += std::abs(size);
      }
    }
    return items;
  }

  int countUnknownWords([[maybe_unused]] int id, [[maybe_unused]] const std::vector<int>& items) override {
    int unknown = 0;
    if constexpr (Functions::hasSymbols) {
      const MutedMessages muted(*this);  // the library would report the number that is returned here
      int symbols = 0;
      int lineFeeds = 0;
      select(id);
      s_Free(s_getNextLevelSymbolsFromOriginalObjects(matrix(), items.data(), static_cast<int>(items.size()), &symbols, &unknown,
                                                      &lineFeeds));
    }
    return unknown;
  }

  void setMethod([[maybe_unused]] Method method) override {
    if constexpr (Functions::learns) Functions::setMethod(matrix(), static_cast<int>(method));
  }

  void seed([[maybe_unused]] long long value) override {
    if constexpr (Functions::learns) Functions::setRandomValue(matrix(), Functions::currentID(matrix()), value);
  }

  void setContext([[maybe_unused]] const std::vector<int>& items) override {
    if constexpr (Functions::learns) {
      Functions::setContext(matrix(), items.data(), static_cast<int>(items.size()), 1);
    }
  }

  std::vector<int> context() override {
    std::vector<int> items;
    if constexpr (Functions::learns) {
      int length = 0;
      int dimension = 0;
      int* flat = Functions::context(Functions::info(matrix()), &length, &dimension);
      if (flat != nullptr) items.assign(flat, flat + length);
      s_Free(flat);
    }
    return items;
  }

  int lengthOfContext() const override {
    if constexpr (Functions::learns) return Functions::lengthOfContext(matrix());
    return 0;
  }

  void switchWordsOff() override {
    if constexpr (Functions::hasSymbols) s_setMatrixAILevel(matrix(), 0);
  }

  std::optional<int> nextItem() override {
    const int* item = nullptr;
    if constexpr (Functions::learns) {
      double probability = 0;
      double stopProbability = 0;
      item = Functions::nextItem(matrix(), &probability, &stopProbability);
    }
    if (item == nullptr) return std::nullopt;
    return *item;
  }

  std::vector<int> wordOf([[maybe_unused]] int symbol) override {
    std::vector<int> word;
    if constexpr (Functions::hasSymbols) {
      int length = 0;
      int* letters = zq_createPhraseOfSymbol(matrix(), symbol, &length);
      if (letters != nullptr) word.assign(letters, letters + length);
      s_Free(letters);
    }
    return word;
  }

  bool writeMusic([[maybe_unused]] int count, [[maybe_unused]] const std::string& path) override {
    if constexpr (Functions::learns) {
      const MutedMessages muted(*this);  // the library warns of each note that it corrects
      return Functions::writeMidi(matrix(), count, path.c_str(), nullptr) == 1;
    }
    return false;
  }

  Score compose([[maybe_unused]] int count, [[maybe_unused]] std::optional<double> tempo) override {
    Score score(nullptr, zq_deleteScore);
    if constexpr (Functions::learns) {
      const MutedMessages muted(*this);  // as in writeMusic
      score.reset(Functions::compose(matrix(), count, tempo.value_or(0), nullptr));
    }
    if (!score) throw Failure{ExitCode::limit, "the notes could not be composed: out of memory"};
    return score;
  }

  std::vector<int> preprocess([[maybe_unused]] const std::vector<int>& items) override {
    std::vector<int> stored;
    if constexpr (Functions::learns) {
      const MutedMessages muted(*this);
      int length = 0;
      int* result =
          items.empty() ? nullptr : Functions::preprocess(matrix(), items.data(), static_cast<int>(items.size()), &length);
      if (result != nullptr) stored.assign(result, result + length);
      s_Free(result);
    }
    return stored;
  }

  std::vector<Successor> successorsOf([[maybe_unused]] const std::vector<int>& storedItems) override {
    std::vector<Successor> successors;
    if constexpr (Functions::learns) {
      const int handle = storedItems.empty()
                             ? Functions::currentID(matrix())
                             : Functions::handleOf(matrix(), storedItems.data(), static_cast<int>(storedItems.size()));
      int count = 0;
      int* handles = handle < 0 ? nullptr : Functions::successorsOf(matrix(), handle, &count);
      for (int at = 0; handles != nullptr && at < count; ++at) {
        const int* item = Functions::itemAt(matrix(), handles[at]);
        auto* element = Functions::elementAt(matrix(), handles[at]);
        if (item != nullptr) successors.push_back({*item, Functions::countOf(element), Functions::startsOf(element)});
      }
      s_Free(handles);
    }
    return successors;
  }

  std::optional<std::vector<Successor>> sentenceStarts([[maybe_unused]] const std::vector<int>& beginning) override {
    std::vector<Successor> starts;
    if constexpr (Functions::learns) {
      int found = 256;
      std::vector<int> items, counts;
      do {
        items.resize(static_cast<std::size_t>(found));
        counts.resize(items.size());
        found = Functions::readSentenceStarts(matrix(), beginning.data(), static_cast<int>(beginning.size()),
                                              static_cast<int>(items.size()), items.data(), counts.data());
      } while (found > static_cast<int>(items.size()));
      if (found < 0) return std::nullopt;
      for (std::size_t at = 0; at < static_cast<std::size_t>(found); ++at) {
        if (counts[at] > 0) starts.push_back({items[at], counts[at], 0});
      }
    }
    return starts;
  }

  double drawFraction() override {
    if constexpr (Functions::learns) {
      return static_cast<double>(Functions::drawRandomValue(matrix(), Functions::currentID(matrix()))) / 2147483648.0;
    }
    return 0;
  }

 protected:
  using Learner::matrix;
};
