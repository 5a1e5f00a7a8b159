// What selects and numbers the alphabets of ocrons. Each thread has one set: the encoders take their algorithm from it,
// the evaluators the end symbol at which they cut, the gocrons their digits.
#pragma once

#include <zmatrix/zq_types.h>

#include <array>
#include <string_view>

namespace zmatrix {

constexpr int lowestOcronType = 3, highestOcronType = 7;

constexpr bool isOcronType(int ocronType) {
  return ocronType >= lowestOcronType && ocronType <= highestOcronType;
}

/// What tells one type of ocron from the others.
struct OcronAlphabet {
  std::string_view symbols;       ///< what its strings are made of
  int numberBase;                 ///< of its gocrons, unless the parameters name one
  std::string_view digitSymbols;  ///< the order in which a symbol is looked for that has a digit's value
  std::string_view itemSymbols;   ///< what a sequence of ocrons may hold where it becomes gocrons
};

/// Type 7 is at odds with itself: its strings may hold `*`, its gocrons not, where `^` stands in for it.
constexpr std::array<OcronAlphabet, 5> ocronAlphabets = {{
    {"*P2", 3, "*P2", "*2P"},
    {"*P2^", 4, "*P2^", "*2P^"},
    {"*P2^Q", 5, "*P2^Q", "*2P^Q"},
    {"*P", 2, "*P", "*P"},
    {"*P2^", 3, "^P2", "2P^"},
}};

constexpr const OcronAlphabet& ocronAlphabet(int ocronType) {
  return ocronAlphabets[static_cast<size_t>(ocronType - lowestOcronType)];
}

/// The parameters of the calling thread. They can be changed in place; nothing is checked then.
gocronParametersTag* getGlobalGocronParameters();

/// Sets all ten parameters. An ocronType above 10 or below 0 becomes 4, an algorithm or a number base out of range 0, each with a
/// message at level 0. An ocronType of 0 to 2 or 8 to 10 stands, and is refused where it is used.
void setGlobalGocronParameters(const gocronParametersTag* parameters);

/// Type 4, end symbol 10, the type's own number base, digits 0 to 4 for `*`, `P`, `2`, `^`, `Q`.
void setGlobalGocronParametersToDefaults();

}  // namespace zmatrix
