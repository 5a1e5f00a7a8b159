// The codec of the header of a matrix file with its two blocks of global parameters: 2204 bytes in the current version.
#include "file/ZQFieldCodec.h"
#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"
#include "settings/ZQMatrixFileHeader.h"

namespace zmatrix {

namespace {

constexpr int oldestVersion = 83;
constexpr int highestAILevel = 1;

template <class Fields>
void describeBlock(Fields& fields, ZQMatrixProperties& block) {
  forEachBlockField(ZQMatrixInfoTypeFull, [&](const FieldRow& row) {
    if (!row.isSavedInBlocks()) return;
    if (row.kind == FieldRow::nameOfUpdateFile) {
      fields.text(block.nameOfUpdateFile, sizeof block.nameOfUpdateFile);
    } else if (row.kind == FieldRow::midiChannelFilter) {
      fields.bytes(block.midiChannelFilter, sizeof block.midiChannelFilter);
    } else {
      // Files older than the number codes leave those of the block unchanged.
      int& value = row.valueIn(block);
      fields.number(value, row.firstVersion, row.useInBlocks == FieldRow::numberCode ? value : row.initial);
    }
  });
}

}  // namespace

template <class Fields>
long long ZQMatrixFileHeader::describe(Fields& fields) {
  fields.text(fileType_, sizeof fileType_);
  fields.text(matrixDescription_, sizeof matrixDescription_);
  long long positionOfOffset = 0;
  for (const NumberRow& row : numberRows()) {
    if (row.member == &ZQMatrixFileHeader::offsetToUpdateInfos_) positionOfOffset = fields.getPosition();
    row.member.visit(*this, [&](auto& number) {
      fields.number(number, row.firstVersion, static_cast<std::decay_t<decltype(number)>>(notKnown));
    });
    if (row.member == &ZQMatrixFileHeader::lastSoftwareVersion_) fields.setVersion(lastSoftwareVersion_);
  }
  fields.text(matrixDebugDirectory_, sizeof matrixDebugDirectory_);
  fields.text(matrixOriginFilename_, sizeof matrixOriginFilename_);
  fields.text(matrixDestinationFilename_, sizeof matrixDestinationFilename_);
  describeBlock(fields, globalParameters_);
  describeBlock(fields, globalSymbolParameters_);
  return positionOfOffset;
}

long long ZQMatrixFileHeader::writeFileHeader(ZQFileWriter& file) {
  lastSoftwareVersion_ = matrixFormatVersion;
  ZQFieldWriter fields(file);
  return describe(fields);
}

int ZQMatrixFileHeader::readFileHeader(ZQFileReader& file) {
  ZQFieldReader fields(file);
  describe(fields);
  const bool isMatrixFile = memcmp(fileType_, matrixFileType, sizeof fileType_) == 0;
  fileType_[sizeof fileType_ - 1] = 0;
  matrixDescription_[sizeof matrixDescription_ - 1] = 0;
  matrixDebugDirectory_[sizeof matrixDebugDirectory_ - 1] = 0;
  matrixOriginFilename_[sizeof matrixOriginFilename_ - 1] = 0;
  matrixDestinationFilename_[sizeof matrixDestinationFilename_ - 1] = 0;
  // A truncated header is rejected.
  if (!isMatrixFile || (!fields.isSound() && lastSoftwareVersion_ >= oldestVersion)) {
    dbPrintf(0, "ReadFileHeader: this is not a valid matrix file\n");
    return -1;
  }
  if (is64BitMatrix_ == 1) {
    dbPrintf(0, "ReadFileHeader:Cannot read 64Bit version of matrix file\n");
    return -1;
  }
  if (matrixBlockSize_ < 1 || maximalStack_ < 1) {
    dbPrintf(0, "ReadFileHeader: this is not a valid matrix file (illegal blockSIze or stackSize)\n");
    return -1;
  }
  reportUnusualNumbers();
  if (lastSoftwareVersion_ < oldestVersion) {
    dbPrintf(0, "ReadFileHeader: cannot read matrix file with old format version: %d: %d\n", lastSoftwareVersion_, oldestVersion);
    return -1;
  }
  // Closes the history of the file that was read before.
  if (fpUpdateInfos_ != nullptr) fclose(fpUpdateInfos_);
  fpUpdateInfos_ = nullptr;
  fpUpdateInfosFileName_[0] = 0;
  return 1;
}

/// These numbers don't refuse a file.
void ZQMatrixFileHeader::reportUnusualNumbers() const {
  if (numberOfMatrices_ > initialNumberOfMatrices) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix file contains more matrices than default (%d)\n", numberOfMatrices_);
  }
  if (maxNumberOfMatrices_ > initialNumberOfMatrices) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix file reserves memory for more matrices than default (%d)\n",
             maxNumberOfMatrices_);
  }
  if (static_cast<unsigned>(matrixAiLevel_) > highestAILevel) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix AI level is illegal or higher than this software version allows (%d)\n",
             matrixAiLevel_);
  }
  if (numberOfMatrixUpdates_ <= 0) dbPrintf(0, "ReadFileHeader: illegal number of matrix updates: %d\n", numberOfMatrixUpdates_);
  if (numberOfAppendedUpdates_ < 0) {
    dbPrintf(0, "ReadFileHeader: illegal number of appended updates: %d\n", numberOfAppendedUpdates_);
  }
}

int ZQMatrixFileHeader::getMatrixInfoTypeFromFile(const char* path) {
  FILE* stream = openRegularFile(path);
  if (stream == nullptr) return -2;
  ZQFileReader file(stream);
  ZQMatrixFileHeader header;
  header.matrixInfoType_ = notKnown;
  header.readFileHeader(file);
  int infoType = header.matrixInfoType_;
  if (static_cast<unsigned>(infoType) > ZQMatrixInfoTypeFull) {  // older files have the type in their first record only
    file.get<int>();
    const int magic = file.get<int>();
    infoType = file.get<int>();
    if (magic != matrixInfoMagicNumber) {
      dbPrintf(0, "error getMatrixInfoTypeFromFile: illegal magicNumber!\n");
      infoType = -1;
    } else if (static_cast<unsigned>(infoType) > ZQMatrixInfoTypeFull) {
      dbPrintf(0, "error getMatrixInfoTypeFromFile: illegal matrixInfoTypemagicNumber!\n");
      infoType = -1;
    }
  }
  fclose(stream);
  return infoType;
}

}  // namespace zmatrix
