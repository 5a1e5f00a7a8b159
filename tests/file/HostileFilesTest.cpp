// Broken and hostile files: cut anywhere, any number changed, bits turned. A load says 1 or -1, and what is left can be used like
// any matrix; the sanitizers watch.
#include "file/MatrixUnderTest.h"
#include "file/PlainMatrixFile.h"
#include "frame/ZQMemory.h"
#include "support/UseMatrix.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class HostileTest : public FileTest<Matrix> {
 public:
  /// Loads into what the last load has left, and uses it; the result of the load.
  int tryOut(const std::string& bytes, int matricesToUse = 2) {
    const int result = this->load(bytes);
    EXPECT_TRUE(result == 1 || result == -1);
    EXPECT_EQ(faultsOfLinks(*this->matrix), "");
    if (matricesToUse > 0) useMatrix(*this->matrix, this->folder.path() + "/used.zmatrix", matricesToUse);
    return result;
  }

  /// Each link of each element, held against what it leads to.
  static std::string faultsOfLinks(const Matrix& matrix) {
    const int roots = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices();
    const auto slots = slotsOf(matrix);
    for (const auto& [position, element] : slots) {
      const std::string where = " of " + std::to_string(position);
      const auto at = [&slots, here = position](int offset) { return slots.find(here + offset); };
      if (element.child != 0 && (at(element.child) == slots.end() || at(element.child)->second.parent != -element.child)) {
        return "child" + where;
      }
      if (element.next != 0 && (at(element.next) == slots.end() || at(element.next)->second.previous != -element.next)) {
        return "next" + where;
      }
      if (position < roots) continue;
      if (element.parent == 0 || at(element.parent) == slots.end()) return "parent" + where;
      int steps = 0;
      long long up = position;
      while (up >= roots && ++steps <= static_cast<int>(slots.size())) up += slots.at(static_cast<int>(up)).parent;
      if (up >= roots) return "circle" + where;
    }
    return "";
  }
};
TYPED_TEST_SUITE(HostileTest, Tiers);

TYPED_TEST(HostileTest, CutAtEveryByte) {
  const plain::MatrixFile file(this->tier);
  const std::string& bytes = file.bytes();
  const size_t endOfHeader = file.place("updateInfoSize").offset;
  for (size_t length = 0; length < bytes.size(); ++length) {
    // A header is one thing; from there on the file is only short.
    if (length < endOfHeader && length % 97 != 0) continue;
    EXPECT_EQ(this->tryOut(bytes.substr(0, length), length % 7 == 0 ? 2 : 0), length < endOfHeader ? -1 : 1) << length;
  }
}

TYPED_TEST(HostileTest, EachNumberAtItsWorst) {
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

TYPED_TEST(HostileTest, TurnedBytes) {
  std::mt19937 random(20);
  const std::string bytes = plain::MatrixFile(this->tier).bytes();
  for (int i = 0; i < 150; ++i) {
    std::string broken = bytes;
    for (size_t changes = 1 + random() % 6; changes > 0; --changes) {
      // Seven in eight fall behind the header, where there is more to break.
      const size_t from = random() % 8 == 0 ? 512 : 2204;
      broken[from + random() % (broken.size() - from)] = static_cast<char>(random() % 3 == 0 ? 255 : random());
    }
    // A huge block is legal, and tried elsewhere.
    if (plain::MatrixFile::numberAt(broken, {"matrixBlockSize", 536, 4}) > 1000000) continue;
    SCOPED_TRACE(i);
    this->tryOut(broken);
  }
}

TYPED_TEST(HostileTest, BlockSizesUpToTheCapAreHonoured) {
  const plain::MatrixFile file(this->tier);
  EXPECT_EQ(this->tryOut(file.with("matrixBlockSize", 134217729)), -1);
  EXPECT_EQ(this->tryOut(file.with("matrixBlockSize", 3)), -1) << "no room for the roots";
  OwnedMatrix<TypeParam> fresh;
  const std::string path = this->folder.put("m", file.with("matrixBlockSize", 134217728));
  EXPECT_EQ(this->loadInto(fresh, path), 1);
  EXPECT_EQ(fresh->getMatrixFileHeader()->getMatrixBlockSize(), 134217728);
  largestAllocation = 100000000;
  EXPECT_EQ(this->loadInto(fresh, path), -1);
  largestAllocation = static_cast<size_t>(-1);
  EXPECT_EQ(slotsOf(*fresh).size(), 4u);
}

TYPED_TEST(HostileTest, AFileAsksForNoMoreMemoryThanItsSizeAllows) {
  const plain::MatrixFile file(this->tier);
  largestAllocation = 32 << 20;  // the granted sum for a small file, and some
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

TYPED_TEST(HostileTest, ElementsThatNoRootLeadsToAreDropped) {
  const plain::MatrixFile file(this->tier);
  const auto survivors = [&](const std::string& bytes) {
    OwnedMatrix<TypeParam> fresh;
    EXPECT_EQ(this->loadInto(fresh, this->folder.put("m", bytes)), 1);
    EXPECT_EQ(this->faultsOfLinks(*fresh), "");
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
  } cases[] = {{"run", -1, {4, 5, 6, 8}, "as it is"},
               {"element8.parent", 3, {4, 6}, "outside the block, with its child"},
               {"element8.parent", -3, {4, 6}, "below its child"},
               {"element6.index", 4, {4, 5, 8}, "at no place of its field"},
               {"element4.child", 77, {4, 5, 6, 8}, "the children tell their parent"},
               {"element0.child", 0, {4, 5, 6, 8}, "the same"},
               {"element6.previous", -1, {4, 5, 6, 8}, "the field is told by next"},
               {"element1.parent", 3, {4, 5, 6, 8}, "a root has no parent"}};
  for (const auto& c : cases) EXPECT_EQ(survivors(file.with(c.field, c.value)), c.survivors) << c.field << ": " << c.why;
  std::string circle = file.with("element4.child", 0);  // 5 and 8 lead to each other, and nothing else to them
  for (const auto& [field, value] : {std::pair{"element5.child", 3}, {"element8.parent", -3}}) {
    const size_t offset = file.place(field).offset;
    circle.replace(offset, sizeof(int), file.with(field, value), offset, sizeof(int));
  }
  EXPECT_EQ(survivors(circle), (Vector{4, 6}));
}

TEST(LevelLinkTest, LinksThatLeadNowhereAreCut) {
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

TYPED_TEST(HostileTest, ARefusedHeaderLeavesTheOldContent) {
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
    const std::string path = this->folder.path() + "/stands";
    EXPECT_EQ(fresh->saveMatrixToDisk(path.c_str()), 1);
    EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile(path.c_str()), this->tier);
    EXPECT_EQ(this->matrix->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
    EXPECT_EQ(slotsOf(*this->matrix), before);
  }
}

}  // namespace
