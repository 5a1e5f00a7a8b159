// The header of a matrix and of its file: limits of the block, random generators, debug settings, stop flags, and two blocks of
// global parameters, from which new sub-matrices of the basic and of the symbol level are set up. Setters of global parameters
// accept any value; the profiles' checks find illegal ones.
#pragma once

#include <cstdio>
#include <cstring>
#include <span>

#include "frame/ZQArray.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixProperties.h"
#include "settings/ZQMatrixRandom.h"
#include "settings/ZQNumberMember.h"
#include "settings/ZQRecordTable.h"

namespace zmatrix {

/// The largest offset of a history that the header can hold: INT_MAX, unless a test lowers it.
extern long long largestOffsetToUpdateInfos;

constexpr char matrixFileType[] = "zmatrix";
constexpr int initialNumberOfMatrices = 4;
constexpr int largestNumberOfMatrices = 65536;  ///< an empty sub-matrix takes some kilobytes
constexpr int initialBlockSize = 64000;         ///< slots
constexpr int largestBlockSize = 134217728;     ///< slots: a gigabyte of pointers

/// Copies at most `capacity` - 1 characters and fills the rest with zeros. Null changes nothing.
void storeText(char* field, int capacity, const char* text);
/// Copies at most `capacity` characters and fills the rest with zeros: a text that fills the field has no terminator. Null
/// changes nothing.
void storeUnterminatedText(char* field, int capacity, const char* text);

/// Stores at most 256 characters.
void storeNameOfUpdateFile(ZQMatrixProperties& block, const char* name);
/// Stores 16 bytes; null changes nothing.
void storeMidiChannelFilter(ZQMatrixProperties& block, const char* channels);

/// The defaults of the basic level's and of the symbol level's block.
void setDefaultParameters(ZQMatrixProperties& block);
void setDefaultSymbolParameters(ZQMatrixProperties& block);

}  // namespace zmatrix

class ZQMatrixInfo;

namespace zmatrix {

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
  void initGlobalParameters() { setDefaultParameters(globalParameters_); }
  void initGlobalSymbolParameters() { setDefaultSymbolParameters(globalSymbolParameters_); }

  char* getFileType() { return fileType_; }
  void setFileType(const char* text);
  char* getMatrixDescription() { return matrixDescription_; }
  void setMatrixDescription(const char* text) { storeText(matrixDescription_, sizeof matrixDescription_, text); }
  char* getMatrixOriginFilename() { return matrixOriginFilename_; }
  void setMatrixOriginFilename(const char* name) { storeText(matrixOriginFilename_, sizeof matrixOriginFilename_, name); }
  char* getMatrixDestinationFilename() { return matrixDestinationFilename_; }
  void setMatrixDestinationFilename(const char* name) {
    storeText(matrixDestinationFilename_, sizeof matrixDestinationFilename_, name);
  }
  char* getMatrixDebugDirectory() { return matrixDebugDirectory_; }
  /// Empties the directory without a test of write access.
  void _clearMatrixDebugDirectory() { matrixDebugDirectory_[0] = 0; }
  /// Sets the directory; for an empty name or one above 247 characters, the working directory. If no file can be created in it:
  /// the working directory, with a warning. Null changes nothing.
  void setMatrixDebugDirectory(const char* path);

  int getLastSoftwareVersion() const { return lastSoftwareVersion_; }
  void setLastSoftwareVersion(int value) { lastSoftwareVersion_ = value; }
  int getIs64BitMatrix() const { return is64BitMatrix_; }
  void setIs64BitMatrix(int value) { is64BitMatrix_ = value; }
  int getMaxNumberOfMatrices() const { return maxNumberOfMatrices_; }
  void _setMaxNumberOfMatrices(int value) { maxNumberOfMatrices_ = value; }
  int getNumberOfMatrices() const { return numberOfMatrices_; }
  /// Only raises the number, up to maxNumberOfMatrices; ignores other values.
  void setNumberOfMatrices(int number);
  void _setNumberOfMatrices(int value) { numberOfMatrices_ = value; }
  int getMatrixAILevel() const { return matrixAiLevel_; }
  /// Stores 0 and 1, and ignores other values.
  void setMatrixAILevel(int level);
  int getOffsetToUpdateInfos() const { return offsetToUpdateInfos_; }
  void setOffsetToUpdateInfos(int value) { offsetToUpdateInfos_ = value; }
  /// The begin of the history in the file that was read, 0 if it has none. In a large file it exceeds offsetToUpdateInfos, an
  /// int.
  void setPositionOfUpdateInfos(long long position) { positionOfUpdateInfos_ = position; }
  int getMatrixBlockSize() const { return matrixBlockSize_; }
  void _setMatrixBlockSize(int value) { matrixBlockSize_ = value; }
  int getMatrixBlockSizeOld() const { return matrixBlockSizeOld_; }
  void _setMatrixBlockSizeOld(int value) { matrixBlockSizeOld_ = value; }
  int getMaximalStack() const { return maximalStack_; }
  void _setMaximalStack(int value) { maximalStack_ = value; }
  int getNumberOfMatrixUpdates() const { return numberOfMatrixUpdates_; }
  void setNumberOfMatrixUpdates(int value) { numberOfMatrixUpdates_ = value; }
  void incrementNumberOfMatrixUpdates() { numberOfMatrixUpdates_ = successorOf(numberOfMatrixUpdates_); }
  int getNumberOfAppendedUpdates() const { return numberOfAppendedUpdates_; }
  void setNumberOfAppendedUpdates(int value) { numberOfAppendedUpdates_ = value; }
  void incrementNumberOfAppendedUpdates() { numberOfAppendedUpdates_ = successorOf(numberOfAppendedUpdates_); }
  int getMatrixDebugOutputDevice() const { return matrixDebugOutputDevice_; }
  /// Sets the device, 0 to 3, here and for the calling thread. A negative device becomes 0, one above 3 becomes 2.
  void setMatrixDebugOutputDevice(int device);
  int getMatrixInfoType() const { return matrixInfoType_; }
  void setMatrixInfoType(int value) { matrixInfoType_ = value; }

  // Each call of a getter of a random value is a step of its generator. The types are stored and have no effect.
  long long getUserRandomValue() { return nextRandomValue(userRandomValue_); }
  void setUserRandomValue(long long value) { userRandomValue_ = value; }
  int getUserRandomType() const { return userRandomType_; }
  void setUserRandomType(int value) { userRandomType_ = value; }
  long long getSystemRandomValue() { return nextRandomValue(systemRandomValue_); }
  void setSystemRandomValue(long long value) { systemRandomValue_ = value; }
  int getSystemRandomType() const { return systemRandomType_; }
  void setSystemRandomType(int value) { systemRandomType_ = value; }

  ZQMatrixProperties* getGlobalMatrixProperties() { return &globalParameters_; }
  ZQMatrixProperties* getGlobalSymbolMatrixProperties() { return &globalSymbolParameters_; }
  char* getGlobalNamesOfUpdateFiles() { return globalParameters_.namesOfUpdateFiles; }

  // The texts of the two blocks. Their numbers are accessed directly.
  char* getGlobalNameOfUpdateFile() { return globalParameters_.nameOfUpdateFile; }
  void setGlobalNameOfUpdateFile(const char* text) { storeNameOfUpdateFile(globalParameters_, text); }
  char* getGlobalMidiChannelFilterArray() { return globalParameters_.midiChannelFilter; }
  void setGlobalMidiChannelFilterArray(const char* channels) { storeMidiChannelFilter(globalParameters_, channels); }
  char* getGlobalSymbolNameOfUpdateFile() { return globalSymbolParameters_.nameOfUpdateFile; }
  void setGlobalSymbolNameOfUpdateFile(const char* text) { storeNameOfUpdateFile(globalSymbolParameters_, text); }
  char* getGlobalSymbolMidiChannelFilterArray() { return globalSymbolParameters_.midiChannelFilter; }
  void setGlobalSymbolMidiChannelFilterArray(const char* channels) { storeMidiChannelFilter(globalSymbolParameters_, channels); }

  /// One int per reserved sub-matrix, owned here.
  int* getStopFlags() { return stopFlags_.data(); }
  int getStopFlag(int id) const { return id >= 0 && id < stopFlags_.count() ? stopFlags_[id] : 0; }
  void setStopFlag(int id, int value) {
    if (id >= 0 && id < stopFlags_.count()) stopFlags_[id] = value;
  }
  void clearStopFlags() { stopFlags_.fillFrom(0, 0); }
  /// Sets the number of flags; existing flags keep their values. False, and nothing changed, if memory has run out.
  [[nodiscard]] bool resizeStopFlags(int numberOfFlags) { return stopFlags_.resize(numberOfFlags, 0); }

  FILE* getFpUpdateInfos() { return fpUpdateInfos_; }
  void setFpUpdateInfos(FILE* file) { fpUpdateInfos_ = file; }
  char* getFpUpdateInfosFileName() { return fpUpdateInfosFileName_; }
  void setFpUpdateInfosFileName(const char* name) { storeText(fpUpdateInfosFileName_, sizeof fpUpdateInfosFileName_, name); }
  /// 1 while there is a stream of older update records, else 0.
  int matrixHasBeenRead() const { return fpUpdateInfos_ != nullptr ? 1 : 0; }
  /// Closes that stream, and removes its file if it has a name.
  void closeAndRemoveUpdateInfos();

  // --- the matrix file
  /// Writes header and global blocks. Returns the file position of offsetToUpdateInfos, which the save overwrites later.
  long long writeFileHeader(ZQFileWriter& file);
  /// 1; -1, with a message, for a file that is not a valid matrix file. The fields are overwritten in both cases.
  int readFileHeader(ZQFileReader& file);
  /// The tier of a matrix file: 0 to 2; -1 if it is not a valid matrix file, -2 if it can't be opened.
  int getMatrixInfoTypeFromFile(const char* path);
  /// Loads the history of the file that the matrix was read from; `count` gets the number of its records.
  void readMatrixUpdateInfos(int* count);
  /// A loaded record, owned by the header, or null with a message.
  ZQMatrixBaseInfo* getMatrixUpdateInfo(int index);
  /// Deletes the loaded update records.
  void deleteMatrixUpdateInfos();

  void printMatrixFileHeader();

 private:
  /// A number of the header: its label in the print-out, its initial value, and the first file version that has it, 0 for all.
  /// After an older file is read, the number is notKnown.
  struct NumberRow {
    const char* label;
    NumberMember<ZQMatrixFileHeader> member;
    int initial = 0;
    int firstVersion = 0;
  };
  static constexpr int notKnown = -1;
  /// The numbers between the two groups of texts, in the order of the file.
  static std::span<const NumberRow> numberRows() noexcept;

  template <class Fields>
  long long describe(Fields& fields);
  int scanUpdateInfos(ZQFileReader& file);
  void loadUpdateInfos(ZQFileReader& file, int count);
  void reportUnusualNumbers() const;
  /// Reads a record as one of the tier in matrixInfoType.
  int readUpdateInfo(ZQMatrixInfo& record, ZQFileReader& file) const;

  char fileType_[8] = {};
  char matrixDescription_[504] = {};
  int lastSoftwareVersion_ = matrixFormatVersion;
  int is64BitMatrix_ = 0;
  int maxNumberOfMatrices_ = 0;
  int numberOfMatrices_ = 0;
  int matrixAiLevel_ = 0;  ///< highest symbol level in use
  int offsetToUpdateInfos_ = 0;
  long long positionOfUpdateInfos_ = 0;  ///< not in the file
  int matrixBlockSize_ = 0;
  int matrixBlockSizeOld_ = 0;
  int maximalStack_ = 0;
  int numberOfMatrixUpdates_ = 0;
  int numberOfAppendedUpdates_ = notKnown;
  int matrixDebugOutputDevice_ = 0;
  long long userRandomValue_ = initialRandomValue;
  int userRandomType_ = 1;
  long long systemRandomValue_ = initialRandomValue;
  int systemRandomType_ = 1;
  int matrixInfoType_ = 0;
  char matrixDebugDirectory_[256] = {};
  char matrixOriginFilename_[256] = {};
  char matrixDestinationFilename_[256] = {};
  ZQMatrixProperties globalParameters_{};
  ZQMatrixProperties globalSymbolParameters_{};
  FILE* fpUpdateInfos_ = nullptr;
  char fpUpdateInfosFileName_[256] = {};  ///< empty for an unnamed temporary file
  zmatrix::ZQArray<int> stopFlags_;
  zmatrix::ZQRecordTable matrixInfos_;  ///< the loaded update records; entries may be null
};

}  // namespace zmatrix

using zmatrix::ZQMatrixFileHeader;
