#include "music/kern/ZQKernTokens.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "frame/ZQDecimalNumber.h"

namespace zmatrix {

namespace {

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Reads the leading digits of `text` and removes them.
long long scanDigits(std::string_view& text) {
  long long number = 0;
  for (; !text.empty() && isDigit(text[0]); text.remove_prefix(1)) number = std::min(number * 10 + (text[0] - '0'), 1LL << 40);
  return number;
}

void skipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

/// Reads a duration; `text` begins at its first digit. Each dot behind the digits adds half of the part added before.
void readDuration(std::string_view text, KernSubToken& note) {
  const long long number = scanDigits(text);
  // 0 is a breve, as is any sequence of zeros.
  int part = number == 0 ? 2 * quantaPerWholeNote : static_cast<int>(quantaPerWholeNote / number);
  note.isCut = number != 0 && quantaPerWholeNote % number != 0;
  note.hasDuration = true;
  note.duration = part;
  for (; text.starts_with('.'); text.remove_prefix(1)) {
    if (part % 2 != 0) note.isCut = true;
    part /= 2;
    note.duration += part;
  }
  if (text.starts_with('%')) note.isCut = true;
}

}  // namespace

void splitFilledTokens(std::string_view text, char separator, std::vector<std::string_view>& tokens) {
  tokens.clear();
  size_t begin = 0;
  for (size_t i = 0; i <= text.size(); i++) {
    if (i < text.size() && text[i] != separator) continue;
    if (i > begin) tokens.push_back(text.substr(begin, i - begin));
    begin = i + 1;
  }
}

void splitRecord(std::string_view record, std::vector<std::string_view>& tokens) {
  tokens.clear();
  size_t begin = 0;
  for (size_t i = 0; i < record.size() && record[i] != '\n'; i++) {
    if (record[i] != '\t') continue;
    tokens.push_back(record.substr(begin, i - begin));
    begin = i + 1;
  }
  std::string_view last = record.substr(begin);
  if (last.ends_with('\n')) last.remove_suffix(1);
  tokens.push_back(last);
}

bool hasNullSubToken(std::string_view token) {
  std::vector<std::string_view> notes;
  splitFilledTokens(token, ' ', notes);
  return notes.size() > 1 && std::find(notes.begin(), notes.end(), ".") != notes.end();
}

KernSubToken parseKernSubToken(std::string_view text) {
  static constexpr int noteOfLetter[] = {69, 71, 60, 62, 64, 65, 67};  // a to g
  KernSubToken note;
  int octave = 0, base = 0;
  size_t firstDigit = text.size();
  for (size_t i = 0; i < text.size(); i++) {
    const char character = text[i];
    const bool isLow = character >= 'A' && character <= 'G';
    if (isLow || (character >= 'a' && character <= 'g')) {
      octave += isLow ? -1 : 1;
      if (!note.hasPitch) base = noteOfLetter[character - (isLow ? 'A' : 'a')];
      note.hasPitch = true;
    } else if (isDigit(character)) {
      firstDigit = std::min(firstDigit, i);
    }
  }
  const auto holds = [text](char sign) { return text.find(sign) != std::string_view::npos; };
  const auto accidental = static_cast<int>(std::count(text.begin(), text.end(), '#') - std::count(text.begin(), text.end(), '-'));
  note.isRest = holds('r');
  note.closesPhrase = holds('}');
  note.isGrace = holds('q');
  if (note.hasPitch) note.pitch = base + accidental + 12 * (octave > 0 ? octave - 1 : octave);
  note.opensPhrase = text.starts_with('{') && !note.closesPhrase;
  note.isGroupetto = holds('Q') && !note.isGrace;
  if (note.isGrace || note.isGroupetto) {
    note.hasDuration = true;
    note.duration = note.isGrace ? quantaOfGraceNote : quantaOfGroupetto;
  } else if (firstDigit < text.size()) {
    readDuration(text.substr(firstDigit), note);
  }
  return note;
}

bool scanInteger(std::string_view& text, int& value) {
  skipBlanks(text);
  std::string_view rest = text;
  const bool isNegative = rest.starts_with('-');
  if (isNegative || rest.starts_with('+')) rest.remove_prefix(1);
  if (rest.empty() || !isDigit(rest[0])) return false;
  const long long number = scanDigits(rest);
  value = static_cast<int>(std::clamp<long long>(isNegative ? -number : number, INT_MIN, INT_MAX));
  text = rest;
  return true;
}

bool scanFloat(std::string_view& text, float& value) {
  skipBlanks(text);
  const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
  const auto [end, error] = decimalFromChars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general);
  if (error == std::errc::invalid_argument) return false;
  if (error == std::errc::result_out_of_range) {
    const bool isTiny =
        digits.substr(0, static_cast<size_t>(end - digits.data())).find_first_of("eE") != std::string_view::npos &&
        digits.find('-', 1) < static_cast<size_t>(end - digits.data());
    value = isTiny ? 0.0F : (digits.starts_with('-') ? -HUGE_VALF : HUGE_VALF);
  }
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return true;
}

}  // namespace zmatrix
