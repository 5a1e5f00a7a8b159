// Numbers: series of integers, learned in one sub-matrix.
#include <algorithm>
#include <cstdlib>
#include <map>

#include "Arithmetic.h"
#include "Failure.h"
#include "Material.h"
#include "Messages.h"
#include "Nearest.h"
#include "NumberCoding.h"
#include "NumberContinuation.h"
#include "NumberFile.h"

namespace {

constexpr int usualPhraseLimit = 8;
constexpr int usualMaxIndex = 500000;
constexpr int usualOcronType = 4;
constexpr long long largestMaxIndex = 134000000;  // just below the slots of the largest block

std::string placeOf(const InputFile& input, const NumberFile::BadToken& token) {
  return input.name + ":" + std::to_string(token.line) + ":" + std::to_string(token.column);
}

class NumberMaterial : public Material {
 public:
  explicit NumberMaterial(const LearningOptions& options) : options_(options) {}

  std::unique_ptr<Matrix> makeMatrix(const std::vector<InputFile>& inputs, MessageLevel messageLevel) override {
    const NumberCoding& coding = wantedCoding();
    settings_ = {coding.preprocessing, options_.ocronType.value_or(coding.ocronType == 0 ? usualOcronType : coding.ocronType),
                 options_.maxIndex.value_or(usualMaxIndex)};
    requireOcronTypeOf(coding);
    read(inputs);
    std::unique_ptr<Matrix> matrix = Matrix::create(options_.tier.value_or(Tier::medium), messageLevel);
    matrix->prepareForNumbers(settings_, options_.maxPhrase.value_or(usualPhraseLimit));
    return matrix;
  }

  void adjust(Matrix& matrix, const std::vector<InputFile>& inputs) override {
    settings_ = matrix.numberSettings();
    const NumberCoding* const coding = findNumberCoding(settings_.preprocessing);
    if (options_.coding && (coding == nullptr || *options_.coding != coding->name)) {
      refuseUpdate(std::string("the model was learned with --coding ") + (coding == nullptr ? "of its own" : coding->name));
    }
    if (options_.ocronType && *options_.ocronType != settings_.ocronType) {
      refuseUpdate("the model was learned with --ocron-type " + std::to_string(settings_.ocronType));
    }
    if (options_.maxIndex && *options_.maxIndex != settings_.maxIndex) {
      refuseUpdate("the model was learned with --max-index " + std::to_string(settings_.maxIndex));
    }
    if (options_.maxPhrase) matrix.setPhraseLimit(*options_.maxPhrase);
    read(inputs);
  }

  // Sets the context to the end of the series, where a continuation without a start goes on.
  int learn(Matrix& matrix, const InputFile& input) override {
    matrix.select(0);
    const auto found = files_.find(input.name);
    if (found == files_.end()) return -1;
    for (const std::vector<int>& series : found->second) {
      matrix.learnSeries(series, input.name);
      const MutedMessages muted(matrix);
      const auto longest = static_cast<std::ptrdiff_t>(std::min<std::size_t>(series.size(), 64));
      matrix.setContext({series.end() - longest, series.end()});
    }
    return found->second.empty() ? -1 : 0;
  }

  void printOmissions() const override {
    if (badTokens_ > 0) note("left out " + countOf(badTokens_, "token"));
    if (withoutForm_ > 0) note("left out " + countOf(withoutForm_, "number") + " without a code");
  }

  std::string nothingLearned() const override {
    bool holdsNumbers = false;
    for (const auto& [name, list] : files_) {
      for (const std::vector<int>& series : list) holdsNumbers = holdsNumbers || !series.empty();
    }
    return std::string("nothing to learn: ") + (holdsNumbers       ? "no series is long enough for the coding"
                                                : withoutForm_ > 0 ? "no number has a code in this coding"
                                                                   : "the input has no numbers");
  }

  std::string amountIn(Matrix& matrix) const override { return countOf(matrix.itemsLearned(), "item"); }

  void describe(Matrix& matrix, nlohmann::ordered_json& description) const override {
    const Matrix::NumberSettings settings = matrix.numberSettings();
    const NumberCoding* const coding = findNumberCoding(settings.preprocessing);
    description["coding"] = coding == nullptr ? "preprocessing " + std::to_string(settings.preprocessing) : coding->name;
    if (coding != nullptr && coding->ocronType != 0) description["ocron_type"] = settings.ocronType;
  }

  std::unique_ptr<Continuation> continuation(Matrix& matrix, const GenerationOptions& options) const override {
    return std::make_unique<NumberContinuation>(matrix, options);
  }

 private:
  const NumberCoding& wantedCoding() const {
    const std::string name = options_.coding.value_or("difference");
    const NumberCoding* const coding = findNumberCoding(name);
    if (coding != nullptr) return *coding;
    throw Failure{ExitCode::usage, name + " is not a coding of numbers: " + listOf(namesOfNumberCodings())};
  }

  // --coding ocron and gocron allow the types 3 to 5, gocron-value any type, the other codings only their own.
  void requireOcronTypeOf(const NumberCoding& coding) const {
    if (!options_.ocronType) return;
    const int type = *options_.ocronType;
    const bool fits = coding.ocronType == 4 ? type <= 5 : coding.ocronType == type;
    if (coding.ocronType != 0 && (fits || coding.preprocessing == ZQPreProcessingTypeGocronValue)) return;
    throw Failure{ExitCode::usage, std::string("--coding ") + coding.name +
                                       (coding.ocronType == 0   ? " has no --ocron-type"
                                        : coding.ocronType == 4 ? " takes --ocron-type 3, 4 or 5"
                                                                : " takes --ocron-type " + std::to_string(coding.ocronType))};
  }

  // Reads and checks all files before the first is learned.
  void read(const std::vector<InputFile>& inputs) {
    for (const InputFile& input : inputs) {
      NumberFile file = parseNumbers(readFile(input.path));
      if (!file.bad.empty() && !options_.skipsBad) refuse(input, file.bad);
      badTokens_ += static_cast<long long>(file.bad.size());
      files_[input.name] = std::move(file.series);
    }
    if (isArithmetic(settings_.preprocessing)) {
      std::vector<int> all;
      for (const auto& [name, list] : files_) {
        for (const std::vector<int>& series : list) all.insert(all.end(), series.begin(), series.end());
      }
      prepareArithmetic(settings_.preprocessing, settings_.ocronType, all);
    }
    for (auto& [name, list] : files_) {
      for (std::vector<int>& series : list) requireForms(name, series);
      list.erase(std::remove_if(list.begin(), list.end(), [](const std::vector<int>& series) { return series.empty(); }),
                 list.end());
    }
    requireRoom();
  }

  [[noreturn]] void refuse(const InputFile& input, const std::vector<NumberFile::BadToken>& bad) const {
    const std::string more = bad.size() > 1 ? " (and " + std::to_string(bad.size() - 1) + " more)" : "";
    throw Failure{ExitCode::badInput, placeOf(input, bad[0]) + ": " + bad[0].token.substr(0, 40) +
                                          (bad[0].isInteger ? " does not fit 32 bits" : " is not an integer") + more +
                                          "; --skip-bad leaves out such tokens"};
  }

  // Refuses or removes numbers without a code, and records the sizes of the other codes.
  void requireForms(const std::string& name, std::vector<int>& series) {
    if (!isArithmetic(settings_.preprocessing)) {
      rememberDifferences(series);
      return;
    }
    const auto hasNone = [&](int number) { return !hasForm(number); };
    const auto first = std::find_if(series.begin(), series.end(), hasNone);
    if (first == series.end()) return;
    if (!options_.skipsBad) {
      throw Failure{ExitCode::badInput, name + ": " + std::to_string(*first) + " has no code in the coding " +
                                            findNumberCoding(settings_.preprocessing)->name +
                                            "; --skip-bad leaves out such numbers, --coding plain and difference accept all"};
    }
    const auto end = std::remove_if(series.begin(), series.end(), hasNone);
    withoutForm_ += series.end() - end;
    series.erase(end, series.end());
  }

  bool hasForm(int number) {
    if (isOcronCoding(settings_.preprocessing)) return ocronOf(settings_.ocronType, number).has_value();
    const std::optional<long long> form = encode(settings_.preprocessing, settings_.ocronType, number);
    if (form) remember(*form);
    return form.has_value();
  }

  void rememberDifferences(const std::vector<int>& series) {
    std::vector<long long> row(series.begin(), series.end());
    for (int pass = 0; pass < settings_.preprocessing && !row.empty(); ++pass) {
      for (std::size_t at = 0; at + 1 < row.size(); ++at) row[at] = row[at + 1] - row[at];
      row.pop_back();
    }
    for (const long long value : row) remember(value);
  }

  void remember(long long form) {
    ++forms_;
    tooLarge_ += std::llabs(form) > settings_.maxIndex;
    largest_ = std::max(largest_, std::llabs(form));
  }

  void requireRoom() const {
    if (tooLarge_ == 0) return;
    const std::string coding = findNumberCoding(settings_.preprocessing)->name;
    const std::string other = isGocronCoding(settings_.preprocessing) ? coding.substr(0, coding.find("gocron")) + "ocron"
                              : coding == "difference"                ? "difference2 or ocron"
                                                                      : "difference";
    std::string advice = "choose --coding " + other;
    if (largest_ <= largestMaxIndex) {
      advice += ", or --max-index " + std::to_string(largest_) + ", which can take " +
                std::to_string(largest_ * 8 / 1000000 + 1) + " MB";
    }
    throw Failure{ExitCode::limit, std::to_string(tooLarge_) + " of " + countOf(forms_, "number") + " are coded as more than " +
                                       std::to_string(settings_.maxIndex) + ", the limit of the matrix; the largest code is " +
                                       std::to_string(largest_) + ": " + advice};
  }

  const LearningOptions& options_;
  Matrix::NumberSettings settings_{};
  std::map<std::string, std::vector<std::vector<int>>> files_;
  long long badTokens_ = 0;
  long long withoutForm_ = 0;
  long long forms_ = 0;
  long long tooLarge_ = 0;
  long long largest_ = 0;
};

}  // namespace

std::unique_ptr<Material> makeNumberMaterial(const LearningOptions& options) {
  return std::make_unique<NumberMaterial>(options);
}
