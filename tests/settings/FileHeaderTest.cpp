// Setters and files of the file header.
#include "settings/ZQMatrixFileHeader.h"

#include <gtest/gtest.h>

#include "frame/ZQMemory.h"
#include "support/CapturedMessages.h"
#include "support/TestFolder.h"

using zmatrix::ZQDebugChannel;
using zmatrix::ZQMatrixFileHeader;

namespace {

using zmatrix::CapturedMessages;
using zmatrix::TestFolder;

struct InitialisedHeader : ZQMatrixFileHeader {
  InitialisedHeader() { EXPECT_EQ(initFileHeader(0), 1); }
};

TEST(FileHeaderTest, SettersIgnoreWrongValuesSilently) {
  InitialisedHeader header;
  CapturedMessages messages(9);
  for (const auto& [number, expected] : {std::pair{0, 0}, {3, 3}, {2, 3}, {5, 3}, {-1, 3}, {4, 4}}) {
    header.setNumberOfMatrices(number);
    EXPECT_EQ(header.getNumberOfMatrices(), expected) << number;
  }
  for (const auto& [level, expected] : {std::pair{1, 1}, {2, 1}, {-1, 1}, {0, 0}}) {
    header.setMatrixAILevel(level);
    EXPECT_EQ(header.getMatrixAILevel(), expected) << level;
  }
  EXPECT_EQ(messages.take(), "");
  for (const auto& [device, expected] : {std::pair{-1, 0}, {0, 0}, {3, 3}, {4, 2}}) {
    header.setMatrixDebugOutputDevice(device);
    EXPECT_EQ(header.getMatrixDebugOutputDevice(), expected) << device;
    EXPECT_EQ(ZQDebugChannel::globalDebugOutputDevice, expected) << device;
  }
}

TEST(FileHeaderTest, TextsAreCutToTheirFields) {
  InitialisedHeader header;
  const std::string longText(1000, 'x');
  header.setMatrixDescription(longText.c_str());
  header.setMatrixOriginFilename(longText.c_str());
  header.setMatrixDestinationFilename(longText.c_str());
  header.setFileType("zmatrixes");
  header.setGlobalNameOfUpdateFile(longText.c_str());
  EXPECT_EQ(strlen(header.getMatrixDescription()), 503u);
  EXPECT_EQ(strlen(header.getMatrixOriginFilename()), 255u);
  EXPECT_EQ(strlen(header.getMatrixDestinationFilename()), 255u);
  EXPECT_STREQ(header.getFileType(), "zmatrix");
  EXPECT_EQ(memcmp(header.getGlobalNameOfUpdateFile(), longText.data(), 256), 0) << "the name fills its field";
  EXPECT_EQ(header.getGlobalMatrixProperties()->maxPhraseLengthForUpdateWithSequence, 64)
      << "nothing behind the field is overwritten";

  header.setMatrixDescription(nullptr);
  header.setGlobalMidiChannelFilterArray(nullptr);
  EXPECT_EQ(strlen(header.getMatrixDescription()), 503u);
}

TEST(FileHeaderTest, TheDebugDirectoryMustBeWritable) {
  const TestFolder folder;
  const std::string there = folder.path();
  constexpr char warning[] =
      "warning: setDebugDirectory to directory without write access! Current working directory will be used!\n";
  // Paths of up to 247 characters are accepted.
  std::string longest = there;
  while (longest.size() < 247) longest += '/';
  InitialisedHeader header;
  CapturedMessages messages(0);
  const struct {
    std::string path;
    std::string expected;
    std::string message;
  } cases[] = {{there, there, ""}, {there + "/", there + "/", ""},     {longest, longest, ""}, {longest + "/", "./", ""},
               {"", "./", ""},     {there + "/missing", "./", warning}};
  for (const auto& tried : cases) {
    header.setMatrixDebugDirectory(tried.path.c_str());
    EXPECT_EQ(header.getMatrixDebugDirectory(), tried.expected);
    EXPECT_EQ(messages.take(), tried.message) << tried.path;
  }
  header.setMatrixDebugDirectory(there.c_str());
  header.setMatrixDebugDirectory(nullptr);
  EXPECT_EQ(header.getMatrixDebugDirectory(), there);
  EXPECT_TRUE(std::filesystem::is_empty(there)) << "the file that probes write access is removed";
}

TEST(FileHeaderTest, TheStreamOfUpdateRecordsIsClosedAndRemoved) {
  const TestFolder folder;
  const std::string name = folder.put("updates", "records");
  InitialisedHeader header;
  EXPECT_EQ(header.matrixHasBeenRead(), 0);
  header.setFpUpdateInfos(fopen(name.c_str(), "rb"));
  header.setFpUpdateInfosFileName(name.c_str());
  EXPECT_EQ(header.matrixHasBeenRead(), 1);
  header.closeAndRemoveUpdateInfos();
  EXPECT_EQ(header.matrixHasBeenRead(), 0);
  EXPECT_FALSE(std::filesystem::exists(name));
  header.setNumberOfAppendedUpdates(1000);
  header.deleteMatrixUpdateInfos();  // none are loaded
  header.deInitFileHeader();
  header.deInitFileHeader();
  EXPECT_EQ(header.getStopFlags(), nullptr);
}

}  // namespace
