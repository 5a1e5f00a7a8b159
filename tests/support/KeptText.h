// Expected texts in tests/data/texts, compared byte for byte. With ZMATRIX_WRITE_GOLDEN=1 in the environment they are written
// instead, to be reviewed by git diff. The tables in tests/data/cases are kept in the same way: a line is the input of a case,
// and the indented lines below it are the expected output.
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

/// The bytes of a line of a table: \n, \t, \r and \xHH are escapes as in C.
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

/// Printable ASCII unchanged, other bytes as \xHH, \n, \t or \r.
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

/// Compares `outputOf(input)` with the expected output for each case of a table.
template <class OutputOf>
void expectKeptCases(const std::string& name, OutputOf outputOf) {
  const std::string path = ZMATRIX_TEST_DATA "/cases/" + name;
  std::istringstream lines(TestFolder::contentOf(path));
  std::string now, input, kept;
  int numberOfCases = 0;
  const auto finish = [&] {
    if (input.empty()) return;
    std::istringstream parts(std::string(outputOf(unescaped(input))));
    std::string output;
    for (std::string part; std::getline(parts, part);) output += " " + escaped(part) + "\n";
    EXPECT_EQ(output, kept) << name << ": " << input;
    now += input + "\n" + output;
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

/// Calls `answerTo` with ordinary and extreme values, and lists the values by answer, a line for each answer that isn't empty. In
/// the line # stands for the value, and two dots for the values in between.
template <class AnswerTo>
std::string verdicts(const std::string& name, AnswerTo answerTo) {
  std::map<std::string, std::string> valuesOfAnswer;
  std::string last;
  for (const int value : {INT_MIN, -2, -1, 0, 1, 2, 3, 4, 7, 17, 32, 64, 65, 1000, 1001, 1002, 4096, 4097, INT_MAX}) {
    std::string answer = answerTo(value);
    const std::string number = std::to_string(value);
    if (answer.ends_with(number + "\n")) answer.replace(answer.size() - number.size() - 1, number.size(), "#");
    std::string& values = valuesOfAnswer[answer];
    if (answer == last && values.find("..") != std::string::npos && values.rfind("..") > values.rfind(' '))
      values.resize(values.rfind(".."));
    values += (answer == last && !values.empty() ? ".." : " ") + number;
    last = answer;
  }
  std::string text;
  for (const auto& [answer, values] : valuesOfAnswer) text += answer.empty() ? "" : name + values + ": " + answer;
  return text;
}

}  // namespace zmatrix
