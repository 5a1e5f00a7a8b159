// The parts of the record codec that are shared by all tiers. A tier's part of a record follows that of the tier below.
#pragma once

#include "file/ZQFieldCodec.h"
#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"

namespace zmatrix {

constexpr unsigned largestUpdateInfoSize = 100000;

/// Writes or reads the number of a row. A value outside the row's range makes a record illegal; only fields that determine the
/// layout of the record or the length of an array have a range.
template <class Fields, class Record>
void describeField(Fields& fields, const FieldRow& row, Record& record) {
  row.inRecord.visit(record, [&](auto& number) {
    fields.number(number, row.firstVersion, static_cast<std::decay_t<decltype(number)>>(row.initial));
    if constexpr (Fields::reads) {
      const bool isLegal = number >= row.lowestInFile && number <= row.highestInFile;
      if (!isLegal && row.refusal != nullptr) dbPrintf(0, "%s", row.refusal);
      fields.require(isLegal);
    }
  });
}

/// Writes a flag and, if it is 1, `count` ints.
template <class Values>
void writeFlagged(ZQFieldWriter& fields, bool isThere, long long count, Values valueAt) {
  fields.number(isThere ? 1 : 0);
  for (long long i = 0; isThere && i < count; ++i) fields.number(static_cast<int>(valueAt(i)));
}

}  // namespace zmatrix

// The stored size is not the record's length, but the sum of its lengths at the end of each tier's part.
template <class... Parts>
void ZQMatrixBaseInfo::writeParts(zmatrix::ZQFileWriter& file, Parts... describePart) {
  softwareVersion_ = zmatrix::matrixFormatVersion;
  zmatrix::ZQFileWriter counter(nullptr);
  zmatrix::ZQFieldWriter countedFields(counter);
  unsigned sum = 0;
  ((describePart(countedFields), sum += static_cast<unsigned>(counter.getPosition())), ...);
  updateInfoSize_ = static_cast<int>(sum);
  zmatrix::ZQFieldWriter fields(file);
  (describePart(fields), ...);
}

template <class Info>
int ZQMatrixBaseInfo::refuseRecord(Info& info, int id) {
  const int typeInFile = info.updateInfoType_;
  info.deInitMatrixInfo();
  info.initMatrixInfo(id);
  info.updateInfoType_ = typeInFile;
  return -1;
}

template <class Fields>
void ZQMatrixBaseInfo::describeDimensions(Fields& fields, zmatrix::ZQArray<int>& array, int unused) {
  if constexpr (Fields::reads) {
    int isThere = 0;
    fields.number(isThere);
    array.fillFrom(0, unused);
    for (int i = 0; isThere == 1 && i < currentDimension_; ++i) fields.number(array[i]);
  } else {
    const bool isThere = currentDimension_ >= 1 && array.count() >= currentDimension_;
    zmatrix::writeFlagged(fields, isThere, currentDimension_, [&](long long i) { return array[static_cast<int>(i)]; });
  }
}
