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
      {"lastSoftwareVersion", &ZQMatrixFileHeader::lastSoftwareVersion_, matrixFormatVersion},
      {"is64BitMatrix", &ZQMatrixFileHeader::is64BitMatrix_},
      {"maxNumberOfMatrices", &ZQMatrixFileHeader::maxNumberOfMatrices_, initialNumberOfMatrices},
      {"numberOfMatrices", &ZQMatrixFileHeader::numberOfMatrices_},
      {"matrixAILevel", &ZQMatrixFileHeader::matrixAiLevel_},
      {"offsetToUpdateInfos", &ZQMatrixFileHeader::offsetToUpdateInfos_},
      {"matrixBlockSize", &ZQMatrixFileHeader::matrixBlockSize_},
      {"matrixBlockSizeOld", &ZQMatrixFileHeader::matrixBlockSizeOld_},
      {"maximalStack", &ZQMatrixFileHeader::maximalStack_},
      {"numberMatrixUpdates", &ZQMatrixFileHeader::numberOfMatrixUpdates_},
      {"numberAppendedUpdates", &ZQMatrixFileHeader::numberOfAppendedUpdates_, notKnown, firstVersionWithInfoType},
      {"debugOutputDevice", &ZQMatrixFileHeader::matrixDebugOutputDevice_},
      {"userRandomValue", &ZQMatrixFileHeader::userRandomValue_, initialRandomValue},
      {"userRandomType", &ZQMatrixFileHeader::userRandomType_, 1},
      {"systemRandomValue", &ZQMatrixFileHeader::systemRandomValue_, initialRandomValue},
      {"systemRandomType", &ZQMatrixFileHeader::systemRandomType_, 1},
      {"matrixInfoType", &ZQMatrixFileHeader::matrixInfoType_, ZQMatrixInfoTypeBase, firstVersionWithInfoType},
  };
  return rows;
}

ZQMatrixFileHeader::~ZQMatrixFileHeader() {
  deInitFileHeader();
}

int ZQMatrixFileHeader::initFileHeader(int infoType) {
  deInitFileHeader();
  fileType_[0] = 0;
  matrixDescription_[0] = 0;
  for (const NumberRow& row : numberRows()) {
    row.member.visit(*this, [&row](auto& number) { number = row.initial; });
  }
  matrixInfoType_ = infoType;
  matrixDebugDirectory_[0] = 0;
  matrixOriginFilename_[0] = 0;
  matrixDestinationFilename_[0] = 0;
  fpUpdateInfosFileName_[0] = 0;
  initGlobalParameters();
  initGlobalSymbolParameters();
  return stopFlags_.assign(maxNumberOfMatrices_, 0) ? 1 : 0;
}

void ZQMatrixFileHeader::deInitFileHeader() {
  if (fpUpdateInfos_ != nullptr) fclose(fpUpdateInfos_);
  fpUpdateInfos_ = nullptr;
  stopFlags_.reset();
  deleteMatrixUpdateInfos();
}

void ZQMatrixFileHeader::closeAndRemoveUpdateInfos() {
  if (fpUpdateInfos_ != nullptr) {
    fclose(fpUpdateInfos_);
    if (fpUpdateInfosFileName_[0] != 0) remove(fpUpdateInfosFileName_);
  }
  fpUpdateInfos_ = nullptr;
  fpUpdateInfosFileName_[0] = 0;
}

void ZQMatrixFileHeader::deleteMatrixUpdateInfos() {
  matrixInfos_.reset();
}

void ZQMatrixFileHeader::setFileType(const char* text) {
  storeText(fileType_, sizeof fileType_, text);
}

void ZQMatrixFileHeader::setNumberOfMatrices(int number) {
  if (numberOfMatrices_ <= number && 0 < number && number <= maxNumberOfMatrices_) numberOfMatrices_ = number;
}

void ZQMatrixFileHeader::setMatrixAILevel(int level) {
  if (level == 0 || level == 1) matrixAiLevel_ = level;
}

void ZQMatrixFileHeader::setMatrixDebugOutputDevice(int device) {
  if (device < 0) device = 0;
  if (device > 3) device = 2;
  matrixDebugOutputDevice_ = device;
  ZQDebugChannel::globalDebugOutputDevice = device;
}

void ZQMatrixFileHeader::setMatrixDebugDirectory(const char* path) {
  if (path == nullptr) return;
  if (strlen(path) > longestDebugDirectory) path = "";
  storeText(matrixDebugDirectory_, sizeof matrixDebugDirectory_, path);
  if (matrixDebugDirectory_[0] == 0) storeText(matrixDebugDirectory_, sizeof matrixDebugDirectory_, workingDirectory);
  if (canWriteIn(matrixDebugDirectory_)) return;
  dbPrintf(0, "warning: setDebugDirectory to directory without write access! Current working directory will be used!\n");
  storeText(matrixDebugDirectory_, sizeof matrixDebugDirectory_, workingDirectory);
}

}  // namespace zmatrix
