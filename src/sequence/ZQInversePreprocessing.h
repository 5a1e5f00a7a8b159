// One step back from preprocessed to original: the next original item follows from a preprocessed item and the original items
// before it, which come from a kernel sequence (a row per coordinate) or from a sequence of items. Pure but for the item, changed
// in place.
#pragma once

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

/// The original items before the one that is to be restored. An item before the first reads as 0.
class PrecedingItems {
 public:
  /// A kernel sequence: rows[coordinate][item].
  static PrecedingItems inRows(const int* const* rows, int numberOfItems) { return {rows, numberOfItems, true}; }

  /// A sequence of objex: items[item][coordinate].
  static PrecedingItems inObjex(const int* const* items, int numberOfItems) { return {items, numberOfItems, false}; }

  /// A coordinate of the last item (itemsBack 1), of the one before (2) and so on.
  int valueBack(int itemsBack, int coordinate) const {
    const int item = numberOfItems_ - itemsBack;
    if (item < 0 || values_ == nullptr) return 0;
    return rowPerCoordinate_ ? values_[coordinate][item] : values_[item][coordinate];
  }

 private:
  PrecedingItems(const int* const* values, int numberOfItems, bool rowPerCoordinate)
      : values_(values), numberOfItems_(numberOfItems), rowPerCoordinate_(rowPerCoordinate) {}

  const int* const* values_;
  int numberOfItems_;
  bool rowPerCoordinate_;
};

/// Turns a preprocessed item into the original item and returns it, or null for no item or a type without an inverse. Bar markers
/// are no items and don't belong here.
int* nextOriginalObjex(const PreprocessingSettings& settings, const PrecedingItems& precedingItems, int* objex,
                       const char* illegalTimeSignatureMessage);

}  // namespace zmatrix
