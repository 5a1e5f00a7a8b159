// The walk over the elements one item, coordinateDimension coordinates, below a handle. The written ones are its successors.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Visits the elements of a field in its order, from the first one at `first` on. False if the visitor said so, or if a link
/// leads nowhere.
template <class Matrix, class Visitor>
bool visitField(const Matrix& matrix, long long first, Visitor&& visit) {
  for (long long at = first;;) {
    const auto* element = matrix.elementAt(at);
    if (element == nullptr) return false;
    if (!visit(static_cast<int>(at), *element)) return false;
    if (element->getOffsetToNextElementInDimension() < 1) return true;
    at += element->getOffsetToNextElementInDimension();
  }
}

/// Visits what stands one item below a handle, depth first and in the order of the fields, until the visitor returns false. The
/// way up is the way that led down, so that the walk ends whatever the links say.
template <class Matrix, class Visitor>
void visitOneItemBelow(const Matrix& matrix, int handle, Visitor&& visit) {
  const int depthOfItem = matrix.getMatrixInfo()->getCoordinateDimension();
  if (handle < 0 || handle > matrix.getMatrixFileHeader()->getMaximalStack()) return;
  if (depthOfItem < 1 || depthOfItem > largestCoordinateDimension) return;
  long long wayDown[largestCoordinateDimension + 1];
  int depth = 0;
  wayDown[0] = handle;
  const ZQMatrixBaseElement* element = matrix.elementAt(handle);
  while (element != nullptr) {
    while (depth < depthOfItem && element->getOffsetToElementInNextDimension() != 0) {
      const long long first = wayDown[depth] + element->getOffsetToElementInNextDimension();
      if (++depth < depthOfItem) {
        element = matrix.elementAt(first);
        if (element == nullptr) return;
        wayDown[depth] = first;
      } else {
        if (!visitField(matrix, first, visit)) return;
        --depth;
        break;
      }
    }
    while (depth > 0 && element->getOffsetToNextElementInDimension() < 1) element = matrix.elementAt(wayDown[--depth]);
    if (depth == 0) return;
    wayDown[depth] += element->getOffsetToNextElementInDimension();
    element = matrix.elementAt(wayDown[depth]);
  }
}

/// Visits the successors of a handle in the same way.
template <class Matrix, class Visitor>
void visitSuccessors(const Matrix& matrix, int handle, Visitor&& visit) {
  visitOneItemBelow(matrix, handle,
                    [&](int position, const auto& element) { return element.getWriteCount() <= 0 || visit(position, element); });
}

}  // namespace zmatrix
