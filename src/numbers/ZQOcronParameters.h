// The parameters that select an alphabet of ocrons and number its symbols. Each thread has one set: the encoders take their
// algorithm from it, the evaluators their end symbol, the gocrons their digits.
#pragma once

#include <zmatrix/zq_types.h>

#include <array>
#include <string_view>

namespace zmatrix {

constexpr int lowestOcronType = 3, highestOcronType = 7;

constexpr bool isOcronType(int ocronType) {
  return ocronType >= lowestOcronType && ocronType <= highestOcronType;
}

/// The properties of one type of ocron.
struct OcronAlphabet {
  std::string_view symbols;       ///< the symbols of its strings
  int numberBase;                 ///< of its gocrons, unless the parameters name one
  std::string_view digitSymbols;  ///< the symbols with digits, in the order of search when two share a digit
  std::string_view itemSymbols;   ///< the symbols that a sequence of ocrons may hold when it is converted to gocrons
};

/// Type 7 is inconsistent by contract: its strings may hold `*`, its gocrons use `^` instead.
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

/// The parameters of the calling thread. A change in place is not checked.
gocronParametersTag* getGlobalGocronParameters();

/// Sets all ten parameters. An ocronType above 10 or below 0 becomes 4, an algorithm or a number base out of range becomes 0,
/// each with a message at level 0. An ocronType of 0 to 2 or 8 to 10 is stored, and refused where it is used.
void setGlobalGocronParameters(const gocronParametersTag* parameters);

/// Type 4, end symbol 10, the type's own number base, digits 0 to 4 for `*`, `P`, `2`, `^`, `Q`.
void setGlobalGocronParametersToDefaults();

}  // namespace zmatrix
