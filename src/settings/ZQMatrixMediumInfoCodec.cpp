// The codec of the medium part of an info record: its fields, the counts per dimension, the kernel, the names of the files
// learned and the packed sequence of the last update.
#include <algorithm>
#include <cstdlib>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixInfoCodec.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace {

constexpr int firstVersionWithNames = 134;

}  // namespace

template <class Fields>
void ZQMatrixMediumInfo::describeMediumFields(Fields& fields) {
  const auto rows = zmatrix::fieldsAddedBy(ZQMatrixInfoTypeMedium);
  for (const zmatrix::FieldRow& row : rows) {
    if (row.kind == zmatrix::FieldRow::nameOfUpdateFile) {
      fields.text(nameOfUpdateFile_, nameCapacity);
    } else if (row.kind == zmatrix::FieldRow::midiChannelFilter) {
      fields.bytes(midiChannelFilter_, sizeof midiChannelFilter_);
      for (const zmatrix::FieldRow& later : rows) {
        if (later.isBehindChannelFilter) zmatrix::describeField(fields, later, *this);
      }
    } else if (!row.isBehindChannelFilter) {
      zmatrix::describeField(fields, row, *this);
    }
  }
}

template <class Fields>
void ZQMatrixMediumInfo::describeMediumPart(Fields& fields, int withSequence) {
  describeMediumFields(fields);
  if constexpr (Fields::reads) {
    fields.require(fields.isSound() && makeMediumArrays(fields.file));
    if (!fields.isSound()) return;
  }
  describeDimensions(fields, rulesInDimension_, 0);
  describeDimensions(fields, uniqueRulesInDimension_, 0);
  describeDimensions(fields, writeElementsInDimension_, 0);
  describeKernel(fields, kernelOriginalSequence_, lengthOfKernelOriginalSequence_);
  describeKernel(fields, kernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_);
  describeNamesOfUpdateFiles(fields);
  describeUpdateSequence(fields, withSequence);
}

template void ZQMatrixMediumInfo::describeMediumPart(zmatrix::ZQFieldWriter&, int);
template void ZQMatrixMediumInfo::describeMediumPart(zmatrix::ZQFieldReader&, int);

// In the file the items are ordered by coordinate. A length without items is set to 0.
template <class Fields>
void ZQMatrixMediumInfo::describeKernel(Fields& fields, zmatrix::ZQKernelItems& items, int& length) {
  const long long numberOfValues = static_cast<long long>(length) * coordinateDimension_;
  if constexpr (Fields::reads) {
    int isThere = 0;
    fields.number(isThere);
    if (isThere != 1 || length < 1) {
      if (coordinateDimension_ > 0) length = std::min(length, 0);
      return;
    }
    const bool isComplete = numberOfValues * static_cast<long long>(sizeof(int)) <= fields.file.getBytesLeft();
    fields.require(isComplete && fields.file.hasRoom(items.provide(coordinateDimension_, length)));
    for (int k = 0; fields.isSound() && k < coordinateDimension_; ++k) {
      for (int i = 0; i < length; ++i) fields.number(items.at(i, k));
    }
  } else {
    const bool isThere =
        length >= 1 && coordinateDimension_ >= 1 && items.coordinates() >= coordinateDimension_ && items.room() >= length;
    zmatrix::writeFlagged(fields, isThere, numberOfValues,
                          [&](long long i) { return items.at(static_cast<int>(i % length), static_cast<int>(i / length)); });
  }
}

template <class Fields>
void ZQMatrixMediumInfo::describeNamesOfUpdateFiles(Fields& fields) {
  int isThere = !namesOfUpdateFiles_.empty() && namesOfUpdateFiles_[0] != 0 ? 1 : 0;
  fields.number(isThere, firstVersionWithNames, 0);
  int length =
      isThere == 1 && !Fields::reads
          ? static_cast<int>(strnlen(namesOfUpdateFiles_.data(), static_cast<size_t>(namesOfUpdateFiles_.count() - 1))) + 1
          : 0;
  if (isThere != 1) return;
  fields.number(length);
  if constexpr (Fields::reads) {
    fields.require(length >= 1 && length <= fields.file.getBytesLeft() &&
                   fields.file.hasRoom(namesOfUpdateFiles_.resize(length, 0)));
    if (!fields.isSound()) return;
  }
  fields.bytes(namesOfUpdateFiles_.data(), static_cast<size_t>(length));
  if (Fields::reads) namesOfUpdateFiles_[length - 1] = 0;
}

template <class Fields>
void ZQMatrixMediumInfo::describeUpdateSequence(Fields& fields, int withSequence) {
  const long long bytesOfSequence = static_cast<long long>(lengthOfUpdateSequence_) * sizeOfUpdateRow();
  int isThere = withSequence == 1 && bytesOfSequence >= 1 && bytesOfSequence <= updateSequence_.count() ? 1 : 0;
  fields.number(isThere);
  if (isThere == 0 || bytesOfSequence < 1) return;
  if constexpr (Fields::reads) {
    fields.require(bytesOfSequence <= fields.file.getBytesLeft());
    if (fields.isSound() && withSequence != 1) fields.file.skip(bytesOfSequence);
    if (withSequence != 1) return;
    fields.require(fields.file.hasRoom(updateSequence_.resize(bytesOfSequence, 0)));
    if (!fields.isSound()) return;
  }
  fields.bytes(updateSequence_.data(), static_cast<size_t>(bytesOfSequence));
}

// The internal lengths of a file are kept as numbers, and raised if they are too small. The kernel's memory doesn't depend on
// them: it is allocated when a sequence is read or set.
bool ZQMatrixMediumInfo::makeMediumArrays(zmatrix::ZQFileReader& file) {
  const int originalNeeded = zmatrix::grownCapacity(lengthOfKernelOriginalSequence_);
  if (internalLengthOfKernelOriginalSequence_ < originalNeeded) {
    dbPrintf(0, "ReadUpdateInfo:_internalLengthOfKernelOriginalSequence < _lengthOfKernelOriginalSequence: %d<->%d\n",
             internalLengthOfKernelOriginalSequence_, lengthOfKernelOriginalSequence_);
    internalLengthOfKernelOriginalSequence_ = originalNeeded;
  }
  const int preProcessedNeeded = zmatrix::grownCapacity(lengthOfKernelPreProcessedSequence_);
  if (internalLengthOfKernelPreProcessedSequence_ < preProcessedNeeded) {
    dbPrintf(0, "ReadUpdateInfo:_internalLengthOfKernelPreProcessedSequence < _lengthOfKernelPreProcessedSequence: %d<->%d\n",
             internalLengthOfKernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_);
    internalLengthOfKernelPreProcessedSequence_ = preProcessedNeeded;
  }
  kernelOriginalSequence_.reset();
  kernelOriginalSequenceInitialValues_.reset();
  kernelPreProcessedSequence_.reset();
  facesThatAgree_ = noFaces;
  return file.hasRoom(rulesInDimension_.assign(internalCurrentDimension_, 0) &&
                      uniqueRulesInDimension_.assign(internalCurrentDimension_, 0) &&
                      writeElementsInDimension_.assign(internalCurrentDimension_, 0));
}

bool ZQMatrixMediumInfo::readMediumPart(zmatrix::ZQFieldReader& fields, int withSequence) {
  if (!readBasePart(fields)) return false;
  setMediumDefaults();
  if (updateInfoType_ < ZQMatrixInfoTypeMedium) {
    hasBeenChanged_ = 0;
    return makeMediumArrays(fields.file);
  }
  describeMediumPart(fields, withSequence);
  if (!fields.isSound()) return false;
  fields.endPart();
  if (lengthOfKernelOriginalSequence_ < 1) return true;
  if (!fields.file.hasRoom(kernelOriginalSequenceInitialValues_.provide(coordinateDimension_, lengthOfKernelOriginalSequence_))) {
    return false;
  }
  std::copy_n(kernelOriginalSequence_.data(), lengthOfKernelOriginalSequence_ * coordinateDimension_,
              kernelOriginalSequenceInitialValues_.data());
  return true;
}

int ZQMatrixMediumInfo::readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence) {
  const int id = matrixId_;
  zmatrix::ZQFieldReader fields(file);
  return readMediumPart(fields, withSequence) && hasLegalSize(fields, withSequence) ? 1 : refuseRecord(*this, id);
}

void ZQMatrixMediumInfo::writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence) {
  writeParts(
      file, [this](auto& fields) { describeBasePart(fields); },
      [this, withSequence](auto& fields) {
        if (updateInfoType_ >= ZQMatrixInfoTypeMedium) describeMediumPart(fields, withSequence);
      });
}
