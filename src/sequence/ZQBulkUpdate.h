// Learns a sequence of single integers with the same phrases and counts as ZQSequenceUpdate, but all phrases of one length at
// once: they are sorted by parent element, and all new children of an element are placed together, the largest groups first.
// Wide fields, such as those of symbols, then move once per pass and not once per child. Elements get other slots than with
// ZQSequenceUpdate, so this is only for callers to whom slots don't matter.
#pragma once

#include <algorithm>
#include <cstdio>

#include "frame/ZQArray.h"
#include "frame/ZQProgress.h"
#include "store/ZQFieldPlacement.h"

namespace zmatrix {

template <class Tier>
struct ZQBulkUpdate {
  using Matrix = typename Tier::Matrix;
  using Info = typename Tier::Info;
  using Write = ZQStoreWrite<Tier>;

  ZQBulkUpdate(Matrix& matrix, const int* items, int numberOfItems)
      : matrix_(matrix), info_(*matrix.getMatrixInfo()), sequence_(items), length_(numberOfItems) {}

  /// 1 learned, -1 a write failed, -2 memory has run out. After a failure, phrases that were learned before it remain.
  [[nodiscard]] int run(int maxPhraseLength) {
    const int root = Write::provideRoot(matrix_);
    if (root < 0 || info_.getMemIsReadOnly()) return -1;
    if (!steps_.resize(length_) || !parents_.resize(length_, root)) return -2;
    auto* rootElement = static_cast<typename Tier::Element*>(matrix_.elementAt(root));
    rootElement->addWriteCountWithSuccessor(length_);
    rootElement->incrementWriteCount();
    const int longest = std::min(maxPhraseLength, length_);
    if (longest > info_.getMaxDimOfMatrix()) {
      dbPrintf(0, "error: maximal dimension exceeded: %d\n", longest);
      return -1;
    }
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText,
             "updateMatrixWithCombinedSequence with %d items...", longest);
    for (int known = 0; known < longest; ++known) {
      matrixProgressDisplay(known, longest);
      if (!learnPhrasesOf(known)) return isOutOfMemory_ ? -2 : -1;
    }
    matrixProgressDisplay(longest, longest);
    return 1;
  }

 private:
  /// The last step of a phrase, from the element of its items but the last to that of the last item.
  struct Step {
    int parent;
    int item;
    int start;  // of the phrase in the sequence
    bool operator<(const Step& other) const {
      if (parent != other.parent) return parent < other.parent;
      return item != other.item ? item < other.item : start < other.start;
    }
  };
  /// A range of steps with the same parent.
  struct Group {
    size_t begin;
    size_t end;
  };

  bool learnPhrasesOf(int known) {
    const auto count = static_cast<size_t>(length_ - known);
    for (size_t start = 0; start < count; ++start) {
      steps_[start] = {parents_[start], sequence_[start + static_cast<size_t>(known)], static_cast<int>(start)};
      if (!Write::admits(info_, steps_[start].item)) return false;
    }
    std::sort(steps_.begin(), steps_.begin() + static_cast<std::ptrdiff_t>(count));
    if (!findGroups(count)) return false;
    for (const Group& group : groups_) {
      if (!provideChildren(group) || !countChildren(group, known)) return false;
    }
    return true;
  }

  bool findGroups(size_t count) {
    groups_.clear();
    for (size_t begin = 0, end; begin < count; begin = end) {
      for (end = begin + 1; end < count && steps_[end].parent == steps_[begin].parent;) ++end;
      if (!noteRoom(groups_.append({begin, end}))) return false;
    }
    std::stable_sort(groups_.begin(), groups_.end(),
                     [](const Group& a, const Group& b) { return a.end - a.begin > b.end - b.begin; });
    return true;
  }

  bool provideChildren(const Group& group) {
    missing_.clear();
    for (size_t i = group.begin; i < group.end; ++i) {
      const Step& step = steps_[i];
      if (!missing_.empty() && missing_.back() == step.item) continue;
      if (matrix_.childAt(step.parent, step.item) < 0 && !noteRoom(missing_.append(step.item))) return false;
    }
    return missing_.empty() || placement_.add(matrix_, steps_[group.begin].parent, missing_);
  }

  // Counts each phrase once per occurrence. The group's field is not moved again in this pass, so the positions stored in
  // parents_ stay valid.
  bool countChildren(const Group& group, int known) {
    const bool usesStart = info_.getUseStartOfSequence() == 1, usesEnd = info_.getUseEndOfSequence() == 1;
    int child = -1;
    for (size_t i = group.begin; i < group.end; ++i) {
      const Step& step = steps_[i];
      if (i == group.begin || steps_[i - 1].item != step.item) {
        child = matrix_.childAt(step.parent, step.item);
        if (child < 0) return false;
        Write::countStep(info_, known, step.item);
      }
      typename Tier::WriteFlags flags{};
      flags.startFlag = step.start == 0 && known == 0 && usesStart;
      flags.endFlag = usesEnd && step.start >= length_ - known - 1;
      Write::countWrite(matrix_, info_, child, known + 1, flags);
      parents_[static_cast<size_t>(step.start)] = child;
    }
    return true;
  }

  bool noteRoom(bool hasRoom) {
    isOutOfMemory_ = !hasRoom;
    return hasRoom;
  }

  Matrix& matrix_;
  Info& info_;
  const int* sequence_;
  const int length_;
  zmatrix::ZQArray<Step> steps_;
  zmatrix::ZQArray<int> parents_;  // by start: position of the last element of the phrase of the preceding pass
  zmatrix::ZQArray<Group> groups_;
  zmatrix::ZQArray<int> missing_;  // coordinates of the children that the current group still needs
  bool isOutOfMemory_ = false;
  ZQFieldPlacement<Tier> placement_;
};

}  // namespace zmatrix
