// What the three tiers' records share on their way into and out of a matrix file. Each tier writes its part behind the one of the
// tier below.
#pragma once

#include "file/ZQFieldCodec.h"
#include "settings/ZQMatrixBaseInfo.h"

namespace zmatrix {

constexpr unsigned largestUpdateInfoSize = 100000;
constexpr unsigned largestUpdateInfoType = 100;  ///< above it a record is not even gone through

/// A flag, and `count` ints behind it if it is 1.
template <class Values>
void writeFlagged(ZQFieldWriter& fields, bool isThere, long long count, Values valueAt) {
  fields.number(isThere ? 1 : 0);
  for (long long i = 0; isThere && i < count; ++i) fields.number(static_cast<int>(valueAt(i)));
}

}  // namespace zmatrix

// The size that goes into the record is not its length but the sum of the lengths that the writers of the tiers have reached.
template <class... Parts>
void ZQMatrixBaseInfo::writeParts(zmatrix::ZQFileWriter& file, Parts... describePart) {
  softwareVersion = zmatrix::matrixFormatVersion;
  zmatrix::ZQFileWriter counter(nullptr);
  zmatrix::ZQFieldWriter countedFields(counter);
  unsigned sum = 0;
  ((describePart(countedFields), sum += static_cast<unsigned>(counter.getPosition())), ...);
  updateInfoSize = static_cast<int>(sum);
  zmatrix::ZQFieldWriter fields(file);
  (describePart(fields), ...);
}

template <class Info>
int ZQMatrixBaseInfo::refuseRecord(Info& info, int id) {
  const int typeInFile = info.updateInfoType;
  info.deInitMatrixInfo();
  info.initMatrixInfo(id);
  info.updateInfoType = typeInFile;
  return -1;
}

template <class Fields>
void ZQMatrixBaseInfo::describeDimensions(Fields& fields, zmatrix::ZQArray<int>& array, int unused) {
  if constexpr (Fields::reads) {
    int isThere = 0;
    fields.number(isThere);
    array.fillFrom(0, unused);
    for (int i = 0; isThere == 1 && i < currentDimension; ++i) fields.number(array[i]);
  } else {
    const bool isThere = currentDimension >= 1 && array.count() >= currentDimension;
    zmatrix::writeFlagged(fields, isThere, currentDimension, [&](long long i) { return array[static_cast<int>(i)]; });
  }
}
