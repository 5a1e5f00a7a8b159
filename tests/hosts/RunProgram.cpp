#include "hosts/RunProgram.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

std::string readWholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void ProgramTest::SetUp() {
  std::string pattern = (fs::temp_directory_path() / "zmatrix-test-XXXXXX").string();
  ASSERT_NE(mkdtemp(pattern.data()), nullptr);
  folder_ = pattern;
}

void ProgramTest::TearDown() {
  std::error_code error;
  fs::remove_all(folder_, error);
}

RunResult ProgramTest::run(const std::string& commandLine) const {
  const std::string line = "cd '" + folder_ + "' && { " + commandLine + "; } >.output 2>.talk </dev/null";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(".output"), readFile(".talk")};
}

RunResult ProgramTest::zmatrix(const std::string& arguments) const {
  return run("'" ZMATRIX_COMMAND "' " + arguments);
}

void ProgramTest::expectCodes(const std::string& table) const {
  std::ifstream lines(ZMATRIX_TEST_DATA "/cases/" + table);
  int numberOfCases = 0;
  for (std::string arguments, expected; std::getline(lines, arguments);) {
    if (arguments.starts_with("#") || !std::getline(lines, expected)) continue;
    const RunResult result = zmatrix(arguments == "\\x20" ? "" : arguments);
    SCOPED_TRACE(arguments + "\n" + result.talk);
    EXPECT_EQ(result.exitCode, std::stoi(expected));
    EXPECT_NE(result.talk.find(expected.substr(std::min<size_t>(3, expected.size()))), std::string::npos) << expected;
    if (result.exitCode != 0 && !arguments.starts_with("inspect")) {
      EXPECT_EQ(result.output, "");
    }
    if (result.exitCode == 2) {
      EXPECT_TRUE(result.talk.starts_with("zmatrix: ") && result.talk.find('\n') == result.talk.size() - 1);
    }
    ++numberOfCases;
  }
  EXPECT_GT(numberOfCases, 0) << table;
}

void ProgramTest::writeFile(const std::string& name, const std::string& bytes) const {
  fs::create_directories(fs::path(path(name)).parent_path());
  std::ofstream(path(name), std::ios::binary) << bytes;
}

std::string ProgramTest::readFile(const std::string& name) const {
  return readWholeFile(path(name));
}

std::vector<std::string> ProgramTest::filesInFolder() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
    const std::string name = entry.path().filename();
    if (name != ".output" && name != ".talk") names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}
