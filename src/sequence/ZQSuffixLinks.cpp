#include "sequence/ZQSuffixLinks.h"

namespace zmatrix {

bool ZQSuffixLinks::build(const ZQMatrixMedium& matrix) {
  const size_t numberOfSlots = static_cast<size_t>(matrix.getNumberOfSlots());
  root = matrix.getCurrentMatrixID();
  coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  depths.reset();
  if (coordinateDimension < 1 || matrix.elementAt(root) == nullptr) return false;
  if (!links.resize(numberOfSlots, -1) || !queue.resize(numberOfSlots) || !depths.resize(numberOfSlots)) {
    depths.reset();
    return false;
  }
  endOfQueue = 0;
  enterField(matrix, root, 1);
  for (size_t i = 0; i < endOfQueue; ++i) enterField(matrix, queue[i], depthOf(queue[i]) + 1);
  queue.reset();
  return true;
}

// Elements that only a damaged link leads to are skipped, so that each element is visited once.
void ZQSuffixLinks::enterField(const ZQMatrixMedium& matrix, int parent, int depth) {
  const int offset = matrix.elementAt(parent)->getOffsetToElementInNextDimension();
  if (offset == 0) return;
  const int lowest = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices();
  for (long long position = static_cast<long long>(parent) + offset; position >= lowest;) {
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    if (element == nullptr || static_cast<size_t>(position) >= depths.size() || depthOf(static_cast<int>(position)) != 0) return;
    const int child = static_cast<int>(position);
    if (matrix.childAt(parent, element->getIndexInDimension()) != child) return;
    depths[static_cast<size_t>(child)] = depth;
    links[static_cast<size_t>(child)] = findLink(matrix, parent, element->getIndexInDimension(), depth);
    queue[endOfQueue++] = child;
    if (element->getOffsetToNextElementInDimension() < 1) return;
    position += element->getOffsetToNextElementInDimension();
  }
}

int ZQSuffixLinks::findLink(const ZQMatrixMedium& matrix, int parent, int coordinate, int depth) const {
  for (int ending = linkOf(parent); ending != none; ending = linkOf(ending)) {
    const int child = matrix.childAt(ending, coordinate);
    if (child >= 0) return child;
  }
  return depth % coordinateDimension == 0 ? root : none;
}

}  // namespace zmatrix
