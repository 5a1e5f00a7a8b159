// The codec of the base part of an info record, and the allocation of the arrays whose sizes it holds.
#include <algorithm>
#include <cstdlib>

#include "settings/ZQMatrixInfoCodec.h"

namespace {

constexpr long long arraysOfDimensions = 6;  ///< in the full tier's record: each has an int per dimension

bool isCoordinateSize(int size) {
  const long long width = std::llabs(static_cast<long long>(size));
  return width == 1 || width == 2 || width == 4 || width == 8;
}

}  // namespace

template <class Fields>
void ZQMatrixBaseInfo::describeBasePart(Fields& fields) {
  fields.number(updateInfoSize_);
  for (const zmatrix::FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeBase)) {
    if (row.kind == zmatrix::FieldRow::coordinateSizes) {
      describeCoordinateSizes(fields);
    } else {
      zmatrix::describeField(fields, row, *this);
    }
  }
  fields.setVersion(softwareVersion_);
  if constexpr (Fields::reads) {
    fields.require(fields.isSound() && makeDimensionArrays(fields.file));
    if (!fields.isSound()) return;
  }
  const int beyond = zmatrix::successorOf(maximalMatrixIndex_);
  describeDimensions(fields, minimalIndices_, beyond);
  describeDimensions(fields, maximalIndices_, zmatrix::negativeOf(beyond));
}

template void ZQMatrixBaseInfo::describeBasePart(zmatrix::ZQFieldWriter&);
template void ZQMatrixBaseInfo::describeBasePart(zmatrix::ZQFieldReader&);

template <class Fields>
void ZQMatrixBaseInfo::describeCoordinateSizes(Fields& fields) {
  if constexpr (Fields::reads) {
    if (!fields.isSound()) return;
    fields.require(fields.file.hasRoom(sizeOfCoordinateDimensions_.assign(coordinateDimension_, zmatrix::defaultCoordinateSize)));
    if (!fields.isSound()) return;
  }
  for (int k = 0; k < coordinateDimension_; ++k) {
    int size = k < sizeOfCoordinateDimensions_.count() ? sizeOfCoordinateDimensions_[k] : zmatrix::defaultCoordinateSize;
    fields.number(size);
    fields.require(isCoordinateSize(size));
    if (Fields::reads) sizeOfCoordinateDimensions_[k] = size;
  }
}

// A stored capacity is raised to the dimensions in use, and reduced to them if it is too large for a file of this size.
bool ZQMatrixBaseInfo::makeDimensionArrays(zmatrix::ZQFileReader& file) {
  constexpr long long bytesOfDimension = arraysOfDimensions * static_cast<long long>(sizeof(int));
  internalCurrentDimension_ = std::min(std::max(internalCurrentDimension_, currentDimension_), INT_MAX - 1);
  if (!file.grants(internalCurrentDimension_ * bytesOfDimension)) {
    internalCurrentDimension_ = currentDimension_;
    if (!file.grants(internalCurrentDimension_ * bytesOfDimension)) return false;
  }
  const long long bytesOfTemporaryMemory = internalLengthOfTemporaryMemory_ * static_cast<long long>(sizeof(int));
  if (internalLengthOfTemporaryMemory_ < 0 || !file.grants(bytesOfTemporaryMemory)) {
    internalLengthOfTemporaryMemory_ = zmatrix::smallestTemporaryMemory;
  }
  return file.hasRoom(minimalIndices_.assign(internalCurrentDimension_, 0) &&
                      maximalIndices_.assign(internalCurrentDimension_, 0) &&
                      matrixPtr_.assign(internalCurrentDimension_ + 1LL, 0) &&
                      temporaryMemory_.assign(std::max(internalLengthOfTemporaryMemory_, zmatrix::smallestTemporaryMemory), 0));
}

bool ZQMatrixBaseInfo::readBasePart(zmatrix::ZQFieldReader& fields) {
  describeBasePart(fields);
  if (!fields.isSound()) return false;
  fields.endPart();
  return true;
}

// The names of many files, or very long paths, make a record larger than the limit. Before the elements such a record is accepted
// if its stored size is right, since all elements would be lost with it. In the history it ends the reading.
bool ZQMatrixBaseInfo::hasLegalSize(const zmatrix::ZQFieldReader& fields, int withSequence) const {
  const auto size = static_cast<unsigned>(updateInfoSize_);
  return size <= zmatrix::largestUpdateInfoSize || (withSequence == 0 && size == fields.getSumOfLengths());
}

int ZQMatrixBaseInfo::readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence) {
  const int id = matrixId_;
  zmatrix::ZQFieldReader fields(file);
  return readBasePart(fields) && hasLegalSize(fields, withSequence) ? 1 : refuseRecord(*this, id);
}

void ZQMatrixBaseInfo::writeUpdateInfo(zmatrix::ZQFileWriter& file, int) {
  writeParts(file, [this](auto& fields) { describeBasePart(fields); });
}
