// What a case has done, step by step, with the answers and messages. It is kept in tests/data/accounts, under the name of the
// case, where most of what is expected is sentences; see KeptText.h.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/KeptText.h"

namespace zmatrix {

class Account {
 public:
  /// `aTake` gives what was said since it was last called. Paths below `aFolder` are told as such.
  explicit Account(std::function<std::string()> aTake, std::string aFolder = "")
      : take(std::move(aTake)), folder(std::move(aFolder)) {}
  ~Account() {
    const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name() + ".txt";
    if (const size_t slash = name.find('/'); slash != std::string::npos) name[slash] = '-';
    for (size_t at; !folder.empty() && (at = text.find(folder)) != std::string::npos;)
      text.replace(at, folder.size(), "<folder>");
    expectKeptText("../accounts/" + name, text);
  }
  Account(const Account&) = delete;
  Account& operator=(const Account&) = delete;

  /// A line on a step: its name and what it answered. What was said comes below it. Arguments are evaluated in any order: answers
  /// that depend on each other come in one braced Vector.
  template <class... Answers>
  void operator()(const std::string& step, const Answers&... answers) {
    text += step;
    (add(answers), ...);
    text += "\n";
    std::istringstream lines(take());
    for (std::string line; std::getline(lines, line);) text += "  " + line + "\n";
  }

 private:
  void add(long long number) { text += " " + std::to_string(number); }
  void add(const std::string& word) { text += " " + word; }
  void add(const std::vector<int>& numbers) {
    for (const int number : numbers) add(number);
  }

  std::function<std::string()> take;
  std::string folder, text;
};

}  // namespace zmatrix
