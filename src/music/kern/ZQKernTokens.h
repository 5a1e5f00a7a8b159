// The tokens of a kern record, and the content of one of them: pitch, duration, phrase marks.
#pragma once

#include <string_view>
#include <vector>

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

constexpr int quarterInQuanta = quantaPerWholeNote / 4;
constexpr int quantaOfGraceNote = 192;
constexpr int quantaOfGroupetto = 128;

/// Splits at a separator and leaves out empty tokens.
void splitFilledTokens(std::string_view text, char separator, std::vector<std::string_view>& tokens);

/// Splits a record at its tabs up to its line feed, empty tokens included: one token more than there are tabs.
void splitRecord(std::string_view record, std::vector<std::string_view>& tokens);

/// True for a multiple stop with "." as one of its notes.
bool hasNullSubToken(std::string_view token);

/// One note of a token.
struct KernSubToken {
  bool hasPitch = false;
  bool isRest = false;
  bool opensPhrase = false;
  bool closesPhrase = false;
  bool isGrace = false;      ///< q
  bool isGroupetto = false;  ///< Q without q
  bool hasDuration = false;  ///< a digit, q or Q
  bool isCut = false;        ///< the duration is no whole number of quanta, or has a part behind a % that is not read
  int pitch = 0;             ///< MIDI note number; can be outside 0 to 127
  int duration = 0;          ///< in quanta
};

KernSubToken parseKernSubToken(std::string_view text);

/// True for a note that is held from before. One ] or _ ties the whole token, with all notes of a chord.
inline bool isTied(std::string_view token) {
  bool tied = false;
  for (const char character : token) tied = tied || character == ']' || character == '_';
  return tied;
}

// Numbers as C's scan functions read them: blanks and a sign may stand before, anything behind. They remove the number from
// `text` and return false if there is none. A number out of range becomes the nearest in range.
[[nodiscard]] bool scanInteger(std::string_view& text, int& value);
[[nodiscard]] bool scanFloat(std::string_view& text, float& value);

}  // namespace zmatrix
