#include "Matrix.h"

#include <vector>

#include "Failure.h"
#include "Tiers.h"

namespace {

template <class Functions>
class MatrixOf : public Matrix {
 public:
  MatrixOf(Loudness loudness, int phraseLimit)
      : handle_(Functions::create(loudness.level < 0 ? 0 : 1, loudness.level, ""), Functions::destroy) {
    if (!handle_) throw Failure{ExitCode::limit, "no memory for a matrix"};
    Functions::setTextProfile(matrix());
    Functions::setPhraseLimit(matrix(), phraseLimit);
  }

  Tier tier() const override { return static_cast<Tier>(Functions::number); }
  int numberOfIDs() const override { return Functions::numberOfIDs(matrix()); }
  int blockSize() const override { return Functions::blockSize(matrix()); }
  int maximalStack() const override { return Functions::maximalStack(matrix()); }
  void select(int id) override { Functions::setCurrentID(matrix(), id); }

  void learn(const std::string& path) override {
    int length = 0;
    if (Functions::learnFile(matrix(), path.c_str(), &length) < 1) {
      throw Failure{ExitCode::limit,
                    "the matrix could not take all of " + path + ": fewer texts or a smaller --max-phrase need less"};
    }
  }

  // The root of a sub-matrix counts its items, and the root's handle is the ID.
  long long itemsLearned(int id) const override {
    auto* root = Functions::elementAt(matrix(), id);
    return root == nullptr ? 0 : Functions::itemsBehind(root);
  }

  const ZQMatrixProperties& record(int id) override {
    const int selected = Functions::currentID(matrix());
    select(id);
    const ZQMatrixProperties* record = Functions::snapshot(Functions::info(matrix()));
    select(selected);
    if (record == nullptr) throw Failure{ExitCode::limit, "out of memory"};
    return *record;
  }

  void setMethod(Method method) override { Functions::setMethod(matrix(), static_cast<int>(method)); }
  void seed(long long value) override { Functions::setRandomValue(matrix(), Functions::currentID(matrix()), value); }

  int setContext(const std::string& text) override {
    std::vector<int> items;
    for (const char byte : text) items.push_back(static_cast<unsigned char>(byte));
    Functions::setContext(matrix(), items.data(), static_cast<int>(items.size()), 1);
    return Functions::lengthOfContext(matrix());
  }

  char nextByte() override {
    double probability = 0;
    double stopProbability = 0;
    const int* item = Functions::nextItem(matrix(), &probability, &stopProbability);
    return item == nullptr ? '\n' : static_cast<char>(*item);
  }

 protected:
  TestResult selfTest(int id, int which) override {
    select(id);
    TestResult result{};
    result.isSound =
        Functions::selfTest(matrix(), which, &result.writtenElements, &result.endElements, 0) == 1;  // 0: nothing is cut off
    return result;
  }

 private:
  typename Functions::Handle* matrix() const { return handle_.get(); }

  std::unique_ptr<typename Functions::Handle, decltype(Functions::destroy)> handle_;
};

}  // namespace

std::unique_ptr<Matrix> Matrix::create(Tier tier, Loudness loudness, int phraseLimit) {
  if (tier == Tier::full) return std::make_unique<MatrixOf<FullTier>>(loudness, phraseLimit);
  return std::make_unique<MatrixOf<MediumTier>>(loudness, phraseLimit);
}

long long Matrix::itemsLearned() const {
  long long sum = 0;
  for (int id = 0; id < numberOfIDs(); ++id) sum += itemsLearned(id);
  return sum;
}

const char* nameOf(Tier tier) {
  return tier == Tier::full ? "full" : "medium";
}

const char* languageOf(const ZQMatrixProperties& record) {
  static const char* const names[] = {"unknown language", "German", "English", "French", "Spanish"};
  const int language = record.language;
  return names[language >= ZQLanguageGerman && language <= ZQLanguageSpanish ? language : 0];
}
