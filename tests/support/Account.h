// Records the steps of a case with their results and messages, and compares the record with tests/data/accounts/SUITE.CASE.txt.
// For cases in which most of the expected output is messages; see KeptText.h.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/KeptText.h"

namespace zmatrix {

class Account {
 public:
  /// `take` returns the messages since its last call. The path `folder` is replaced by "<folder>".
  explicit Account(std::function<std::string()> take, std::string folder = "")
      : take_(std::move(take)), folder_(std::move(folder)) {}
  ~Account() {
    const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name() + ".txt";
    if (const size_t slash = name.find('/'); slash != std::string::npos) name[slash] = '-';
    for (size_t at; !folder_.empty() && (at = text_.find(folder_)) != std::string::npos;)
      text_.replace(at, folder_.size(), "<folder>");
    expectKeptText("../accounts/" + name, text_);
  }
  Account(const Account&) = delete;
  Account& operator=(const Account&) = delete;

  /// Adds a line with the name of a step and its results, and the messages below it. Arguments are evaluated in any order:
  /// results that depend on each other are passed as one braced Vector.
  template <class... Results>
  void operator()(const std::string& step, const Results&... results) {
    text_ += step;
    (add(results), ...);
    text_ += "\n";
    std::istringstream lines(take_());
    for (std::string line; std::getline(lines, line);) text_ += "  " + line + "\n";
  }

 private:
  void add(long long number) { text_ += " " + std::to_string(number); }
  void add(const std::string& word) { text_ += " " + word; }
  void add(const std::vector<int>& numbers) {
    for (const int number : numbers) add(number);
  }

  std::function<std::string()> take_;
  std::string folder_, text_;
};

}  // namespace zmatrix
