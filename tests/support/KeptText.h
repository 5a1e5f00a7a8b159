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

/// What is said of each of some values, one line for those of which the same is said: a # stands for the value, two dots for
/// those between. Values of which nothing is said are left out.
template <class Say>
std::string verdicts(const std::string& name, Say say) {
  std::map<std::string, std::string> valuesOfVerdict;
  std::string last;
  for (const int value : {INT_MIN, -2, -1, 0, 1, 2, 3, 4, 7, 17, 32, 64, 65, 1000, 1001, 1002, 4096, 4097, INT_MAX}) {
    std::string said = say(value);
    const std::string number = std::to_string(value);
    if (said.ends_with(number + "\n")) said.replace(said.size() - number.size() - 1, number.size(), "#");
    std::string& values = valuesOfVerdict[said];
    if (said == last && values.find("..") != std::string::npos && values.rfind("..") > values.rfind(' '))
      values.resize(values.rfind(".."));
    values += (said == last && !values.empty() ? ".." : " ") + number;
    last = said;
  }
  std::string text;
  for (const auto& [verdict, values] : valuesOfVerdict) text += verdict.empty() ? "" : name + values + ": " + verdict;
  return text;
}

}  // namespace zmatrix
