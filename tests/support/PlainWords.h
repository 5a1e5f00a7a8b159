// Splits a text into words, independently of the library.
#pragma once

#include <string>
#include <vector>

/// Words in the order of a text; a blank line between two words stands there as "\n".
using Words = std::vector<std::string>;

inline bool isWhite(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte <= ' ' || byte == 0xA0;
}

/// Capital letters. A hyphen at the end of a line belongs to the word if a capital follows.
inline bool isCapital(char character) {
  const auto c = static_cast<unsigned char>(character);
  return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE) || c == 0x8A || c == 0x8C || c == 0x95 || c == 0x9F;
}

/// Splits at white space, and joins words that are hyphenated at a line end.
inline Words wordsOf(const std::string& text) {
  Words words;
  std::string word;
  bool blankLinePending = false;
  const auto endWord = [&] {
    if (word.empty()) return;
    if (blankLinePending) words.push_back("\n");
    blankLinePending = false;
    words.push_back(word);
    word.clear();
  };
  for (size_t i = 0; i < text.size();) {
    if (!isWhite(text[i])) {
      word += text[i++];
      continue;
    }
    int lineEnds = 0;
    size_t next = i;
    for (; next < text.size() && isWhite(text[next]); ++next) lineEnds += text[next] == '\n';
    const bool divided = lineEnds == 1 && i > 0 && text[i - 1] == '-' && next < text.size();
    if (divided && !isCapital(text[next])) word.pop_back();
    if (!divided) endWord();
    if (lineEnds >= 2) blankLinePending = true;
    i = next;
  }
  endWord();
  return words;
}
