// The walk over the successors of a handle: the written elements one item, coordinateDimension coordinates, below it.
#pragma once

#include "store/ZQMatrixBase.h"

namespace zmatrix {

/// Visits the written children of an element in the order of their field, whose first one stands at `first`. False if the visitor
/// said so, or if a link leads nowhere.
template <class Visitor>
bool visitWrittenField(const ZQMatrixBase& matrix, long long first, Visitor&& visit) {
  for (long long at = first;;) {
    const ZQMatrixBaseElement* element = matrix.elementAt(at);
    if (element == nullptr) return false;
    if (element->getWriteCount() > 0 && !visit(static_cast<int>(at), *element)) return false;
    if (element->getOffsetToNextElementInDimension() < 1) return true;
    at += element->getOffsetToNextElementInDimension();
  }
}

/// Visits the successors of a handle, depth first and in the order of the fields, until the visitor returns false. The way up is
/// the way that led down, so that the walk ends whatever the links say.
template <class Visitor>
void visitSuccessors(const ZQMatrixBase& matrix, int handle, Visitor&& visit) {
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
        if (!visitWrittenField(matrix, first, visit)) return;
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

}  // namespace zmatrix
