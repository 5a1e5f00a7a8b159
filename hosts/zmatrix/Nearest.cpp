#include "Nearest.h"

#include <algorithm>

namespace {

// Optimal string alignment distance: an insertion, deletion, substitution or swap of neighbours costs 1.
std::size_t changesBetween(const std::string& from, const std::string& to) {
  std::vector<std::vector<std::size_t>> changes(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        changes[i][j] = i + j;
        continue;
      }
      const std::size_t substituted = changes[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
      changes[i][j] = std::min({changes[i - 1][j] + 1, changes[i][j - 1] + 1, substituted});
      const bool isSwapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (isSwapped) changes[i][j] = std::min(changes[i][j], changes[i - 2][j - 2] + 1);
    }
  }
  return changes[from.size()][to.size()];
}

std::vector<std::string> namesBeginningWith(const std::vector<std::string>& names, const std::string& word) {
  std::vector<std::string> found;
  for (const std::string& name : names) {
    if (name.rfind(word, 0) == 0) found.push_back(name);
  }
  return found;
}

}  // namespace

std::vector<std::string> nearestOf(const std::vector<std::string>& names, const std::string& word) {
  constexpr std::size_t longestWord = 64;  // far longer than any option or verb
  if (word.size() < 3 || word.size() > longestWord) return {};
  std::vector<std::string> nearest = namesBeginningWith(names, word);
  if (!nearest.empty()) return nearest;
  std::size_t fewest = word.size() / 3 + 1;
  for (const std::string& name : names) {
    const std::size_t changes = changesBetween(word, name);
    if (changes < fewest) nearest = {name};
    fewest = std::min(fewest, changes);
  }
  return nearest;
}

std::string suggestionOf(const std::vector<std::string>& names, const std::string& word) {
  const std::vector<std::string> nearest = nearestOf(names, word);
  return nearest.empty() ? "" : "; did you mean " + listOf(nearest, " or ") + "?";
}

std::string listOf(const std::vector<std::string>& names, const char* separator) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : separator) + name;
  return list;
}
