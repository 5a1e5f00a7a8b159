// Reading files of integers as people have them: one or many a line, blanks, commas, semicolons or line ends between them,
// comments from a # on, and lines of published tables ("A000040 ,2,3,5,7,"), each a series of its own.
#pragma once

#include <string>
#include <vector>

struct NumberFile {
  std::vector<std::vector<int>> series;
  /// A token that is no integer, or one that does not fit 32 bits. What stands before and behind it are two series.
  struct BadToken {
    int line;
    int column;
    std::string token;
    bool isInteger;
  };
  std::vector<BadToken> bad;
};

NumberFile parseNumbers(const std::string& bytes);

/// True if no token is anything but an integer, of whatever size, or the name of a published series.
bool holdsOnlyIntegers(const std::string& bytes);

/// The same, and there is at least one integer.
bool holdsIntegers(const std::string& bytes);
