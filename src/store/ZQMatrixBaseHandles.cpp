// Handles: an element's position, valid until the next write or delete. The functions lead from an index vector to its handle and
// back, and from a handle to those of its successors. An item, or objex, has coordinateDimension coordinates, so successors lie
// that many levels below the handle.
#include <algorithm>

#include "frame/ZQMemory.h"
#include "store/ZQItemSplit.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQSuccessorWalk.h"

namespace {

constexpr int longestPath = 4096;  // coordinates; longer index vectors are refused

}  // namespace

int ZQMatrixBase::getMatrixHandleFromElementVector(const int* indexVector, int length) noexcept {
  const zmatrix::FoundPath found = find(indexVector, length);
  return found.code < 2 ? -1 : found.position;
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
  const ZQMatrixBaseElement* root = elementAt(currentMatrixId_);
  if (root == nullptr || root->getOffsetToElementInNextDimension() == 0 || getMatrixInfo()->getCurrentDimension() == 0) return -1;
  if (handle < 0 || handle > getMaximalStack()) return -1;
  if (elementAt(handle) == nullptr || handle == currentMatrixId_) return 0;
  int length = 0;
  for (long long at = handle; at != currentMatrixId_;) {
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
    if (parent < getMaxNumberOfMatrices() && parent != currentMatrixId_) {
      dbPrintf(0, "error: getLengthOdIndexVectorFromMatrixHandle: backward chain ends for ID %d (expected: %d) \n",
               static_cast<int>(parent), currentMatrixId_);
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
  const ZQMatrixBaseElement* root = elementAt(currentMatrixId_);
  if (root == nullptr || root->getOffsetToElementInNextDimension() == 0 || getMatrixInfo()->getCurrentDimension() == 0) {
    return nullptr;
  }
  if (handle < 0 || handle > getMaximalStack()) return nullptr;
  const ZQMatrixBaseElement* element = elementAt(handle);
  if (element == nullptr || element->getWriteCount() < 1) return nullptr;
  int coordinates[longestPath];  // in reverse order
  int numberOfCoordinates = 0;
  for (long long at = handle; at != currentMatrixId_;) {
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
    if (parent < getMaxNumberOfMatrices() && parent != currentMatrixId_) {
      dbPrintf(0, "error: getIndexVectorFromMatrixHandle: backward chain ends for ID %d (expected: %d) \n",
               static_cast<int>(parent), currentMatrixId_);
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
  zmatrix::visitSuccessors(*this, handle, [&found](int, const ZQMatrixBaseElement&) {
    found = 1;
    return false;
  });
  return found;
}

int ZQMatrixBase::getNumberOfSuccessorsFromMatrixHandle(int handle) {
  int count = 0;
  zmatrix::visitSuccessors(*this, handle, [&count](int, const ZQMatrixBaseElement&) {
    ++count;
    return true;
  });
  return count;
}

int* ZQMatrixBase::getSuccessorHandlesFromMatrixHandle(int handle, int* count) {
  zmatrix::ZQArray<int> handles;
  bool hasMemory = true;
  zmatrix::visitSuccessors(*this, handle, [&](int successor, const ZQMatrixBaseElement&) {
    hasMemory = handles.append(successor);
    return hasMemory;
  });
  *count = hasMemory ? handles.count() : 0;
  return hasMemory ? handles.releaseFitted() : nullptr;
}

int* ZQMatrixBase::getSuccessorOcronHandlesFromMatrixHandle(int, int, int* count) {
  *count = 0;
  return nullptr;
}
