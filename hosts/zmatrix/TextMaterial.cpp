// Texts: learned by letters or by words. Each language has a sub-matrix of its own.
#include <map>

#include "Failure.h"
#include "Material.h"
#include "Messages.h"
#include "Sentences.h"
#include "TextContinuation.h"
#include "TextFile.h"

namespace {

constexpr int phraseLimitForWords = 16;  // letters; a longer word gets no symbol

// The largest limits with little copying, measured in docs/command.md. Longer texts allow longer phrases, since more contexts
// have several successors.
struct PhraseLimits {
  int letters;
  int words;
};
constexpr PhraseLimits limitsForShortTexts = {8, 2};
constexpr PhraseLimits limitsForLongTexts = {10, 3};
constexpr std::uintmax_t longTexts = 256 * 1024;  // bytes

PhraseLimits phraseLimitsFor(const std::vector<InputFile>& inputs) {
  std::uintmax_t bytes = 0;
  for (const InputFile& input : inputs) bytes += input.size;
  return bytes < longTexts ? limitsForShortTexts : limitsForLongTexts;
}

class TextMaterial : public Material {
 public:
  explicit TextMaterial(const LearningOptions& options) : options_(options) {}

  std::unique_ptr<Matrix> makeMatrix(const std::vector<InputFile>& inputs, MessageLevel messageLevel) override {
    const bool learnsWords = options_.level == Level::words;
    if (learnsWords && options_.tier == Tier::medium) throw Failure{ExitCode::usage, "--level words needs --tier full"};
    if (!learnsWords && options_.maxWords) throw Failure{ExitCode::usage, "--max-words needs --level words"};
    std::unique_ptr<Matrix> matrix =
        Matrix::create(options_.tier.value_or(learnsWords ? Tier::full : Tier::medium), messageLevel);
    const PhraseLimits limits = phraseLimitsFor(inputs);
    if (learnsWords) matrix->prepareForWords(options_.maxWords.value_or(limits.words));
    matrix->prepareForTexts(options_.maxPhrase.value_or(learnsWords ? phraseLimitForWords : limits.letters));
    return matrix;
  }

  void adjust(Matrix& matrix, const std::vector<InputFile>&) override {
    if (options_.level == Level::words && !matrix.hasWords()) refuseUpdate("the model was learned without --level words");
    if (options_.level == Level::letters && matrix.hasWords()) refuseUpdate("the model was learned with --level words");
    if (options_.maxWords && !matrix.hasWords()) {
      refuseUpdate("--max-words is for a model that was learned with --level words");
    }
    if (options_.maxPhrase) matrix.setPhraseLimit(*options_.maxPhrase);
    if (options_.maxWords) matrix.setWordLimit(*options_.maxWords);
  }

  int learn(Matrix& matrix, const InputFile& input) override {
    const DecodedText text = readText(input, options_.encoding, options_.isForced);
    if (text.isGuessed && firstGuess_.empty()) firstGuess_ = input.name;
    guesses_ += text.isGuessed;
    replaced_ += text.replaced;
    const Matrix::Learned learned =
        matrix.learnText(matrix.hasWords() ? text.items : withMarkedSentences(text.items), input.name);
    if (learned.wordsLeftOut > 0) {
      wordsLeftOut_[matrix.record(learned.id).maxPhraseLengthForUpdateWithSequence] += learned.wordsLeftOut;
    }
    return learned.id;
  }

  void printOmissions() const override {
    if (guesses_ > 0) {
      const std::string others = guesses_ > 1 ? " and " + countOf(guesses_ - 1, "other file") : "";
      note("not UTF-8, read as Windows-1252: " + firstGuess_ + others + " (--encoding sets another)");
    }
    if (replaced_ > 0) note(countOf(replaced_, "place") + " could not be decoded and became U+FFFD");
    for (const auto& [limit, words] : wordsLeftOut_) {
      note("left out " + countOf(words, "word") + " of more than " + std::to_string(limit) +
           " letters: a larger --max-phrase includes them");
    }
  }

  std::string nothingLearned() const override {
    return std::string("nothing to learn: ") +
           (wordsLeftOut_.empty() ? "the input has no text" : "all words are too long, a larger --max-phrase includes them");
  }

  // Counts the letters only, not the symbols of the level above.
  std::string amountIn(Matrix& matrix) const override {
    long long items = 0;
    for (int id = 0; id < matrix.numberOfIDs(); ++id) {
      if (matrix.record(id).matrixType == ZQMatrixTypeANSIText) items += matrix.itemsLearned(id);
    }
    return countOf(items, "item");
  }

  void describe(Matrix& matrix, nlohmann::ordered_json& description) const override {
    description["level"] = matrix.hasWords() ? "words" : "letters";
  }

  std::unique_ptr<Continuation> continuation(Matrix& matrix, const GenerationOptions& options) const override {
    if (options.matrixID)
      throw Failure{ExitCode::usage, "--matrix applies to music only; for texts --start chooses the language"};
    if (options.tempo) throw Failure{ExitCode::usage, "--tempo applies to music only"};
    const Level level = options.level.value_or(matrix.hasWords() ? Level::words : Level::letters);
    if (level == Level::letters && matrix.hasWords() && !holdsRunsOfLetters(matrix)) {
      throw Failure{ExitCode::badInput, "the model was learned by words only: continue it with --level words"};
    }
    return std::make_unique<TextContinuation>(matrix, level, options);
  }

 private:
  // In a model that was learned by words no phrase of letters contains a blank.
  static bool holdsRunsOfLetters(Matrix& matrix) {
    for (int id = 0; id < matrix.numberOfIDs(); ++id) {
      if (!matrix.isOccupied(id) || matrix.record(id).matrixType != ZQMatrixTypeANSIText) continue;
      matrix.select(id);
      for (const Matrix::Successor& first : matrix.successorsOf({})) {
        if (first.item == ' ') return true;
      }
    }
    return false;
  }

  const LearningOptions& options_;
  std::string firstGuess_;  ///< the first file that was assumed to be Windows-1252
  long long guesses_ = 0;
  long long replaced_ = 0;
  std::map<int, long long> wordsLeftOut_;  ///< by the phrase limit that they exceed; each sub-matrix may have its own
};

}  // namespace

std::unique_ptr<Material> makeTextMaterial(const LearningOptions& options) {
  return std::make_unique<TextMaterial>(options);
}
