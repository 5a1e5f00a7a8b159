// Loading a matrix, shared by all tiers. A tier also loads the files of the tiers below it; records and elements are then of the
// loading tier. Nothing in the file is trusted: sizes are checked against the file's size and the limits of the system, illegal
// records become empty ones, and the links are checked after all elements are read.
//
// If the header is refused, the old content stays; a later refusal leaves an empty matrix. The matrix's load report counts what
// was dropped or relinked.
#pragma once

#include <cstdio>
#include <string>

#include "store/ZQMatrixBase.h"
#include "store/ZQMatrixElementReader.h"
#include "store/ZQMatrixFileTexts.h"
#include "store/ZQTierLife.h"

namespace zmatrix {

template <class Tier>
struct ZQMatrixFileLoad {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;
  static constexpr bool hasHistory = Tier::infoType >= 1;
  static constexpr long long modestNumberOfMatrices = 1024;
  static constexpr long long sizeOfSmallestElement = zmatrix::sizeOfElementInFile(0);

  static int load(Matrix& matrix, const char* path, int debugLevel) {
    const std::string ownPath = path != nullptr ? path : "";  // `path` may be a text of the header, which the load changes
    path = ownPath.c_str();
    ZQMatrixFileHeader& header = *matrix.getMatrixFileHeader();
    matrix.currentMatrixId_ = 0;
    matrix.loadReport_ = {};
    header.setMatrixDebugOutputDevice(2);
    header._clearMatrixDebugDirectory();
    matrix.setMatrixDebugOn(debugLevel);
    FILE* stream = zmatrix::openRegularFile(path);
    if (stream == nullptr) {
      dbPrintf(0, "readMatrixFromDisk: Could not open matrix file %s for reading!\n", path);
      matrix.setMatrixDebugOff();
      return -1;
    }
    dbPrintf(1, "readMatrixFromDisk: begin\n");
    int result;
    {
      zmatrix::ZQFileReader file(stream);
      result = ZQMatrixFileLoad(matrix, file, stream).read(path, debugLevel);
    }
    fclose(stream);
    if (result != 1) matrix.loadReport_ = {};
    return result;
  }

 private:
  ZQMatrixFileLoad(Matrix& matrix, zmatrix::ZQFileReader& file, FILE* stream)
      : matrix_(matrix), header_(*matrix.getMatrixFileHeader()), file_(file), stream_(stream), elements_(matrix, file) {}

  int read(const char* path, int debugLevel) {
    if (!readHeader()) return -1;
    reopenDebugFile(debugLevel);
    header_.setMatrixOriginFilename(path);
    header_.setMatrixDestinationFilename("");
    if (!readRecords()) return -1;
    stackOfFile_ = header_.getMaximalStack();
    int result = 1;
    if (matrix_.makeEmptyBlock(header_.getMatrixBlockSize())) {
      elements_.read(infoType_, stackOfFile_);
      matrix_.loadReport_.isCutShort = file_.isAtEnd();  // a read beyond the end still counts as an element
      if constexpr (hasHistory) {
        if (!keepHistory()) result = -1;
        upgradeRecords();
      }
    } else {
      dbPrintf(0, "error from InitMat: Allocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
               static_cast<long>(header_.getMatrixBlockSize()));
      result = -1;
    }
    reportCounts();
    if (result == 1 && (elements_.isOutOfMemory || !provideRoots() || !makeLinksSound())) result = -1;
    if (result == -1) becomeEmpty();
    if (result == 1) completeReport();
    return result;
  }

  // If the header is refused, restores the fields that describe the memory, so that the old content can still be saved.
  bool readHeader() {
    char oldFileType[8];
    zmatrix::storeText(oldFileType, sizeof oldFileType, header_.getFileType());
    const int oldIs64BitMatrix = header_.getIs64BitMatrix();
    const int oldInfoType = header_.getMatrixInfoType();
    const int oldMaximum = header_.getMaxNumberOfMatrices();
    const int oldNumber = header_.getNumberOfMatrices();
    const int oldBlockSize = header_.getMatrixBlockSize();
    const int oldStack = header_.getMaximalStack();
    bool isAccepted = header_.readFileHeader(file_) == 1;
    if (isAccepted && !hasLegalNumbers()) {
      dbPrintf(0, "ReadFileHeader: this is not a valid matrix file (illegal blockSIze or number of matrices)\n");
      isAccepted = false;
    }
    const int newMaximum = header_.getMaxNumberOfMatrices();
    header_._setMaxNumberOfMatrices(oldMaximum);
    if (isAccepted && setNumberOfRecords(newMaximum)) return true;
    header_.setFileType(oldFileType);
    header_.setIs64BitMatrix(oldIs64BitMatrix);
    header_.setMatrixInfoType(oldInfoType);
    header_._setNumberOfMatrices(oldNumber);
    header_._setMatrixBlockSize(oldBlockSize);
    header_._setMaximalStack(oldStack);
    return false;
  }

  // Each sub-matrix has a root in the block, so that the file's size limits their number; a modest number is always legal.
  bool hasLegalNumbers() const {
    const int maximum = header_.getMaxNumberOfMatrices();
    return maximum >= 1 && maximum <= zmatrix::largestNumberOfMatrices && maximum <= header_.getMatrixBlockSize() &&
           maximum <= std::max(modestNumberOfMatrices, file_.getFileSize() / sizeOfSmallestElement) &&
           header_.getMatrixBlockSize() <= zmatrix::largestBlockSize && header_.getNumberOfMatrices() >= 0 &&
           header_.getNumberOfMatrices() <= maximum;
  }

  /// Resizes the matrix to so many sub-matrices and makes the missing records. False if memory has run out.
  bool setNumberOfRecords(int newMaximum) {
    const int oldMaximum = header_.getMaxNumberOfMatrices();
    if (!matrix_.resizeSubMatrices(newMaximum)) return false;
    for (int id = oldMaximum; id < newMaximum; ++id) {
      if (Tier::announcesMoreMatrices) {
        dbPrintf(0, "matrix to read contains more submatrices than available, must be expanded\n");
      }
      if (!createRecord(id)) {
        static_cast<void>(matrix_.resizeSubMatrices(oldMaximum));
        return false;
      }
    }
    header_.clearStopFlags();
    return true;
  }

  bool createRecord(int id) {
    std::unique_ptr<Info> info(new (std::nothrow) Info());
    if (info == nullptr || info->initMatrixInfo(id) != 1) return false;
    matrix_.matrixInfoArray_.put(id, std::move(info));
    return true;
  }

  void reopenDebugFile(int debugLevel) {
    matrix_.setMatrixDebugOff();
    header_.setMatrixDebugOutputDevice(header_.getMatrixDebugOutputDevice());
    matrix_.setMatrixDebugOn(debugLevel);
  }

  // True if a record is next in the file. The header may count more sub-matrices than there are records: its count never falls,
  // but a save writes no records above the highest occupied sub-matrix. Then the first element follows.
  bool isAtRecord() {
    const char* bytes = file_.peek(2 * sizeof(int));
    return bytes == nullptr || zmatrix::getLittleEndian<int>(bytes + sizeof(int)) == zmatrix::matrixInfoMagicNumber;
  }

  // An illegal record is replaced by an empty one without a message; only an illegal type refuses the file. The counts of
  // elements then differ.
  bool readRecords() {
    const int typeOfHeader = header_.getMatrixInfoType();
    infoType_ = typeOfHeader >= 0 && typeOfHeader <= Tier::infoType ? typeOfHeader : Tier::infoType;
    for (int id = 0; id < header_.getNumberOfMatrices(); ++id) {
      Info& info = *infoOf(id);
      const bool isThere = isAtRecord();
      const bool isRead = isThere && info.readUpdateInfo(file_, 0) == 1;
      if (!isThere) makeRecordEmpty(id);
      if (file_.hasRunOutOfMemory()) return giveUp();
      recordsIllegal_ += isThere && !isRead;
      recordsAbsent_ += !isThere;
      if (Tier::infoType == 0 ? info.getUpdateInfoType() != 0 : info.getUpdateInfoType() > Tier::infoType) {
        dbPrintf(0, Tier::fileTexts.infoTypeTooHigh, id, info.getUpdateInfoType());
        return giveUp();
      }
      if (isRead) {
        infoType_ = info.getUpdateInfoType();
      } else {
        info.setUpdateInfoType(Tier::infoType);  // the type of the next save
      }
    }
    for (int id = header_.getNumberOfMatrices(); id < header_.getMaxNumberOfMatrices(); ++id) {
      if (!infoOf(id)->isEmpty()) makeRecordEmpty(id);  // its elements are no longer in memory
    }
    const int numberCut = Tier::checkLoadedRecords(matrix_);
    if (numberCut < 0) return giveUp();
    matrix_.loadReport_.levelLinksCut = numberCut;
    return true;
  }

  bool giveUp() {
    becomeEmpty();
    return false;
  }

  // Copies the history, the rest of the file, to a temporary stream, from which the next save writes it. If no stream can be made
  // the load fails, since the next save would silently lose the history. An offset before the end of the elements is stale: then
  // the history is empty.
  bool keepHistory() {
    const int offset = header_.getOffsetToUpdateInfos();
    const long long reached = file_.getPosition();
    const long long begin = offset >= 1 ? offset : unnamedHistory(reached);
    header_.setPositionOfUpdateInfos(begin);
    if (begin < 1) return true;
    dbPrintf(1, "reading appended updateInfos updateinfos\n");
    header_.closeAndRemoveUpdateInfos();
    if (reached != begin) {
      dbPrintf(0, "readAndInitMatrixFromDisk: filePositionAfterMatrix(%u) != _offsetToUpdateInfos(%u): \n",
               static_cast<unsigned>(reached), static_cast<unsigned>(begin));
    }
    if (ZQDebugChannel::globalDebugLevel >= 2) printHistory(begin);
    const long long size = begin >= reached ? std::max(file_.getFileSize() - begin, 0LL) : 0;
    for (FILE* (*const make)(long long) : {zmatrix::newTemporaryFile, zmatrix::newFileInMemory}) {
      FILE* history = make(size);
      if (history == nullptr) continue;
      if (copyHistory(begin, size, history)) {
        header_.setFpUpdateInfos(history);
        return true;
      }
      fclose(history);
    }
    dbPrintf(0, "readMatrixFromDisk: the history could not be kept\n");
    return false;
  }

  /// The begin of a history beyond the largest offset that a header can hold: it follows the elements. 0 if there is none.
  long long unnamedHistory(long long reached) {
    if (reached <= zmatrix::largestOffsetToUpdateInfos || file_.isAtEnd()) return 0;
    const char* bytes = file_.peek(2 * sizeof(int));
    const bool isRecord =
        bytes != nullptr && zmatrix::getLittleEndian<int>(bytes + sizeof(int)) == zmatrix::matrixInfoMagicNumber;
    return isRecord ? reached : 0;
  }

  bool copyHistory(long long begin, long long size, FILE* history) {
    zmatrix::ZQFileWriter writer(history);
    const bool isCopied = size == 0 || (fseeko(stream_, begin, SEEK_SET) == 0 && zmatrix::copyRest(stream_, writer));
    return writer.flush() && isCopied;
  }

  void printHistory(long long begin) {
    file_.seek(begin);
    for (int number = 1; !file_.isAtEnd(); ++number) {
      Info record;
      if (record.readUpdateInfo(file_, 1) < 1) return;
      dbPrintf(0, "################# appended old matrixInfo no. %d: #################\n", number);
      record.printMatrixInfo();
    }
  }

  // Leaves the last ID as the current one.
  void upgradeRecords() {
    if (infoType_ >= Tier::infoType) return;
    for (int id = 0; id < header_.getMaxNumberOfMatrices(); ++id) {
      matrix_.setCurrentMatrixID(id);
      matrix_.getMatrixInfo()->setUpdateInfoType(Tier::infoType);
    }
  }

  void reportCounts() {
    const long long position = elements_.position;
    if (position < stackOfFile_) dbPrintf(0, "%s", Tier::fileTexts.endReached);
    if (position > stackOfFile_ + 1LL) {
      dbPrintf(0, Tier::fileTexts.beyondStack, static_cast<int>(position), stackOfFile_);
    }
    int total = 0;
    for (int id = 0; id < header_.getNumberOfMatrices(); ++id) zmatrix::addTo(total, infoOf(id)->getNumberOfMatrixElements());
    zq_loadReport& report = matrix_.loadReport_;
    report.elementsCounted = total;
    report.elementsRead = elements_.count;
    report.isCutShort |= position < stackOfFile_;
    if (elements_.count != total) {
      dbPrintf(0, Tier::fileTexts.countsDiffer, elements_.count, total);
    } else {
      dbPrintf(1, "readMatrixFromDisk(): elementCount (%d) items read\n", elements_.count);
    }
  }

  /// Makes the roots that a truncated file lacks: their slots must never be free.
  bool provideRoots() {
    const int roots = header_.getMaxNumberOfMatrices();
    for (int id = 0; id < roots; ++id) {
      if (matrix_.elementAt(id) == nullptr) matrix_.template createElementAt<Element>(id);
    }
    header_._setMaximalStack(std::max(header_.getMaximalStack(), roots - 1));
    return true;
  }

  bool makeLinksSound() {
    if (elements_.numberOutside > 0) {
      dbPrintf(0, "readMatrixFromDisk: %d elements beyond the block of %d dropped\n", elements_.numberOutside,
               matrix_.numberOfSlots_);
    }
    for (int id = 0; id < header_.getMaxNumberOfMatrices(); ++id) {
      // A count above the block's size would make the free-slot search grow the block needlessly.
      Info& info = *infoOf(id);
      if (info.getNumberOfMatrixElements() > matrix_.numberOfSlots_) info.setNumberOfMatrixElements(matrix_.numberOfSlots_);
    }
    if (elements_.links.isSound(matrix_)) return true;
    const int dropped = matrix_.repairLinks();
    if (dropped < 0) return false;
    matrix_.loadReport_.hasNewLinks = 1;
    matrix_.loadReport_.elementsDropped = dropped;
    dbPrintf(0, "readMatrixFromDisk: illegal links, %d elements dropped, the others linked anew\n", dropped);
    return true;
  }

  // Missing records are no fault if all elements are there: see isAtRecord.
  void completeReport() {
    zq_loadReport& report = matrix_.loadReport_;
    const bool isComplete = report.elementsRead == report.elementsCounted && recordsIllegal_ == 0;
    report.elementsDropped += elements_.numberOutside;
    report.recordsCounted = header_.getNumberOfMatrices();
    report.recordsMissing = recordsIllegal_ + (isComplete ? 0 : recordsAbsent_);
    const bool isWhole = isComplete && report.isCutShort == 0 && report.elementsDropped == 0 && report.hasNewLinks == 0 &&
                         report.levelLinksCut == 0;
    report.state = isWhole ? zq_loadWhole : zq_loadRepaired;
  }

  void makeRecordEmpty(int id) {
    infoOf(id)->deInitMatrixInfo();
    infoOf(id)->initMatrixInfo(id);
  }

  /// After a refusal behind the header: makes the matrix empty, with the file's number of sub-matrices.
  void becomeEmpty() {
    const int numberOfMatrices = header_.getMaxNumberOfMatrices();
    for (int id = 0; id < numberOfMatrices; ++id) makeRecordEmpty(id);
    header_.setMatrixInfoType(Tier::infoType);
    header_.setOffsetToUpdateInfos(0);
    header_.setPositionOfUpdateInfos(0);
    header_.closeAndRemoveUpdateInfos();
    const int size = std::max(numberOfMatrices, zmatrix::initialBlockSize);
    const bool hasRoom = matrix_.makeEmptyBlock(size);
    for (int id = 0; hasRoom && id < numberOfMatrices; ++id) matrix_.template createElementAt<Element>(id);
    if (!hasRoom) {
      matrix_.deInitMatrix();
      return;
    }
    header_._setMatrixBlockSize(size);
    header_._setMaximalStack(numberOfMatrices);
  }

  Info* infoOf(int id) const { return static_cast<Info*>(matrix_.matrixInfoArray_[id]); }

  Matrix& matrix_;
  ZQMatrixFileHeader& header_;
  zmatrix::ZQFileReader& file_;
  FILE* stream_;
  ZQMatrixElementReader<Tier> elements_;
  int infoType_ = 0;
  int stackOfFile_ = 0;
  int recordsIllegal_ = 0;
  int recordsAbsent_ = 0;
};

}  // namespace zmatrix
