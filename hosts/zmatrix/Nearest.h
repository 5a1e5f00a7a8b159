// What someone may have meant who mistyped a name.
#pragma once

#include <string>
#include <vector>

/// The names that begin with `word`, or else the one that the fewest changes of a letter (or swaps of two) lead to; empty if that
/// takes more than a third of the letters.
std::vector<std::string> nearestOf(const std::vector<std::string>& names, const std::string& word);

/// "; did you mean NAME?", or nothing if no name is near.
std::string suggestionOf(const std::vector<std::string>& names, const std::string& word);

/// "a, b, c".
std::string listOf(const std::vector<std::string>& names, const char* separator = ", ");
