// The bytes of matrix files compared with a plain list of their fields: the present version, older ones, and lower tiers.
#include "file/MatrixUnderTest.h"
#include "file/PlainMatrixFile.h"
#include "settings/ZQMatrixFileNumbers.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class FileLayoutTest : public FileTest<Matrix> {};
TYPED_TEST_SUITE(FileLayoutTest, Tiers);

// The values of fields that a file is too old to have.
const std::map<std::string, long long>& valuesOfMissingFields() {
  static const std::map<std::string, long long> values = [] {
    std::map<std::string, long long> result = {{"numberOfAppendedUpdates", -1}, {"matrixInfoType", -1}, {"isOverDetermined", 1}};
    const std::pair<const char*, int> codes[] = {{"ocronType", 4},       {"ocronEndSymbol", 10},  {"ocronAlgorithm", 0},
                                                 {"gocronAlgorithm", 0}, {"gocronNumberBase", 0}, {"gocronASTERISKValue", 0},
                                                 {"gocronPValue", 1},    {"gocronTWOValue", 2},   {"gocronPOWValue", 3},
                                                 {"gocronQValue", 4}};
    int number = 0;
    for (const auto& [name, value] : codes) {
      result["code" + std::to_string(number++)] = value;
      for (const char* block : {"global.", "symbol."}) result[std::string(block) + name] = value;
    }
    for (const char* block : {"global.", "symbol.", ""}) {
      result[std::string(block) + "addSequenceToUpdateInfo"] = 0;
      result[std::string(block) + "addSequenceToUpdateInfoMode"] = 0;
    }
    return result;
  }();
  return values;
}

TYPED_TEST(FileLayoutTest, AFileComesBackByteForByte) {
  const plain::MatrixFile file(this->tier);
  EXPECT_EQ(file.place("updateInfoSize").offset, 2204u);
  EXPECT_EQ(file.place("global.matrixType").offset, 1356u);
  EXPECT_EQ(file.place("symbol.matrixType").offset, 1356u + 424u);
  ASSERT_EQ(this->load(file.bytes()), 1);
  expectEqualBytes(savedBytes(*this->matrix, this->folder), file.bytes());
}

TYPED_TEST(FileLayoutTest, OlderVersionsGetDefaultsForMissingFields) {
  const plain::MatrixFile present(this->tier);
  for (const int version : {83, 88, 89, 104, 105, 111, 112, 133, 134}) {
    const plain::MatrixFile old(this->tier, version);
    EXPECT_LT(old.bytes().size(), present.bytes().size() + 1);
    this->matrix.makeAnew();
    ASSERT_EQ(this->load(old.bytes()), 1) << version;
    EXPECT_EQ(slotsOf(*this->matrix).size(), 8u) << version;
    const std::string saved = savedBytes(*this->matrix, this->folder);
    std::map<std::string, long long> expected = valuesOfMissingFields();
    for (const plain::FieldPlace& field : old.numbers()) {
      expected[field.name] = plain::MatrixFile::numberAt(old.bytes(), field);
    }
    for (const plain::FieldPlace& field : present.numbers()) {
      if (field.name == "namesOfUpdateFiles.flag" && version < 134) break;  // from here on the offsets differ
      if (field.name == "timeStamp" || field.name == "updateInfoSize") continue;
      if (field.name == "softwareVersion" || field.name == "lastSoftwareVersion") expected[field.name] = 135;
      EXPECT_EQ(plain::MatrixFile::numberAt(saved, field), expected[field.name]) << field.name << " of version " << version;
    }
  }
}

TYPED_TEST(FileLayoutTest, AKernelLengthWithoutItsSequenceCountsZeros) {
  if constexpr (learns<TypeParam>) {
    const plain::MatrixFile file(this->tier);
    const size_t flag = file.place("kernelOriginal.flag").offset;
    std::string bytes = file.with("kernelOriginal.flag", 0);
    bytes.erase(flag + 4, 8);
    ASSERT_EQ(this->load(bytes), 1);
    ZQMatrixMediumInfo& info = *this->matrix->getMatrixInfo(0);
    EXPECT_EQ(info.getLengthOfKernelOriginalSequence(), 2);
    EXPECT_EQ(info.getKernelOriginalSequence()[0][1], 0);
    EXPECT_EQ(info.getKernelOriginalSequenceInitialValues()[0][1], 0);
    EXPECT_EQ(info.getKernelPreProcessedSequence()[0][0], 13) << "what follows stays in step";
  }
}

TYPED_TEST(FileLayoutTest, LowerTiersAreUpgradedAndHigherOnesRefused) {
  for (int tierOfFile = 0; tierOfFile <= 2; ++tierOfFile) {
    this->matrix.makeAnew();
    CapturedMessages messages(0);
    const int result = this->load(plain::MatrixFile(tierOfFile).bytes());
    if (tierOfFile > this->tier) {
      EXPECT_EQ(result, -1);
      EXPECT_EQ(slotsOf(*this->matrix).size(), 4u) << "an empty matrix is left";
      EXPECT_EQ(this->matrix->getMatrixFileHeader()->getMatrixInfoType(), this->tier);
      continue;
    }
    ASSERT_EQ(result, 1);
    EXPECT_EQ(this->matrix->getMatrixFileHeader()->getMatrixInfoType(), tierOfFile);
    EXPECT_EQ(this->matrix->getCurrentMatrixID(), tierOfFile < this->tier ? 3 : 0);
    const auto slots = slotsOf(*this->matrix);
    ASSERT_EQ(slots.size(), 8u);
    EXPECT_EQ(slots.at(6).value, 1LL << 40);
    EXPECT_EQ(slots.at(4).withoutPredecessor, tierOfFile >= 1 && this->tier >= 1 ? 1 : 0);
    for (int id = 0; id < 4; ++id) EXPECT_EQ(this->matrix->getMatrixInfo(id)->getUpdateInfoType(), this->tier);
    if constexpr (std::is_same_v<TypeParam, ZQMatrix>) {
      EXPECT_EQ(this->matrix->getMatrixInfo(0)->getNewSymbol(), tierOfFile == 2 ? 256 : 0);
      EXPECT_EQ(this->matrix->getMatrixInfo(0)->getCurrentMatrixIDLevelUp(), -1);
    }
    if constexpr (learns<TypeParam>) {
      EXPECT_EQ(this->matrix->getMatrixInfo(0)->getLengthOfKernelOriginalSequence(), tierOfFile >= 1 ? 2 : 0);
      EXPECT_EQ(this->matrix->getMatrixInfo(0)->getMaxPhraseLengthForUpdateWithSequence(), 64);
      EXPECT_EQ(this->matrix->getMatrixInfo(0)->getKernelOriginalSequenceInitialValues()[0][1], tierOfFile >= 1 ? 12 : 0);
    }
    const int vector[] = {1, 2, -1};
    EXPECT_EQ(this->matrix->getMatrixFileHeader()->getMaximalStack(), 8);
    this->matrix->setCurrentMatrixID(0);
    EXPECT_EQ(this->matrix->existMatrixData(vector, 3), 3);
  }
}

TEST(CreatorFromFileTest, TakesItsOwnTierOnlyWhateverTheVersion) {
  TestFolder folder;
  for (int tier = 0; tier <= 2; ++tier) {
    for (const int version : {83, 104, 105, 135}) {
      const std::string path = folder.put("m", plain::MatrixFile(tier, version).bytes());
      EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile(path.c_str()), tier);
      ZQMatrixBase* base = createAndInitMatrixBaseWithFile(path.c_str(), -1);
      ZQMatrixMedium* medium = createAndInitMatrixMediumWithFile(path.c_str(), -1);
      ZQMatrix* full = createAndInitMatrixWithFile(path.c_str(), -1);
      EXPECT_EQ(base != nullptr, tier == 0);
      EXPECT_EQ(medium != nullptr, tier == 1);
      EXPECT_EQ(full != nullptr, tier == 2);
      if (full != nullptr) {
        EXPECT_EQ(full->getMatrixFileHeader()->getMatrixInfoType(), 2);
      }
      deleteMatrixBase(base);
      deleteMatrixMedium(medium);
      deleteMatrix(full);
    }
  }
  EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile((folder.path() + "/none").c_str()), -2);
  EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile(folder.path().c_str()), -2);
  EXPECT_EQ(ZQMatrixFileHeader().getMatrixInfoTypeFromFile(folder.put("short", "zmatrix").c_str()), -1);
}

TEST(FileNumbersTest, AreLittleEndianAndSwapInPlace) {
  FILE* file = tmpfile();
  int16_t small = -2;
  int32_t middle = 0x01020304;
  int64_t large = 0x0102030405060708;
  EXPECT_EQ(zqFwriteShort(&small, file) + zqFwriteLong(&middle, file) + zqFwriteLongLong(&large, file), 3u);
  rewind(file);
  char bytes[14];
  ASSERT_EQ(fread(bytes, 1, sizeof bytes, file), sizeof bytes);
  EXPECT_EQ(std::string(bytes, sizeof bytes), std::string("\xfe\xff\4\3\2\1\10\7\6\5\4\3\2\1", 14));
  rewind(file);
  small = 0, middle = 0, large = 0;
  EXPECT_EQ(zqFreadShort(&small, file) + zqFreadLong(&middle, file) + zqFreadLongLong(&large, file), 3u);
  EXPECT_EQ(small, -2);
  EXPECT_EQ(middle, 0x01020304);
  EXPECT_EQ(large, 0x0102030405060708);
  EXPECT_EQ(zqFreadLong(&middle, file), 0u);
  fclose(file);
  small = 0x0102;
  zqSwapShort(&small);
  zqSwapLong(&middle);
  zqSwapLongLong(&large);
  EXPECT_EQ(small, 0x0201);
  EXPECT_EQ(middle, 0x04030201);
  EXPECT_EQ(large, 0x0807060504030201);
}

}  // namespace
