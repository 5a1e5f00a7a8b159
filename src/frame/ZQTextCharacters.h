// Classes of characters of the ANSI code page that several floors use.
#pragma once

namespace zmatrix {

constexpr unsigned numberOfCharacters = 256;
constexpr int lineEndCharacter = 10, blankCharacter = 32, hyphenCharacter = 45;

/// Blanks, line ends, all control characters, and the no-break space.
constexpr bool isWhiteCharacter(int value) {
  return value < 33 || value == 160;
}

constexpr bool isUpperCaseCharacter(int value) {
  return (value >= 'A' && value <= 'Z') || (value >= 192 && value <= 222) || value == 138 || value == 140 || value == 149 ||
         value == 159;
}

}  // namespace zmatrix
