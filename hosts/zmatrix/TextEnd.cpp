#include "TextEnd.h"

#include <algorithm>

void TextEnd::startWith(const std::vector<int>& start) {
  for (const int character : start) reader_.takes(character);
  isInSentence_ = !unfinishedSentence(start).empty() && !reader_.isBehindMark();
}

std::vector<int> TextEnd::take(const std::vector<int>& piece) {
  std::vector<int> taken;
  for (const int character : piece) {
    if (isReached()) break;
    if (character == '\n') {
      takeLineEnd(taken);
    } else {
      takeCharacter(character, taken);
    }
  }
  return taken;
}

void TextEnd::takeLineEnd(std::vector<int>& taken) {
  sentences_ += isInSentence_;
  ++lines_;
  isInSentence_ = false;
  reader_ = SentenceReader();
  waiting_.clear();
  taken.push_back('\n');
}

void TextEnd::takeCharacter(int character, std::vector<int>& taken) {
  const bool begins = reader_.takes(character);
  if (isWhiteSpace(character)) {
    (sentencesWanted_ ? waiting_ : taken).push_back(character);
    return;
  }
  sentences_ += begins && isInSentence_;
  if (isReached()) {
    taken.push_back('\n');
    return;
  }
  isInSentence_ = true;
  taken.insert(taken.end(), waiting_.begin(), waiting_.end());
  waiting_.clear();
  taken.push_back(character);
}

bool TextEnd::isReached() const {
  return (sentencesWanted_ && sentences_ >= *sentencesWanted_) || (linesWanted_ && lines_ >= *linesWanted_);
}

double TextEnd::progress() const {
  const auto share = [](long long done, std::optional<long long> wanted) {
    return wanted ? static_cast<double>(done) / static_cast<double>(*wanted) : 0.0;
  };
  return std::max(share(sentences_, sentencesWanted_), share(lines_, linesWanted_));
}
