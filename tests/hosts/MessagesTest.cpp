// Diagnostics, progress, closed and dangling files, manual and completions.
#include <regex>
#include <set>
#include <sstream>

#include "hosts/RunProgram.h"

namespace {

const std::string command = "'" ZMATRIX_COMMAND "' ";

class MessagesTest : public ProgramTest {
 protected:
  MessagesTest() {
    writeFile("small.txt", "The boat is in. The rope is wet, and the sail is down. The man is on the quay. It is late.");
  }

  // The output on a terminal that has both standard output, unless redirected, and standard error.
  std::string onTerminal(const std::string& arguments) const {
    writeFile("line.sh", command + arguments + "\n");
    return run("TERM=xterm script -qec 'sh line.sh' /dev/null").output;
  }
};

TEST_F(MessagesTest, ReportsWrongArgumentsInOneLine) {
  expectCodes("faults_of_arguments.txt");
  const RunResult empty = zmatrix("continue small.txt --start= --count 20");
  EXPECT_EQ(empty.output, zmatrix("continue small.txt --start '' --count 20").output);
  EXPECT_EQ(empty.output.size(), 20u);
  EXPECT_EQ(zmatrix("help learn").output, zmatrix("learn --help").output);
}

TEST_F(MessagesTest, DrawsProgressOnlyWithoutOutputOnTheTerminal) {
  if (run("command -v script").exitCode != 0) GTEST_SKIP() << "script(1) is missing";
  const std::string line = "continue small.txt --count 40 ";
  for (const std::string rest : {"", "| cat", "--out /dev/stdout", "--quiet --out result", "--debug 1 --out result"}) {
    EXPECT_EQ(onTerminal(line + rest).find("%"), std::string::npos) << rest;
  }
  for (const std::string rest : {"--out result", "--out /dev/null", ">result"}) {
    const std::string shown = onTerminal(line + rest);
    EXPECT_NE(shown.find("] 0%"), std::string::npos) << rest;
    EXPECT_EQ(shown.substr(shown.size() - 2), " \r") << "the progress line is erased: " << shown;
  }
  EXPECT_EQ(onTerminal("learn small.txt -o model; NO_COLOR=1 " + command + line + "--out result").find("writing"),
            std::string::npos);
}

TEST_F(MessagesTest, ReportsClosedOutputsAndDanglingLinks) {
  for (const std::string line : {"continue small.txt", "--help", "--version", "check small.txt", "learn small.txt -o -"}) {
    expectMessage(line + " >&-", 4, "cannot write standard output: it is closed");
  }
  EXPECT_EQ(zmatrix("--help >/dev/full").exitCode, 4);
  EXPECT_EQ(zmatrix("learn small.txt -o model <&- >&- 2>&-").exitCode, 0);
  EXPECT_EQ(zmatrix("check model").exitCode, 0) << "no diagnostics in the model";
  EXPECT_EQ(run("{ " + command + "continue small.txt -q --count 1000000; echo $? >code; } | head -c 1; cat code").diagnostics,
            "");
  EXPECT_EQ(readFile("code"), "141\n");

  run("ln -s nowhere link");
  for (const std::string line : {"continue link", "info link", "learn small.txt -o link", "continue small.txt -o link"}) {
    const int exitCode = line.find("-o") == std::string::npos ? 3 : 4;
    expectMessage(line, exitCode, "it is a symbolic link to nowhere, which does not exist");
  }
  EXPECT_NE(run("test -e nowhere").exitCode, 0);
}

// The long names of the options that a help text lists.
std::set<std::string> optionsIn(const std::string& help) {
  static const std::regex option("\\n +(?:-\\w,)?--([a-z-]+)");
  std::set<std::string> names;
  for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at) names.insert((*at)[1]);
  return names;
}

TEST_F(MessagesTest, ManualAndCompletionsHaveAllOptionsOfTheHelp) {
  std::string help = zmatrix("--help").output;
  for (const char* verb : {"continue", "learn", "generate", "info", "check", "inspect", "convert", "numbers"}) {
    help += zmatrix(std::string(verb) + " --help").output;
  }
  const std::set<std::string> options = optionsIn(help);
  EXPECT_GT(options.size(), 20u);
  for (const std::string what : {"man", "bash", "zsh", "fish"}) {
    const RunResult printed = zmatrix("--print " + what + " >" + what + " && cat " + what);
    ASSERT_EQ(printed.exitCode, 0) << printed.diagnostics;
    for (const std::string& name : options) {
      const std::string shown = what == "fish"  ? "-l " + name
                                : what == "man" ? std::regex_replace(name, std::regex("-"), "\\-")
                                                : "--" + name;
      EXPECT_NE(printed.output.find(shown), std::string::npos) << what << " lacks " << name;
    }
    const std::string reader = what == "man" ? "man --warnings -l man 2>&1 >/dev/null" : what + " -n " + what + " 2>&1";
    if (run("command -v " + what).exitCode != 0) continue;
    EXPECT_EQ(run(reader).output, "") << what;
  }
  writeFile(
      "try.bash",
      "source ./bash; try() { COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); _zmatrix; echo \"${COMPREPLY[*]}\"; }\n"
      "try zmatrix con; try zmatrix continue --method ''; try zmatrix continue --method = b; try zmatrix info sm\n");
  EXPECT_EQ(run("bash try.bash").output, "continue convert\nbest middle random\nbest\nsmall.txt\n");
}

}  // namespace
