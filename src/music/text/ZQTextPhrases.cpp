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

/// A digit that can begin a sentence: not 0.
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

/// True for a dot behind a number, a single letter or any other character that ends no word: it marks an ordinal, an initial or
/// an abbreviation.
bool isAbbreviationDot(std::span<const int> text, int dot) {
  if (dot < 1) return false;
  const int last = text[dot - 1];
  if (closesASentence(last)) return false;
  const bool isWord = isLetter(last) && dot >= 2 && isLetter(text[dot - 2]);
  return !isWord;
}

/// True if the mark at `position` ends a sentence: white space follows, and then the begin of a sentence or the end of the text.
bool endsSentence(std::span<const int> text, int position) {
  const int length = static_cast<int>(text.size());
  if (position + 1 >= length || text[position + 1] > 32) return false;
  if (text[position] == '.' && isAbbreviationDot(text, position)) return false;
  const int next = firstNonWhite(text, position + 1);
  return next == length || isOpeningDigit(text[next]) || isUpperCaseCharacter(text[next]);
}

/// A run of line ends.
struct LineEnds {
  int end;        ///< index behind the run
  int lineFeeds;  ///< a blank line needs two line feeds; carriage returns alone don't count
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
      i = run.end - 1;  // the rest of the run holds no more line feeds than the whole run
    } else if ((value == '!' || value == '.' || value == ';') && endsSentence(text, i)) {
      return {start, i + 1};
    }
  }
  return {start, length};
}

}  // namespace zmatrix
