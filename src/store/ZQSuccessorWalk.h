// The walk over the elements that lie one item, coordinateDimension coordinates, below a handle. The written ones are the
// handle's successors.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Visits the elements of a field in order, from position `first` on, until the visitor returns false. False then, and if a link
/// leads to an empty slot.
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

/// Visits the elements one item below a handle, depth first and in the order of the fields, until the visitor returns false. Goes
/// back up by the stored positions, not by parent links, so that it ends with damaged links too.
template <class Matrix, class Visitor>
void visitOneItemBelow(const Matrix& matrix, int handle, Visitor&& visit) {
  const int depthOfItem = matrix.getMatrixInfo()->getCoordinateDimension();
  if (handle < 0 || handle > matrix.getMatrixFileHeader()->getMaximalStack()) return;
  if (depthOfItem < 1 || depthOfItem > largestCoordinateDimension) return;
  long long path[largestCoordinateDimension + 1];
  int depth = 0;
  path[0] = handle;
  const ZQMatrixBaseElement* element = matrix.elementAt(handle);
  while (element != nullptr) {
    while (depth < depthOfItem && element->getOffsetToElementInNextDimension() != 0) {
      const long long first = path[depth] + element->getOffsetToElementInNextDimension();
      if (++depth < depthOfItem) {
        element = matrix.elementAt(first);
        if (element == nullptr) return;
        path[depth] = first;
      } else {
        if (!visitField(matrix, first, visit)) return;
        --depth;
        break;
      }
    }
    while (depth > 0 && element->getOffsetToNextElementInDimension() < 1) element = matrix.elementAt(path[--depth]);
    if (depth == 0) return;
    path[depth] += element->getOffsetToNextElementInDimension();
    element = matrix.elementAt(path[depth]);
  }
}

/// The same for the successors of a handle.
template <class Matrix, class Visitor>
void visitSuccessors(const Matrix& matrix, int handle, Visitor&& visit) {
  visitOneItemBelow(matrix, handle,
                    [&](int position, const auto& element) { return element.getWriteCount() <= 0 || visit(position, element); });
}

}  // namespace zmatrix
