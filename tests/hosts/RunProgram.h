// Runs the zmatrix command as a shell does, in a temporary folder of the test.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/TestFolder.h"

using Json = nlohmann::json;
using Names = std::vector<std::string>;

struct RunResult {
  int exitCode;
  std::string output;
  std::string diagnostics;  ///< standard error
};

class ProgramTest : public ::testing::Test {
 protected:
  /// Runs `commandLine` in the test's folder, with nothing on standard input.
  RunResult run(const std::string& commandLine) const;
  /// Runs the zmatrix command with these arguments.
  RunResult zmatrix(const std::string& arguments) const;
  /// Runs the command, which must end with this exit code, and parses its output.
  Json json(const std::string& arguments, int exitCode = 0) const;
  /// Runs the command, which must end with this exit code and have `message` in its diagnostics.
  void expectMessage(const std::string& arguments, int exitCode, const std::string& message) const;
  /// Runs the command with each line of arguments of a table in tests/data/cases; the line below has the exit code and a part of
  /// the diagnostics.
  void expectCodes(const std::string& table) const;

  std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
  void writeFile(const std::string& name, const std::string& bytes) const { folder_.put(name, bytes); }
  std::string readFile(const std::string& name) const;
  /// The files in the test's folder, except the output of the last run.
  Names filesInFolder() const;

 private:
  zmatrix::TestFolder folder_;
};

/// All bytes of a file; the test fails if it can't be read.
std::string readWholeFile(const std::string& path);

/// The path of a file in examples/, quoted for the shell.
inline std::string example(const std::string& name) {
  return "'" ZMATRIX_EXAMPLES "/" + name + "'";
}
