// Suggestions for a mistyped name.
#pragma once

#include <string>
#include <vector>

/// The names that begin with `word`; if there are none, the name with the smallest edit distance. Empty if the distance is more
/// than a third of the length of `word`, or if `word` has fewer than 3 or more than 64 characters.
std::vector<std::string> nearestOf(const std::vector<std::string>& names, const std::string& word);

/// "; did you mean NAME?", or nothing if no name is near.
std::string suggestionOf(const std::vector<std::string>& names, const std::string& word);

/// "a, b, c".
std::string listOf(const std::vector<std::string>& names, const char* separator = ", ");
