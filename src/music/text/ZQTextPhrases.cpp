#include "music/text/ZQTextPhrases.h"

#include "frame/ZQTextCharacters.h"

namespace zmatrix {

namespace {

constexpr int lineFeed = 10, carriageReturn = 13;
constexpr int highestValueThatEndsAPhrase = ';';

bool isLineEnd(int value) {
  return value == lineFeed || value == carriageReturn;
}

bool isLetter(int value) {
  return !(value < 65 || (value >= 91 && value <= 96) || (value >= 123 && value <= 127) || (value >= 129 && value <= 191));
}

/// A digit that opens a sentence; 0 doesn't.
bool isOpeningDigit(int value) {
  return value >= '1' && value <= '9';
}

bool closesASentence(int value) {
  return value == '"' || value == ')' || value == '.' || value == ']' || value == '}';
}

int firstNonWhite(std::span<const int> text, int position) {
  const int length = static_cast<int>(text.size());
  while (position < length && isWhiteCharacter(text[position])) position++;
  return position;
}

/// A dot behind a number, behind a single letter or behind anything that is no word is part of an abbreviation, an initial or an
/// ordinal.
bool isAbbreviationDot(std::span<const int> text, int dot) {
  if (dot < 1) return false;
  const int last = text[dot - 1];
  if (closesASentence(last)) return false;
  const bool isWord = isLetter(last) && dot >= 2 && isLetter(text[dot - 2]);
  return !isWord;
}

/// True if the mark at `position` ends a sentence: white follows, and then what opens a sentence, or nothing.
bool endsSentence(std::span<const int> text, int position) {
  const int length = static_cast<int>(text.size());
  if (position + 1 >= length || text[position + 1] > 32) return false;
  if (text[position] == '.' && isAbbreviationDot(text, position)) return false;
  const int next = firstNonWhite(text, position + 1);
  return next == length || isOpeningDigit(text[next]) || isUpperCaseCharacter(text[next]);
}

/// A run of line ends, counted from its first.
struct LineEnds {
  int end;        ///< behind the run
  int lineFeeds;  ///< carriage returns alone make no blank line
};

LineEnds lineEndsFrom(std::span<const int> text, int position) {
  LineEnds run = {position, 0};
  for (; run.end < static_cast<int>(text.size()) && isLineEnd(text[run.end]); run.end++)
    run.lineFeeds += text[run.end] == lineFeed;
  return run;
}

}  // namespace

TextPhrase nextTextPhrase(std::span<const int> text, int position) {
  const int length = static_cast<int>(text.size());
  const int start = firstNonWhite(text, position);
  for (int i = start; i < length; i++) {
    const int value = text[i];
    if (value > highestValueThatEndsAPhrase) continue;
    if (isLineEnd(value)) {
      const LineEnds run = lineEndsFrom(text, i);
      if (run.lineFeeds >= 2) return {start, i};
      i = run.end - 1;  // what is left of the run holds no more line feeds than the whole
    } else if ((value == '!' || value == '.' || value == ';') && endsSentence(text, i)) {
      return {start, i + 1};
    }
  }
  return {start, length};
}

}  // namespace zmatrix
