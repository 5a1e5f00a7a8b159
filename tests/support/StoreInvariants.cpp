#include "support/StoreInvariants.h"

#include <vector>

#include "store/ZQMatrixBase.h"

namespace zmatrix {
namespace {

class BlockCheck {
 public:
  explicit BlockCheck(ZQMatrixBase& matrix)
      : matrix_(matrix),
        block_(matrix.getMatrixData()),
        size_(matrix.getMatrixBlockSize()),
        roots_(matrix.getMaxNumberOfMatrices()) {}

  std::string run(bool checksCounters) {
    for (int id = 0; id < roots_ && broken_.empty(); ++id) checkRoot(id);
    for (int position = roots_; position < size_ && broken_.empty(); ++position) {
      if (block_[position] != nullptr) checkElement(position);
    }
    if (broken_.empty()) checkPaths(checksCounters);
    return broken_;
  }

 private:
  void fail(int position, const char* what) {
    if (broken_.empty()) broken_ = "position " + std::to_string(position) + ": " + what;
  }
  bool occupied(long long position) const { return position >= 0 && position < size_ && block_[position] != nullptr; }
  int baseOf(int position) const { return position - block_[position]->getIndexInDimension(); }

  void checkRoot(int id) {
    if (matrix_.getMatrixDataEntryArray()[id] != block_ + id) fail(id, "the entry doesn't address the root's slot");
    if (block_[id] == nullptr) return;
    const ZQMatrixBaseElement& root = *block_[id];
    if (root.getOffsetToElementInPrevDimension() != 0) fail(id, "a root has a parent");
    if (root.getOffsetToNextElementInDimension() != 0 || root.getOffsetToPreviousElementInDimension() != 0) {
      fail(id, "a root has siblings");
    }
    checkChildLink(id);
  }

  void checkElement(int position) {
    const ZQMatrixBaseElement& element = *block_[position];
    if (position > matrix_.getMaximalStack()) fail(position, "lies above the stack");
    const int up = element.getOffsetToElementInPrevDimension();
    const int parent = position + up;
    if (up == 0) return fail(position, "has no parent");
    if (!occupied(parent)) return fail(position, "its parent's slot is empty");
    const int first = parent + block_[parent]->getOffsetToElementInNextDimension();
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
    const ZQMatrixBaseElement& other = *block_[sibling];
    const int back = direction > 0 ? other.getOffsetToPreviousElementInDimension() : other.getOffsetToNextElementInDimension();
    if (back != -offset) fail(position, "a sibling doesn't link back");
    if (sibling + other.getOffsetToElementInPrevDimension() != parent) fail(position, "a sibling has another parent");
  }

  void checkChildLink(int position) {
    const int down = block_[position]->getOffsetToElementInNextDimension();
    if (down == 0) return;
    const int child = position + down;
    if (child < roots_ || !occupied(child)) return fail(position, "its child link leads to no element");
    if (child + block_[child]->getOffsetToElementInPrevDimension() != position) fail(position, "its child has another parent");
    if (block_[child]->getOffsetToPreviousElementInDimension() != 0) fail(position, "its child link misses the first child");
  }

  // Every element leads to a root, and the counter of each sub-matrix is the number of elements that lead to its root.
  void checkPaths(bool checksCounters) {
    std::vector<int> rootOf(static_cast<size_t>(size_), -1), counted(static_cast<size_t>(roots_), 0), path;
    for (int id = 0; id < roots_; ++id) rootOf[static_cast<size_t>(id)] = id;
    for (int position = roots_; position < size_; ++position) {
      if (block_[position] == nullptr) continue;
      path.clear();
      int current = position;
      while (rootOf[static_cast<size_t>(current)] < 0) {
        path.push_back(current);
        if (path.size() > static_cast<size_t>(size_)) return fail(position, "its parents form a cycle");
        current += block_[current]->getOffsetToElementInPrevDimension();
      }
      for (const int step : path) rootOf[static_cast<size_t>(step)] = rootOf[static_cast<size_t>(current)];
      ++counted[static_cast<size_t>(rootOf[static_cast<size_t>(current)])];
    }
    for (int id = 0; id < roots_ && checksCounters; ++id) {
      const int kept = matrix_.getMatrixInfoArray()[id]->getNumberOfMatrixElements();
      if (kept != counted[static_cast<size_t>(id)]) fail(id, "numberOfMatrixElements differs from the elements found");
    }
  }

  ZQMatrixBase& matrix_;
  ZQMatrixBaseElement** block_;
  int size_;
  int roots_;
  std::string broken_;
};

}  // namespace

std::string brokenInvariant(ZQMatrixBase& matrix, bool checksCounters) {
  return BlockCheck(matrix).run(checksCounters);
}

}  // namespace zmatrix
