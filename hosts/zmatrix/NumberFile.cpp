#include "NumberFile.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace {

const char* const separators = " \t\r\n\f\v,;";

struct Token {
  int line;
  int column;
  std::string text;
  bool isFirstOfLine;
};

// Splits a file into tokens.
class Tokens {
 public:
  explicit Tokens(const std::string& bytes) : bytes_(bytes), at_(bytes.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0), lineBegin_(at_) {}

  bool next(Token& token) {
    if (!skipSeparators()) return false;
    std::size_t end = bytes_.find_first_of(separators + std::string("#"), at_);
    if (end == std::string::npos) end = bytes_.size();
    token = {line_, static_cast<int>(at_ - lineBegin_) + 1, bytes_.substr(at_, end - at_), isFirstOfLine_};
    isFirstOfLine_ = false;
    at_ = end;
    return true;
  }

 private:
  bool skipSeparators() {
    for (; at_ < bytes_.size(); ++at_) {
      const char character = bytes_[at_];
      if (character == '#') at_ = std::min(bytes_.find('\n', at_), bytes_.size());
      if (at_ == bytes_.size()) return false;
      if (bytes_[at_] == '\n') {
        ++line_;
        lineBegin_ = at_ + 1;
        isFirstOfLine_ = true;
      } else if (std::string(separators).find(bytes_[at_]) == std::string::npos) {
        return true;
      }
    }
    return false;
  }

  const std::string& bytes_;
  std::size_t at_;
  std::size_t lineBegin_;
  int line_ = 1;
  bool isFirstOfLine_ = true;
};

bool areDigits(const std::string& text, std::size_t from) {
  for (std::size_t at = from; at < text.size(); ++at) {
    if (std::isdigit(static_cast<unsigned char>(text[at])) == 0) return false;
  }
  return text.size() > from;
}

bool isInteger(const std::string& text) {
  return areDigits(text, text[0] == '-' || text[0] == '+' ? 1 : 0);
}

// The first token of a line is an "A" and six or more digits.
bool namesSeries(const Token& token) {
  return token.isFirstOfLine && token.text.size() >= 7 && token.text[0] == 'A' && areDigits(token.text, 1);
}

bool readInt(const std::string& text, int& value) {
  const char* const begin = text.data() + (text[0] == '+' ? 1 : 0);
  return std::from_chars(begin, text.data() + text.size(), value).ec == std::errc();
}

}  // namespace

NumberFile parseNumbers(const std::string& bytes) {
  NumberFile file;
  bool isNew = true;
  Tokens tokens(bytes);
  for (Token token; tokens.next(token);) {
    int value = 0;
    if (namesSeries(token)) {
      isNew = true;
    } else if (!isInteger(token.text) || !readInt(token.text, value)) {
      file.bad.push_back({token.line, token.column, token.text, isInteger(token.text)});
      isNew = true;
    } else {
      if (isNew) file.series.emplace_back();
      isNew = false;
      file.series.back().push_back(value);
    }
  }
  return file;
}

bool holdsOnlyIntegers(const std::string& bytes) {
  Tokens tokens(bytes);
  for (Token token; tokens.next(token);) {
    if (!isInteger(token.text) && !namesSeries(token)) return false;
  }
  return true;
}

bool holdsIntegers(const std::string& bytes) {
  Tokens tokens(bytes);
  bool found = false;
  for (Token token; tokens.next(token);) {
    if (namesSeries(token)) continue;
    if (!isInteger(token.text)) return false;
    found = true;
  }
  return found;
}
