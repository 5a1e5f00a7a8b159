// Deletion, shared by all tiers. A vector that ends in an inner element is only unwritten; if it ends in a leaf, its elements are
// deleted from the leaf upwards, as far as they have no other children and are not written. No field is compacted or moved. Known
// counter drift is part of the contract.
#pragma once

#include "store/ZQItemSplit.h"

namespace zmatrix {

template <class Tier>
struct ZQStoreDelete {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;

  /// 1 deleted; the exist code minus 1 if that code is below 2; -2 for a null or empty vector.
  static int remove(Matrix& matrix, const int* indexVector, int length, int keepInnerElements) {
    if (indexVector == nullptr || length == 0) return -2;
    const auto [code, position] = matrix.find(indexVector, length);
    if (code < 2) return code - 1;
    Info& info = *matrix.getMatrixInfo();
    if (code == 3) {
      cutBack(matrix, info, position);
    } else if (keepInnerElements == 0) {
      Element& element = *static_cast<Element*>(matrix.elementAt(position));
      info.addToNumberOfWriteCounts(-element.getWriteCount());
      element.setWriteCount(0);
      element.setValue(0);
      Tier::onUnwritten(matrix, info, element);
      info.incrementNumberOfDeleteEvents();
      info.decrementNumberOfWriteElements();
    }
    return 1;
  }

  /// As remove for the vector of a leaf whose position is known.
  static void cutBack(Matrix& matrix, Info& info, int position) {
    const int root = matrix.getCurrentMatrixID();
    int lastWriteCount = 0;
    int removed = 0;
    for (int current = position; current != root;) {
      const ZQMatrixBaseElement* element = matrix.elementAt(current);
      if (element == nullptr || element->getOffsetToElementInNextDimension() != 0) break;
      if (removed > 0 && element->getWriteCount() > 0) break;
      const long long parent = static_cast<long long>(current) + element->getOffsetToElementInPrevDimension();
      lastWriteCount = element->getWriteCount();
      unlink(matrix, info, current, parent);
      matrix.clearMatrixElement(current, 1);
      ++removed;
      if (matrix.elementAt(parent) == nullptr) break;
      current = static_cast<int>(parent);
    }
    info.incrementNumberOfDeleteEvents();
    info.decrementNumberOfWriteElements();
    // Known counter drift: subtracts the count of the element that was deleted last, not of the leaf.
    info.addToNumberOfWriteCounts(zmatrix::negativeOf(lastWriteCount));
  }

 private:
  static void unlink(Matrix& matrix, Info& info, int position, long long parentPosition) {
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    const int next = element->getOffsetToNextElementInDimension();
    const int previous = element->getOffsetToPreviousElementInDimension();
    ZQMatrixBaseElement* nextElement = next > 0 ? matrix.elementAt(static_cast<long long>(position) + next) : nullptr;
    ZQMatrixBaseElement* previousElement = previous < 0 ? matrix.elementAt(static_cast<long long>(position) + previous) : nullptr;
    ZQMatrixBaseElement* parent = matrix.elementAt(parentPosition);
    if (nextElement != nullptr)
      nextElement->setOffsetToPreviousElementInDimension(previousElement != nullptr ? previous - next : 0);
    if (previousElement != nullptr)
      previousElement->setOffsetToNextElementInDimension(nextElement != nullptr ? next - previous : 0);
    if (nextElement == nullptr && previousElement == nullptr) {
      if (parent != nullptr) parent->setOffsetToElementInNextDimension(0);
      return;  // the parent becomes an end element instead, so the number of end elements is unchanged
    }
    if (previousElement == nullptr && parent != nullptr) {
      parent->setOffsetToElementInNextDimension(static_cast<int>(position + next - parentPosition));
    }
    info.decrementNumberOfEndElements();
  }
};

}  // namespace zmatrix
