#include "settings/ZQMatrixFileHeader.h"

#include "frame/ZQDebugChannel.h"

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

}  // namespace

void zmatrix::storeUnterminatedText(char* field, int capacity, const char* text) {
  if (text == nullptr || text == field) return;
  int length = 0;
  while (length < capacity && text[length] != 0) ++length;
  memmove(field, text, static_cast<size_t>(length));
  memset(field + length, 0, static_cast<size_t>(capacity - length));
}

void zmatrix::storeText(char* field, int capacity, const char* text) {
  if (text == nullptr) return;
  storeUnterminatedText(field, capacity - 1, text);
  field[capacity - 1] = 0;
}

void zmatrix::setDefaultParameters(ZQMatrixProperties& block) {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) block.name = static_cast<type>(initial);
#define ZQ_TEXT_SETTING(name, Name, bytes) memset(block.name, 0, bytes);
#define ZQ_BYTES_SETTING(name, Name, bytes) memset(block.name, 0, bytes);
#include "settings/ZQMatrixSettings.def"
}

void zmatrix::setDefaultSymbolParameters(ZQMatrixProperties& block) {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) block.name = static_cast<type>(symbolInitial);
#define ZQ_TEXT_SETTING(name, Name, bytes) memset(block.name, 0, bytes);
#define ZQ_BYTES_SETTING(name, Name, bytes) memset(block.name, 0, bytes);
#include "settings/ZQMatrixSettings.def"
}

ZQMatrixFileHeader::~ZQMatrixFileHeader() {
  deInitFileHeader();
}

int ZQMatrixFileHeader::initFileHeader(int infoType) {
  deInitFileHeader();
  fileType[0] = 0;
  matrixDescription[0] = 0;
  lastSoftwareVersion = zmatrix::matrixFormatVersion;
  is64BitMatrix = 0;
  maxNumberOfMatrices = zmatrix::initialNumberOfMatrices;
  numberOfMatrices = 0;
  matrixAILevel = 0;
  offsetToUpdateInfos = 0;
  matrixBlockSize = 0;
  matrixBlockSizeOld = 0;
  maximalStack = 0;
  numberOfMatrixUpdates = 0;
  numberOfAppendedUpdates = -1;
  matrixDebugOutputDevice = 0;
  userRandomValue = systemRandomValue = zmatrix::initialRandomValue;
  userRandomType = systemRandomType = 1;
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
  zmatrix::storeText(fileType, sizeof fileType, text);
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
  zmatrix::storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, path);
  if (matrixDebugDirectory[0] == 0) zmatrix::storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, workingDirectory);
  if (canWriteIn(matrixDebugDirectory)) return;
  dbPrintf(0, "warning: setDebugDirectory to directory without write access! Current working directory will be used!\n");
  zmatrix::storeText(matrixDebugDirectory, sizeof matrixDebugDirectory, workingDirectory);
}
