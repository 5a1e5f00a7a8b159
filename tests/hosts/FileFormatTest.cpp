// docs/file-format.md tells the truth: the reader in examples/, written after that page, reads what the command saves, and its
// print-out of the page's example is the one in the page.
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "hosts/RunProgram.h"

namespace {

const std::string reader = "python3 '" ZMATRIX_EXAMPLES "/read_model.py' ";

class FileFormatTest : public ProgramTest {};

std::string withoutTimes(const std::string& dump) {
  std::istringstream lines(dump);
  std::string result;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("timeStamp = ") == std::string::npos) result += line + "\n";
  }
  return result;
}

TEST_F(FileFormatTest, ExampleOfThePageIsWhatTheProgramMakes) {
  writeFile("ab.txt", "ab");
  ASSERT_EQ(zmatrix("learn ab.txt --max-phrase 2 --test -o ab.zmatrix").exitCode, 0);
  const RunResult dump = run(reader + "ab.zmatrix");
  ASSERT_EQ(dump.exitCode, 0) << dump.talk;
  const std::string page = readWholeFile(ZMATRIX_DOCS "/file-format.md");
  const std::string fence = "```text\n";
  const std::size_t begin = page.find(fence) + fence.size();
  EXPECT_EQ(withoutTimes(page.substr(begin, page.rfind("```") - begin)), withoutTimes(dump.output));
}

TEST_F(FileFormatTest, ReaderAndLibraryFindTheSame) {
  writeFile("small.txt", "The boat is in. The rope is wet, and the sail is down.\n\nThe man is on the quay. It is late.");
  for (const std::string options : {"--tier medium", "--tier full", "--level words"}) {
    ASSERT_EQ(zmatrix("learn small.txt -o model " + options).exitCode, 0);
    const RunResult dump = run(reader + "model");
    ASSERT_EQ(dump.exitCode, 0) << dump.talk;
    const auto told = nlohmann::json::parse(zmatrix("info model --json").output);
    std::size_t elements = 0;
    for (std::size_t at = dump.output.find("# slot "); at != std::string::npos; at = dump.output.find("# slot ", at + 1)) {
      ++elements;
    }
    std::size_t expected = told["ids_reserved"];
    for (const auto& matrix : told["matrices"]) {
      expected += matrix["elements"].get<std::size_t>();
      EXPECT_NE(dump.output.find("numberOfMatrixElements = " + matrix["elements"].dump() + "\n"), std::string::npos);
    }
    EXPECT_EQ(elements, expected) << options;
    EXPECT_NE(dump.output.find("maximalStack = " + told["maximal_stack"].dump() + "\n"), std::string::npos);
  }
}

}  // namespace
