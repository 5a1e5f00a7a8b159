// The links of a block that came from a file. What all operations rely on is held against the block in one pass; a block that
// fails is made good: what no root leads to goes, and the rest is linked anew from the parent links and the coordinates.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "settings/ZQHeapArray.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQPodArray.h"

namespace {

constexpr int lookAhead = 16;

// The element that the one in a slot is held against: its predecessor, or the parent for the first of a field. -1 for none.
int otherOf(ZQMatrixBaseElement* const* slots, long long position, int top) {
  const ZQMatrixBaseElement* element = position <= top ? slots[position] : nullptr;
  if (element == nullptr) return -1;
  const int previous = element->getOffsetToPreviousElementInDimension();
  const long long other = position + (previous != 0 ? previous : element->getOffsetToElementInPrevDimension());
  return other >= 0 && other <= top ? static_cast<int>(other) : -1;
}

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

// Each element is held against one other: the first of a field against its parent, which must lead back to it, any other against
// its predecessor, which must lead back to it, lie in the same field and have the same parent. As links that answer pair up one
// to one, equal numbers of both kinds leave no link of a parent or predecessor unanswered. What is left is a circle of parents.
bool ZQMatrixBase::linksAreSound() const {
  const long long largestIndex = largestLegalIndex();
  const int roots = matrixFileHeader->getMaxNumberOfMatrices();
  const int top = std::min(matrixFileHeader->getMaximalStack(), numberOfSlots - 1);
  zmatrix::ZQPodArray<uint8_t> states;
  if (!states.resize(static_cast<size_t>(top) + 1, 0)) return false;
  std::vector<int> way;
  long long unanswered = 0;
  for (int position = 0; position <= top; ++position) {
    // The other element lies anywhere: its slot is sent for in good time, and then its record.
    if (const int other = otherOf(matrixData, position + 2 * lookAhead, top); other >= 0) {
      __builtin_prefetch(matrixData + other);
      __builtin_prefetch(&states[static_cast<size_t>(other)]);
    }
    if (const int other = otherOf(matrixData, position + lookAhead, top); other >= 0) __builtin_prefetch(matrixData[other]);
    const ZQMatrixBaseElement* element = matrixData[position];
    if (element == nullptr) continue;
    const int previous = element->getOffsetToPreviousElementInDimension();
    const long long parent = static_cast<long long>(position) + element->getOffsetToElementInPrevDimension();
    unanswered += (element->getOffsetToElementInNextDimension() != 0) + (element->getOffsetToNextElementInDimension() != 0);
    if (position < roots) {
      if (parent != position || previous != 0 || element->getOffsetToNextElementInDimension() != 0) return false;
      states[static_cast<size_t>(position)] = reached;
      continue;
    }
    --unanswered;
    if (std::llabs(static_cast<long long>(element->getIndexInDimension())) > largestIndex) return false;
    if (previous != 0) {
      const long long before = static_cast<long long>(position) + previous;
      const ZQMatrixBaseElement* other = previous < 0 && before >= roots ? elementAt(before) : nullptr;
      if (other == nullptr || other->getOffsetToNextElementInDimension() != -static_cast<long long>(previous)) return false;
      if (before + other->getOffsetToElementInPrevDimension() != parent) return false;
      if (before - other->getIndexInDimension() != static_cast<long long>(position) - element->getIndexInDimension())
        return false;
      states[static_cast<size_t>(position)] = states[static_cast<size_t>(before)];
      continue;
    }
    const ZQMatrixBaseElement* above = parent != position && parent <= top ? elementAt(parent) : nullptr;
    if (above == nullptr || parent + above->getOffsetToElementInNextDimension() != position) return false;
    if (states[static_cast<size_t>(position)] == reached) continue;
    way.clear();
    long long at = position;
    while (states[static_cast<size_t>(at)] == unknown && at >= roots) {
      states[static_cast<size_t>(at)] = onTheWay;
      way.push_back(static_cast<int>(at));
      at += matrixData[at]->getOffsetToElementInPrevDimension();
      if (at < 0 || at > top || matrixData[at] == nullptr) return false;
    }
    if (states[static_cast<size_t>(at)] == onTheWay) return false;
    for (int passed : way) states[static_cast<size_t>(passed)] = reached;
  }
  return unanswered == 0;
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
