#include "Sentences.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

bool isOneOf(int character, const char* characters) {
  return character > 0 && character < 256 && std::string(characters).find(static_cast<char>(character)) != std::string::npos;
}

bool isMark(int character) {
  return isOneOf(character, ".!?\x85");
}

bool closes(int character) {
  return isOneOf(character, "\"')]}_*\x92\x93\x94\x9B\xAB\xBB");
}

bool opens(int character) {
  return isOneOf(character, "\"'([{_*\x82\x84\x8B\x91\x93\x94\xA1\xAB\xBB\xBF");
}

bool isDigit(int character) {
  return character >= '0' && character <= '9';
}

bool isSmallLetter(int character) {
  return (character >= 'a' && character <= 'z') || (character >= 0xDF && character <= 0xFF && character != 0xF7) ||
         isOneOf(character, "\x9A\x9C\x9E\x83") || (character >= 0x3AC && character <= 0x3CE) ||
         (character >= 0x430 && character <= 0x45F);
}

bool isLetter(int character) {
  return isSmallLetter(character) || (character >= 'A' && character <= 'Z') ||
         (character >= 0xC0 && character <= 0xDE && character != 0xD7) || isOneOf(character, "\x8A\x8C\x8E\x9F") ||
         character >= 0x100;
}

bool isVowel(int character) {
  return isOneOf(character, "aeiouyAEIOUY") || character >= 0xC0;
}

const char* const titles[] = {"Capt", "Prof", "Rev", "Col", "Gen", "Hon", "Sen", "Esq", "Geo", "Wm"};

}  // namespace

bool isWhiteSpace(int character) {
  return character <= 32 || character == 0xA0;
}

bool mayBeginSentence(int character) {
  return (isLetter(character) && !isSmallLetter(character)) || isDigit(character) || opens(character);
}

bool SentenceReader::takes(int character) {
  if (isWhiteSpace(character)) {
    isBehindWhite_ = true;
    return false;
  }
  const bool begins = isBehindMark_ && isBehindWhite_ && mayBeginSentence(character);
  if (isBehindWhite_) {
    word_.clear();
    isBehindMark_ = false;
  }
  isBehindWhite_ = false;
  if (isMark(character)) {
    isBehindMark_ = character != '.' || !isAbbreviation();
  } else if (!closes(character)) {
    isBehindMark_ = false;
  }
  word_.push_back(character);
  return begins;
}

// True for the words "J", "U.S", "Mr", "Capt" and "3"; false for "1853" and "end".
bool SentenceReader::isAbbreviation() const {
  const auto begin = std::find_if_not(word_.begin(), word_.end(), opens);
  const auto length = std::distance(begin, word_.end());
  if (length == 0) return false;
  if (std::all_of(begin, word_.end(), isDigit)) return length < 3;
  if (isLetter(*begin) && std::find(begin, word_.end(), '.') != word_.end() && isLetter(word_.back())) return true;
  if (!std::all_of(begin, word_.end(), isLetter)) return false;
  if (length == 1 || std::none_of(begin, word_.end(), isVowel)) return true;
  return std::any_of(std::begin(titles), std::end(titles),
                     [&](const std::string& title) { return std::equal(begin, word_.end(), title.begin(), title.end()); });
}

std::vector<int> unfinishedSentence(const std::vector<int>& text) {
  SentenceReader reader;
  std::size_t begin = 0;
  int lineEnds = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool begins = reader.takes(text[at]);
    if (isWhiteSpace(text[at])) {
      lineEnds += text[at] == '\n';
      continue;
    }
    if (begins || lineEnds > 1) begin = at;
    lineEnds = 0;
  }
  const bool endsWhite = !text.empty() && isWhiteSpace(text.back());
  if (lineEnds > 1 || (endsWhite && reader.isBehindMark())) begin = text.size();
  while (begin < text.size() && isWhiteSpace(text[begin])) ++begin;
  return {text.begin() + static_cast<std::ptrdiff_t>(begin), text.end()};
}

std::vector<int> withMarkedSentences(const std::vector<int>& text) {
  SentenceReader reader;
  std::vector<int> marked;
  for (std::size_t at = 0; at < text.size();) {
    if (!isWhiteSpace(text[at])) {
      reader.takes(text[at]);
      marked.push_back(text[at++]);
      continue;
    }
    const std::size_t white = at;
    while (at < text.size() && isWhiteSpace(text[at])) ++at;
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(white);
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(at);
    const bool isBlankLine = std::count(begin, end, '\n') > 1;
    reader.takes(' ');
    if (isBlankLine || at == text.size()) {
      marked.insert(marked.end(), begin, end);
      if (isBlankLine) reader = SentenceReader();
    } else if (reader.isBehindMark() && mayBeginSentence(text[at])) {
      marked.insert(marked.end(), 2, '\n');
    } else {
      if (!marked.empty() && isOneOf(marked.back(), ".!;")) marked.push_back(0xA0);
      marked.insert(marked.end(), begin, end);
    }
  }
  return marked;
}

bool surelyEndsSentence(const std::vector<int>& word) {
  auto end = word.end();
  while (end != word.begin() && closes(*(end - 1))) --end;
  if (end == word.begin() || !isMark(*(end - 1))) return false;
  return *(end - 1) != '.' || (end - word.begin() > 4 && std::all_of(end - 5, end - 1, isLetter));
}
