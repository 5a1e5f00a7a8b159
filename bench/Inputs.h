// The inputs: text cut into phrases by the library's own rule, and triples of integers, as widely spread as music. The library
// gets the input as a host has it; the other contenders get pieces that are ready to count.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct Input {
  std::string name;
  bool isText = true;
  int coordinateDimension = 1;
  int phraseLimit = 0;                   // in items
  std::vector<int> original;             // for the library
  std::vector<std::vector<int>> pieces;  // for the other contenders: no phrase crosses the end of a piece

  long long getNumberOfPhrases() const;
};

/// The content of a file, or the example texts for an empty name. Empty if a file can't be read.
std::string readText(const std::string& fileName);

Input textInput(const std::string& text, size_t length, int phraseLimit);

/// Triples whose coordinates are multiples of 192, the same on every machine. Half of them repeat earlier ones.
Input tripleInput(int numberOfItems, int phraseLimit);

}  // namespace bench
