// The messages of a load that differ between the tiers. Their texts, misspellings included, are part of the interface.
#pragma once

#include "frame/ZQSentence.h"

namespace zmatrix {

struct MatrixFileTexts {
  ZQSentence<int> slotIsOccupied;
  ZQSentence<int, int> infoTypeTooHigh;
  const char* endReached;
  ZQSentence<int, int> beyondStack;
  ZQSentence<int, int> countsDiffer;
};

inline constexpr MatrixFileTexts baseFileTexts = {
    "readMatrixBaseElement on position %d is already occupied!\n",
    "Error from readAndInitMatrixFromDisk: matrix no. %d is of info type %d (should be 0(Basic)\n",
    "readAndInitMatrixFromDisk(): EOF reached before last element read\n",
    "readAndInitMatrixFromDisk(): imatrix (%d) > _maxinalStack (%d) unexpected\n",
    "readAndInitMatrixFromDisk(): elementCount (%d) differs from totalNumberOfElements (%d)!\n"};
inline constexpr MatrixFileTexts mediumFileTexts = {
    "readMatrixMediumElement on position %d is already occupied!\n",
    "Error from readAndInitMatrixFromDisk: matrix no. %d is of info type %d (should be 1(Medium) or less)\n",
    "readAndInitMatrixFrmDisk(): EOF reached before last element read\n",
    "readAndInitMatrixFrmDisk(): imatrix (%d) > _maxinalStack (%d) unexpected\n",
    "readAndInitMatrixFrmDisk(): elementCount (%d) differs from totalNumberOfElements (%d)!\n"};
inline constexpr MatrixFileTexts fullFileTexts = {
    "readMatrixElement on position %d is already occupied!\n",
    "Error from readAndInitMatrixFromDisk: matrix no. %d is of info type %d (should be 2(Full) or less)\n",
    mediumFileTexts.endReached, mediumFileTexts.beyondStack, mediumFileTexts.countsDiffer};

}  // namespace zmatrix
