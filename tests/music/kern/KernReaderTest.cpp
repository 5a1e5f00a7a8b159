// The objects that the kern reader makes of small scores, above all where they deviate from the score.
#include "music/kern/ZQKernReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "music/kern/KernUnderTest.h"
#include "support/KeptText.h"

namespace {

using zmatrix::kern;

struct KernReaderTest : testing::Test, zmatrix::KernUnderTest {};

TEST_F(KernReaderTest, ReadsSmallScores) {
  zmatrix::expectKeptCases("kern_objects.txt", [this](const std::string& records) {
    const std::string objects = read(kern(records));
    return objects + "\n" + messages;
  });
}

TEST_F(KernReaderTest, KeepsAllNotesOfWideScores) {
  // A hundred spines with a note each, on the channel of the column.
  const auto row = [](const std::string& token, int count) {
    std::string record = token;
    for (int i = 1; i < count; i++) record += " " + token;
    return record;
  };
  std::string objects = read(kern(row("**kern", 100) + "\n" + row("4c", 100) + "\n" + row("4d", 100) + "\n" + row("*-", 100)));
  EXPECT_EQ(std::count(objects.begin(), objects.end(), 'n'), 200);
  EXPECT_NE(objects.find(" n6144:62+3072c3 "), std::string::npos);  // columns 96 to 99
  EXPECT_EQ(std::count(objects.begin(), objects.end(), 'o'), 2 * 16) << "the last spine of a channel ends its pitch";

  std::string records = "**kern\n";
  int columns = 1;
  for (; columns < 256; columns *= 2) records += row("*^", columns) + "\n";
  for (; columns < 10000; columns += 256) records += row("*^", 256) + "\n";
  for (int i = 0; i < 60; i++) records += "*^\n4c\n";
  objects = read(kern(records + "4" + std::string(150, 'd') + "\n*-"));
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getCount(), 122) << "sixty notes, and one of a long token";
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getKernObjectAtIndex(120)->getNoteNumber(), (62 + 12 * 149) % 256);
}

TEST_F(KernReaderTest, SplitsLongLines) {
  // 959 bytes and the line feed: the second piece is empty.
  const std::string comment = "!!" + std::string(956, 'x');
  EXPECT_EQ(read(kern("**kern\n" + comment + "\n4c\n*-")).size(), 6 + comment.size() + 1 + 1 + 13 + 1 + 8);
  EXPECT_EQ(read(kern("**kern\n!!" + std::string(957, 'x') + "2g\n4c\n*-")).substr(965),
            " n3072:67+6144 o9216:67 n9216:60+3072 o12288:60");
}

TEST_F(KernReaderTest, RefusesPathsWithoutAFile) {
  const std::string pipe = folder.path() + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {pipe, folder.path(), folder.path() + "/none"}) {
    EXPECT_EQ(readFile(path), "");
    EXPECT_EQ(messages, "error readKernObjectsFromFileWithPath: cannot open " + path + "\n");
  }
  EXPECT_EQ(read(""), "");
  EXPECT_EQ(messages, "");
  // A refused file leaves the list as it was.
  list->getKernObjectTrackAtIndex(0)->setChannel(3);
  zmatrix::ZQKernFile().readKernObjectsFromFileWithPath(list, folder.put("b.krn", "**kern\n").c_str());
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getChannel(), 3);
}

}  // namespace
