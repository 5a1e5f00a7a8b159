// Encodings and pipes: the same characters give the same model and the same output in each encoding and from each kind of input.

#include "hosts/RunProgram.h"

namespace {

// A character of each kind: ASCII, one with the same code in Windows-1252 and Unicode, two with different codes, a control
// character whose byte Windows-1252 uses otherwise, Greek, Chinese, an emoji, and two of the last planes.
const std::string all = "a \u00FC \u20AC \u2019 \xC2\x85 \u03B1\u03B2 \u4F60\u597D \U0001F642 \U000E0041 \U0010FFFD .";

class EncodingTest : public ProgramTest {
 protected:
  std::string converted(const std::string& text, const std::string& encoding) const {
    writeFile("plain", text);
    return run("iconv -f UTF-8 -t " + encoding + " plain").output;
  }
  // Learns a text as one phrase and continues it from its first letter.
  RunResult returned(const std::string& arguments, int count) const {
    return zmatrix("continue " + arguments + " --force --max-phrase 200 --method best --start a --count " +
                   std::to_string(count));
  }
};

TEST_F(EncodingTest, RestoresEveryCharacterInEveryEncoding) {
  writeFile("utf8", all);
  writeFile("mark", "\xEF\xBB\xBF" + all);
  writeFile("little", "\xFF\xFE" + converted(all, "UTF-16LE"));
  writeFile("big", "\xFE\xFF" + converted(all, "UTF-16BE"));
  const int count = 22;  // characters after the first
  for (const std::string input : {"utf8", "mark", "little", "big"}) {
    const RunResult result = returned(input, count);
    EXPECT_EQ(result.output, all) << input;
    EXPECT_EQ(result.diagnostics.find("Windows-1252"), std::string::npos) << result.diagnostics;
  }
  ASSERT_EQ(zmatrix("learn utf8 -o model --max-phrase 60").exitCode, 0);
  const std::string generate = "generate model --method best --start a --count 22 --encoding ";
  EXPECT_EQ(zmatrix(generate + "utf-16be").output, converted(all, "UTF-16BE"));
  EXPECT_EQ(zmatrix(generate + "utf-16").output, "\xFF\xFE" + converted(all, "UTF-16LE"));
  const RunResult windows = zmatrix(generate + "windows-1252");
  EXPECT_EQ(windows.output, "a \xFC \x80 \x92 ? ?? ?? ? ? ? .");
  EXPECT_NE(windows.diagnostics.find("8 characters written as ?"), std::string::npos) << windows.diagnostics;
  EXPECT_EQ(zmatrix(generate + "iso-8859-1").output, "a \xFC ? ? \x85 ?? ?? ? ? ? .");
}

TEST_F(EncodingTest, KeepsWordsOfEveryScript) {
  writeFile("text.txt",
            "\u4F60\u597D \u043C\u0438\u0440 \U0001F642 na\u00EFve\n\n\u4F60\u597D \u043C\u0438\u0440 \U0001F642 end");
  EXPECT_EQ(zmatrix("continue text.txt --level words --start '\u4F60\u597D' --count 2 --seed 1").output,
            "\u4F60\u597D \u043C\u0438\u0440 \U0001F642");
  EXPECT_EQ(json("check text.txt --level words --json")["matrices"][0]["symbols"], 5);
}

TEST_F(EncodingTest, ReadsStandardInputAndPipesAsFiles) {
  writeFile("text.txt", "The boat is in. The rope is wet, and the sail is down. Gr\u00FCn is the sea.");
  const std::string command = "'" ZMATRIX_COMMAND "' ";
  const std::string expected = zmatrix("continue text.txt --count 99").output;
  const std::string model = zmatrix("learn text.txt -o -").output;
  writeFile("model", model);
  const std::vector<std::string> lines = {
      "cat text.txt | " + command + "continue - --count 99",
      command + "continue - --count 99 <text.txt",
      "cat text.txt | " + command + "continue /dev/stdin --count 99",
      "bash -c \"" + command + "continue <(cat text.txt) --count 99\"",
      "mkfifo pipe; cat text.txt >pipe & " + command + "continue pipe --count 99",
      "cat text.txt | " + command + "learn - -o - | " + command + "generate - --count 99",
      command + "generate - --count 99 <model",
  };
  for (const std::string& line : lines) EXPECT_EQ(run(line).output, expected) << line;
  const RunResult rest = run("bash -c \"{ dd bs=1 count=16 of=skipped; " + command + "check - --json; } <text.txt\"");
  EXPECT_EQ(Json::parse(rest.output)["bytes"], readFile("text.txt").size() - 16) << "the 16 bytes read before are not learned";

  const RunResult updated = run("cat model | " + command + "learn text.txt --update -o - | " + command + "info - --json");
  EXPECT_EQ(Json::parse(updated.output)["updates"], 2) << updated.diagnostics;
  EXPECT_EQ(run("cat model | " + command + "check -").exitCode, 0);
  EXPECT_EQ(run("cat text.txt | " + command + "learn - --update -o -").exitCode, 2);
  EXPECT_EQ(run("cat text.txt | " + command + "generate -").exitCode, 3);
  EXPECT_EQ(run("cat " + example("tide.mid") + " | " + command + "continue - --out t.mid; head -c 4 t.mid").output, "MThd");
  EXPECT_EQ(run("cat " + example("canon.krn") + " | " + command + "convert - - | head -c 4").output, "MThd");
  EXPECT_EQ(run("echo 1 2 3 4 5 6 | " + command + "continue - --count 2").output, "7\n8\n");
}

}  // namespace
