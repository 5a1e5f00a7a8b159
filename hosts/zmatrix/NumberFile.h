// Reading files of integers: one or more per line, separated by blanks, commas, semicolons or line ends, with comments after #. A
// line of a published table ("A000040 ,2,3,5,7,") is a series of its own.
#pragma once

#include <string>
#include <vector>

struct NumberFile {
  std::vector<std::vector<int>> series;
  /// A token that is not an integer or doesn't fit 32 bits. It ends a series; the next integer begins another.
  struct BadToken {
    int line;
    int column;
    std::string token;
    bool isInteger;  ///< false if the token is not an integer of any size
  };
  std::vector<BadToken> bad;
};

NumberFile parseNumbers(const std::string& bytes);

/// True if every token is an integer of any size or the name of a published series.
bool holdsOnlyIntegers(const std::string& bytes);

/// The same, and there is at least one integer.
bool holdsIntegers(const std::string& bytes);
