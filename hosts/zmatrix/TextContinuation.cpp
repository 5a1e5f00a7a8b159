#include "TextContinuation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Failure.h"
#include "Reopenable.h"
#include "Statistics.h"
#include "TextFile.h"

namespace {

constexpr long long usualCount = 1000;
constexpr long long mostItemsPerSentence = 10000;  // a generation that repeats itself may never end a sentence
constexpr std::size_t mostCompared = 1000000;      // characters

std::string textOf(const std::vector<int>& characters) {
  return TextEncoder(Encoding::utf8).bytesOf(characters);
}

std::string percent(double share) {
  char text[16];
  std::snprintf(text, sizeof text, "%.1f %%", 100 * share);
  return text;
}

long long wordsOf(const std::vector<int>& text) {
  long long words = 0;
  for (std::size_t at = 0; at < text.size(); ++at) words += !isWhiteSpace(text[at]) && (at == 0 || isWhiteSpace(text[at - 1]));
  return words;
}

}  // namespace

TextContinuation::TextContinuation(Matrix& matrix, Level level, const GenerationOptions& options)
    : matrix_(matrix),
      level_(level),
      options_(options),
      start_(itemsOfArgument(options.start)),
      encoder_(options.encoding),
      end_(options.sentences, options.lines) {
  if (level == Level::words && !matrix.hasWords())
    throw Failure{ExitCode::badInput, "the model has no words: learn with --level words"};
  if (level == Level::letters) matrix.switchWordsOff();
  for (const std::string& path : options.against) requireReadable(reopenable(path));
  choose();
  // phrases of letters end with their sentence, runs of words don't
  context_ = level == Level::letters ? unfinishedSentence(start_) : start_;
  if (wordsOf(context_) == 0) context_.clear();
  goTo(id_, context_);
  known_ = context_.empty() ? 0 : matrix.lengthOfContext();
}

void TextContinuation::choose() {
  int longestKnown = -1;
  for (int id = 0; id < matrix_.numberOfIDs(); ++id) {
    const ZQMatrixProperties& record = matrix_.record(id);
    if (record.matrixType != ZQMatrixTypeANSIText || matrix_.itemsLearned(id) == 0) continue;
    if (level_ == Level::words && record.currentMatrixIDLevelUp < 0) continue;
    goTo(id, start_);
    const int known = start_.empty() ? 0 : matrix_.lengthOfContext();
    if (known > longestKnown || (known == longestKnown && matrix_.itemsLearned(id) > matrix_.itemsLearned(id_))) {
      id_ = id;
      longestKnown = known;
    }
  }
  if (id_ >= 0) return;
  throw Failure{ExitCode::badInput, level_ == Level::words ? "nothing to continue: all words were too long to be learned"
                                                           : "nothing to continue: the model holds no text"};
}

// Sets the context, and selects the sub-matrix of the letters or of the words above them.
void TextContinuation::goTo(int id, const std::vector<int>& start) {
  const MutedMessages muted(matrix_);  // the library warns of a start that was not learned
  matrix_.select(id);
  matrix_.setContext(start);
  if (level_ == Level::words) matrix_.select(matrix_.record(id).currentMatrixIDLevelUp);
}

std::string TextContinuation::remark() const {
  if (context_.empty()) return "";
  if (known_ == 0) return "the start is unknown: a new sentence begins";
  const long long limit = matrix_.record(id_).maxPhraseLengthForUpdateWithSequence;
  if (level_ == Level::letters) {
    matrix_.select(id_);
    const std::vector<int> start = matrix_.preprocess(context_);
    if (known_ >= std::min<long long>(static_cast<long long>(start.size()), limit - 1)) return "";
    return "only the last " + countOf(known_, "character") + " of the start" + (known_ == 1 ? " is" : " are") + " known: \"" +
           textOf({start.end() - known_, start.end()}) + "\"";
  }
  const int unknown = matrix_.countUnknownWords(id_, start_);
  if (unknown > 0) return countOf(unknown, "word") + " of the start " + (unknown == 1 ? "is" : "are") + " unknown";
  const long long longest = matrix_.record(matrix_.record(id_).currentMatrixIDLevelUp).maxPhraseLengthForUpdateWithSequence - 1;
  if (known_ >= std::min(wordsOf(context_), longest)) return "";
  return "only the last " + countOf(known_, "word") + " of the start " + (known_ == 1 ? "is" : "are") + " known as a run";
}

std::unique_ptr<TextSource> TextContinuation::source(SureCopies* copies) {
  const bool isNew = known_ == 0;
  const ZQMatrixProperties& letters = matrix_.record(id_);
  if (level_ == Level::letters) {
    return std::make_unique<LetterSource>(matrix_, letters.maxPhraseLengthForUpdateWithSequence, options_.method, isNew, copies);
  }
  const bool needsBlank = !isNew && !start_.empty() && !isWhiteSpace(start_.back());
  const int limit = matrix_.record(letters.currentMatrixIDLevelUp).maxPhraseLengthForUpdateWithSequence;
  return std::make_unique<WordSource>(matrix_, limit, options_.method, isNew, needsBlank, copies);
}

void TextContinuation::write(Output& output, Progress& progress) {
  if (const std::string unknown = remark(); !unknown.empty()) note(unknown);
  goTo(id_, context_);
  matrix_.setMethod(options_.method);
  matrix_.seed(options_.seed);
  SureCopies sureCopies(matrix_);
  const bool measuresByModel = isMeasured() && options_.against.empty();
  const std::unique_ptr<TextSource> source = this->source(measuresByModel ? &sureCopies : nullptr);
  const bool shown = !output.isOnTerminal();  // on a terminal the text itself shows the progress
  const long long most = mostItems();

  if (!options_.json) output.write(encoder_.mark());
  put(start_, output);
  written_.clear();
  if (known_ > 0) {
    end_.startWith(start_);
  } else if (!start_.empty() && !isWhiteSpace(start_.back()) && most > 0) {
    put({'\n'}, output);
    ++itemsWritten_;
  }
  for (; itemsWritten_ < most && !end_.isReached(); ++itemsWritten_) {
    if (shown && itemsWritten_ % 256 == 0) {
      progress.show("writing", std::max(end_.progress(), static_cast<double>(itemsWritten_) / static_cast<double>(most)));
    }
    put(end_.take(source->next()), output);
  }
  if (isMeasured()) copied_ = measuresByModel ? sureCopies.shares() : compareWithTexts();
  if (options_.json) output.write(json());
  output.commit();
  if (!shown) std::fputc('\n', stderr);
  progress.clear();
  report();
}

void TextContinuation::put(const std::vector<int>& characters, Output& output) {
  if (options_.json) {
    text_ += textOf(characters);
  } else {
    output.write(encoder_.bytesOf(characters));
  }
  if (isMeasured() && written_.size() < mostCompared) written_.insert(written_.end(), characters.begin(), characters.end());
}

long long TextContinuation::mostItems() const {
  if (options_.count) return *options_.count;
  if (!options_.sentences && !options_.lines) return usualCount;
  const long long wanted = std::min(options_.sentences ? *options_.sentences : *options_.lines, 1000000000LL);
  return wanted * mostItemsPerSentence;
}

CopiedRuns::Shares TextContinuation::compareWithTexts() {
  const MutedMessages muted(matrix_);
  matrix_.select(id_);
  CopiedRuns runs(written_);
  for (const std::string& path : options_.against) {
    const std::string name = nameOfArgument(path);
    const DecodedText text = readText({name, reopenable(path), 0, Kind::text}, options_.encodingOfTexts, true);
    runs.compareWith(matrix_.preprocess(text.items));
  }
  return runs.shares();
}

void TextContinuation::report() const {
  const std::string amount = countOf(itemsWritten_, level_ == Level::letters ? "character" : "word");
  if ((options_.sentences || options_.lines) && !end_.isReached()) note("stopped after " + amount);
  if (encoder_.lost() > 0) note(countOf(encoder_.lost(), "character") + " written as ?: not in the encoding");
  if (!isMeasured()) return;
  std::string shares;
  for (std::size_t at = 0; at < copied_.size(); ++at) {
    shares += (at == 0 ? "" : ", ") + std::to_string(CopiedRuns::lengths[at]) + " characters: " + percent(copied_[at]);
  }
  note("wrote " + amount + ", " + countOf(end_.sentences(), "sentence") + "; copied in runs of " + shares);
  if (options_.against.empty()) note("these shares are lower bounds; --against FILE compares with the texts");
}

std::string TextContinuation::json() const {
  Json result;
  result["text"] = text_;
  result["start"] = textOf(start_);
  result["language"] = description();
  result["level"] = level_ == Level::letters ? "letters" : "words";
  result["known_of_start"] = known_;
  result["items"] = itemsWritten_;
  result["sentences"] = end_.sentences();
  result["lines"] = end_.lines();
  result["compared_with"] = options_.against.empty() ? "model" : "texts";
  for (std::size_t at = 0; at < copied_.size(); ++at) {
    result["copied_in_runs_of"][std::to_string(CopiedRuns::lengths[at])] = std::round(copied_[at] * 10000) / 10000;
  }
  return jsonText(result);
}
