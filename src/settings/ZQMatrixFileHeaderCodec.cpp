// The header of a matrix file with its two blocks of global parameters: 2204 bytes in the present version.
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
      // Where a file is older than number codes the block keeps what it has.
      int& value = row.valueIn(block);
      fields.number(value, row.firstVersion, row.useInBlocks == FieldRow::numberCode ? value : row.initial);
    }
  });
}

}  // namespace

template <class Fields>
long long ZQMatrixFileHeader::describe(Fields& fields) {
  fields.text(fileType, sizeof fileType);
  fields.text(matrixDescription, sizeof matrixDescription);
  long long positionOfOffset = 0;
  for (const NumberRow& row : numberRows()) {
    if (row.member == &ZQMatrixFileHeader::offsetToUpdateInfos) positionOfOffset = fields.getPosition();
    row.member.visit(*this, [&](auto& number) {
      fields.number(number, row.firstVersion, static_cast<std::decay_t<decltype(number)>>(notKnown));
    });
    if (row.member == &ZQMatrixFileHeader::lastSoftwareVersion) fields.setVersion(lastSoftwareVersion);
  }
  fields.text(matrixDebugDirectory, sizeof matrixDebugDirectory);
  fields.text(matrixOriginFilename, sizeof matrixOriginFilename);
  fields.text(matrixDestinationFilename, sizeof matrixDestinationFilename);
  describeBlock(fields, globalParameters);
  describeBlock(fields, globalSymbolParameters);
  return positionOfOffset;
}

long long ZQMatrixFileHeader::writeFileHeader(ZQFileWriter& file) {
  lastSoftwareVersion = matrixFormatVersion;
  ZQFieldWriter fields(file);
  return describe(fields);
}

int ZQMatrixFileHeader::readFileHeader(ZQFileReader& file) {
  ZQFieldReader fields(file);
  describe(fields);
  const bool isMatrixFile = memcmp(fileType, matrixFileType, sizeof fileType) == 0;
  fileType[sizeof fileType - 1] = 0;
  matrixDescription[sizeof matrixDescription - 1] = 0;
  matrixDebugDirectory[sizeof matrixDebugDirectory - 1] = 0;
  matrixOriginFilename[sizeof matrixOriginFilename - 1] = 0;
  matrixDestinationFilename[sizeof matrixDestinationFilename - 1] = 0;
  // A truncated header is rejected.
  if (!isMatrixFile || (!fields.isSound() && lastSoftwareVersion >= oldestVersion)) {
    dbPrintf(0, "ReadFileHeader: this is not a valid matrix file\n");
    return -1;
  }
  if (is64BitMatrix == 1) {
    dbPrintf(0, "ReadFileHeader:Cannot read 64Bit version of matrix file\n");
    return -1;
  }
  if (matrixBlockSize < 1 || maximalStack < 1) {
    dbPrintf(0, "ReadFileHeader: this is not a valid matrix file (illegal blockSIze or stackSize)\n");
    return -1;
  }
  if (numberOfMatrices > initialNumberOfMatrices) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix file contains more matrices than default (%d)\n", numberOfMatrices);
  }
  if (maxNumberOfMatrices > initialNumberOfMatrices) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix file reserves memory for more matrices than default (%d)\n",
             maxNumberOfMatrices);
  }
  if (static_cast<unsigned>(matrixAILevel) > highestAILevel) {
    dbPrintf(0, "ReadFileHeader:Warning: this matrix AI level is illegal or higher than this software version allows (%d)\n",
             matrixAILevel);
  }
  if (numberOfMatrixUpdates <= 0) dbPrintf(0, "ReadFileHeader: illegal number of matrix updates: %d\n", numberOfMatrixUpdates);
  if (numberOfAppendedUpdates < 0) {
    dbPrintf(0, "ReadFileHeader: illegal number of appended updates: %d\n", numberOfAppendedUpdates);
  }
  if (lastSoftwareVersion < oldestVersion) {
    dbPrintf(0, "ReadFileHeader: cannot read matrix file with old format version: %d: %d\n", lastSoftwareVersion, oldestVersion);
    return -1;
  }
  // The records of the file read before are not this file's.
  if (fpUpdateInfos != nullptr) fclose(fpUpdateInfos);
  fpUpdateInfos = nullptr;
  fpUpdateInfosFileName[0] = 0;
  return 1;
}

int ZQMatrixFileHeader::getMatrixInfoTypeFromFile(const char* path) {
  FILE* stream = openRegularFile(path);
  if (stream == nullptr) return -2;
  ZQFileReader file(stream);
  ZQMatrixFileHeader header;
  header.matrixInfoType = notKnown;
  header.readFileHeader(file);
  int infoType = header.matrixInfoType;
  if (static_cast<unsigned>(infoType) > ZQMatrixInfoTypeFull) {  // older files have it in their first record
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
