// Fields: the parent of an element, and the first element, last element and size of its field.
#include <climits>

#include "store/ZQMatrixBase.h"
#include "store/ZQVerificationTexts.h"

ZQMatrixBaseElement* ZQMatrixBase::parentOf(int position) const {
  const ZQMatrixBaseElement* element = elementAt(position);
  if (element == nullptr || element->getOffsetToElementInPrevDimension() == 0) return nullptr;
  return elementAt(static_cast<long long>(position) + element->getOffsetToElementInPrevDimension());
}

bool ZQMatrixBase::readIndexOfFirstChild(long long position, ZQMatrixBaseElement& element) const {
  const ZQMatrixBaseElement* first = elementAt(position + element.getOffsetToElementInNextDimension());
  if (first == nullptr) return false;
  element.setIndexOfFirstChild(first->getIndexInDimension());
  return true;
}

int ZQMatrixBase::getFirstMatrixElementInDimension(int position) {
  long long at = position;
  const ZQMatrixBaseElement* element;
  while ((element = elementAt(at)) != nullptr && element->getOffsetToPreviousElementInDimension() != 0) {
    const int offset = element->getOffsetToPreviousElementInDimension();
    if (offset > 0 || at + offset < 0) {
      dbPrintf(0, "getFirstMatrixElementInDimension: offsetToPreviousElementInDimension: %d is unexpected\n", offset);
      return position;
    }
    at += offset;
  }
  return static_cast<int>(at);
}

int ZQMatrixBase::getLastMatrixElementInDimension(int position) {
  long long at = position;
  const ZQMatrixBaseElement* element;
  while ((element = elementAt(at)) != nullptr && element->getOffsetToNextElementInDimension() != 0) {
    const int offset = element->getOffsetToNextElementInDimension();
    if (offset < 1 || at + offset >= numberOfSlots_) {
      // The message names the function of the other direction; its text is fixed.
      dbPrintf(0, "getFirstMatrixElementInDimension: offsetToNextElementInDimension: %d is unexpected\n", offset);
      return position;
    }
    at += offset;
  }
  return static_cast<int>(at);
}

int ZQMatrixBase::getNumberOfItemsAndFirstLastElementsInSameDimension(int position, int* first, int* last) {
  return countField(position, INT_MAX, first, last);
}

int ZQMatrixBase::countField(int position, int limit, int* first, int* last) const {
  int count = 1;
  long long at = position;
  const ZQMatrixBaseElement* element;
  while ((element = elementAt(at)) != nullptr && element->getOffsetToPreviousElementInDimension() != 0) {
    const int offset = element->getOffsetToPreviousElementInDimension();
    if (offset > 0 || at + offset < 0) {
      zmatrix::reportUnexpectedOffset("Previous", offset);
      return 0;
    }
    at += offset;
    if (++count == limit) return count;
  }
  *first = static_cast<int>(at);
  at = position;
  while ((element = elementAt(at)) != nullptr && element->getOffsetToNextElementInDimension() != 0) {
    const int offset = element->getOffsetToNextElementInDimension();
    if (offset < 1 || at + offset >= numberOfSlots_) {
      zmatrix::reportUnexpectedOffset("Next", offset);
      return 0;
    }
    at += offset;
    if (++count == limit) return count;
  }
  *last = static_cast<int>(at);
  return count;
}
