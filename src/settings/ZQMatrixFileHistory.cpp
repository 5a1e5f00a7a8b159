// The history of a matrix: the update records that follow the elements in the file that it was read from. They are counted by
// reading them, since the number in the header is not reliable.
#include <climits>

#include "file/ZQFileStream.h"
#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixInfo.h"

namespace zmatrix {

namespace {

const char* nameOfTier(int infoType) {
  return infoType == ZQMatrixInfoTypeFull ? "symbol" : infoType == ZQMatrixInfoTypeMedium ? "medium" : "base";
}

}  // namespace

int ZQMatrixFileHeader::readUpdateInfo(ZQMatrixInfo& record, ZQFileReader& file) const {
  if (matrixInfoType_ == ZQMatrixInfoTypeFull) return record.readUpdateInfo(file, 1);
  if (matrixInfoType_ == ZQMatrixInfoTypeMedium) return record.ZQMatrixMediumInfo::readUpdateInfo(file, 1);
  return record.ZQMatrixBaseInfo::readUpdateInfo(file, 1);
}

long long largestOffsetToUpdateInfos = INT_MAX;

void ZQMatrixFileHeader::readMatrixUpdateInfos(int* count) {
  int found = 0;
  if (count == nullptr) count = &found;
  *count = 0;
  const long long begin = offsetToUpdateInfos_ != 0 ? offsetToUpdateInfos_ : positionOfUpdateInfos_;
  if (offsetToUpdateInfos_ == 0 && positionOfUpdateInfos_ <= largestOffsetToUpdateInfos) {
    dbPrintf(1, "Info from readMatrixUpdateInfos: no updateInfos found\n");
    if (numberOfAppendedUpdates_ != 0) dbPrintf(1, "_numberOfAppendedUpdates: %d unexpected\n", numberOfAppendedUpdates_);
    return;
  }
  if (matrixInfos_.count() > 0) {
    dbPrintf(1, "Info from readMatrixUpdateInfos: _matrixInfos already initialized...\n");
    *count = numberOfAppendedUpdates_;
    return;
  }
  FILE* stream = openRegularFile(matrixOriginFilename_);
  if (stream == nullptr) {
    dbPrintf(0, "Error from readMatrixUpdateInfos: matrixFile %s not found\n", matrixOriginFilename_);
    return;
  }
  ZQFileReader file(stream);
  file.seek(begin);
  *count = scanUpdateInfos(file);
  if (*count < 1) {
    numberOfAppendedUpdates_ = 0;
  } else {
    if (*count != numberOfAppendedUpdates_) {
      dbPrintf(1, "number of matrix updates found different from value _numberOf MatrixUpdates: %d <-> %d, value corrected!\n",
               *count, numberOfAppendedUpdates_);
      numberOfAppendedUpdates_ = *count;
    }
    ZQFileReader sameFile(stream);
    sameFile.seek(begin);
    loadUpdateInfos(sameFile, *count);
  }
  fclose(stream);
}

// The end of the file is only detected by a read beyond it, so that a complete history ends with the message too.
int ZQMatrixFileHeader::scanUpdateInfos(ZQFileReader& file) {
  dbPrintf(1, "readMatrixUpdateInfos: _matrixInfos not found, scan of appended updates...\n");
  int count = 0;
  for (;;) {
    ZQMatrixInfo record;
    if (readUpdateInfo(record, file) < 1) {
      dbPrintf(0, "appended %s matrixInfo no. %d: is invalid, read updateinfo aborted...\n", nameOfTier(matrixInfoType_),
               count + 1);
      break;
    }
    ++count;
    if (matrixInfoType_ >= ZQMatrixInfoTypeMedium) dbPrintf(1, "appended symbol matrixInfo no. %d: is OK\n", count);
  }
  return count;
}

void ZQMatrixFileHeader::loadUpdateInfos(ZQFileReader& file, int count) {
  if (!matrixInfos_.resize(count)) return;
  for (int i = 0; i < count; ++i) {
    dbPrintf(1, "allocating memory for updateInfo np: %d\n", i);
    auto* record = new (std::nothrow) ZQMatrixInfo();
    if (record == nullptr) return;
    matrixInfos_.put(i, std::unique_ptr<ZQMatrixBaseInfo>(record));
    if (matrixInfoType_ == ZQMatrixInfoTypeMedium) dbPrintf(1, "reading updateInfo no: %d\n", i);
    const int result = readUpdateInfo(*record, file);
    if (matrixInfoType_ == ZQMatrixInfoTypeMedium) dbPrintf(1, "reading updateInfo no: %d finished\n", i);
    if (result < 1) return;
  }
}

ZQMatrixBaseInfo* ZQMatrixFileHeader::getMatrixUpdateInfo(int index) {
  const bool isAppended = index >= 0 && index < numberOfAppendedUpdates_;
  if (numberOfAppendedUpdates_ == notKnown) {
    dbPrintf(0, "_numberOfAppendedUpdates not available: readMatrixUpdateInfoUpdateInfos() must be called! %d\n",
             numberOfAppendedUpdates_);
  } else if (isAppended && matrixInfos_.data() == nullptr) {
    dbPrintf(0, "_matrixInfos = NULL: readMatrixUpdateInfoUpdateInfos() must be called! \n");
  } else if (!isAppended || index >= matrixInfos_.count()) {
    dbPrintf(0, "getMatrixUpdateInfo(index): illegal index: %d\n", index);
  } else {
    return matrixInfos_[index];
  }
  return nullptr;
}

}  // namespace zmatrix
