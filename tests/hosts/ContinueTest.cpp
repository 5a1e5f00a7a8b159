// `zmatrix continue`: what it writes to which file, and its exit codes.

#include "hosts/RunProgram.h"

namespace {

// Short, so that it is learned fast under sanitizers; its end is no sentence end.
const std::string smallText =
    "The boat is in. The rope is wet, and the sail is down.\r\nThe man is on the quay. It is late; the boat is fast.\r\n\r\n"
    "Is the boat in? The boat is in, and the tide is out";

class ContinueTest : public ProgramTest {
 protected:
  ContinueTest() { writeFile("small.txt", smallText); }
};

TEST_F(ContinueTest, WritesTheSameItemsForTheSameSeed) {
  const std::string start = "The boat ";
  const RunResult first = zmatrix("continue small.txt --start '" + start + "' --count 400 --seed 7");
  EXPECT_EQ(first.exitCode, 0) << first.diagnostics;
  EXPECT_EQ(first.output.size(), start.size() + 400);
  EXPECT_EQ(first.output.substr(0, start.size()), start);
  EXPECT_EQ(zmatrix("continue small.txt --start '" + start + "' --count 400 --seed 7").output, first.output);
  EXPECT_NE(zmatrix("continue small.txt --start '" + start + "' --count 400 --seed 8").output, first.output);
  EXPECT_EQ(zmatrix("continue small.txt --start '" + start + "' --count 0").output, start);
  EXPECT_EQ(zmatrix("continue small.txt --count 50").output.size(), 50u);
}

TEST_F(ContinueTest, WritesOnlyPhrasesOfTheText) {
  // Each pair of written bytes must occur in the learned sequences, whose ends are written as line feeds.
  const std::string learned =
      "\nThe boat is in.\nThe rope is wet, and the sail is down.\nThe man is on the quay.\nIt is late; the boat is fast.\n"
      "Is the boat in?\nThe boat is in, and the tide is out\n";
  const std::string written = zmatrix("continue small.txt --count 2000 --max-phrase 4 --seed 3").output;
  ASSERT_EQ(written.size(), 2000u);
  for (std::size_t at = 0; at + 2 <= written.size(); ++at) {
    EXPECT_NE(learned.find(written.substr(at, 2)), std::string::npos) << "at " << at << ": " << written.substr(at, 2);
  }
}

TEST_F(ContinueTest, ContinuesAStartThatIsNotInTheText) {
  for (const std::string start : {"Zyqx", "7%", "Die Mutter sprach: \"Warum?\" The b"}) {
    const RunResult result = zmatrix("continue small.txt --start '" + start + "' --count 300 --seed 7");
    EXPECT_EQ(result.exitCode, 0) << result.diagnostics;
    EXPECT_EQ(result.output.size(), start.size() + 300);
    EXPECT_NE(result.output.find("is", start.size()), std::string::npos);
  }
}

TEST_F(ContinueTest, ContinuesInTheLanguageOfTheStart) {
  const std::string options = " --count 300 --seed 5 --max-phrase 6 --start ";
  const std::string english = example("harbour.txt"), german = example("muehle.txt");
  for (const auto& [text, start] : {std::pair{english, "'The harbour '"}, {german, "'Der Bach '"}}) {
    EXPECT_EQ(zmatrix("continue " + english + " " + german + options + start).output,
              zmatrix("continue " + text + options + start).output);
  }
}

TEST_F(ContinueTest, LearnsTheTextFilesOfFolders) {
  writeFile("texts/b.txt", "Here is b. There is more of it.");
  writeFile("texts/a.TXT", "Here is a. It is short.");
  writeFile("texts/notes.md", "Nothing here is learned. It is no text file.");
  writeFile("texts/below/c.txt", "This is c. It is below.");
  const std::string options = " --count 200 --seed 9";
  EXPECT_EQ(zmatrix("continue texts" + options).output, zmatrix("continue texts/a.TXT texts/b.txt" + options).output);
  EXPECT_EQ(zmatrix("continue texts --recursive" + options).output,
            zmatrix("continue texts/a.TXT texts/b.txt texts/below/c.txt" + options).output);
}

TEST_F(ContinueTest, ChoosesByTheGivenMethod) {
  writeFile("twice.txt", "aab aab aab aac");
  const std::string options = "continue twice.txt --start aa --count 1 --method ";
  EXPECT_EQ(zmatrix(options + "best").output, "aab");
  EXPECT_EQ(zmatrix(options + "middle").output, "aac");
  EXPECT_EQ(zmatrix(options + "random --seed 1").output.size(), 3u);
}

TEST_F(ContinueTest, WritesDiagnosticsToStandardErrorOnly) {
  const std::string line = "continue small.txt --count 100 --seed 7";
  const RunResult plain = zmatrix(line);
  EXPECT_EQ(plain.diagnostics.find('\r'), std::string::npos) << "no progress without a terminal";
  const RunResult loud = zmatrix(line + " --debug 9");
  EXPECT_EQ(loud.output, plain.output);
  EXPECT_NE(loud.diagnostics.find("_matrixData initialized!"), std::string::npos);
  const RunResult quiet = zmatrix(line + " --quiet");
  EXPECT_EQ(quiet.output, plain.output);
  EXPECT_EQ(quiet.diagnostics, "");
}

TEST_F(ContinueTest, ReplacesFilesWholeOrNotAtAll) {
  const std::string expected = zmatrix("continue small.txt --count 100").output;
  EXPECT_EQ(zmatrix("continue small.txt --count 100 --out result.txt").exitCode, 0);
  EXPECT_EQ(readFile("result.txt"), expected);
  EXPECT_EQ(zmatrix("continue small.txt --count 100 --out /dev/stdout").output, expected);

  writeFile("old.txt", "old");
  EXPECT_EQ(zmatrix("continue missing.txt --out old.txt").exitCode, 3);
  EXPECT_EQ(readFile("old.txt"), "old");
  EXPECT_EQ(run("chmod 640 old.txt && ln -s old.txt link.txt").exitCode, 0);
  EXPECT_EQ(zmatrix("continue small.txt --count 100 --out link.txt").exitCode, 0);
  EXPECT_EQ(readFile("old.txt"), expected) << "the link's target is written";
  EXPECT_EQ(run("test -L link.txt && stat -c %a old.txt").output, "640\n");

  EXPECT_EQ(zmatrix("continue small.txt --count 100 --out /dev/null").exitCode, 0);
  EXPECT_EQ(zmatrix("continue small.txt --count 100 --out /dev/full").exitCode, 4);
  EXPECT_EQ(zmatrix("continue small.txt --count 100 >/dev/full").exitCode, 4);
  EXPECT_EQ(filesInFolder(), (Names{"link.txt", "old.txt", "result.txt", "small.txt"}));
}

TEST_F(ContinueTest, LeavesNothingBehindWhenInterrupted) {
  const RunResult result = run("'" ZMATRIX_COMMAND
                               "' continue small.txt --count 2000000000 --out late.txt & "
                               "started=$!; sleep 1; ls late.txt.*; kill $started; wait $started");
  EXPECT_EQ(result.exitCode, 128 + 15);
  EXPECT_EQ(result.output.rfind("late.txt.", 0), 0u) << "the run was killed before it began to write";
  EXPECT_EQ(filesInFolder(), Names{"small.txt"});
}

TEST_F(ContinueTest, EndsWithOneCodePerKindOfFault) {
  writeFile("empty.txt", "");
  writeFile("blank.txt", " \r\n\t \r\n");
  run("mkdir folder");
  expectCodes("faults_of_continue.txt");
}

}  // namespace
