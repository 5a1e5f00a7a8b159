#include "frame/ZQCharacterTables.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "support/CapturedMessages.h"

using zmatrix::ansi2asci;
using zmatrix::asci2ansi;
using zmatrix::dbPrintfANSI;
using zmatrix::printfANSI;
using zmatrix::zqGets;

namespace {

/// Replaces standard input by a text.
class StandardInput {
 public:
  explicit StandardInput(std::string text) : text_(std::move(text)), old_(stdin) {
    stdin = fmemopen(text_.data(), text_.size(), "rb");
  }
  ~StandardInput() {
    fclose(stdin);
    stdin = old_;
  }

 private:
  std::string text_;
  FILE* old_;
};

TEST(CharacterTablesTest, ConvertUmlautsBothWays) {
  // The six umlauts and sharp s, in the DOS code page and in ANSI.
  char text[] = "\x84\x94\x81\x8E\x99\x9A\xE1";
  asci2ansi(text);
  EXPECT_STREQ(text, "\xE4\xF6\xFC\xC4\xD6\xDC\xDF");
  ansi2asci(text);
  EXPECT_STREQ(text, "\x84\x94\x81\x8E\x99\x9A\xE1");

  char ends[] = "\x80\xFF";
  asci2ansi(ends);
  EXPECT_STREQ(ends, "\xC7\x1A");
  char others[] = "\x80\x81\xFF";
  ansi2asci(others);
  EXPECT_STREQ(others, "\x20\xDC\x98");
  asci2ansi(nullptr);
}

TEST(CharacterTablesTest, ReadALineFromStandardInput) {
  char buffer[9];
  const auto read = [&](const char* input, int size) {
    memset(buffer, '#', sizeof buffer);
    StandardInput standardInput(input);
    zqGets(buffer, size);
    return std::string(buffer, sizeof buffer);
  };
  using namespace std::string_literals;
  EXPECT_EQ(read("abc\ndef", 8), "abc\0#####"s);
  EXPECT_EQ(read("\nab\rcd", 8), "\nab\0#####"s);
  EXPECT_EQ(read("\x84\x81\n", 8), "\xE4\xFC\0######"s);
  EXPECT_EQ(read("abcdef", 4), "abcd#####"s);                       // a full buffer has no terminator
  EXPECT_EQ(read("\x84\x84\x84\x84\n", 3), "\xE4\xE4\xE4######"s);  // nothing behind it is converted
  EXPECT_EQ(read("ab", 8), "ab\0######"s);                          // end of input
  EXPECT_EQ(read("ab", 0), "#########"s);
}

TEST(CharacterTablesTest, PrintOneCharacterThroughAFormat) {
  testing::internal::CaptureStdout();
  printfANSI("<%c>", 'A');
  printfANSI("<%d>", 0xE4);
  printfANSI("<%c>", 256);
  printfANSI("<%-4x%%>", 0xFC);
  printfANSI("plain", 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "<A><132><81  %>plain");

  zmatrix::CapturedMessages messages(3);
  dbPrintfANSI(3, "<%c>", 0xE4);
  dbPrintfANSI(4, "<%c>", 0xE4);
  dbPrintfANSI(0, "<%c>", 256);
  EXPECT_EQ(messages.take(), "<\x84>");
}

TEST(CharacterTablesTest, RefuseFormatsThatReadMoreThanOneInt) {
  testing::internal::CaptureStdout();
  for (const char* format : {"%s", "%n", "%d%d", "%*d", "%.*d", "%ld", "%f", "%", "%5", "%1$d", "%c%", "%5..5d"})
    printfANSI(format, 65);
  printfANSI(nullptr, 65);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
