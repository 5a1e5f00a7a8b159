// Broken and hostile files: cut at each byte, each number changed, random bytes. A load returns 1 or -1, and afterwards the
// matrix can be used.
#include "file/MatrixUnderTest.h"
#include "file/PlainMatrixFile.h"
#include "frame/ZQMemory.h"
#include "support/UseMatrix.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class HostileFilesTest : public FileTest<Matrix> {
 public:
  /// Loads into the matrix of the last load, uses it, and returns the result of the load.
  int tryOut(const std::string& bytes, int matricesToUse = 2) {
    const int result = this->load(bytes);
    EXPECT_TRUE(result == 1 || result == -1);
    EXPECT_EQ(brokenInvariant(*this->matrix, false), "");
    if (matricesToUse > 0) useMatrix(*this->matrix, this->folder.path() + "/used.zmatrix", matricesToUse);
    return result;
  }
};
TYPED_TEST_SUITE(HostileFilesTest, Tiers);

TYPED_TEST(HostileFilesTest, FilesCutAtAnyByteAreRefusedOrLoaded) {
  const plain::MatrixFile file(this->tier);
  const std::string& bytes = file.bytes();
  const size_t endOfHeader = file.place("updateInfoSize").offset;
  for (size_t length = 0; length < bytes.size(); ++length) {
    // A truncated header is rejected; any longer file is loaded. Not every cut of the header is tried.
    if (length < endOfHeader && length % 97 != 0) continue;
    EXPECT_EQ(this->tryOut(bytes.substr(0, length), length % 7 == 0 ? 2 : 0), length < endOfHeader ? -1 : 1) << length;
  }
}

TYPED_TEST(HostileFilesTest, AnyValueInAnyFieldIsSafe) {
  const plain::MatrixFile file(this->tier);
  for (const plain::FieldPlace& field : file.numbers()) {
    const long long value = plain::MatrixFile::numberAt(file.bytes(), field);
    const bool isSetting = field.offset >= 1356 && field.offset < 2204;
    for (const long long other : {0LL, -1LL, 0x7fffffffLL, value + 1, -0x80000000LL, value - 1, 65LL}) {
      if (isSetting && other == value + 1) break;
      SCOPED_TRACE(field.name + " = " + std::to_string(other));
      this->tryOut(file.with(field, other), 1);
    }
    if (this->HasFailure()) return;
  }
}

TYPED_TEST(HostileFilesTest, RandomBytesAreSafe) {
  std::mt19937 random(20);
  const std::string bytes = plain::MatrixFile(this->tier).bytes();
  for (int i = 0; i < 150; ++i) {
    std::string broken = bytes;
    for (size_t changes = 1 + random() % 6; changes > 0; --changes) {
      // Seven of eight changes lie behind the header.
      const size_t from = random() % 8 == 0 ? 512 : 2204;
      broken[from + random() % (broken.size() - from)] = static_cast<char>(random() % 3 == 0 ? 255 : random());
    }
    // A huge block is legal; another case tries it.
    if (plain::MatrixFile::numberAt(broken, {"matrixBlockSize", 536, 4}) > 1000000) continue;
    SCOPED_TRACE(i);
    this->tryOut(broken);
  }
}

TYPED_TEST(HostileFilesTest, BlockSizesUpToTheCapAreHonoured) {
  const plain::MatrixFile file(this->tier);
  EXPECT_EQ(this->tryOut(file.with("matrixBlockSize", 134217729)), -1);
  EXPECT_EQ(this->tryOut(file.with("matrixBlockSize", 3)), -1) << "no room for the roots";
  OwnedMatrix<TypeParam> fresh;
  this->folder.put("model.zmatrix", file.with("matrixBlockSize", 134217728));
  EXPECT_EQ(this->loadInto(fresh, this->path), 1);
  EXPECT_EQ(fresh->getMatrixFileHeader()->getMatrixBlockSize(), 134217728);
  largestAllocation = 100000000;
  EXPECT_EQ(this->loadInto(fresh, this->path), -1);
  largestAllocation = static_cast<size_t>(-1);
  EXPECT_EQ(slotsOf(*fresh).size(), 4u);
}

TYPED_TEST(HostileFilesTest, AFileGetsNoMoreMemoryThanItsSizeAllows) {
  const plain::MatrixFile file(this->tier);
  largestAllocation = 32 << 20;  // more than a small file may take
  std::vector<const char*> names = {"maxNumberOfMatrices", "numberOfMatrices",         "maximalStack",
                                    "currentDimension",    "internalCurrentDimension", "internalLengthOfTemporaryMemory",
                                    "coordinateDimension", "numberOfMatrixElements"};
  if (this->tier >= 1) {
    names.insert(names.end(), {"lengthOfKernelOriginal", "internalLengthOfKernelOriginal", "lengthOfUpdateSequence",
                               "internalLengthOfKernelPreProcessed", "namesOfUpdateFiles.length"});
  }
  for (const char* name : names) {
    for (const int value : {1000000, 100000000, INT_MAX}) {
      SCOPED_TRACE(std::string(name) + " = " + std::to_string(value));
      OwnedMatrix<TypeParam> fresh;
      const int result = this->loadInto(fresh, this->folder.put("m", file.with(name, value)));
      EXPECT_NE(result, 0);
      EXPECT_LE(fresh->getMatrixFileHeader()->getMaximalStack(), 300) << result;
    }
  }
  largestAllocation = static_cast<size_t>(-1);
}

TYPED_TEST(HostileFilesTest, UnreachableElementsAreDropped) {
  const plain::MatrixFile file(this->tier);
  const auto survivors = [&](const std::string& bytes) {
    OwnedMatrix<TypeParam> fresh;
    EXPECT_EQ(this->loadInto(fresh, this->folder.put("m", bytes)), 1);
    EXPECT_EQ(brokenInvariant(*fresh, false), "");
    std::vector<int> positions;
    for (const auto& [position, element] : slotsOf(*fresh)) {
      if (position >= 4) positions.push_back(position);
    }
    return positions;
  };
  const struct {
    const char* field;
    int value;
    Vector survivors;
    const char* why;
  } cases[] = {{"run", -1, {4, 5, 6, 8}, "unchanged"},
               {"element8.parent", 3, {4, 6}, "outside the block, with its child"},
               {"element8.parent", -3, {4, 6}, "below its child"},
               {"element6.index", 4, {4, 5, 8}, "not in its field"},
               {"element4.child", 77, {4, 5, 6, 8}, "the parent links of the children decide"},
               {"element0.child", 0, {4, 5, 6, 8}, "the same"},
               {"element6.previous", -1, {4, 5, 6, 8}, "the next links decide"},
               {"element1.parent", 3, {4, 5, 6, 8}, "a root has no parent"}};
  for (const auto& c : cases) EXPECT_EQ(survivors(file.with(c.field, c.value)), c.survivors) << c.field << ": " << c.why;
  std::string cycle = file.with("element4.child", 0);  // 5 and 8 are each other's child and parent
  for (const auto& [field, value] : {std::pair{"element5.child", 3}, {"element8.parent", -3}}) {
    const size_t offset = file.place(field).offset;
    cycle.replace(offset, sizeof(int), file.with(field, value), offset, sizeof(int));
  }
  EXPECT_EQ(survivors(cycle), (Vector{4, 6}));
}

TEST(LevelLinkTest, InvalidLinksAreRemoved) {
  const plain::MatrixFile file(2);
  TestFolder folder;
  for (const int link : {0, 4, 77, INT_MAX, -2}) {
    OwnedMatrix<ZQMatrix> matrix;
    ASSERT_EQ(matrix->readAndInitMatrixFromDisk(folder.put("m", file.with("levelUp", link)).c_str(), -1), 1);
    EXPECT_EQ(matrix->getMatrixInfo(0)->getCurrentMatrixIDLevelUp(), -1);
    EXPECT_EQ(matrix->getLoadReport().state, zq_loadRepaired);
  }
  OwnedMatrix<ZQMatrix> matrix;
  ASSERT_EQ(matrix->readAndInitMatrixFromDisk(folder.put("m", file.with("levelUp", 3)).c_str(), -1), 1);
  EXPECT_EQ(matrix->getMatrixInfo(0)->getCurrentMatrixIDLevelUp(), 3);
}

TYPED_TEST(HostileFilesTest, ARefusedHeaderLeavesTheOldContent) {
  OwnedMatrix<TypeParam> fresh;
  fillAtRandom(*fresh, 5, 200);
  const auto before = slotsOf(*fresh);
  const plain::MatrixFile file(this->tier);
  for (const std::string& bytes :
       {file.with("is64BitMatrix", 1), file.with("lastSoftwareVersion", 82), std::string("zmatrix"), std::string(3000, 'x'),
        file.with("maxNumberOfMatrices", 1000000), plain::MatrixFile((this->tier + 1) % 3).with("matrixBlockSize", 0)}) {
    EXPECT_EQ(this->loadInto(fresh, this->folder.put("m", bytes)), -1);
    EXPECT_EQ(slotsOf(*fresh), before);
    EXPECT_EQ(fresh->getMatrixFileHeader()->getMatrixBlockSize(), 64000);
    EXPECT_EQ(fresh->getMaxNumberOfMatrices(), 4);
    EXPECT_EQ(this->saveTo(this->path, fresh), 1);
    EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile(this->path.c_str()), this->tier);
    EXPECT_EQ(this->loadInto(this->matrix, this->path), 1);
    EXPECT_EQ(slotsOf(*this->matrix), before);
  }
}

}  // namespace
