// Print-outs of all sub-matrices of a matrix, shared by all tiers. They leave the current ID unchanged.
#pragma once

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixInfo.h"

namespace zmatrix {

// The head of the table and one of its rows, by the tier of the record.
void printBasicPropertiesHead(const ZQMatrixBaseInfo& record, int maxNumberOfMatrices);
void printBasicPropertiesHead(const ZQMatrixMediumInfo& record, int maxNumberOfMatrices);
void printBasicPropertiesHead(const ZQMatrixInfo& record, int maxNumberOfMatrices);
void printBasicPropertiesRow(const ZQMatrixBaseInfo& record, int id);
void printBasicPropertiesRow(const ZQMatrixMediumInfo& record, int id);
void printBasicPropertiesRow(const ZQMatrixInfo& record, int id);

void printRecordBanner(const ZQMatrixBaseInfo& record);
void printRecordStatistics(const ZQMatrixBaseInfo& record, int maximalStack);

/// A table of the sub-matrices that have written elements.
template <class Matrix>
void showBasicProperties(Matrix& matrix) {
  const int numberOfRecords = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices();
  printBasicPropertiesHead(*matrix.getMatrixInfo(), numberOfRecords);
  for (int id = 0; id < numberOfRecords; ++id) {
    const auto* record = matrix.getMatrixInfo(id);
    if (record != nullptr && record->getNumberOfWriteElements() > 0) printBasicPropertiesRow(*record, id);
  }
}

/// The records up to the highest occupied one, with statistics. Prints nothing if there is no debug file.
template <class Matrix>
void printMatrixOverallInfo(Matrix& matrix) {
  if (ZQDebugChannel::fpMatrixErr == nullptr) return;
  int highest = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices() - 1;
  while (highest >= 0 && (matrix.getMatrixInfo(highest) == nullptr || matrix.getMatrixInfo(highest)->isEmpty())) --highest;
  for (int id = 0; id <= highest; ++id) {
    auto* record = matrix.getMatrixInfo(id);
    if (record == nullptr) continue;
    printRecordBanner(*record);
    record->printMatrixInfo();
    printRecordStatistics(*record, matrix.getMatrixFileHeader()->getMaximalStack());
  }
}

}  // namespace zmatrix
