// Texts that were looked at once and are kept in tests/data/texts: today's must be the same, byte for byte. One that is meant to
// change is taken anew with ZMATRIX_WRITE_GOLDEN=1 in the environment, and looked at. Tables of cases in tests/data/cases are
// kept in the same way: a line is a case, and the lines below it that begin with a blank are what comes of it.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <string>

#include "support/TestFolder.h"

namespace zmatrix {

inline void expectKeptText(const std::string& name, const std::string& text) {
  const std::string path = ZMATRIX_TEST_DATA "/texts/" + name;
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(path, std::ios::binary) << text;
  EXPECT_EQ(text, TestFolder::contentOf(path));
}

/// The bytes of a line of a table: \n, \t, \r and \xHH stand for what they stand for in C.
inline std::string unescaped(const std::string& line) {
  std::string bytes;
  for (size_t i = 0; i < line.size(); ++i) {
    const char kind = line[i] == '\\' && i + 1 < line.size() ? line[++i] : '\0';
    const char* const found = kind == '\0' ? nullptr : strchr("n\nt\tr\r\\\\", kind);
    if (kind == 'x' && i + 2 < line.size()) {
      bytes += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      bytes += found != nullptr ? found[1] : line[i];
    }
  }
  return bytes;
}

/// Printing bytes as they are, others as \xHH, \n, \t or \r.
inline std::string escaped(const std::string& bytes) {
  std::string line;
  for (const char byte : bytes) {
    char hexadecimal[8];
    std::snprintf(hexadecimal, sizeof hexadecimal, "\\x%02X", static_cast<unsigned char>(byte));
    const bool isPlain = byte >= ' ' && byte < 127 && byte != '\\';
    line += isPlain ? std::string(1, byte) : byte == '\n' ? "\\n" : byte == '\t' ? "\\t" : byte == '\r' ? "\\r" : hexadecimal;
  }
  return line;
}

/// Has `say` tell of each case of a table what comes of it.
template <class Say>
void expectKeptCases(const std::string& name, Say say) {
  const std::string path = ZMATRIX_TEST_DATA "/cases/" + name;
  std::istringstream lines(TestFolder::contentOf(path));
  std::string now, input, kept;
  int numberOfCases = 0;
  const auto finish = [&] {
    if (input.empty()) return;
    const std::string said = say(unescaped(input));
    std::istringstream parts(said);
    std::string told;
    for (std::string part; std::getline(parts, part);) told += " " + escaped(part) + "\n";
    EXPECT_EQ(told, kept) << name << ": " << input;
    now += input + "\n" + told;
    ++numberOfCases;
  };
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(" ")) {
      kept += line + "\n";
      continue;
    }
    finish();
    input = line.starts_with("#") ? "" : line;
    if (input.empty()) now += line + "\n";
    kept.clear();
  }
  finish();
  EXPECT_GT(numberOfCases, 0) << path;
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(path, std::ios::binary) << now;
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
