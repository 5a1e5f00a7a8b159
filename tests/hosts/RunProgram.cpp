#include "hosts/RunProgram.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

std::string readWholeFile(const std::string& path) {
  EXPECT_TRUE(std::ifstream(path).is_open()) << path;
  return zmatrix::TestFolder::contentOf(path);
}

RunResult ProgramTest::run(const std::string& commandLine) const {
  const std::string line = "cd '" + folder_.path() + "' && { " + commandLine + "; } >.output 2>.diagnostics </dev/null";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(".output"), readFile(".diagnostics")};
}

RunResult ProgramTest::zmatrix(const std::string& arguments) const {
  return run("'" ZMATRIX_COMMAND "' " + arguments);
}

Json ProgramTest::json(const std::string& arguments, int exitCode) const {
  const RunResult result = zmatrix(arguments);
  EXPECT_EQ(result.exitCode, exitCode) << arguments << "\n" << result.diagnostics;
  return Json::parse(result.output, nullptr, false);
}

void ProgramTest::expectMessage(const std::string& arguments, int exitCode, const std::string& message) const {
  const RunResult result = zmatrix(arguments);
  EXPECT_EQ(result.exitCode, exitCode) << arguments << "\n" << result.diagnostics;
  EXPECT_NE(result.diagnostics.find(message), std::string::npos) << arguments << ": " << message << "\n" << result.diagnostics;
}

void ProgramTest::expectCodes(const std::string& table) const {
  std::ifstream lines(ZMATRIX_TEST_DATA "/cases/" + table);
  int numberOfCases = 0;
  for (std::string arguments, expected; std::getline(lines, arguments);) {
    if (arguments.starts_with("#") || !std::getline(lines, expected)) continue;
    const RunResult result = zmatrix(arguments == "\\x20" ? "" : arguments);
    SCOPED_TRACE(arguments + "\n" + result.diagnostics);
    EXPECT_EQ(result.exitCode, std::stoi(expected));
    EXPECT_NE(result.diagnostics.find(expected.substr(std::min<size_t>(3, expected.size()))), std::string::npos) << expected;
    if (result.exitCode != 0 && !arguments.starts_with("inspect")) {
      EXPECT_EQ(result.output, "");
    }
    if (result.exitCode == 2) {
      EXPECT_TRUE(result.diagnostics.starts_with("zmatrix: "));
      EXPECT_EQ(result.diagnostics.find('\n'), result.diagnostics.size() - 1);
    }
    ++numberOfCases;
  }
  EXPECT_GT(numberOfCases, 0) << table;
}

std::string ProgramTest::readFile(const std::string& name) const {
  return readWholeFile(path(name));
}

Names ProgramTest::filesInFolder() const {
  Names names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
    const std::string name = entry.path().filename();
    if (name != ".output" && name != ".diagnostics") names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}
