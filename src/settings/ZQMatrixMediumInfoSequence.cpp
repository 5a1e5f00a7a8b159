// How the medium record packs the items of a feed: rows of one item, each coordinate with its own width, low byte first. A
// negative width means a signed coordinate.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace {

constexpr int numberOfEndRows = 4;
constexpr char endOfSequenceByte = 10;
constexpr int beyondAllIndices = zmatrix::initialMaximalMatrixIndex + 1;  ///< where the search for the extremes starts

struct Extremes {
  int lowest = beyondAllIndices;
  int highest = -beyondAllIndices;
};

// The bound 32766 is one short of its type, and stays so.
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
  if (coordinateDimension < 1 || length < 0 || (sequence == nullptr && length > 0)) return;
  const int numberOfItems = length / coordinateDimension;
  const bool isAppended = updateSequence.count() > 0 && addSequenceToUpdateInfoMode == 1;
  int oldSizes[zmatrix::largestCoordinateDimension] = {};
  const int numberOfSizes = std::min(sizeOfCoordinateDimensions.count(), zmatrix::largestCoordinateDimension);
  if (numberOfSizes < coordinateDimension) return;
  std::copy_n(sizeOfCoordinateDimensions.data(), numberOfSizes, oldSizes);
  const long long oldRows = isAppended ? std::max(lengthOfUpdateSequence, 0) : 0;
  totalLengthOfAllUpdateSequences =
      static_cast<int>(static_cast<unsigned>(totalLengthOfAllUpdateSequences) + static_cast<unsigned>(numberOfItems));

  chooseCoordinateSizes(sequence, numberOfItems);
  if (isAppended) restoreCoordinateSizes(oldSizes, numberOfSizes);
  const long long numberOfRows = oldRows + numberOfItems + numberOfEndRows;
  if (!isAppended) updateSequence.reset();
  if (numberOfRows > INT_MAX || !updateSequence.resize(numberOfRows * sizeOfUpdateRow(), endOfSequenceByte)) {
    if (!isAppended) lengthOfUpdateSequence = 0;
    return;
  }
  lengthOfUpdateSequence = static_cast<int>(numberOfRows);
  char* firstNewRow = updateSequence.data() + oldRows * sizeOfUpdateRow();
  packItems(sequence, numberOfItems, firstNewRow);
  char* endRows = firstNewRow + static_cast<long long>(numberOfItems) * sizeOfUpdateRow();
  memset(endRows, endOfSequenceByte, static_cast<size_t>(numberOfEndRows) * static_cast<size_t>(sizeOfUpdateRow()));
}

void ZQMatrixMediumInfo::chooseCoordinateSizes(const int* sequence, int numberOfItems) {
  for (int k = 0; k < coordinateDimension; ++k) {
    Extremes extremes;
    for (long long i = 0; i < numberOfItems; ++i) {
      const int value = sequence[i * coordinateDimension + k];
      extremes.lowest = std::min(extremes.lowest, value);
      extremes.highest = std::max(extremes.highest, value);
    }
    sizeOfCoordinateDimensions[k] = widthFor(extremes);
  }
}

// Rows that follow others must be as wide as those.
void ZQMatrixMediumInfo::restoreCoordinateSizes(const int* oldSizes, int numberOfOldSizes) {
  for (int k = 0; k < numberOfOldSizes; ++k) {
    if (sizeOfCoordinateDimensions[k] == oldSizes[k]) continue;
    dbPrintf(0, "########## Error from generateUpdateInfoSequence: SizeOfCoordinateDimensions unexpected\n");
    dbPrintf(0, "########## update sequence may contain invalid data...\n");
    sizeOfCoordinateDimensions[k] = oldSizes[k];
  }
}

int ZQMatrixMediumInfo::sizeOfUpdateRow() const {
  int sizeOfRow = 0;
  const int numberOfSizes = std::min(coordinateDimension, sizeOfCoordinateDimensions.count());
  for (int k = 0; k < numberOfSizes; ++k) sizeOfRow += std::abs(sizeOfCoordinateDimensions[k]);
  return sizeOfRow;
}

void ZQMatrixMediumInfo::packItems(const int* sequence, int numberOfItems, char* row) const {
  for (long long i = 0; i < numberOfItems; ++i) {
    for (int k = 0; k < coordinateDimension; ++k) {
      row = packLittleEndian(row, sequence[i * coordinateDimension + k], std::abs(sizeOfCoordinateDimensions[k]));
    }
  }
}
