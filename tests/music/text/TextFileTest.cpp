// Reading text files and detecting their language.
#include "music/text/ZQTextFile.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "support/CapturedMessages.h"
#include "support/KeptText.h"

namespace {

std::vector<int> valuesOf(const zmatrix::TextOfFile& text) {
  return {text.values.get(), text.values.get() + text.length};
}

TEST(TextFileTest, IsReadByteByByteUpToACap) {
  const zmatrix::TestFolder folder;
  std::string allBytes;
  std::vector<int> expected;
  for (int round = 0; round < 1000; round++)  // more than one read buffer
    for (int i = 0; i < 256; i++) {
      allBytes += static_cast<char>(i);
      expected.push_back(i);
    }
  const std::string file = folder.put("bytes.txt", allBytes);
  zmatrix::CapturedMessages messages(1);
  EXPECT_EQ(valuesOf(zmatrix::textOfFile(file.c_str(), 0)), expected);
  EXPECT_EQ(messages.take(), "***************ANSI inputFile (reading 1 byte values) ***************\n");
  EXPECT_EQ(valuesOf(zmatrix::textOfFile(file.c_str(), -3)), expected);
  EXPECT_EQ(valuesOf(zmatrix::textOfFile(file.c_str(), INT_MAX)), expected);
  expected.resize(257);
  EXPECT_EQ(valuesOf(zmatrix::textOfFile(file.c_str(), 257)), expected);

  const zmatrix::TextOfFile empty = zmatrix::textOfFile(folder.put("empty.txt", "").c_str(), 0);
  EXPECT_TRUE(empty.isReadable);
  EXPECT_EQ(empty.length, 0);
}

TEST(TextFileTest, RefusesNoFileAndTooLongOnes) {
  const zmatrix::TestFolder folder;
  const std::string huge = folder.put("huge.txt", "x");
  std::filesystem::resize_file(huge, static_cast<std::uintmax_t>(INT_MAX) - 1);
  for (const std::string& name : {folder.path(), std::string("/dev/zero"), folder.path() + "/absent", std::string(), huge}) {
    EXPECT_FALSE(zmatrix::textOfFile(name.c_str(), 0).isReadable) << name;
    if (name == huge) continue;  // detecting its language would read two gigabytes
    EXPECT_EQ(zmatrix::languageOfTextFile(name.c_str()), 0) << name;
  }
  EXPECT_FALSE(zmatrix::textOfFile(nullptr, 0).isReadable);
  EXPECT_EQ(zmatrix::languageOfTextFile(nullptr), 0);
  EXPECT_EQ(zmatrix::textOfFile(huge.c_str(), 5).length, 5);

  zmatrix::largestAllocation = 100;
  const zmatrix::TextOfFile text = zmatrix::textOfFile(folder.put("long.txt", std::string(1000, 'x')).c_str(), 0);
  EXPECT_TRUE(text.isReadable);
  EXPECT_EQ(text.values, nullptr);
  EXPECT_EQ(zmatrix::languageOfTextFile(folder.put("is.txt", std::string(1000, 'x') + " is ").c_str()), 0);
  zmatrix::largestAllocation = static_cast<size_t>(-1);
}

TEST(TextFileTest, DetectsGermanAndEnglish) {
  const zmatrix::TestFolder folder;
  zmatrix::expectKeptCases("text_languages.txt", [&folder](const std::string& text) {
    return std::to_string(zmatrix::languageOfTextFile(folder.put("text.txt", text).c_str()));
  });
}

}  // namespace
