#include "sequence/ZQSuffixLinks.h"

namespace zmatrix {

bool ZQSuffixLinks::build(const ZQMatrixMedium& matrix) {
  const size_t numberOfSlots = static_cast<size_t>(matrix.getNumberOfSlots());
  root_ = matrix.getCurrentMatrixID();
  coordinateDimension_ = matrix.getMatrixInfo()->getCoordinateDimension();
  depths_.reset();
  if (coordinateDimension_ < 1 || matrix.elementAt(root_) == nullptr) return false;
  if (!links_.resize(numberOfSlots, -1) || !queue_.resize(numberOfSlots) || !depths_.resize(numberOfSlots)) {
    depths_.reset();
    return false;
  }
  endOfQueue_ = 0;
  enterField(matrix, root_, 1);
  for (size_t i = 0; i < endOfQueue_; ++i) enterField(matrix, queue_[i], depthOf(queue_[i]) + 1);
  queue_.reset();
  return true;
}

// Stops at an element that is only reached through a damaged link or for the second time, so each element is visited once.
void ZQSuffixLinks::enterField(const ZQMatrixMedium& matrix, int parent, int depth) {
  const int offset = matrix.elementAt(parent)->getOffsetToElementInNextDimension();
  if (offset == 0) return;
  const int lowest = matrix.getMatrixFileHeader()->getMaxNumberOfMatrices();
  for (long long position = static_cast<long long>(parent) + offset; position >= lowest;) {
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    if (element == nullptr || static_cast<size_t>(position) >= depths_.size() || depthOf(static_cast<int>(position)) != 0) return;
    const int child = static_cast<int>(position);
    if (matrix.childAt(parent, element->getIndexInDimension()) != child) return;
    depths_[static_cast<size_t>(child)] = depth;
    links_[static_cast<size_t>(child)] = findLink(matrix, parent, element->getIndexInDimension(), depth);
    queue_[endOfQueue_++] = child;
    if (element->getOffsetToNextElementInDimension() < 1) return;
    position += element->getOffsetToNextElementInDimension();
  }
}

int ZQSuffixLinks::findLink(const ZQMatrixMedium& matrix, int parent, int coordinate, int depth) const {
  for (int ending = linkOf(parent); ending != none; ending = linkOf(ending)) {
    const int child = matrix.childAt(ending, coordinate);
    if (child >= 0) return child;
  }
  return depth % coordinateDimension_ == 0 ? root_ : none;
}

}  // namespace zmatrix
