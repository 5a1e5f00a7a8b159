// The tokens of a kern record, and what the reader understands of one of them: pitch, duration, phrase marks.
#pragma once

#include <string_view>
#include <vector>

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

constexpr int quarterInQuanta = quantaPerWholeNote / 4;
constexpr int quantaOfGraceNote = 192;
constexpr int quantaOfGroupetto = 128;

/// Splits at a separator and leaves out what is empty.
void splitFilledTokens(std::string_view text, char separator, std::vector<std::string_view>& tokens);

/// Splits a record at its tabs up to its line feed, empty tokens included: one token more than there are tabs.
void splitRecord(std::string_view record, std::vector<std::string_view>& tokens);

/// True for a multiple stop of which one note is ".".
bool hasNullSubToken(std::string_view token);

/// One note of a token, as the reader understands it.
struct KernSubToken {
  bool hasPitch = false;
  bool isRest = false;
  bool opensPhrase = false;
  bool closesPhrase = false;
  bool isGrace = false;      ///< q
  bool isGroupetto = false;  ///< Q, and no q
  bool hasDuration = false;  ///< a digit, q or Q
  bool isCut = false;        ///< the duration is no whole number of quanta, or goes on behind a %
  int pitch = 0;             ///< MIDI note number, beyond 0 to 127 if the letters say so
  int duration = 0;          ///< in quanta
};

KernSubToken parseKernSubToken(std::string_view text);

/// A note that goes on sounding. One ] or _ ties the whole token, all notes of a chord.
inline bool isTied(std::string_view token) {
  bool tied = false;
  for (const char character : token) tied = tied || character == ']' || character == '_';
  return tied;
}

// Numbers as the scan functions of C take them: blanks and a sign before, whatever behind. They move `text` behind the number,
// and are false if there is none. A number that doesn't fit is the nearest that does.
bool scanInteger(std::string_view& text, int& value);
bool scanFloat(std::string_view& text, float& value);

}  // namespace zmatrix
