// Runs a program as a shell would and keeps what it printed. Each test works in a folder of its own, which goes when it ends.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct RunResult {
  int exitCode;
  std::string output;
  std::string talk;  ///< standard error
};

class ProgramTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Runs `commandLine` with the test's folder as the current one and nothing on standard input.
  RunResult run(const std::string& commandLine) const;
  /// Runs the zmatrix command with these arguments.
  RunResult zmatrix(const std::string& arguments) const;

  /// Runs the command with each line of arguments of a table of tests/data/cases; below it stand the exit code and words that
  /// standard error must have.
  void expectCodes(const std::string& table) const;

  std::string path(const std::string& name) const { return folder_ + "/" + name; }
  void writeFile(const std::string& name, const std::string& bytes) const;
  std::string readFile(const std::string& name) const;
  /// Names of all that lies in the test's folder, what a run printed left out.
  std::vector<std::string> filesInFolder() const;

 private:
  std::string folder_;
};

/// All bytes of a file; the test fails if it can't be read.
std::string readWholeFile(const std::string& path);
