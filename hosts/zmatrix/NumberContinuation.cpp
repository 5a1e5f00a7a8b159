#include "NumberContinuation.h"

#include <algorithm>

#include "Arithmetic.h"
#include "Choice.h"
#include "Failure.h"
#include "NumberCoding.h"
#include "NumberFile.h"

namespace {

constexpr long long usualCount = 100;
constexpr std::size_t longestOcron = 512;  // symbols; the ocron of a 32-bit number is far shorter
constexpr int mostFailures = 10000;        // codes in a row that have no number

}  // namespace

std::vector<int> numbersOfStart(const std::string& start) {
  const NumberFile numbers = parseNumbers(start);
  if (!numbers.bad.empty()) {
    throw Failure{ExitCode::usage, "--start: " + numbers.bad[0].token +
                                       (numbers.bad[0].isInteger ? " does not fit 32 bits" : " is not an integer")};
  }
  std::vector<int> all;
  for (const std::vector<int>& series : numbers.series) all.insert(all.end(), series.begin(), series.end());
  return all;
}

NumberContinuation::NumberContinuation(Matrix& matrix, const GenerationOptions& options) : matrix_(matrix), options_(options) {
  if (options.matrixID) throw Failure{ExitCode::usage, "--matrix applies to music only; numbers have one sub-matrix"};
  if (options.tempo) throw Failure{ExitCode::usage, "--tempo applies to music only"};
  refuseTextOptions(options, "numbers");
  if (matrix.itemsLearned() == 0) throw Failure{ExitCode::badInput, "nothing to continue: the model holds no numbers"};
  matrix.select(0);
  settings_ = matrix.numberSettings();
  start_ = numbersOfStart(options.start);
}

std::string NumberContinuation::description() const {
  const NumberCoding* const coding = findNumberCoding(settings_.preprocessing);
  return coding == nullptr ? "numbers" : std::string("numbers by ") + coding->learned;
}

void NumberContinuation::write(Output& output, Progress& progress) {
  matrix_.setMethod(options_.method);
  matrix_.seed(options_.seed);
  const MutedMessages muted(matrix_);  // the library warns of a start that was not learned
  if (isArithmetic(settings_.preprocessing)) {
    const std::vector<int> context = start_.empty() ? matrix_.context() : start_;
    prepareArithmetic(settings_.preprocessing, settings_.ocronType, context);
    stored_ = matrix_.preprocess(context);
  } else if (!start_.empty()) {
    matrix_.setContext(start_);
  }
  for (const int number : start_) output.write(std::to_string(number) + "\n");
  const bool shown = !output.isOnTerminal();
  const long long count = options_.count.value_or(usualCount);
  for (long long done = 0; done < count; ++done) {
    if (shown && done % 64 == 0) progress.show("writing", static_cast<double>(done) / static_cast<double>(count));
    output.write(std::to_string(nextNumber()) + "\n");
  }
  output.commit();
}

int NumberContinuation::nextNumber() {
  if (isArithmetic(settings_.preprocessing)) return decodedNumber();
  for (int failures = 0; failures < mostFailures; ++failures) {
    if (const std::optional<int> number = matrix_.nextItem()) return *number;
  }
  throw Failure{ExitCode::badInput, "nothing to continue: the series is too short for its coding"};
}

// The library decodes one stored item to one number. An ocron takes one item per symbol, so the symbols are collected here. Codes
// without a number are skipped.
int NumberContinuation::decodedNumber() {
  for (int failures = 0; failures < mostFailures; ++failures) {
    if (!isOcronCoding(settings_.preprocessing)) {
      if (const std::optional<int> number = decode(settings_.preprocessing, settings_.ocronType, nextStoredItem()))
        return *number;
      continue;
    }
    std::string ocron;
    for (int symbol = nextStoredItem(); symbol != ocronEnd && ocron.size() < longestOcron; symbol = nextStoredItem()) {
      ocron += static_cast<char>(symbol);
    }
    if (const std::optional<int> number = valueOfOcron(settings_.ocronType, ocron)) return *number;
  }
  throw Failure{ExitCode::badInput, "no further number can be generated; try a longer --max-phrase"};
}

// Chooses among the successors of the longest known ending of `stored_`, or among those of the root if no ending is known.
int NumberContinuation::nextStoredItem() {
  const std::size_t longest = std::min(stored_.size(), static_cast<std::size_t>(std::max(matrix_.phraseLimit() - 1, 0)));
  std::vector<Matrix::Successor> successors = matrix_.successorsOf({});
  for (std::size_t length = 1; length <= longest; ++length) {
    std::vector<Matrix::Successor> longer =
        matrix_.successorsOf({stored_.end() - static_cast<std::ptrdiff_t>(length), stored_.end()});
    if (longer.empty()) break;
    successors = std::move(longer);
  }
  if (successors.empty()) throw Failure{ExitCode::badInput, "nothing to continue: the model holds no numbers"};
  const int item = successors[choose(matrix_, successors, options_.method)].item;
  if (stored_.size() > 4096) stored_.erase(stored_.begin(), stored_.begin() + 2048);  // no phrase is longer than 1024
  stored_.push_back(item);
  return item;
}
