#include "TextContinuation.h"

#include <cstdio>

#include "Failure.h"
#include "Talk.h"
#include "TextFile.h"

namespace {
constexpr int lineFeedSymbol = 10;  // stands between paragraphs on the level of words
constexpr long long usualCount = 1000;
}  // namespace

TextContinuation::TextContinuation(Matrix& matrix, Level level, const GenerationOptions& options)
    : matrix_(matrix), level_(level), options_(options), start_(itemsOfArgument(options.start)), encoder_(options.encoding) {
  if (level == Level::words && !matrix.hasWords())
    throw Failure{ExitCode::badInput, "no words: they are learned with --level words"};
  if (level == Level::letters) matrix.forgetWords();
  int longestKnown = -1;
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    const ZQMatrixProperties& record = matrix.record(id);
    if (record.matrixType != ZQMatrixTypeANSIText || matrix.itemsLearned(id) == 0) continue;
    if (level == Level::words && record.currentMatrixIDLevelUp < 0) continue;
    goTo(id);
    const int known = start_.empty() ? 0 : matrix.lengthOfContext();
    if (known > longestKnown || (known == longestKnown && matrix.itemsLearned(id) > matrix.itemsLearned(id_))) {
      id_ = id;
      longestKnown = known;
    }
  }
  if (id_ >= 0) return;
  throw Failure{ExitCode::badInput, level == Level::words ? "nothing to continue: no word was short enough to be learned"
                                                          : "nothing to continue: the model holds no text"};
}

// Sets the context and selects what the next items come from.
void TextContinuation::goTo(int id) {
  const Hush hush(matrix_);  // a start that the texts don't hold is no fault
  matrix_.select(id);
  if (!start_.empty()) matrix_.setContext(start_);
  if (level_ == Level::words) matrix_.select(matrix_.record(id).currentMatrixIDLevelUp);
}

void TextContinuation::write(Output& output, Progress& progress) {
  goTo(id_);
  matrix_.setMethod(options_.method);
  matrix_.seed(options_.seed);
  output.write(encoder_.mark() + encoder_.bytesOf(start_));
  needsBlank_ = !start_.empty() && !isBlank({start_.back()});
  const bool shown = !output.isOnTerminal();  // there the text itself shows how far it is
  const long long count = options_.count.value_or(usualCount);
  for (long long done = 0; done < count; ++done) {
    if (shown && done % 256 == 0) progress.show("writing", static_cast<double>(done) / static_cast<double>(count));
    if (level_ == Level::words) {
      output.write(encoder_.bytesOf(nextWord()));
    } else {
      const std::optional<int> item = matrix_.nextItem();
      output.write(encoder_.bytesOf(item.value_or('\n')));  // as the library's own writer has it
    }
  }
  output.commit();
  if (encoder_.lost() > 0) note(countOf(encoder_.lost(), "character") + " written as ?, since the encoding lacks them");
  if (!shown) std::fputc('\n', stderr);
}

std::vector<int> TextContinuation::nextWord() {
  const std::optional<int> symbol = matrix_.nextItem();
  const bool endsLine = !symbol || *symbol == lineFeedSymbol;
  std::vector<int> word = endsLine ? std::vector<int>{'\n'} : matrix_.wordOf(*symbol);
  if (needsBlank_ && !endsLine) word.insert(word.begin(), ' ');
  needsBlank_ = !endsLine;
  return word;
}
