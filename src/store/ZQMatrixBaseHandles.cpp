// Handles: the position of an element, good until the next write or delete. From a handle up to its path, and down to the items
// that can follow it. An item, or objex, is coordinateDimension coordinates, so its successors lie that many levels below it.
#include <algorithm>

#include "frame/ZQMemory.h"
#include "store/ZQItemSplit.h"
#include "store/ZQMatrixBase.h"

namespace {

constexpr int longestPath = 4096;  // coordinates of a path that a handle is followed up

int handleOf(ZQMatrixBase& matrix, int existCode, const int* vector, int length) {
  return existCode < 2 ? -1 : zmatrix::positionAtEndOfPath(matrix, vector, length);
}

// Visits the written items `depth` levels below a handle, in the order of the walk, until the visitor returns false. The way up
// is the way that led down, so that the walk ends whatever the links say.
template <class Visitor>
void visitSuccessors(ZQMatrixBase& matrix, int handle, Visitor visit) {
  const int depthOfItem = matrix.getMatrixInfo()->getCoordinateDimension();
  if (handle < 0 || handle > matrix.getMaximalStack()) return;
  if (depthOfItem < 1 || depthOfItem > zmatrix::largestCoordinateDimension) return;
  long long wayDown[zmatrix::largestCoordinateDimension + 1];
  int depth = 0;
  wayDown[0] = handle;
  const ZQMatrixBaseElement* element = matrix.elementAt(handle);
  while (element != nullptr) {
    while (depth < depthOfItem && element->getOffsetToElementInNextDimension() != 0) {
      const long long first = wayDown[depth] + element->getOffsetToElementInNextDimension();
      element = matrix.elementAt(first);
      if (element == nullptr) return;
      wayDown[++depth] = first;
    }
    if (depth == depthOfItem) {
      for (long long at = wayDown[depth];;) {
        if (element->getWriteCount() > 0 && !visit(static_cast<int>(at))) return;
        if (element->getOffsetToNextElementInDimension() < 1) break;
        at += element->getOffsetToNextElementInDimension();
        element = matrix.elementAt(at);
        if (element == nullptr) return;
      }
      element = matrix.elementAt(wayDown[--depth]);
    }
    while (depth > 0 && element->getOffsetToNextElementInDimension() < 1) element = matrix.elementAt(wayDown[--depth]);
    if (depth == 0) return;
    wayDown[depth] += element->getOffsetToNextElementInDimension();
    element = matrix.elementAt(wayDown[depth]);
  }
}

}  // namespace

int ZQMatrixBase::getMatrixHandleFromElementVector(const int* indexVector, int length) noexcept {
  return handleOf(*this, existMatrixData(indexVector, length), indexVector, length);
}

int ZQMatrixBase::getMatrixHandleFromElementVector32(const int* items, int length) {
  return zmatrix::withSplitItems(*this, items, length, -1, "existMatrixData32", [this](const int* vector, int splitLength) {
    return getMatrixHandleFromElementVector(vector, splitLength);
  });
}

int ZQMatrixBase::getMatrixHandleFromElementVector64(const long long* items, int length) {
  return zmatrix::withSplitItems(*this, items, length, -1, "existMatrixData64", [this](const int* vector, int splitLength) {
    return getMatrixHandleFromElementVector(vector, splitLength);
  });
}

int ZQMatrixBase::handleOneItemBelow(int position, const int* item, int length) const {
  const ZQMatrixBaseInfo* info = getMatrixInfo();
  if (length >= info->getMaxDimOfMatrix()) return -1;
  for (int i = 0; i < info->getCoordinateDimension() && position >= 0; ++i) position = childAt(position, item[i]);
  const ZQMatrixBaseElement* element = elementAt(position);
  if (element == nullptr) return -1;
  return element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0 ? position : -1;
}

ZQMatrixBaseElement* ZQMatrixBase::getMatrixElementFromElementVector(const int* indexVector, int length, int* handle) {
  const int found = getMatrixHandleFromElementVector(indexVector, length);
  if (handle != nullptr) *handle = found;
  return getMatrixElementFromMatrixHandle(found);
}

ZQMatrixBaseElement* ZQMatrixBase::getMatrixElementFromMatrixHandle(int handle) {
  if (handle < 0) return nullptr;
  if (handle > getMaximalStack()) dbPrintf(0, "error: handle > maxStackPtr!\n");
  return elementAt(handle);
}

int* ZQMatrixBase::getObjexFromMatrixHandle(int handle) {
  ZQMatrixBaseInfo* info = getMatrixInfo();
  const int dimension = info->getCoordinateDimension();
  int* objex = info->provideTemporaryMemory(dimension);
  if (objex == nullptr) return nullptr;
  long long at = handle;
  for (int i = dimension - 1; i >= 0; --i) {
    const ZQMatrixBaseElement* element = elementAt(at);
    objex[i] = element != nullptr ? element->getIndexInDimension() : 0;
    if (element != nullptr) at += element->getOffsetToElementInPrevDimension();
  }
  return objex;
}

int ZQMatrixBase::getLengthOfIndexVectorFromMatrixHandle(int handle) {
  const ZQMatrixBaseElement* root = elementAt(currentMatrixID);
  if (root == nullptr || root->getOffsetToElementInNextDimension() == 0 || getMatrixInfo()->getCurrentDimension() == 0) return -1;
  if (handle < 0 || handle > getMaximalStack()) return -1;
  if (elementAt(handle) == nullptr || handle == currentMatrixID) return 0;
  int length = 0;
  for (long long at = handle; at != currentMatrixID;) {
    const ZQMatrixBaseElement* element = elementAt(at);
    const long long parent = element == nullptr ? -1 : at + element->getOffsetToElementInPrevDimension();
    if (parent < 0) {
      dbPrintf(0, "error: getLengthOdIndexVectorFromMatrixHandle: adress-error (negative offset)\n");
      return -1;
    }
    if (parent >= getMaximalStack()) {
      dbPrintf(0, "error: getLengthOdIndexVectorFromMatrixHandle: adress-error (stack exceeded)\n");
      return -1;
    }
    if (parent < getMaxNumberOfMatrices() && parent != currentMatrixID) {
      dbPrintf(0, "error: getLengthOdIndexVectorFromMatrixHandle: backward chain ends for ID %d (expected: %d) \n",
               static_cast<int>(parent), currentMatrixID);
      return -1;
    }
    if (++length > longestPath) break;
    at = parent;
  }
  if (length > longestPath) {
    dbPrintf(0, "error: getLengthOdIndexVectorFromMatrixHandle: iDim > MAXDIM\n");
    return -1;
  }
  return length;
}

int* ZQMatrixBase::getIndexVectorFromMatrixHandle(int handle, int* length) {
  *length = 0;
  const ZQMatrixBaseElement* root = elementAt(currentMatrixID);
  if (root == nullptr || root->getOffsetToElementInNextDimension() == 0 || getMatrixInfo()->getCurrentDimension() == 0) {
    return nullptr;
  }
  if (handle < 0 || handle > getMaximalStack()) return nullptr;
  const ZQMatrixBaseElement* element = elementAt(handle);
  if (element == nullptr || element->getWriteCount() < 1) return nullptr;
  int coordinates[longestPath];  // the last one first
  int numberOfCoordinates = 0;
  for (long long at = handle; at != currentMatrixID;) {
    element = elementAt(at);
    const long long parent = element == nullptr ? -1 : at + element->getOffsetToElementInPrevDimension();
    if (parent < 0) {
      dbPrintf(0, "error: getIndexVectorFromMatrixHandle: adress-error (negative offset)\n");
      return nullptr;
    }
    if (parent >= getMaximalStack()) {
      dbPrintf(0, "error: getIndexVectorFromMatrixHandle: adress-error (stack exceeded)\n");
      return nullptr;
    }
    if (parent < getMaxNumberOfMatrices() && parent != currentMatrixID) {
      dbPrintf(0, "error: getIndexVectorFromMatrixHandle: backward chain ends for ID %d (expected: %d) \n",
               static_cast<int>(parent), currentMatrixID);
      return nullptr;
    }
    if (numberOfCoordinates == longestPath) {
      dbPrintf(0, "error: getIndexVectorFromMatrixHandle: iDim > MAXDIM\n");
      return nullptr;
    }
    coordinates[numberOfCoordinates++] = element->getIndexInDimension();
    at = parent;
  }
  int* vector = systemMallocArray<int>(numberOfCoordinates);
  if (vector == nullptr) return nullptr;
  std::reverse_copy(coordinates, coordinates + numberOfCoordinates, vector);
  *length = numberOfCoordinates;
  return vector;
}

int ZQMatrixBase::hasMatrixHandleSuccessors(int handle) {
  int found = 0;
  visitSuccessors(*this, handle, [&found](int) {
    found = 1;
    return false;
  });
  return found;
}

int ZQMatrixBase::getNumberOfSuccessorsFromMatrixHandle(int handle) {
  int count = 0;
  visitSuccessors(*this, handle, [&count](int) {
    ++count;
    return true;
  });
  return count;
}

int* ZQMatrixBase::getSuccessorHandlesFromMatrixHandle(int handle, int* count) {
  *count = getNumberOfSuccessorsFromMatrixHandle(handle);
  if (*count < 1) return nullptr;
  int* handles = systemMallocArray<int>(*count);
  if (handles == nullptr) {
    *count = 0;
    return nullptr;
  }
  int* next = handles;
  visitSuccessors(*this, handle, [&next](int successor) {
    *next++ = successor;
    return true;
  });
  return handles;
}

int* ZQMatrixBase::getSuccessorOcronHandlesFromMatrixHandle(int, int, int* count) {
  *count = 0;
  return nullptr;
}
