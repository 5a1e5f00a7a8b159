// Learning a sequence of single integers as the sequence update does, with the same phrases and counts, but all phrases of one
// length at once: they are sorted by what they go on from, and the children that an element gets are put in place together, the
// largest groups first. Wide fields, as those of symbols are, then move once a pass and not once a child. Where phrases lie
// differs from the update one by one, so this is for callers who may choose.
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

  ZQBulkUpdate(Matrix& matrixToTeach, const int* items, int numberOfItems)
      : matrix(matrixToTeach), info(*matrixToTeach.getMatrixInfo()), sequence(items), length(numberOfItems) {}

  /// 1 learned, -1 a write failed, -2 memory has run out: then the phrases of some lengths may have been learned.
  [[nodiscard]] int run(int maxPhraseLength) {
    const int root = Write::provideRoot(matrix);
    if (root < 0 || info.getMemIsReadOnly()) return -1;
    if (!steps.resize(length) || !parents.resize(length, root)) return -2;
    auto* rootElement = static_cast<typename Tier::Element*>(matrix.elementAt(root));
    rootElement->addWriteCountWithSuccessor(length);
    rootElement->incrementWriteCount();
    const int longest = std::min(maxPhraseLength, length);
    if (longest > info.getMaxDimOfMatrix()) {
      dbPrintf(0, "error: maximal dimension exceeded: %d\n", longest);
      return -1;
    }
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText,
             "updateMatrixWithCombinedSequence with %d items...", longest);
    for (int known = 0; known < longest; ++known) {
      matrixProgressDisplay(known, longest);
      if (!learnPhrasesOf(known)) return isOutOfMemory ? -2 : -1;
    }
    matrixProgressDisplay(longest, longest);
    return 1;
  }

 private:
  /// The last step of a phrase: from the element of all items but one to that one.
  struct Step {
    int parent;
    int item;
    int start;  // of the phrase
    bool operator<(const Step& other) const {
      if (parent != other.parent) return parent < other.parent;
      return item != other.item ? item < other.item : start < other.start;
    }
  };
  struct Group {
    size_t begin;
    size_t end;
  };

  bool learnPhrasesOf(int known) {
    const auto count = static_cast<size_t>(length - known);
    for (size_t start = 0; start < count; ++start) {
      steps[start] = {parents[start], sequence[start + static_cast<size_t>(known)], static_cast<int>(start)};
      if (!Write::admits(info, steps[start].item)) return false;
    }
    std::sort(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(count));
    if (!findGroups(count)) return false;
    for (const Group& group : groups) {
      if (!provideChildren(group) || !countChildren(group, known)) return false;
    }
    return true;
  }

  bool findGroups(size_t count) {
    groups.clear();
    for (size_t begin = 0, end; begin < count; begin = end) {
      for (end = begin + 1; end < count && steps[end].parent == steps[begin].parent;) ++end;
      if (!has(groups.append({begin, end}))) return false;
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& a, const Group& b) { return a.end - a.begin > b.end - b.begin; });
    return true;
  }

  bool provideChildren(const Group& group) {
    missing.clear();
    for (size_t i = group.begin; i < group.end; ++i) {
      const Step& step = steps[i];
      if (!missing.empty() && missing.back() == step.item) continue;
      if (matrix.childAt(step.parent, step.item) < 0 && !has(missing.append(step.item))) return false;
    }
    return missing.empty() || placement.add(matrix, steps[group.begin].parent, missing);
  }

  // Counted as often as the phrases occur. From here on no other field moves in this pass, so that positions stay good.
  bool countChildren(const Group& group, int known) {
    const bool usesStart = info.getUseStartOfSequence() == 1, usesEnd = info.getUseEndOfSequence() == 1;
    int child = -1;
    for (size_t i = group.begin; i < group.end; ++i) {
      const Step& step = steps[i];
      if (i == group.begin || steps[i - 1].item != step.item) {
        child = matrix.childAt(step.parent, step.item);
        if (child < 0) return false;
        Write::countStep(info, known, step.item);
      }
      typename Tier::WriteFlags flags{};
      flags.startFlag = step.start == 0 && known == 0 && usesStart;
      flags.endFlag = usesEnd && step.start >= length - known - 1;
      Write::countWrite(matrix, info, child, known + 1, flags);
      parents[static_cast<size_t>(step.start)] = child;
    }
    return true;
  }

  bool has(bool room) {
    isOutOfMemory = !room;
    return room;
  }

  Matrix& matrix;
  Info& info;
  const int* sequence;
  const int length;
  zmatrix::ZQArray<Step> steps;
  zmatrix::ZQArray<int> parents;  // by start: where the phrase of the pass before ends
  zmatrix::ZQArray<Group> groups;
  zmatrix::ZQArray<int> missing;
  bool isOutOfMemory = false;
  ZQFieldPlacement<Tier> placement;
};

}  // namespace zmatrix
