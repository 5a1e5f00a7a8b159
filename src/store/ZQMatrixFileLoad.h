// Loading a matrix, told once for the tiers: a tier takes the files of the tiers below it as well, and its records and elements
// are its own in any case. Nothing in the file is believed: what decides over memory is held against the file's size and the
// limits of the system, records that make no sense become empty ones, and the links are checked once all elements stand.
//
// A header that is refused leaves the old content; a later refusal leaves an empty matrix. What had to be dropped or linked anew
// stands in the matrix's report of the load.
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
    const std::string ownPath = path != nullptr ? path : "";  // it may be one of the header's texts, which are about to change
    path = ownPath.c_str();
    ZQMatrixFileHeader& header = *matrix.getMatrixFileHeader();
    matrix.currentMatrixID = 0;
    matrix.loadReport = {};
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
    if (result != 1) matrix.loadReport = {};
    return result;
  }

 private:
  ZQMatrixFileLoad(Matrix& aMatrix, zmatrix::ZQFileReader& aFile, FILE* aStream)
      : matrix(aMatrix), header(*aMatrix.getMatrixFileHeader()), file(aFile), stream(aStream), elements(aMatrix, aFile) {}

  int read(const char* path, int debugLevel) {
    if (!readHeader()) return -1;
    reopenDebugFile(debugLevel);
    header.setMatrixOriginFilename(path);
    header.setMatrixDestinationFilename("");
    if (!readRecords()) return -1;
    stackOfFile = header.getMaximalStack();
    int result = 1;
    if (matrix.makeEmptyBlock(header.getMatrixBlockSize())) {
      elements.read(infoType, stackOfFile);
      matrix.loadReport.isCutShort = file.isAtEnd();  // the read behind the end counts as an element
      if constexpr (hasHistory) {
        if (!keepHistory()) result = -1;
        upgradeRecords();
      }
    } else {
      dbPrintf(0, "error from InitMat: Allocation of _matrixData failed _matrixBlockSize too large: %ld!\n",
               static_cast<long>(header.getMatrixBlockSize()));
      result = -1;
    }
    reportCounts();
    if (result == 1 && (elements.isOutOfMemory || !provideRoots() || !makeLinksSound())) result = -1;
    if (result == -1) becomeEmpty();
    if (result == 1) completeReport();
    return result;
  }

  // The fields that say what there is in memory stay true to it, so that it can still be saved and loaded.
  bool readHeader() {
    char oldFileType[8];
    zmatrix::storeText(oldFileType, sizeof oldFileType, header.getFileType());
    const int oldIs64BitMatrix = header.getIs64BitMatrix();
    const int oldInfoType = header.getMatrixInfoType();
    const int oldMaximum = header.getMaxNumberOfMatrices();
    const int oldNumber = header.getNumberOfMatrices();
    const int oldBlockSize = header.getMatrixBlockSize();
    const int oldStack = header.getMaximalStack();
    bool isAccepted = header.readFileHeader(file) == 1;
    if (isAccepted && !hasLegalNumbers()) {
      dbPrintf(0, "ReadFileHeader: this is not a valid matrix file (illegal blockSIze or number of matrices)\n");
      isAccepted = false;
    }
    const int newMaximum = header.getMaxNumberOfMatrices();
    header._setMaxNumberOfMatrices(oldMaximum);
    if (isAccepted && setNumberOfRecords(newMaximum)) return true;
    header.setFileType(oldFileType);
    header.setIs64BitMatrix(oldIs64BitMatrix);
    header.setMatrixInfoType(oldInfoType);
    header._setNumberOfMatrices(oldNumber);
    header._setMatrixBlockSize(oldBlockSize);
    header._setMaximalStack(oldStack);
    return false;
  }

  // Sub-matrices that hold something have their roots in the file, so that beyond a modest number, which any matrix may have
  // without holding anything, the file limits them.
  bool hasLegalNumbers() const {
    const int maximum = header.getMaxNumberOfMatrices();
    return maximum >= 1 && maximum <= zmatrix::largestNumberOfMatrices && maximum <= header.getMatrixBlockSize() &&
           maximum <= std::max(modestNumberOfMatrices, file.getFileSize() / sizeOfSmallestElement) &&
           header.getMatrixBlockSize() <= zmatrix::largestBlockSize && header.getNumberOfMatrices() >= 0 &&
           header.getNumberOfMatrices() <= maximum;
  }

  /// Gives the matrix records and entries for so many sub-matrices. False if memory has run out.
  bool setNumberOfRecords(int newMaximum) {
    const int oldMaximum = header.getMaxNumberOfMatrices();
    if (!matrix.resizeSubMatrices(newMaximum)) return false;
    for (int id = oldMaximum; id < newMaximum; ++id) {
      if (Tier::announcesMoreMatrices) {
        dbPrintf(0, "matrix to read contains more submatrices than available, must be expanded\n");
      }
      if (!createRecord(id)) {
        static_cast<void>(matrix.resizeSubMatrices(oldMaximum));
        return false;
      }
    }
    header.clearStopFlags();
    return true;
  }

  bool createRecord(int id) {
    std::unique_ptr<Info> info(new (std::nothrow) Info());
    if (info == nullptr || info->initMatrixInfo(id) != 1) return false;
    matrix.matrixInfoArray.put(id, std::move(info));
    return true;
  }

  void reopenDebugFile(int debugLevel) {
    matrix.setMatrixDebugOff();
    header.setMatrixDebugOutputDevice(header.getMatrixDebugOutputDevice());
    matrix.setMatrixDebugOn(debugLevel);
  }

  // The header may count more sub-matrices than have records: its count doesn't fall, but those above the last that holds
  // anything are not written. What stands in their place is the first element.
  bool isAtRecord() {
    const char* bytes = file.peek(2 * sizeof(int));
    return bytes == nullptr || zmatrix::getLittleEndian<int>(bytes + sizeof(int)) == zmatrix::matrixInfoMagicNumber;
  }

  // A record that makes no sense goes unnoticed here, except for its type: it shows in the counts.
  bool readRecords() {
    const int typeOfHeader = header.getMatrixInfoType();
    infoType = typeOfHeader >= 0 && typeOfHeader <= Tier::infoType ? typeOfHeader : Tier::infoType;
    for (int id = 0; id < header.getNumberOfMatrices(); ++id) {
      Info& info = *infoOf(id);
      const bool isThere = isAtRecord();
      const bool isRead = isThere && info.readUpdateInfo(file, 0) == 1;
      if (!isThere) makeRecordEmpty(id);
      if (file.hasRunOutOfMemory()) return giveUp();
      recordsIllegal += isThere && !isRead;
      recordsAbsent += !isThere;
      if (Tier::infoType == 0 ? info.getUpdateInfoType() != 0 : info.getUpdateInfoType() > Tier::infoType) {
        dbPrintf(0, Tier::fileTexts.infoTypeTooHigh, id, info.getUpdateInfoType());
        return giveUp();
      }
      if (isRead) {
        infoType = info.getUpdateInfoType();
      } else {
        info.setUpdateInfoType(Tier::infoType);  // an empty record of this tier: the next save must not tell another
      }
    }
    for (int id = header.getNumberOfMatrices(); id < header.getMaxNumberOfMatrices(); ++id) {
      if (!infoOf(id)->isEmpty()) makeRecordEmpty(id);  // what it counts is gone
    }
    const int numberCut = Tier::checkLoadedRecords(matrix);
    if (numberCut < 0) return giveUp();
    matrix.loadReport.levelLinksCut = numberCut;
    return true;
  }

  bool giveUp() {
    becomeEmpty();
    return false;
  }

  // The rest of the file goes to a stream of its own, for the next save. Without one the history would be lost then, and nobody
  // would notice: so the file is refused. A place that is not behind the elements is a stale one, and holds no history.
  bool keepHistory() {
    const int offset = header.getOffsetToUpdateInfos();
    const long long reached = file.getPosition();
    const long long begin = offset >= 1 ? offset : unnamedHistory(reached);
    header.setPositionOfUpdateInfos(begin);
    if (begin < 1) return true;
    dbPrintf(1, "reading appended updateInfos updateinfos\n");
    header.closeAndRemoveUpdateInfos();
    if (reached != begin) {
      dbPrintf(0, "readAndInitMatrixFromDisk: filePositionAfterMatrix(%u) != _offsetToUpdateInfos(%u): \n",
               static_cast<unsigned>(reached), static_cast<unsigned>(begin));
    }
    if (ZQDebugChannel::globalDebugLevel >= 2) printHistory(begin);
    const long long size = begin >= reached ? std::max(file.getFileSize() - begin, 0LL) : 0;
    for (FILE* (*const make)(long long) : {zmatrix::newTemporaryFile, zmatrix::newFileInMemory}) {
      FILE* history = make(size);
      if (history == nullptr) continue;
      if (copyHistory(begin, size, history)) {
        header.setFpUpdateInfos(history);
        return true;
      }
      fclose(history);
    }
    dbPrintf(0, "readMatrixFromDisk: the history could not be kept\n");
    return false;
  }

  /// A file that is too large for its header to say where the history begins has it behind the elements; 0 if there is none.
  long long unnamedHistory(long long reached) {
    if (reached <= zmatrix::largestOffsetToUpdateInfos || file.isAtEnd()) return 0;
    const char* bytes = file.peek(2 * sizeof(int));
    const bool isRecord =
        bytes != nullptr && zmatrix::getLittleEndian<int>(bytes + sizeof(int)) == zmatrix::matrixInfoMagicNumber;
    return isRecord ? reached : 0;
  }

  bool copyHistory(long long begin, long long size, FILE* history) {
    zmatrix::ZQFileWriter writer(history);
    const bool isCopied = size == 0 || (fseeko(stream, begin, SEEK_SET) == 0 && zmatrix::copyRest(stream, writer));
    return writer.flush() && isCopied;
  }

  void printHistory(long long begin) {
    file.seek(begin);
    for (int number = 1; !file.isAtEnd(); ++number) {
      Info record;
      if (record.readUpdateInfo(file, 1) < 1) return;
      dbPrintf(0, "################# appended old matrixInfo no. %d: #################\n", number);
      record.printMatrixInfo();
    }
  }

  // The current ID stays at the last.
  void upgradeRecords() {
    if (infoType >= Tier::infoType) return;
    for (int id = 0; id < header.getMaxNumberOfMatrices(); ++id) {
      matrix.setCurrentMatrixID(id);
      matrix.getMatrixInfo()->setUpdateInfoType(Tier::infoType);
    }
  }

  void reportCounts() {
    const long long position = elements.position;
    if (position < stackOfFile) dbPrintf(0, "%s", Tier::fileTexts.endReached);
    if (position > stackOfFile + 1LL) {
      dbPrintf(0, Tier::fileTexts.beyondStack, static_cast<int>(position), stackOfFile);
    }
    int total = 0;
    for (int id = 0; id < header.getNumberOfMatrices(); ++id) zmatrix::addTo(total, infoOf(id)->getNumberOfMatrixElements());
    zq_loadReport& report = matrix.loadReport;
    report.elementsCounted = total;
    report.elementsRead = elements.count;
    report.isCutShort |= position < stackOfFile;
    if (elements.count != total) {
      dbPrintf(0, Tier::fileTexts.countsDiffer, elements.count, total);
    } else {
      dbPrintf(1, "readMatrixFromDisk(): elementCount (%d) items read\n", elements.count);
    }
  }

  /// A cut file may lack some: their slots must never look free.
  bool provideRoots() {
    const int roots = header.getMaxNumberOfMatrices();
    for (int id = 0; id < roots; ++id) {
      if (matrix.elementAt(id) == nullptr) matrix.template createElementAt<Element>(id);
    }
    header._setMaximalStack(std::max(header.getMaximalStack(), roots - 1));
    return true;
  }

  bool makeLinksSound() {
    if (elements.numberOutside > 0) {
      dbPrintf(0, "readMatrixFromDisk: %d elements beyond the block of %d dropped\n", elements.numberOutside,
               matrix.numberOfSlots);
    }
    for (int id = 0; id < header.getMaxNumberOfMatrices(); ++id) {
      // A count beyond the block would let it grow for nothing.
      Info& info = *infoOf(id);
      if (info.getNumberOfMatrixElements() > matrix.numberOfSlots) info.setNumberOfMatrixElements(matrix.numberOfSlots);
    }
    if (elements.links.isSound(matrix)) return true;
    const int dropped = matrix.repairLinks();
    if (dropped < 0) return false;
    matrix.loadReport.hasNewLinks = 1;
    matrix.loadReport.elementsDropped = dropped;
    dbPrintf(0, "readMatrixFromDisk: illegal links, %d elements dropped, the others linked anew\n", dropped);
    return true;
  }

  // The header may count sub-matrices that have no record, which is no fault where the elements are all there.
  void completeReport() {
    zq_loadReport& report = matrix.loadReport;
    const bool isComplete = report.elementsRead == report.elementsCounted && recordsIllegal == 0;
    report.elementsDropped += elements.numberOutside;
    report.recordsCounted = header.getNumberOfMatrices();
    report.recordsMissing = recordsIllegal + (isComplete ? 0 : recordsAbsent);
    const bool isWhole = isComplete && report.isCutShort == 0 && report.elementsDropped == 0 && report.hasNewLinks == 0 &&
                         report.levelLinksCut == 0;
    report.state = isWhole ? zq_loadWhole : zq_loadRepaired;
  }

  void makeRecordEmpty(int id) {
    infoOf(id)->deInitMatrixInfo();
    infoOf(id)->initMatrixInfo(id);
  }

  /// After a refusal behind the header: a new matrix with the file's number of sub-matrices.
  void becomeEmpty() {
    const int numberOfMatrices = header.getMaxNumberOfMatrices();
    for (int id = 0; id < numberOfMatrices; ++id) makeRecordEmpty(id);
    header.setMatrixInfoType(Tier::infoType);
    header.setOffsetToUpdateInfos(0);
    header.setPositionOfUpdateInfos(0);
    header.closeAndRemoveUpdateInfos();
    const int size = std::max(numberOfMatrices, zmatrix::initialBlockSize);
    const bool hasRoom = matrix.makeEmptyBlock(size);
    for (int id = 0; hasRoom && id < numberOfMatrices; ++id) matrix.template createElementAt<Element>(id);
    if (!hasRoom) {
      matrix.deInitMatrix();
      return;
    }
    header._setMatrixBlockSize(size);
    header._setMaximalStack(numberOfMatrices);
  }

  Info* infoOf(int id) const { return static_cast<Info*>(matrix.matrixInfoArray[id]); }

  Matrix& matrix;
  ZQMatrixFileHeader& header;
  zmatrix::ZQFileReader& file;
  FILE* stream;
  ZQMatrixElementReader<Tier> elements;
  int infoType = 0;
  int stackOfFile = 0;
  int recordsIllegal = 0;
  int recordsAbsent = 0;
};

}  // namespace zmatrix
