// The history: what a save appends, what the next one carries on, and how it is read back.
#include "file/MatrixUnderTest.h"
#include "support/Account.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class HistoryTest : public testing::Test {
 public:
  ~HistoryTest() override { setSearchState({}); }

  void save() { ASSERT_EQ(matrix->saveMatrixToDisk(path.c_str()), 1); }
  void load() { ASSERT_EQ(matrix->readAndInitMatrixFromDisk(path.c_str(), -1), 1); }
  int count() {
    matrix->deleteMatrixUpdateInfos();
    int result = -1;
    matrix->readMatrixUpdateInfos(&result);
    return result;
  }
  auto record(int index) {
    return static_cast<std::remove_pointer_t<decltype(matrix->getMatrixInfo())>*>(matrix->getMatrixUpdateInfo(index));
  }

  TestFolder folder;
  std::string path = folder.path() + "/model.zmatrix";
  OwnedMatrix<Matrix> matrix;
};
TYPED_TEST_SUITE(HistoryTest, LearningTiers);

TYPED_TEST(HistoryTest, GrowsByWhatChangedSinceTheLoad) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  EXPECT_EQ(this->count(), 0) << "the history shown is that of the file it was read from";
  this->load();
  EXPECT_EQ(this->count(), 1);
  EXPECT_EQ(this->record(0)->getMatrixID(), 1);
  EXPECT_EQ(std::string(this->record(0)->getUpdateSequence(), 15), "the dry harbour");
  EXPECT_EQ(this->record(0)->getLengthOfUpdateSequence(), 19) << "four rows of line feeds follow";
  this->matrix->getMatrixInfo(1)->setHasBeenChanged(0);
  this->matrix->setCurrentMatrixID(1);
  this->save();
  this->load();
  EXPECT_EQ(this->count(), 1) << "nothing new, the old record carried on";
  learnText(*this->matrix, "two boats", false);
  this->save();
  this->save();
  this->load();
  EXPECT_EQ(this->count(), 2) << "a save does not extend what the next one carries on";
  EXPECT_EQ(std::string(this->record(1)->getUpdateSequence(), 9), "two boats");
  EXPECT_EQ(this->matrix->getNumberOfAppendedUpdates(), 2);
  this->matrix->setNumberOfAppendedUpdates(INT_MAX);  // as any file may say
  learnText(*this->matrix, "two boats", false);
  EXPECT_EQ(this->matrix->getNumberOfAppendedUpdates(), INT_MIN);
  EXPECT_EQ(this->matrix->getMatrixFileHeader()->matrixHasBeenRead(), 1);
}

TYPED_TEST(HistoryTest, TheMessagesOfAScan) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  this->load();
  this->matrix->setNumberOfAppendedUpdates(7);
  CapturedMessages messages(1);
  Account tell([&] { return messages.take(); }, this->folder.path());
  tell("a wrong number", this->count());
  int count = 0;
  this->matrix->readMatrixUpdateInfos(&count);
  tell("again", count);
  tell("beyond the last", this->record(1) != nullptr);
  this->matrix->deleteMatrixUpdateInfos();
  tell("after they were deleted", this->record(0) != nullptr);
  this->matrix->setNumberOfAppendedUpdates(-1);
  tell("without a number", this->record(0) != nullptr);
  this->matrix->getMatrixFileHeader()->setOffsetToUpdateInfos(INT_MAX);
  tell("with an offset behind the end", this->count());
  std::filesystem::remove(this->path);
  tell("without a file", this->count());
}

// Left in place deliberately: the offset in the file is the one in memory when the header went out.
TYPED_TEST(HistoryTest, ASaveWithoutHistoryKeepsTheStaleOffset) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  this->load();
  const int offset = this->matrix->getOffsetToUpdateInfos();
  EXPECT_GT(offset, 2204);
  this->matrix->setCurrentMatrixID(1);
  this->matrix->setAddUpdateInfo(0);
  this->save();
  EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), 0);
  this->load();
  EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), offset);
}

// The name is the header's own text, which the file's is read over.
TYPED_TEST(HistoryTest, AMatrixCanBeReadAgainFromWhereItCame) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  this->load();
  ASSERT_EQ(this->matrix->readAndInitMatrixFromDisk(this->matrix->getMatrixOriginFilename(), -1), 1);
  EXPECT_EQ(this->matrix->getMatrixOriginFilename(), this->path);
  EXPECT_EQ(this->count(), 1);
}

// The header names the history's place by an int. Beyond it the history lies behind the elements unnamed.
TYPED_TEST(HistoryTest, AFileTooLargeForTheOffsetKeepsItsHistory) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  this->load();
  largestOffsetToUpdateInfos = 2000;
  for (int i = 2; i < 4; ++i) {
    learnText(*this->matrix, "two boats", false);
    this->save();
    this->load();
    EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), 0);
    EXPECT_EQ(this->count(), i);
  }
  largestOffsetToUpdateInfos = INT_MAX;
  learnText(*this->matrix, "two boats", false);
  this->save();
  this->load();
  EXPECT_EQ(this->count(), 4) << "carried on from such a file into one that names it";
}

// A stale offset may lie anywhere: what stands there is no history, and isn't carried on as one.
TYPED_TEST(HistoryTest, NothingBeforeTheEndOfTheElementsIsCarriedOn) {
  learnText(*this->matrix, someText, false);
  this->save();
  std::string bytes = TestFolder::contentOf(this->path);
  const size_t size = bytes.size();
  bytes.replace(532, 4, std::string("\x00\x09\x00\x00", 4));
  this->folder.put("model.zmatrix", bytes);
  this->load();
  learnText(*this->matrix, "two boats", false);
  this->save();
  EXPECT_LT(std::filesystem::file_size(this->path), size + size / 2);
  this->load();
  EXPECT_EQ(this->count(), 1);
}

}  // namespace
