// Texts that were looked at once and are kept in tests/data/texts: today's must be the same, byte for byte. One that is meant to
// change is taken anew with ZMATRIX_WRITE_GOLDEN=1 in the environment, and looked at.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <map>
#include <string>

#include "support/TestFolder.h"

namespace zmatrix {

inline void expectKeptText(const std::string& name, const std::string& text) {
  const std::string path = ZMATRIX_TEST_DATA "/texts/" + name;
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(path, std::ios::binary) << text;
  EXPECT_EQ(text, TestFolder::contentOf(path));
}

/// What is said of each of some values, one line for those of which the same is said: a # stands for the value. Those of which
/// nothing is said are left out.
template <class Say>
std::string verdicts(const std::string& name, Say say) {
  std::map<std::string, std::string> valuesOfVerdict;
  for (const int value : {INT_MIN, -2, -1, 0, 1, 2, 3, 4, 7, 17, 32, 64, 65, 1000, 1001, 1002, 4096, 4097, INT_MAX}) {
    std::string said = say(value);
    const std::string number = std::to_string(value) + "\n";
    if (said.ends_with(number)) said.replace(said.size() - number.size(), number.size(), "#\n");
    if (!said.empty()) valuesOfVerdict[said] += " " + std::to_string(value);
  }
  std::string text;
  for (const auto& [verdict, values] : valuesOfVerdict) text += name + values + ": " + verdict;
  return text;
}

}  // namespace zmatrix
