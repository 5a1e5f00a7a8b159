#include "support/StoreInvariants.h"

#include <vector>

#include "store/ZQMatrixBase.h"

namespace zmatrix {
namespace {

class BlockCheck {
 public:
  explicit BlockCheck(ZQMatrixBase& aMatrix)
      : matrix(aMatrix),
        block(aMatrix.getMatrixData()),
        size(aMatrix.getMatrixBlockSize()),
        roots(aMatrix.getMaxNumberOfMatrices()) {}

  std::string run() {
    for (int id = 0; id < roots && broken.empty(); ++id) checkRoot(id);
    for (int position = roots; position < size && broken.empty(); ++position) {
      if (block[position] != nullptr) checkElement(position);
    }
    if (broken.empty()) checkCounts();
    return broken;
  }

 private:
  void fail(int position, const char* what) {
    if (broken.empty()) broken = "position " + std::to_string(position) + ": " + what;
  }
  bool occupied(long long position) const { return position >= 0 && position < size && block[position] != nullptr; }
  int baseOf(int position) const { return position - block[position]->getIndexInDimension(); }

  void checkRoot(int id) {
    if (matrix.getMatrixDataEntryArray()[id] != block + id) fail(id, "the entry doesn't address the root's slot");
    if (block[id] == nullptr) return;
    const ZQMatrixBaseElement& root = *block[id];
    if (root.getOffsetToElementInPrevDimension() != 0) fail(id, "a root has a parent");
    if (root.getOffsetToNextElementInDimension() != 0 || root.getOffsetToPreviousElementInDimension() != 0) {
      fail(id, "a root has siblings");
    }
    checkChildLink(id);
  }

  void checkElement(int position) {
    const ZQMatrixBaseElement& element = *block[position];
    if (position > matrix.getMaximalStack()) fail(position, "lies above the stack");
    const int up = element.getOffsetToElementInPrevDimension();
    const int parent = position + up;
    if (up == 0) return fail(position, "has no parent");
    if (!occupied(parent)) return fail(position, "its parent's slot is empty");
    const int first = parent + block[parent]->getOffsetToElementInNextDimension();
    if (first == parent || !occupied(first)) return fail(position, "its parent has no children");
    if (first > position) fail(position, "lies below the first element of its field");
    if (baseOf(first) != baseOf(position)) fail(position, "disagrees with its field about the base");
    checkSibling(position, parent, element.getOffsetToNextElementInDimension(), 1);
    checkSibling(position, parent, element.getOffsetToPreviousElementInDimension(), -1);
    if (element.getOffsetToPreviousElementInDimension() == 0 && first != position) fail(position, "is a second first element");
    checkChildLink(position);
  }

  void checkSibling(int position, int parent, int offset, int direction) {
    if (offset == 0) return;
    if (offset * direction < 0) return fail(position, "a sibling lies on the wrong side");
    const int sibling = position + offset;
    if (!occupied(sibling)) return fail(position, "a sibling's slot is empty");
    const ZQMatrixBaseElement& other = *block[sibling];
    const int back = direction > 0 ? other.getOffsetToPreviousElementInDimension() : other.getOffsetToNextElementInDimension();
    if (back != -offset) fail(position, "a sibling doesn't link back");
    if (sibling + other.getOffsetToElementInPrevDimension() != parent) fail(position, "a sibling has another parent");
  }

  void checkChildLink(int position) {
    const int down = block[position]->getOffsetToElementInNextDimension();
    if (down == 0) return;
    const int child = position + down;
    if (child < roots || !occupied(child)) return fail(position, "its child link leads to no element");
    if (child + block[child]->getOffsetToElementInPrevDimension() != position) fail(position, "its child has another parent");
    if (block[child]->getOffsetToPreviousElementInDimension() != 0) fail(position, "its child link misses the first child");
  }

  // Every element leads to a root, and each matrix ID counts those that lead to its own.
  void checkCounts() {
    std::vector<int> rootOf(static_cast<size_t>(size), -1), counted(static_cast<size_t>(roots), 0), way;
    for (int id = 0; id < roots; ++id) rootOf[static_cast<size_t>(id)] = id;
    for (int position = roots; position < size; ++position) {
      if (block[position] == nullptr) continue;
      way.clear();
      int current = position;
      while (rootOf[static_cast<size_t>(current)] < 0) {
        way.push_back(current);
        if (way.size() > static_cast<size_t>(size)) return fail(position, "its parents run in a circle");
        current += block[current]->getOffsetToElementInPrevDimension();
      }
      for (const int step : way) rootOf[static_cast<size_t>(step)] = rootOf[static_cast<size_t>(current)];
      ++counted[static_cast<size_t>(rootOf[static_cast<size_t>(current)])];
    }
    for (int id = 0; id < roots; ++id) {
      const int kept = matrix.getMatrixInfoArray()[id]->getNumberOfMatrixElements();
      if (kept != counted[static_cast<size_t>(id)]) fail(id, "the number of elements is not the one that is kept");
    }
  }

  ZQMatrixBase& matrix;
  ZQMatrixBaseElement** block;
  int size;
  int roots;
  std::string broken;
};

}  // namespace

std::string brokenInvariant(ZQMatrixBase& matrix) {
  return BlockCheck(matrix).run();
}

}  // namespace zmatrix
