// The inverse of preprocessing for one item: the next original item is computed from a preprocessed item and the original items
// before it, which come from a kernel or from a sequence of objex. The item is changed in place; there are no other side effects
// but messages.
#pragma once

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

/// The original items before the one to be restored. Items before the first read as 0.
class PrecedingItems {
 public:
  /// A flat sequence, item after item.
  static PrecedingItems inSequence(const int* items, int numberOfItems, int coordinateDimension) {
    return {items, nullptr, numberOfItems, coordinateDimension};
  }

  /// A sequence of objex: items[item][coordinate].
  static PrecedingItems inObjex(const int* const* items, int numberOfItems) { return {nullptr, items, numberOfItems, 0}; }

  /// A coordinate of the last item (itemsBack 1), of the one before it (2), and so on.
  int valueBack(int itemsBack, int coordinate) const {
    const int item = numberOfItems_ - itemsBack;
    if (item < 0) return 0;
    if (objex_ != nullptr) return objex_[item][coordinate];
    return flat_ != nullptr ? flat_[item * coordinateDimension_ + coordinate] : 0;
  }

 private:
  PrecedingItems(const int* flat, const int* const* objex, int numberOfItems, int coordinateDimension)
      : flat_(flat), objex_(objex), numberOfItems_(numberOfItems), coordinateDimension_(coordinateDimension) {}

  const int* flat_;
  const int* const* objex_;
  int numberOfItems_;
  int coordinateDimension_;
};

/// Turns a preprocessed item into the original item and returns it; null for a null item or a type without an inverse. Must not
/// be called for bar markers.
int* nextOriginalObjex(const PreprocessingSettings& settings, const PrecedingItems& precedingItems, int* objex,
                       const char* illegalTimeSignatureMessage);

}  // namespace zmatrix
