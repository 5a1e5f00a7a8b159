// A block from a file whose links don't answer each other is made good: what no root leads to goes, and the rest is linked anew
// from the parent links and the coordinates.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "settings/ZQHeapArray.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQPodArray.h"

namespace {

enum State : uint8_t { unknown = 0, reached = 1, lost = 2, onTheWay = 3 };

}  // namespace

// No write lets an index in that is larger than its record allows. One from a file would let a field reach as far, and the block
// grow with it.
long long ZQMatrixBase::largestLegalIndex() const {
  int largest = 0;
  for (int id = 0; id < matrixFileHeader->getMaxNumberOfMatrices(); ++id) {
    largest = std::max(largest, matrixInfoArray[id]->getMaximalMatrixIndex());
  }
  return largest;
}

int ZQMatrixBase::repairLinks() {
  const long long largestIndex = largestLegalIndex();
  const int roots = matrixFileHeader->getMaxNumberOfMatrices();
  const int top = std::min(matrixFileHeader->getMaximalStack(), numberOfSlots - 1);
  zmatrix::ZQPodArray<uint8_t> states;
  zmatrix::ZQPodArray<int> children;  // of each element a child that the others are held against; then its last one so far
  if (!states.resize(static_cast<size_t>(top) + 1, 0) || !children.resize(static_cast<size_t>(top) + 1, 0)) return -1;
  const auto parentPosition = [&](int position) -> long long {
    return static_cast<long long>(position) + matrixData[position]->getOffsetToElementInPrevDimension();
  };
  const auto isChildOf = [&](long long position, long long parent) {
    return position >= roots && position <= top && matrixData[position] != nullptr &&
           parentPosition(static_cast<int>(position)) == parent;
  };
  const auto fieldBegin = [&](int position) -> long long {
    return static_cast<long long>(position) - matrixData[position]->getIndexInDimension();
  };
  for (int position = 0; position <= top; ++position) {
    ZQMatrixBaseElement* element = matrixData[position];
    if (element == nullptr) continue;
    uint8_t& state = states[static_cast<size_t>(position)];
    if (position < roots) {
      element->setOffsetToElementInPrevDimension(0);
      state = reached;
      continue;
    }
    const long long parent = parentPosition(position);
    const bool isLegalIndex = std::llabs(static_cast<long long>(element->getIndexInDimension())) <= largestIndex;
    if (!isLegalIndex || parent == position || parent < 0 || parent > top || matrixData[parent] == nullptr) {
      state = lost;
      continue;
    }
    int& child = children[static_cast<size_t>(parent)];
    if (child == 0) {
      const long long first = parent + matrixData[parent]->getOffsetToElementInNextDimension();
      child = isChildOf(first, parent) ? static_cast<int>(first) : position;
    }
    if (fieldBegin(position) != fieldBegin(child)) state = lost;
  }
  std::vector<int> way;
  for (int position = roots; position <= top; ++position) {
    if (matrixData[position] == nullptr) continue;
    way.clear();
    int at = position;
    while (states[static_cast<size_t>(at)] == unknown) {
      states[static_cast<size_t>(at)] = onTheWay;
      way.push_back(at);
      at = static_cast<int>(parentPosition(at));
    }
    const uint8_t result = states[static_cast<size_t>(at)] == reached ? reached : lost;
    for (int passed : way) states[static_cast<size_t>(passed)] = result;
  }
  int dropped = 0;
  for (int position = 0; position <= top; ++position) {
    ZQMatrixBaseElement* element = matrixData[position];
    if (element == nullptr) continue;
    children[static_cast<size_t>(position)] = 0;
    element->setOffsetToNextElementInDimension(0);
    element->setOffsetToPreviousElementInDimension(0);
    element->setOffsetToElementInNextDimension(0);
    if (states[static_cast<size_t>(position)] == reached) continue;
    destroyElementAt(position);
    ++dropped;
  }
  for (int position = roots; position <= top; ++position) {
    ZQMatrixBaseElement* element = matrixData[position];
    if (element == nullptr) continue;
    const int parent = static_cast<int>(parentPosition(position));
    int& last = children[static_cast<size_t>(parent)];
    if (last == 0) {
      matrixData[parent]->setOffsetToElementInNextDimension(position - parent);
    } else {
      matrixData[last]->setOffsetToNextElementInDimension(position - last);
      element->setOffsetToPreviousElementInDimension(last - position);
    }
    last = position;
  }
  return dropped;
}
