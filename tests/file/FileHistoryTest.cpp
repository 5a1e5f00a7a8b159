// The history of updates: what a save appends, what later saves keep, and how it is read back.
#include "file/MatrixUnderTest.h"
#include "support/Account.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class FileHistoryTest : public FileTest<Matrix> {
 public:
  using FileTest<Matrix>::matrix;

  void save() { ASSERT_EQ(this->saveTo(this->path, matrix), 1); }
  void load() { ASSERT_EQ(this->loadInto(matrix, this->path), 1); }
  void learnSaveAndLoad(const std::string& text) {
    learnText(*matrix, text, false);
    save();
    load();
  }
  int count() {
    matrix->deleteMatrixUpdateInfos();
    int result = -1;
    matrix->readMatrixUpdateInfos(&result);
    return result;
  }
  auto record(int index) {
    return static_cast<std::remove_pointer_t<decltype(matrix->getMatrixInfo())>*>(matrix->getMatrixUpdateInfo(index));
  }
};
TYPED_TEST_SUITE(FileHistoryTest, LearningTiers);

TYPED_TEST(FileHistoryTest, GrowsByWhatChangedSinceTheLoad) {
  learnText(*this->matrix, "the dry harbour", false);
  this->save();
  EXPECT_EQ(this->count(), 0) << "only a load brings a history";
  this->load();
  EXPECT_EQ(this->count(), 1);
  EXPECT_EQ(this->record(0)->getMatrixID(), 1);
  EXPECT_EQ(std::string(this->record(0)->getUpdateSequence(), 15), "the dry harbour");
  EXPECT_EQ(this->record(0)->getLengthOfUpdateSequence(), 19) << "four rows of line feeds follow";
  this->matrix->getMatrixInfo(1)->setHasBeenChanged(0);
  this->matrix->setCurrentMatrixID(1);
  this->save();
  this->load();
  EXPECT_EQ(this->count(), 1) << "no new record, the old one is kept";
  learnText(*this->matrix, "two boats", false);
  this->save();
  this->save();
  this->load();
  EXPECT_EQ(this->count(), 2) << "a second save must not append the new record twice";
  EXPECT_EQ(std::string(this->record(1)->getUpdateSequence(), 9), "two boats");
  EXPECT_EQ(this->matrix->getNumberOfAppendedUpdates(), 2);
  this->matrix->setNumberOfAppendedUpdates(INT_MAX);  // a file may have this number
  learnText(*this->matrix, "two boats", false);
  EXPECT_EQ(this->matrix->getNumberOfAppendedUpdates(), INT_MIN);
  EXPECT_EQ(this->matrix->getMatrixFileHeader()->matrixHasBeenRead(), 1);
}

TYPED_TEST(FileHistoryTest, ScansReportWrongNumbersAndOffsets) {
  this->learnSaveAndLoad("the dry harbour");
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

// Deliberate: the file gets the offset that was in memory when the header was written.
TYPED_TEST(FileHistoryTest, ASaveWithoutHistoryKeepsTheStaleOffset) {
  this->learnSaveAndLoad("the dry harbour");
  const int offset = this->matrix->getOffsetToUpdateInfos();
  EXPECT_GT(offset, 2204);
  this->matrix->setCurrentMatrixID(1);
  this->matrix->setAddUpdateInfo(0);
  this->save();
  EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), 0);
  this->load();
  EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), offset);
}

// The name passed in is the header's own text, which the load overwrites.
TYPED_TEST(FileHistoryTest, AMatrixCanBeReadAgainFromWhereItCame) {
  this->learnSaveAndLoad("the dry harbour");
  ASSERT_EQ(this->matrix->readAndInitMatrixFromDisk(this->matrix->getMatrixOriginFilename(), -1), 1);
  EXPECT_EQ(this->matrix->getMatrixOriginFilename(), this->path);
  EXPECT_EQ(this->count(), 1);
}

// The header has the offset of the history as an int. If the offset is larger, it is 0 and the history follows the elements.
TYPED_TEST(FileHistoryTest, AFileTooLargeForTheOffsetKeepsItsHistory) {
  this->learnSaveAndLoad("the dry harbour");
  largestOffsetToUpdateInfos = 2000;
  for (int i = 2; i < 4; ++i) {
    this->learnSaveAndLoad("two boats");
    EXPECT_EQ(this->matrix->getOffsetToUpdateInfos(), 0);
    EXPECT_EQ(this->count(), i);
  }
  largestOffsetToUpdateInfos = INT_MAX;
  this->learnSaveAndLoad("two boats");
  EXPECT_EQ(this->count(), 4) << "kept when a later file has the offset again";
}

// A stale offset may point anywhere; what lies there is not taken for a history.
TYPED_TEST(FileHistoryTest, NothingBeforeTheEndOfTheElementsIsKeptAsHistory) {
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
