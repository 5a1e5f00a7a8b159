// After a save there is the whole new file or the unchanged old one, and no temporary file.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;
namespace fs = std::filesystem;

class SafeSaveTest : public FileTest<ZQMatrixMedium> {
 public:
  SafeSaveTest() { fillAtRandom(*matrix, 3, 300); }

  int save(const std::string& target) { return saveTo(target, matrix); }
  bool isLoadable(const std::string& file) {
    OwnedMatrix<ZQMatrixMedium> loaded;
    return loadInto(loaded, file) == 1 && slotsOf(*loaded) == slotsOf(*matrix);
  }
  size_t numberOfFiles() const { return static_cast<size_t>(std::distance(fs::directory_iterator(folder.path()), {})); }
};

TEST_F(SafeSaveTest, ReplacesAFileAndKeepsItsMode) {
  folder.put("model.zmatrix", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
  EXPECT_EQ(save(path), 1);
  EXPECT_TRUE(isLoadable(path));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
  EXPECT_EQ(numberOfFiles(), 1u);
}

TEST_F(SafeSaveTest, WritesTheTargetOfALink) {
  fs::create_directory(folder.path() + "/deep");
  folder.put("deep/model.zmatrix", "old");
  fs::create_symlink("deep/model.zmatrix", folder.path() + "/link");
  fs::create_symlink("link", path);
  EXPECT_EQ(save(path), 1);
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_symlink(folder.path() + "/link"));
  EXPECT_TRUE(isLoadable(folder.path() + "/deep/model.zmatrix"));
  fs::create_symlink("missing", folder.path() + "/dangling");
  EXPECT_EQ(save(folder.path() + "/dangling"), 1);
  EXPECT_TRUE(isLoadable(folder.path() + "/missing"));
  fs::create_symlink("ring", folder.path() + "/ring");
  EXPECT_EQ(save(folder.path() + "/ring"), -1);
}

TEST_F(SafeSaveTest, LeftoversOfThisProcessAreAvoided) {
  const std::string leftover = folder.put(".zmatrix-save-" + std::to_string(getpid()) + "-0", "half a file");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(save(path), 1);
  EXPECT_TRUE(isLoadable(path));
  EXPECT_EQ(TestFolder::contentOf(leftover), "half a file");
  EXPECT_EQ(numberOfFiles(), 2u);
}

TEST_F(SafeSaveTest, LeftoversOfEndedProcessesAreRemoved) {
  const pid_t gone = fork();
  if (gone == 0) _exit(0);
  waitpid(gone, nullptr, 0);
  const std::string start = ".zmatrix-save-";
  folder.put(start + std::to_string(gone) + "-0", "half a file");
  const std::string held = folder.put(start + std::to_string(gone) + "-1", "locked by a process of another machine");
  const std::string living = folder.put(start + std::to_string(getppid()) + "-0", "of a running process");
  const std::string foreign = folder.put(start + "notes", "not a temporary file of a save");
  const int descriptor = ::open(held.c_str(), O_RDONLY);
  ASSERT_EQ(flock(descriptor, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(save(path), 1);
  EXPECT_EQ(numberOfFiles(), 4u);
  for (const std::string& name : {held, living, foreign}) EXPECT_TRUE(fs::exists(name)) << name;
  close(descriptor);
}

TEST_F(SafeSaveTest, PathsThatCannotBeOpenedAreRefused) {
  CapturedMessages messages(0);
  EXPECT_EQ(save(folder.path() + "/no/such/folder"), -1);
  EXPECT_EQ(messages.take(), "saveMatrixToDisk: Could not open file " + folder.path() + "/no/such/folder for writing!\n");
  EXPECT_EQ(save(folder.path()), -1);
  EXPECT_EQ(save(""), -1);
  EXPECT_EQ(matrix->saveMatrixToDisk(nullptr), -1);
  EXPECT_EQ(numberOfFiles(), 0u);
}

TEST_F(SafeSaveTest, AFullDiskLeavesTheOldFile) {
  EXPECT_EQ(save(path), 1);
  const std::string old = TestFolder::contentOf(path);
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const auto oldAction = signal(SIGXFSZ, SIG_IGN);
  learnText(*matrix, someText);  // with a history, whose offset must stay 0 if no file is saved
  for (const size_t limit : {old.size() - 1, old.size() / 2, size_t{1}}) {
    rlimit narrow = before;
    narrow.rlim_cur = limit;
    setrlimit(RLIMIT_FSIZE, &narrow);
    const int result = save(path);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(TestFolder::contentOf(path), old);
    EXPECT_EQ(numberOfFiles(), 1u);
    EXPECT_EQ(matrix->getOffsetToUpdateInfos(), 0);
  }
  signal(SIGXFSZ, oldAction);
  CapturedMessages messages(0);
  EXPECT_EQ(save("/dev/full"), -1);
  EXPECT_EQ(messages.take(), "saveMatrixToDisk: Could not write file /dev/full!\n");
  EXPECT_EQ(save("/dev/null"), 1);
}

TEST_F(SafeSaveTest, AMatrixWithoutABlockReplacesNothing) {
  const std::string old = TestFolder::contentOf(folder.put("model.zmatrix", "old"));
  matrix->deInitMatrix();  // as a failed growth does
  EXPECT_EQ(save(path), -1);
  EXPECT_EQ(TestFolder::contentOf(path), old);
}

// The offset of the history is known last, but lies in the header, and a pipe can't seek back.
TEST_F(SafeSaveTest, APipeGetsTheWholeFileInOrder) {
  learnText(*matrix, someText);
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = TestFolder::contentOf(path); });
  EXPECT_EQ(save(path), 1);
  reader.join();
  const std::string plainPath = folder.path() + "/plain";
  EXPECT_EQ(save(plainPath), 1);
  EXPECT_EQ(received.size(), TestFolder::contentOf(plainPath).size());
  EXPECT_TRUE(isLoadable(folder.put("received", received)));
  EXPECT_EQ(matrix->readAndInitMatrixFromDisk(path.c_str(), -1), -1) << "a pipe is refused without waiting for a writer";
}

}  // namespace
