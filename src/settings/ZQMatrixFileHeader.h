// What applies to a whole matrix object and its file rather than to one sub-matrix: limits of the block, the random generators,
// the debug settings, the stop flags, and two blocks of global parameters that new sub-matrices of the basic and of the symbol
// level are set up from. Global setters store what they are given; the profiles' checks find what makes no sense.
#pragma once

#include <cstdio>
#include <cstring>

#include "settings/ZQHeapArray.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixProperties.h"
#include "settings/ZQMatrixRandom.h"

namespace zmatrix {

/// The farthest place of a history that the header can name: that of an int, unless a test lowers it.
extern long long largestOffsetToUpdateInfos;

constexpr int initialNumberOfMatrices = 4;
constexpr int largestNumberOfMatrices = 65536;  ///< each takes some kilobytes before it holds anything
constexpr int initialBlockSize = 64000;         ///< slots
constexpr int largestBlockSize = 134217728;     ///< slots: a gigabyte of pointers

/// Copies at most `capacity` - 1 characters and fills the rest with zeros. A null text leaves the field as it is.
void storeText(char* field, int capacity, const char* text);
/// Copies at most `capacity` characters and fills the rest with zeros: a text that fills the field stays unterminated.
void storeUnterminatedText(char* field, int capacity, const char* text);

/// The defaults of the basic level's and of the symbol level's block.
void setDefaultParameters(ZQMatrixProperties& block);
void setDefaultSymbolParameters(ZQMatrixProperties& block);

}  // namespace zmatrix

class ZQMatrixInfo;

class ZQMatrixFileHeader {
 public:
  ZQMatrixFileHeader() = default;
  virtual ~ZQMatrixFileHeader();
  ZQMatrixFileHeader(const ZQMatrixFileHeader&) = delete;
  ZQMatrixFileHeader& operator=(const ZQMatrixFileHeader&) = delete;

  /// Sets all fields for a matrix of this tier. 0 if memory has run out, else 1.
  int initFileHeader(int infoType);
  /// Frees what the header owns and closes the stream of update records.
  void deInitFileHeader();
  void initGlobalParameters() { zmatrix::setDefaultParameters(globalParameters); }
  void initGlobalSymbolParameters() { zmatrix::setDefaultSymbolParameters(globalSymbolParameters); }

  char* getFileType() { return fileType; }
  void setFileType(const char* text);
  char* getMatrixDescription() { return matrixDescription; }
  void setMatrixDescription(const char* text) { zmatrix::storeText(matrixDescription, sizeof matrixDescription, text); }
  char* getMatrixOriginFilename() { return matrixOriginFilename; }
  void setMatrixOriginFilename(const char* name) { zmatrix::storeText(matrixOriginFilename, sizeof matrixOriginFilename, name); }
  char* getMatrixDestinationFilename() { return matrixDestinationFilename; }
  void setMatrixDestinationFilename(const char* name) {
    zmatrix::storeText(matrixDestinationFilename, sizeof matrixDestinationFilename, name);
  }
  char* getMatrixDebugDirectory() { return matrixDebugDirectory; }
  /// An empty directory stays empty: nothing is tried out in the working directory.
  void _clearMatrixDebugDirectory() { matrixDebugDirectory[0] = 0; }
  /// Takes the directory if a file can be made in it, else the working directory, with a warning.
  void setMatrixDebugDirectory(const char* path);

  int getLastSoftwareVersion() const { return lastSoftwareVersion; }
  void setLastSoftwareVersion(int value) { lastSoftwareVersion = value; }
  int getIs64BitMatrix() const { return is64BitMatrix; }
  void setIs64BitMatrix(int value) { is64BitMatrix = value; }
  int getMaxNumberOfMatrices() const { return maxNumberOfMatrices; }
  void _setMaxNumberOfMatrices(int value) { maxNumberOfMatrices = value; }
  int getNumberOfMatrices() const { return numberOfMatrices; }
  /// Can raise the count only, up to maxNumberOfMatrices; anything else is refused in silence.
  void setNumberOfMatrices(int number);
  void _setNumberOfMatrices(int value) { numberOfMatrices = value; }
  int getMatrixAILevel() const { return matrixAILevel; }
  /// Stores 0 and 1 only, in silence.
  void setMatrixAILevel(int level);
  int getOffsetToUpdateInfos() const { return offsetToUpdateInfos; }
  void setOffsetToUpdateInfos(int value) { offsetToUpdateInfos = value; }
  /// Where the history of the file that was read begins, also where the offset, an int, can't say it; 0 if it has none.
  void setPositionOfUpdateInfos(long long position) { positionOfUpdateInfos = position; }
  int getMatrixBlockSize() const { return matrixBlockSize; }
  void _setMatrixBlockSize(int value) { matrixBlockSize = value; }
  int getMatrixBlockSizeOld() const { return matrixBlockSizeOld; }
  void _setMatrixBlockSizeOld(int value) { matrixBlockSizeOld = value; }
  int getMaximalStack() const { return maximalStack; }
  void _setMaximalStack(int value) { maximalStack = value; }
  int getNumberOfMatrixUpdates() const { return numberOfMatrixUpdates; }
  void setNumberOfMatrixUpdates(int value) { numberOfMatrixUpdates = value; }
  void incrementNumberOfMatrixUpdates() { numberOfMatrixUpdates = zmatrix::successorOf(numberOfMatrixUpdates); }
  int getNumberOfAppendedUpdates() const { return numberOfAppendedUpdates; }
  void setNumberOfAppendedUpdates(int value) { numberOfAppendedUpdates = value; }
  void incrementNumberOfAppendedUpdates() { numberOfAppendedUpdates = zmatrix::successorOf(numberOfAppendedUpdates); }
  int getMatrixDebugOutputDevice() const { return matrixDebugOutputDevice; }
  /// 0 to 3, here and for the calling thread. A negative device becomes 0, one above 3 becomes 2.
  void setMatrixDebugOutputDevice(int device);
  int getMatrixInfoType() const { return matrixInfoType; }
  void setMatrixInfoType(int value) { matrixInfoType = value; }

  // Each reading of a random value is a step of its generator. The types are carried along only.
  long long getUserRandomValue() { return zmatrix::nextRandomValue(userRandomValue); }
  void setUserRandomValue(long long value) { userRandomValue = value; }
  int getUserRandomType() const { return userRandomType; }
  void setUserRandomType(int value) { userRandomType = value; }
  long long getSystemRandomValue() { return zmatrix::nextRandomValue(systemRandomValue); }
  void setSystemRandomValue(long long value) { systemRandomValue = value; }
  int getSystemRandomType() const { return systemRandomType; }
  void setSystemRandomType(int value) { systemRandomType = value; }

  ZQMatrixProperties* getGlobalMatrixProperties() { return &globalParameters; }
  ZQMatrixProperties* getGlobalSymbolMatrixProperties() { return &globalSymbolParameters; }
  char* getGlobalNamesOfUpdateFiles() { return globalParameters.namesOfUpdateFiles; }

  // getGlobalX, setGlobalX, getGlobalSymbolX, setGlobalSymbolX of all settings; the number codes have the first two only.
#define ZQ_BASIC_BLOCK_ACCESSORS(type, name, Name)          \
  zmatrix::AccessorType<type> getGlobal##Name() const {     \
    return globalParameters.name;                           \
  }                                                         \
  void setGlobal##Name(zmatrix::AccessorType<type> value) { \
    globalParameters.name = static_cast<type>(value);       \
  }
#define ZQ_BLOCK_ACCESSORS(type, name, Name)                      \
  ZQ_BASIC_BLOCK_ACCESSORS(type, name, Name)                      \
  zmatrix::AccessorType<type> getGlobalSymbol##Name() const {     \
    return globalSymbolParameters.name;                           \
  }                                                               \
  void setGlobalSymbol##Name(zmatrix::AccessorType<type> value) { \
    globalSymbolParameters.name = static_cast<type>(value);       \
  }
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) ZQ_BLOCK_ACCESSORS(type, name, Name)
#define ZQ_UNSAVED_SETTING(type, name, Name) ZQ_BLOCK_ACCESSORS(type, name, Name)
#define ZQ_OCRON_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) ZQ_BASIC_BLOCK_ACCESSORS(type, name, Name)
#define ZQ_TEXT_SETTING(name, Name, bytes)                                    \
  char* getGlobal##Name() {                                                   \
    return globalParameters.name;                                             \
  }                                                                           \
  void setGlobal##Name(const char* text) {                                    \
    zmatrix::storeUnterminatedText(globalParameters.name, bytes, text);       \
  }                                                                           \
  char* getGlobalSymbol##Name() {                                             \
    return globalSymbolParameters.name;                                       \
  }                                                                           \
  void setGlobalSymbol##Name(const char* text) {                              \
    zmatrix::storeUnterminatedText(globalSymbolParameters.name, bytes, text); \
  }
#define ZQ_BYTES_SETTING(name, Name, bytes)                                     \
  char* getGlobal##Name##Array() {                                              \
    return globalParameters.name;                                               \
  }                                                                             \
  void setGlobal##Name##Array(const char* values) {                             \
    if (values != nullptr) memmove(globalParameters.name, values, bytes);       \
  }                                                                             \
  char* getGlobalSymbol##Name##Array() {                                        \
    return globalSymbolParameters.name;                                         \
  }                                                                             \
  void setGlobalSymbol##Name##Array(const char* values) {                       \
    if (values != nullptr) memmove(globalSymbolParameters.name, values, bytes); \
  }
#include "settings/ZQMatrixSettings.def"
#undef ZQ_BLOCK_ACCESSORS
#undef ZQ_BASIC_BLOCK_ACCESSORS

  /// One int per reserved sub-matrix, owned here.
  int* getStopFlags() {
    return stopFlags.data();
  }
  int getStopFlag(int id) const {
    return id >= 0 && id < stopFlags.size() ? stopFlags[id] : 0;
  }
  void setStopFlag(int id, int value) {
    if (id >= 0 && id < stopFlags.size()) stopFlags[id] = value;
  }
  void clearStopFlags() {
    stopFlags.fillFrom(0, 0);
  }
  /// Makes as many flags; the old ones keep their values. False, and nothing changed, if memory has run out.
  bool resizeStopFlags(int numberOfFlags) {
    return stopFlags.resize(numberOfFlags, 0);
  }
  void releaseStopFlags() {
    stopFlags.release();
  }

  FILE* getFpUpdateInfos() {
    return fpUpdateInfos;
  }
  void setFpUpdateInfos(FILE* file) {
    fpUpdateInfos = file;
  }
  char* getFpUpdateInfosFileName() {
    return fpUpdateInfosFileName;
  }
  void setFpUpdateInfosFileName(const char* name) {
    zmatrix::storeText(fpUpdateInfosFileName, sizeof fpUpdateInfosFileName, name);
  }
  /// 1 while there is a stream of older update records, else 0.
  int matrixHasBeenRead() const {
    return fpUpdateInfos != nullptr ? 1 : 0;
  }
  /// Closes that stream, removes its file if it has a name, and forgets both.
  void closeAndRemoveUpdateInfos();

  // --- the matrix file
  /// Writes header and global blocks. The file position of offsetToUpdateInfos, to be patched when it is known.
  long long writeFileHeader(zmatrix::ZQFileWriter& file);
  /// 1; -1, with a message, for a file that is none. The fields are overwritten in any case.
  int readFileHeader(zmatrix::ZQFileReader& file);
  /// The tier that a file was written by: 0 to 2; -1 for a bad file, -2 if it can't be opened.
  int getMatrixInfoTypeFromFile(const char* path);
  /// Loads the history of the file that the matrix was read from; `count` gets the number of its records.
  void readMatrixUpdateInfos(int* count);
  /// A loaded record, which stays the header's, or null with a message.
  ZQMatrixBaseInfo* getMatrixUpdateInfo(int index);
  /// Frees the update records that were loaded, if any.
  void deleteMatrixUpdateInfos();

  void printMatrixFileHeader();

 private:
  template <class Fields>
  long long describe(Fields& fields);
  int scanUpdateInfos(zmatrix::ZQFileReader& file);
  void loadUpdateInfos(zmatrix::ZQFileReader& file, int count);
  /// As a record of the file's tier.
  int readUpdateInfo(ZQMatrixInfo& record, zmatrix::ZQFileReader& file) const;

  char fileType[8] = {};
  char matrixDescription[504] = {};
  int lastSoftwareVersion = zmatrix::matrixFormatVersion;
  int is64BitMatrix = 0;
  int maxNumberOfMatrices = 0;
  int numberOfMatrices = 0;
  int matrixAILevel = 0;  ///< highest symbol level in use
  int offsetToUpdateInfos = 0;
  long long positionOfUpdateInfos = 0;  ///< not in the file
  int matrixBlockSize = 0;
  int matrixBlockSizeOld = 0;
  int maximalStack = 0;
  int numberOfMatrixUpdates = 0;
  int numberOfAppendedUpdates = -1;  ///< -1: not known
  int matrixDebugOutputDevice = 0;
  long long userRandomValue = zmatrix::initialRandomValue;
  int userRandomType = 1;
  long long systemRandomValue = zmatrix::initialRandomValue;
  int systemRandomType = 1;
  int matrixInfoType = 0;
  char matrixDebugDirectory[256] = {};
  char matrixOriginFilename[256] = {};
  char matrixDestinationFilename[256] = {};
  ZQMatrixProperties globalParameters{};
  ZQMatrixProperties globalSymbolParameters{};
  FILE* fpUpdateInfos = nullptr;
  char fpUpdateInfosFileName[256] = {};  ///< empty for an unnamed temporary file
  zmatrix::HeapArray<int> stopFlags;
  zmatrix::HeapArray<ZQMatrixBaseInfo*> _matrixInfos;  ///< loaded update records, null while none are; each may be null
};
