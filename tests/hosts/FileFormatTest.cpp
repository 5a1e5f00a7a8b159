// docs/file-format.md: the reader in examples/, written from that page, reads the files of the command, and prints the example of
// the page as the page shows it.
#include <sstream>

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

TEST_F(FileFormatTest, ThePageShowsTheFileThatTheCommandWrites) {
  writeFile("ab.txt", "ab");
  ASSERT_EQ(zmatrix("learn ab.txt --max-phrase 2 --test -o ab.zmatrix").exitCode, 0);
  const RunResult dump = run(reader + "ab.zmatrix");
  ASSERT_EQ(dump.exitCode, 0) << dump.diagnostics;
  const std::string page = readWholeFile(ZMATRIX_DOCS "/file-format.md");
  const std::string fence = "```text\n";
  const std::size_t begin = page.find(fence) + fence.size();
  EXPECT_EQ(withoutTimes(page.substr(begin, page.rfind("```") - begin)), withoutTimes(dump.output));
}

TEST_F(FileFormatTest, TheReaderFindsWhatTheLibraryReports) {
  writeFile("small.txt", "The boat is in. The rope is wet, and the sail is down.\n\nThe man is on the quay. It is late.");
  for (const std::string options : {"--tier medium", "--tier full", "--level words"}) {
    ASSERT_EQ(zmatrix("learn small.txt -o model " + options).exitCode, 0);
    const RunResult dump = run(reader + "model");
    ASSERT_EQ(dump.exitCode, 0) << dump.diagnostics;
    const Json info = json("info model --json");
    std::size_t elements = 0;
    for (std::size_t at = dump.output.find("# slot "); at != std::string::npos; at = dump.output.find("# slot ", at + 1)) {
      ++elements;
    }
    std::size_t expected = info["ids_reserved"];
    for (const auto& matrix : info["matrices"]) {
      expected += matrix["elements"].get<std::size_t>();
      EXPECT_NE(dump.output.find("numberOfMatrixElements = " + matrix["elements"].dump() + "\n"), std::string::npos);
    }
    EXPECT_EQ(elements, expected) << options;
    EXPECT_NE(dump.output.find("maximalStack = " + info["maximal_stack"].dump() + "\n"), std::string::npos);
  }
}

}  // namespace
