// Learning a text by words, compared with a simple alternative: a chain that counts the words that follow zero, one and two
// words. Both get only words for which the library has a symbol, so that they must count the same runs.
#include <memory>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "Benchmarks.h"
#include "flat/ZQMatrixCreators.h"
#include "symbols/ZQMatrix.h"
#include "symbols/ZQWordsUpdate.h"

namespace bench {

namespace {

constexpr size_t longestWord = 16;
constexpr int longestRun = 3;

/// Words separated by single blanks, so that both contenders split them in the same way.
struct Words {
  std::vector<std::string> words;
  std::vector<int> characters;
};

Words wordsOf(const std::string& text) {
  Words input;
  std::istringstream stream(text);
  for (std::string word; stream >> word;) {
    if (word.size() > longestWord || word.find('\xA0') != std::string::npos) continue;
    for (const char letter : word) input.characters.push_back(static_cast<unsigned char>(letter));
    input.characters.push_back(' ');
    input.words.push_back(word);
  }
  return input;
}

/// Runs of up to three words: the number of distinct runs and of their occurrences.
using Runs = Tally;

class Chain {
 public:
  bool learn(const Words& input) {
    std::string last, lastTwo;
    for (const std::string& word : input.words) {
      ++next_[""][word];
      if (!last.empty()) ++next_[last][word];
      if (!lastTwo.empty()) ++next_[lastTwo][word];
      lastTwo.clear();
      if (!last.empty()) lastTwo.append(last).append(" ").append(word);
      last = word;
    }
    return true;
  }
  Runs runs() const {
    Runs sum;
    for (const auto& [context, words] : next_) {
      sum.distinct += static_cast<long long>(words.size());
      for (const auto& [word, count] : words) sum.sumOfSquares += count;
    }
    return sum;
  }

 private:
  std::unordered_map<std::string, std::unordered_map<std::string, int>> next_;
};

class WordMatrix {
 public:
  WordMatrix() : matrix_(createAndInitMatrix(), deleteMatrix) {
    matrix_->setMatrixDebugOn(-1);
    matrix_->setMatrixAILevel(1);
    matrix_->setDefaultMatrixPropertiesForANSIText(nullptr);
    matrix_->setMaxPhraseLengthForUpdateWithSequence(longestWord);
    matrix_->setGlobalSymbolDefaultMatrixPropertiesForSymbols();
    matrix_->setGlobalSymbolMaxPhraseLengthForUpdateWithSequence(longestRun);
  }
  bool learn(const Words& input) {
    const int length = static_cast<int>(input.characters.size());
    return zmatrix::updateMatrixWithWordsOfLongANSISequence(matrix_.get(), input.characters.data(), length, nullptr) == 1;
  }
  Runs runs() const {
    matrix_->setCurrentMatrixID(matrix_->getMatrixInfo()->getCurrentMatrixIDLevelUp());
    return {matrix_->getNumberOfWriteElements(), matrix_->getNumberOfWriteCounts()};
  }

 private:
  std::unique_ptr<ZQMatrix, decltype(&deleteMatrix)> matrix_;
};

template <class Learner>
Measurement learnOnce(const Words& input) {
  Measurement measured;
  measured.operations = static_cast<long long>(input.words.size());
  const long long before = residentBytes();
  Learner learner;
  const StopWatch watch;
  measured.isRight = learner.learn(input);
  measured.seconds[0] = watch.seconds();
  measured.residentBytes = residentBytes() - before;
  measured.tally = learner.runs();
  return measured;
}

template <class Learner>
void registerRow(const std::shared_ptr<const Words>& input, const std::string& sizes, const std::string& name) {
  const auto run = [input](benchmark::State& state) {
    const Runs expected = measureInChild([&] { return learnOnce<Chain>(*input); }).tally;
    for (auto _ : state) {
      Measurement measured = measureInChild([&] { return learnOnce<Learner>(*input); });
      measured.isRight = measured.isRight && measured.tally == expected && expected.distinct > 0;
      report(state, measured, measured.seconds[0]);
      state.counters["megabytes"] = static_cast<double>(measured.residentBytes) / 1e6;
      state.counters["distinct"] = static_cast<double>(expected.distinct);
    }
  };
  const std::string row = "words/" + sizes + "/" + name;
  benchmark::RegisterBenchmark(row.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerWords(const std::string& text) {
  const auto input = std::make_shared<const Words>(wordsOf(text));
  const std::string sizes = "limit:" + std::to_string(longestRun) + "/size:" + std::to_string(text.size() / 1000);
  registerRow<WordMatrix>(input, sizes, "zmatrix_full");
  registerRow<Chain>(input, sizes, "chain");
}

}  // namespace bench
