// Packing of the learned items in the medium record: a row per item, each coordinate with its own width in bytes, little-endian.
// A negative width marks a signed coordinate.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace {

constexpr int numberOfEndRows = 4;
constexpr char endOfSequenceByte = 10;
constexpr int beyondAllIndices = zmatrix::initialMaximalMatrixIndex + 1;  ///< initial value of the search for extremes

struct Extremes {
  int lowest = beyondAllIndices;
  int highest = -beyondAllIndices;
};

// The bound 32766, one below the largest 16-bit value, is part of the file format.
int widthFor(const Extremes& extremes) {
  if (extremes.lowest >= -128 && extremes.highest <= 127) return -1;
  if (extremes.lowest >= 0 && extremes.highest <= 255) return 1;
  if (extremes.lowest >= -32768 && extremes.highest <= 32766) return -2;
  if (extremes.lowest >= 0 && extremes.highest <= 65535) return 2;
  if (extremes.highest != INT_MAX) return -4;
  return extremes.lowest >= 0 ? 4 : -8;
}

char* packLittleEndian(char* to, int value, int width) {
  const uint64_t widened = static_cast<uint64_t>(static_cast<int64_t>(value));
  for (int byte = 0; byte < width; ++byte) *to++ = static_cast<char>(static_cast<unsigned char>(widened >> (8 * byte)));
  return to;
}

}  // namespace

void ZQMatrixMediumInfo::generateUpdateInfoSequence(const int* sequence, int length) {
  if (coordinateDimension_ < 1 || length < 0 || (sequence == nullptr && length > 0)) return;
  const int numberOfItems = length / coordinateDimension_;
  const bool isAppended = updateSequence_.count() > 0 && addSequenceToUpdateInfoMode_ == 1;
  int oldSizes[zmatrix::largestCoordinateDimension] = {};
  const int numberOfSizes = std::min(sizeOfCoordinateDimensions_.count(), zmatrix::largestCoordinateDimension);
  if (numberOfSizes < coordinateDimension_) return;
  std::copy_n(sizeOfCoordinateDimensions_.data(), numberOfSizes, oldSizes);
  const long long oldRows = isAppended ? std::max(lengthOfUpdateSequence_, 0) : 0;
  totalLengthOfAllUpdateSequences_ =
      static_cast<int>(static_cast<unsigned>(totalLengthOfAllUpdateSequences_) + static_cast<unsigned>(numberOfItems));

  chooseCoordinateSizes(sequence, numberOfItems);
  if (isAppended) restoreCoordinateSizes(oldSizes, numberOfSizes);
  const long long numberOfRows = oldRows + numberOfItems + numberOfEndRows;
  if (!isAppended) updateSequence_.reset();
  if (numberOfRows > INT_MAX || !updateSequence_.resize(numberOfRows * sizeOfUpdateRow(), endOfSequenceByte)) {
    if (!isAppended) lengthOfUpdateSequence_ = 0;
    return;
  }
  lengthOfUpdateSequence_ = static_cast<int>(numberOfRows);
  char* firstNewRow = updateSequence_.data() + oldRows * sizeOfUpdateRow();
  packItems(sequence, numberOfItems, firstNewRow);
  char* endRows = firstNewRow + static_cast<long long>(numberOfItems) * sizeOfUpdateRow();
  memset(endRows, endOfSequenceByte, static_cast<size_t>(numberOfEndRows) * static_cast<size_t>(sizeOfUpdateRow()));
}

void ZQMatrixMediumInfo::chooseCoordinateSizes(const int* sequence, int numberOfItems) {
  for (int k = 0; k < coordinateDimension_; ++k) {
    Extremes extremes;
    for (long long i = 0; i < numberOfItems; ++i) {
      const int value = sequence[i * coordinateDimension_ + k];
      extremes.lowest = std::min(extremes.lowest, value);
      extremes.highest = std::max(extremes.highest, value);
    }
    sizeOfCoordinateDimensions_[k] = widthFor(extremes);
  }
}

// Appended rows must have the width of the earlier ones.
void ZQMatrixMediumInfo::restoreCoordinateSizes(const int* oldSizes, int numberOfOldSizes) {
  for (int k = 0; k < numberOfOldSizes; ++k) {
    if (sizeOfCoordinateDimensions_[k] == oldSizes[k]) continue;
    dbPrintf(0, "########## Error from generateUpdateInfoSequence: SizeOfCoordinateDimensions unexpected\n");
    dbPrintf(0, "########## update sequence may contain invalid data...\n");
    sizeOfCoordinateDimensions_[k] = oldSizes[k];
  }
}

int ZQMatrixMediumInfo::sizeOfUpdateRow() const {
  int sizeOfRow = 0;
  const int numberOfSizes = std::min(coordinateDimension_, sizeOfCoordinateDimensions_.count());
  for (int k = 0; k < numberOfSizes; ++k) sizeOfRow += std::abs(sizeOfCoordinateDimensions_[k]);
  return sizeOfRow;
}

void ZQMatrixMediumInfo::packItems(const int* sequence, int numberOfItems, char* row) const {
  for (long long i = 0; i < numberOfItems; ++i) {
    for (int k = 0; k < coordinateDimension_; ++k) {
      row = packLittleEndian(row, sequence[i * coordinateDimension_ + k], std::abs(sizeOfCoordinateDimensions_[k]));
    }
  }
}
