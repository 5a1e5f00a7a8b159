#include "settings/ZQMatrixFileHeader.h"

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"

namespace zmatrix {

namespace {

constexpr int longestDebugDirectory = 247;
constexpr char workingDirectory[] = "./";
constexpr char probeFile[] = "._y13xpq";

bool canWriteIn(const char* directory) {
  char probeName[longestDebugDirectory + 2 + sizeof probeFile];
  const size_t length = strlen(directory);
  const char* separator = length > 0 && directory[length - 1] == '/' ? "" : "/";
  snprintf(probeName, sizeof probeName, "%s%s%s", directory, separator, probeFile);
  FILE* probe = fopen(probeName, "wb");
  if (probe == nullptr) return false;
  fclose(probe);
  remove(probeName);
  return true;
}

void setBlockToDefaults(ZQMatrixProperties& block, int FieldRow::*initial) {
  forEachBlockField(ZQMatrixInfoTypeFull, [&](const FieldRow& row) {
    if (row.kind == FieldRow::number && row.isSavedInBlocks()) row.valueIn(block) = row.*initial;
  });
  memset(block.nameOfUpdateFile, 0, sizeof block.nameOfUpdateFile);
  memset(block.midiChannelFilter, 0, sizeof block.midiChannelFilter);
}

}  // namespace

void storeUnterminatedText(char* field, int capacity, const char* text) {
  if (text == nullptr || text == field) return;
  int length = 0;
  while (length < capacity && text[length] != 0) ++length;
  memmove(field, text, static_cast<size_t>(length));
  memset(field + length, 0, static_cast<size_t>(capacity - length));
}

void storeText(char* field, int capacity, const char* text) {
  if (text == nullptr) return;
  storeUnterminatedText(field, capacity - 1, text);
  field[capacity - 1] = 0;
}

void storeNameOfUpdateFile(ZQMatrixProperties& block, const char* name) {
  storeUnterminatedText(block.nameOfUpdateFile, sizeof block.nameOfUpdateFile, name);
}

void storeMidiChannelFilter(ZQMatrixProperties& block, const char* channels) {
  if (channels != nullptr) memmove(block.midiChannelFilter, channels, sizeof block.midiChannelFilter);
}

void setDefaultParameters(ZQMatrixProperties& block) {
  setBlockToDefaults(block, &FieldRow::initial);
}

void setDefaultSymbolParameters(ZQMatrixProperties& block) {
  setBlockToDefaults(block, &FieldRow::initialForSymbols);
}

std::span<const ZQMatrixFileHeader::NumberRow> ZQMatrixFileHeader::numberRows() noexcept {
  static constexpr NumberRow rows[] = {
      {"lastSoftwareVersion", &ZQMatrixFileHeader::lastSoftwareVersion, matrixFormatVersion},
      {"is64BitMatrix", &ZQMatrixFileHeader::is64BitMatrix},
      {"maxNumberOfMatrices", &ZQMatrixFileHeader::maxNumberOfMatrices, initialNumberOfMatrices},
      {"numberOfMatrices", &ZQMatrixFileHeader::numberOfMatrices},
      {"matrixAILevel", &ZQMatrixFileHeader::matrixAILevel},
      {"offsetToUpdateInfos", &ZQMatrixFileHeader::offsetToUpdateInfos},
      {"matrixBlockSize", &ZQMatrixFileHeader::matrixBlockSize},
      {"matrixBlockSizeOld", &ZQMatrixFileHeader::matrixBlockSizeOld},
      {"maximalStack", &ZQMatrixFileHeader::maximalStack},
      {"numberMatrixUpdates", &ZQMatrixFileHeader::numberOfMatrixUpdates},
      {"numberAppendedUpdates", &ZQMatrixFileHeader::numberOfAppendedUpdates, notKnown, firstVersionWithInfoType},
      {"debugOutputDevice", &ZQMatrixFileHeader::matrixDebugOutputDevice},
      {"userRandomValue", &ZQMatrixFileHeader::userRandomValue, initialRandomValue},
      {"userRandomType", &ZQMatrixFileHeader::userRandomType, 1},
      {"systemRandomValue", &ZQMatrixFileHeader::systemRandomValue, initialRandomValue},
      {"systemRandomType", &ZQMatrixFileHeader::systemRandomType, 1},
      {"matrixInfoType", &ZQMatrixFileHeader::matrixInfoType, ZQMatrixInfoTypeBase, firstVersionWithInfoType},
  };
  return rows;
}

ZQMatrixFileHeader::~ZQMatrixFileHeader() {
  deInitFileHeader();
}

int ZQMatrixFileHeader::initFileHeader(int infoType) {
  deInitFileHeader();
  fileType[0] = 0;
  matrixDescription[0] = 0;
  for (const NumberRow& row : numberRows()) {
    row.member.visit(*this, [&row](auto& number) { number = row.initial; });
  }
  matrixInfoType = infoType;
  matrixDebugDirectory[0] = 0;
  matrixOriginFilename[0] = 0;
  matrixDestinationFilename[0] = 0;
  fpUpdateInfosFileName[0] = 0;
  initGlobalParameters();
  initGlobalSymbolParameters();
  return stopFlags.assign(maxNumberOfMatrices, 0) ? 1 : 0;
}

void ZQMatrixFileHeader::deInitFileHeader() {
  if (fpUpdateInfos != nullptr) fclose(fpUpdateInfos);
  fpUpdateInfos = nullptr;
  stopFlags.reset();
  deleteMatrixUpdateInfos();
}

void ZQMatrixFileHeader::closeAndRemoveUpdateInfos() {
  if (fpUpdateInfos != nullptr) {
    fclose(fpUpdateInfos);
    if (fpUpdateInfosFileName[0] != 0) remove(fpUpdateInfosFileName);
  }
  fpUpdateInfos = nullptr;
  fpUpdateInfosFileName[0] = 0;
}

void ZQMatrixFileHeader::deleteMatrixUpdateInfos() {
  _matrixInfos.reset();
}

void ZQMatrixFileHeader::setFileType(const char* text) {
  storeText(fileType, sizeof fileType, text);
}

void ZQMatrixFileHeader::setNumberOfMatrices(int number) {
  if (numberOfMatrices <= number && 0 < number && number <= maxNumberOfMatrices) numberOfMatrices = number;
}

void ZQMatrixFileHeader::setMatrixAILevel(int level) {
  if (level == 0 || level == 1) matrixAILevel = level;
}

void ZQMatrixFileHeader::setMatrixDebugOutputDevice(int device) {
  if (device < 0) device = 0;
  if (device > 3) device = 2;
  matrixDebugOutputDevice = device;
  ZQDebugChannel::globalDebugOutputDevice = device;
}

void ZQMatrixFileHeader::setMatrixDebugDirectory(const char* path) {
  if (path == nullptr) return;
  if (strlen(path) > longestDebugDirectory) path = "";
  storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, path);
  if (matrixDebugDirectory[0] == 0) storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, workingDirectory);
  if (canWriteIn(matrixDebugDirectory)) return;
  dbPrintf(0, "warning: setDebugDirectory to directory without write access! Current working directory will be used!\n");
  storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, workingDirectory);
}

}  // namespace zmatrix
