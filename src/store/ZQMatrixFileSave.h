// Saving a matrix, shared by all tiers: header, the info records up to the highest occupied sub-matrix, all slots up to
// maximalStack, and from the medium tier up the history. The file is replaced whole or not at all: see ZQSafeFile.
#pragma once

#include <cstdio>
#include <ctime>

#include "file/ZQSafeFile.h"
#include "frame/ZQProgress.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQMatrixElementFile.h"

namespace zmatrix {

template <class Tier>
struct ZQMatrixFileSave {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;
  static constexpr bool hasHistory = Tier::infoType >= 1;

  static int save(Matrix& matrix, const char* path) {
    zmatrix::ZQSafeFile target;
    if (!target.open(path)) {
      dbPrintf(0, "saveMatrixToDisk: Could not open file %s for writing!\n", path != nullptr ? path : "");
      return -1;
    }
    ZQMatrixFileHeader& header = *matrix.getMatrixFileHeader();
    const int offsetToUpdateInfos = header.getOffsetToUpdateInfos();
    bool isWritten = false;
    if (matrix.hasBlock()) {  // a matrix that has lost its block must not replace an older file
      zmatrix::ZQFileWriter file(target.getStream());
      file.writeBackAtOnce();
      isWritten = ZQMatrixFileSave(matrix, file).write();
    }
    if (isWritten && target.commit()) return 1;
    header.setOffsetToUpdateInfos(offsetToUpdateInfos);  // of the old file, which remains
    dbPrintf(0, "saveMatrixToDisk: Could not write file %s!\n", path);
    return -1;
  }

 private:
  ZQMatrixFileSave(Matrix& matrix, zmatrix::ZQFileWriter& file)
      : matrix_(matrix), header_(*matrix.getMatrixFileHeader()), file_(file) {}

  // The settings of the current sub-matrix decide for the whole file whether a history is written.
  bool write() {
    int addUpdateInfo = 0;
    int addSequence = 0;
    if constexpr (hasHistory) {
      addUpdateInfo = matrix_.getMatrixInfo()->getAddUpdateInfo();
      addSequence = matrix_.getMatrixInfo()->getAddSequenceToUpdateInfo();
    }
    highest_ = matrix_.getHighestOccupiedMatrixID();
    header_.setNumberOfMatrices(highest_ + 1);
    const long long positionOfOffset = header_.writeFileHeader(file_);
    for (int id = 0; id <= highest_; ++id) writeRecord(id, 0);
    writeElements();
    header_.setOffsetToUpdateInfos(0);
    const bool isHistoryComplete = addUpdateInfo != 1 || writeHistory(positionOfOffset, addSequence);
    return file_.flush() && isHistoryComplete;
  }

  void writeRecord(int id, int withSequence) {
    Info& info = *infoOf(id);
    info.setTimeStamp(static_cast<unsigned int>(time(nullptr)));
    info.writeUpdateInfo(file_, withSequence);
  }

  void writeElements() {
    const int stack = header_.getMaximalStack();
    int elementCount = zmatrix::negativeOf(header_.getMaxNumberOfMatrices());
    int ruleCount = 0;
    const bool countsRules = hasHistory && ZQDebugChannel::shows(1);  // only the message of level 1 needs the count
    if constexpr (hasHistory) {
      snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "saveMatrixToDisk: (%d) items", stack);
    }
    const zmatrix::ProgressOfLoop progress;
    long long position = 0;
    while (position <= stack) {
      if constexpr (hasHistory) progress.reach(static_cast<int>(position), stack);
      if (!isWritable(position)) {
        const long long behind = endOfRun(position, stack);
        file_.put(static_cast<int>(position - behind));
        position = behind;
        continue;
      }
      zmatrix::writeMatrixElementToDisk(static_cast<Element*>(matrix_.elementAt(position)), file_);
      zmatrix::addTo(elementCount, 1);
      if constexpr (hasHistory) {
        if (countsRules) ruleCount += matrix_.isRuleAt(static_cast<int>(position));
      }
      ++position;
    }
    if (position > stack + 1LL) {
      dbPrintf(0, "writeMatrixToDisk(): imatrix (%d) > _maxinalStack (%d) unexpected\n", static_cast<int>(position), stack);
    }
    reportCounts(elementCount, ruleCount);
  }

  /// False for an empty slot and for an element that is marked for removal, which is written as an empty slot.
  bool isWritable(long long position) const {
    const ZQMatrixBaseElement* element = matrix_.elementAt(position);
    return element != nullptr && element->getWriteCount() >= 0;
  }

  /// The end of the run of slots without a writable element.
  long long endOfRun(long long position, int stack) const {
    while (position <= stack && position < matrix_.numberOfSlots_ && !isWritable(position)) ++position;
    return position < matrix_.numberOfSlots_ ? position : static_cast<long long>(stack) + 1;
  }

  void reportCounts(int elementCount, int ruleCount) {
    int total = 0;
    for (int id = 0; id <= highest_; ++id) zmatrix::addTo(total, infoOf(id)->getNumberOfMatrixElements());
    if (elementCount == total) {
      dbPrintf(1, "writeMatrixToDisk(): elementCount (%d) items written (ruleCount: %d)\n", elementCount, ruleCount);
    } else {
      dbPrintf(0, "writeMatrixToDisk(): elementCount (%d) differs from totalNumberOfElements (%d)!\n", elementCount, total);
    }
  }

  // Writes the history of the file that the matrix was read from, then the record of each sub-matrix that was fed since. False if
  // the older records could not be read.
  bool writeHistory(long long positionOfOffset, int withSequence) {
    const long long positionOfHistory = file_.getPosition();
    const bool canBeNamed = positionOfHistory <= zmatrix::largestOffsetToUpdateInfos;
    FILE* olderRecords = header_.getFpUpdateInfos();
    if (olderRecords == nullptr) {
      olderRecords = tmpfile();
      header_.setFpUpdateInfos(olderRecords);
      header_.setFpUpdateInfosFileName("");
    }
    // If the offset doesn't fit the header it is 0; the history still follows the elements, where a load finds it.
    const int offset = canBeNamed ? static_cast<int>(positionOfHistory) : 0;
    header_.setOffsetToUpdateInfos(offset);
    file_.patch(positionOfOffset, offset);
    if (olderRecords != nullptr) {
      rewind(olderRecords);
      if (!zmatrix::copyRest(olderRecords, file_)) return false;
    }
    for (int id = 0; id <= highest_; ++id) {
      if constexpr (hasHistory) {
        if (infoOf(id)->getHasBeenChanged() == 1) writeRecord(id, withSequence);
      }
    }
    return true;
  }

  Info* infoOf(int id) const { return static_cast<Info*>(matrix_.getMatrixInfoArray()[id]); }

  Matrix& matrix_;
  ZQMatrixFileHeader& header_;
  zmatrix::ZQFileWriter& file_;
  int highest_ = -1;
};

}  // namespace zmatrix
