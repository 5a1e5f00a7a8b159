#include "TextSource.h"

#include "Choice.h"
#include "Sentences.h"

namespace {

constexpr int lineFeed = 10;  // also the symbol of a blank line on the level of words
constexpr int noItem = -1;

}  // namespace

std::vector<int> TextSource::next() {
  const int lengthOfContext = copies_ != nullptr ? matrix_.lengthOfContext() : 0;
  std::optional<int> item;
  if (beginsSentence_) item = begin();
  if (!item && !beginsSentence_) item = matrix_.nextItem();
  if (!item) {
    beginsSentence_ = true;
    if (copies_ != nullptr) copies_->breakOff();
    return lineEnd();
  }
  std::vector<int> characters = charactersOf(*item);
  if (copies_ != nullptr) copies_->follow(lengthOfContext, *item, static_cast<int>(characters.size()));
  return characters;
}

void TextSource::go(const std::vector<int>& context) {
  const MutedMessages muted(matrix_);
  matrix_.setContext(context);
}

// Draws the first letters from the counts of SentenceStarts. When the beginning is as long as the phrases allow, or the counts
// are inconsistent because rules were removed, the ordinary choice continues the beginning.
std::optional<int> LetterSource::begin() {
  const std::optional<std::vector<Matrix::Successor>>& known = starts_.after(beginning_);
  std::vector<Matrix::Successor> letters = known.value_or(std::vector<Matrix::Successor>());
  const long long continued = sumOfCounts(letters);
  if (beginning_.empty()) sentencesWithBeginning_ = continued;
  if (!known || sentencesWithBeginning_ == 0 || continued > sentencesWithBeginning_) {
    beginsSentence_ = false;
    beginning_.clear();
    return std::nullopt;
  }
  if (continued == 0 || (continued < sentencesWithBeginning_ && method_ != Method::middle)) {
    letters.push_back({noItem, static_cast<int>(sentencesWithBeginning_ - continued), 0});
  }
  const Matrix::Successor letter = letters[choose(matrix_, letters, method_)];
  if (letter.item == noItem) {
    beginning_.clear();
    go({});
    return std::nullopt;
  }
  beginning_.push_back(letter.item);
  sentencesWithBeginning_ = letter.count;
  go(beginning_);
  return letter.item;
}

// Draws the first word among those that begin sentences and, if runs of three words were learned, the second among those that
// follow the first one there.
std::optional<int> WordSource::begin() {
  if (ends_.empty() && beginnings_.empty()) findBeginnings();
  std::vector<Matrix::Successor> words = beginnings_;
  if (firstWord_) words = phraseLimit_ < 3 ? std::vector<Matrix::Successor>() : successorsOfEnds({*firstWord_}, false);
  if (words.empty()) {
    beginsSentence_ = false;
    firstWord_.reset();
    return std::nullopt;
  }
  const int word = words[choose(matrix_, words, method_)].item;
  go(firstWord_ ? std::vector<int>{*firstWord_, word} : std::vector<int>{word});
  beginsSentence_ = !firstWord_;
  firstWord_ = firstWord_ ? std::nullopt : std::optional<int>(word);
  return word;
}

void WordSource::findBeginnings() {
  for (const Matrix::Successor& word : matrix_.successorsOf({})) {
    if (word.starts > 0) beginnings_.push_back({word.item, word.starts, word.starts});
    if (isLineEnd(word.item) || surelyEndsSentence(matrix_.wordOf(word.item))) ends_.push_back(word.item);
  }
  if (phraseLimit_ < 2) return;
  for (const Matrix::Successor& word : successorsOfEnds({}, true)) beginnings_.push_back(word);
}

// The words that follow these words after the end of a sentence.
std::vector<Matrix::Successor> WordSource::successorsOfEnds(const std::vector<int>& words, bool onlyBeginnings) {
  std::map<int, int> counts;
  std::vector<int> context(1);
  context.insert(context.end(), words.begin(), words.end());
  for (const int end : ends_) {
    context[0] = end;
    for (const Matrix::Successor& word : matrix_.successorsOf(context)) counts[word.item] += word.count;
  }
  std::vector<Matrix::Successor> successors;
  for (const auto& [word, count] : counts) {
    const std::vector<int> letters = isLineEnd(word) ? std::vector<int>() : matrix_.wordOf(word);
    if (!onlyBeginnings || (!letters.empty() && mayBeginSentence(letters[0]))) successors.push_back({word, count, 0});
  }
  return successors;
}

bool WordSource::isLineEnd(int symbol) {
  return symbol == lineFeed;
}

std::vector<int> WordSource::lineEnd() {
  needsBlank_ = false;
  return {lineFeed};
}

std::vector<int> WordSource::charactersOf(int symbol) {
  if (isLineEnd(symbol)) return lineEnd();
  const std::vector<int> letters = matrix_.wordOf(symbol);
  std::vector<int> characters(needsBlank_ ? 1 : 0, ' ');
  characters.insert(characters.end(), letters.begin(), letters.end());
  needsBlank_ = true;
  return characters;
}
