#include "sequence/ZQInversePreprocessing.h"

#include <array>

namespace zmatrix {

namespace {

/// The sum of the last entries of all rows of the difference table over the last `order` values. Added to a difference of this
/// order, it gives the value.
int sumOfRowEnds(int order, int coordinate, const PrecedingItems& precedingItems) {
  std::array<int, ZQPreProcessingTypeHighestDifference> row;
  for (int i = 0; i < order; i++) row[i] = precedingItems.valueBack(order - i, coordinate);
  int sum = 0;
  for (int rowEnd = order - 1; rowEnd >= 0; rowEnd--) {
    // row[rowEnd] is the last entry of its row and is kept; the next row of differences overwrites the entries before it.
    for (int i = 0; i < rowEnd; i++) row[i] = wrappedDifference(row[i + 1], row[i]);
    sum = wrappedSum(sum, row[rowEnd]);
  }
  return sum;
}

/// Turns the interval into a note number, and the position in the bar into the first time at that position that isn't before the
/// preceding item: an equal position belongs to the same chord, an earlier one to the next bar.
void restoreMidiItem(const PreprocessingSettings& settings, const PrecedingItems& precedingItems, int* item,
                     const char* illegalTimeSignatureMessage) {
  const long long barLength = barLengthInQuanta(settings, illegalTimeSignatureMessage);
  const bool isDrum = settings.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS && item[3] == drumSound;
  if (!isDrum) item[0] = wrappedSum(item[0], precedingItems.valueBack(1, 0));
  const long long precedingStart = precedingItems.valueBack(1, 1);
  long long start = precedingStart - precedingStart % barLength + item[1];
  if (start < precedingStart) start += barLength;
  item[1] = static_cast<int>(start);
}

}  // namespace

int* nextOriginalObjex(const PreprocessingSettings& settings, const PrecedingItems& precedingItems, int* objex,
                       const char* illegalTimeSignatureMessage) {
  if (objex == nullptr) return nullptr;
  const int type = settings.preProcessingType;
  if (type >= 0 && type <= ZQPreProcessingTypeHighestDifference) {
    for (int k = 0; k < settings.coordinateDimension; k++) objex[k] = wrappedSum(objex[k], sumOfRowEnds(type, k, precedingItems));
    return objex;
  }
  if (type == ZQPreProcessingTypeANSIText || type == ZQPreProcessingTypeSecondText) return objex;
  if (coordinatesOfMidiType(type) != 0 && coordinatesOfMidiType(type) == settings.coordinateDimension) {
    restoreMidiItem(settings, precedingItems, objex, illegalTimeSignatureMessage);
    return objex;
  }
  return nullptr;  // number codes are decoded in ZQNumberCoding.h; the remaining types have no inverse
}

}  // namespace zmatrix
