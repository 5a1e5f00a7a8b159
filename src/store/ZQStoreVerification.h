// The self-tests, shared by all tiers. The linear test goes through the block and follows each written element up to its root;
// the consistency test goes down from the root through all fields. Both compare the counters with their own counts and can trim
// block and arrays. They report a fault and go on. The linear test follows parent links only up to an element whose depth is
// known, so that its time is linear in the size of the block, and a cycle of links is a fault like others.
//
// Tier::Verification checks the further counts of a tier: it is created before the walk, gets each written element, and compares
// its counts at the end.
#pragma once

#include <climits>
#include <cstdio>

#include "frame/ZQArray.h"
#include "frame/ZQProgress.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQVerificationTexts.h"

namespace zmatrix {

template <class Tier>
struct ZQStoreVerification {
  using Matrix = typename Tier::Matrix;
  using Info = typename Tier::Info;
  using Element = typename Tier::Element;
  using Texts = zmatrix::VerificationTexts;

  static int first(Matrix& matrix, int which, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
    int result = -2;
    store(numberOfWriteElements, 0);
    store(numberOfEndElements, 0);
    if (which == 1) result = matrix.performMatrixLinearTest(numberOfWriteElements, numberOfEndElements, trim);
    if (which == 2) result = matrix.performMatrixConsistencyTest(numberOfWriteElements, numberOfEndElements, trim);
    if (result <= 0) dbPrintf(0, "performMatrix1stMemoryTest failed with rc = %d\n", result);
    return result;
  }

  static int linear(Matrix& matrix, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
    dbPrintf(1, "begin performMatrixLinearTest for matrixID %d...\n", matrix.getCurrentMatrixID());
    dbPrintf(1, trim == 1 ? "matrix will be trimmed...\n" : "matrix will not be trimmed...\n");
    ZQStoreVerification test(matrix, numberOfWriteElements, numberOfEndElements, trim == 1);
    if (test.isEmpty()) {
      dbPrintf(1, "performMatrixLinearTest: matrix is empty!\n");
      return -1;
    }
    if (!test.depths_.resize(test.top_ + 1LL)) return 0;
    typename Tier::Verification additions(matrix, zmatrix::linearTestTexts);
    Info& info = test.info_;
    if (test.trims_) {
      info._resetIndexLimits();
      info._setCurrentDimension(0);
    }
    test.setProgressText();
    const zmatrix::ProgressOfLoop progress;
    for (int position = test.lowest_; position <= test.top_; ++position) {
      progress.reach(position, test.top_);
      const ZQMatrixBaseElement* element = matrix.elementAt(position);
      if (element != nullptr && element->getWriteCount() >= 1) test.checkPathOf(position, additions);
    }
    if (test.trims_) test.trimBlockAndArrays(zmatrix::linearTestTexts);
    const bool hasDeletes = info.getNumberOfMatrixDeleteEvents() != 0;
    info.setNumberOfWriteCounts(static_cast<int>(test.sum_));
    if (!hasDeletes && test.sum_ != info.getNumberOfMatrixWriteEvents()) {
      dbPrintf(
          1,
          "matrixLinear-Test: overallWriteCount possibly differs from _numberOfWriteEvents -_numberOfDeleteEvents: %d <-> %d "
          "- %d\n",
          static_cast<int>(test.sum_), info.getNumberOfMatrixWriteEvents(), info.getNumberOfMatrixDeleteEvents());
    }
    if (!additions.compareDepthAndKernel(test.deepest_)) test.result_ = 0;
    test.compareCounts(zmatrix::linearTestTexts);
    if (!additions.compareCounts()) test.result_ = 0;
    return test.answer(numberOfWriteElements, numberOfEndElements);
  }

  static int consistency(Matrix& matrix, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
    if (trim == 1) dbPrintf(1, "matrix will be trimmed...\n");
    if (trim == 1 && holdsSeveral(matrix)) {
      dbPrintf(1,
               "ConsistencyTestparameter trim = 1 set to 0: matrix will not be trimmed because matrix contains more than 1 sub "
               "matrices...\n");
      trim = 0;
    }
    ZQStoreVerification test(matrix, numberOfWriteElements, numberOfEndElements, trim == 1);
    if (test.isEmpty()) {
      dbPrintf(0, "PerformMatrixConsistencyTest: matrix is empty!\n");
      return -1;
    }
    Info& info = test.info_;
    const int dimension = info.getCurrentDimension();
    const bool hasRoom = test.positions_.resize(dimension + 2LL, 0) && test.fieldBegins_.resize(dimension + 2LL, 0) &&
                         test.path_.resize(dimension + 1LL, 0) && test.lows_.resize(dimension, INT_MAX) &&
                         test.highs_.resize(dimension, INT_MIN);
    if (!hasRoom) return 0;
    typename Tier::Verification additions(matrix, zmatrix::consistencyTestTexts);
    test.walkDown(additions);
    if (test.trims_) test.trimDimensions();
    if (test.trims_) test.trimBlockAndArrays(zmatrix::consistencyTestTexts);
    if (test.sum_ != info.getNumberOfWriteCounts()) {
      dbPrintf(0, "error matrixConsistencyTest: getNumberOfWriteCounts(%d) != overallWriteCount(%d)!\n",
               info.getNumberOfWriteCounts(), static_cast<int>(test.sum_));
      // No fault, since deletions make the counter drift. It is corrected; the linear test does so without a message.
      info.setNumberOfWriteCounts(static_cast<int>(test.sum_));
    }
    if (!additions.compareDepthAndKernel(test.deepest_)) test.result_ = 0;
    test.compareCounts(zmatrix::consistencyTestTexts);
    if (test.occupied_ != info.getNumberOfMatrixElements()) {
      dbPrintf(0, "error matrixConsistency-Test:: numberOfOccupiedPositions differs from _numberOfElements: %d<->%d\n",
               test.occupied_, info.getNumberOfMatrixElements());
      test.result_ = 0;
    }
    if (!additions.compareCounts()) test.result_ = 0;
    return test.answer(numberOfWriteElements, numberOfEndElements);
  }

 private:
  // What depths_ holds of the path from a slot up to its root; a positive value is the depth below the current root. `foreign`
  // paths end at another root, at an empty slot, above the stack or in a cycle.
  enum PathState { unknown = 0, foreign = -1, leavesBlock = -2, inProgress = -3 };

  ZQStoreVerification(Matrix& matrix, int* numberOfWriteElements, int* numberOfEndElements, bool isToTrim)
      : matrix_(matrix),
        info_(*matrix.getMatrixInfo()),
        root_(matrix.getCurrentMatrixID()),
        lowest_(matrix.getMaxNumberOfMatrices()),
        top_(matrix.getMaximalStack() < matrix.numberOfSlots_ ? matrix.getMaximalStack() : matrix.numberOfSlots_ - 1),
        trims_(isToTrim) {
    store(numberOfWriteElements, 0);
    store(numberOfEndElements, 0);
  }

  static void store(int* target, int value) {
    if (target != nullptr) *target = value;
  }

  static bool holdsSeveral(Matrix& matrix) {
    if (matrix.getNumberOfMatrices() > 1) return true;
    for (int id = 0; id < matrix.getMaxNumberOfMatrices(); ++id) {
      if (id != matrix.getCurrentMatrixID() && !matrix.getMatrixInfo(id)->isEmpty()) return true;
    }
    return false;
  }

  bool isEmpty() const {
    const ZQMatrixBaseElement* element = matrix_.elementAt(root_);
    return element == nullptr || element->getOffsetToElementInNextDimension() == 0 || info_.getCurrentDimension() <= 0;
  }

  void setProgressText() const {
    char* text = globalProgressData.progressText;
    const size_t size = sizeof globalProgressData.progressText;
    if (Tier::Verification::namesMatrixID) {
      snprintf(text, size, "performMatrixLinearTest for matrixID %d with %d items...", root_, top_);
    } else {
      snprintf(text, size, "performMatrixLinearTest with %d items...", top_);
    }
  }

  // ---------------------------------------------------------------------------------------------- linear test: upwards

  void checkPathOf(int position, typename Tier::Verification& additions) {
    const int depth = depthOf(position);
    if (depth < 1) return;
    if (!trims_ && depth > info_.getCurrentDimension()) {
      dbPrintf(0, "error in performMatrixLinearTest for matrixID %d: iDim > dimension: %d > %d\n", root_, depth,
               info_.getCurrentDimension());
      result_ = 0;
      return;
    }
    if (additions.needsPath(position) && !readPath(position, depth)) {
      result_ = 0;
      return;
    }
    count(position, depth, additions);
  }

  /// The depth of an element below the current root, or the state of a path that doesn't lead there.
  int depthOf(int element) {
    long long position = element;
    int steps = 0;
    int end = unknown;
    // A path that leaves the block is followed again from each element, for its message, unless it is longer than a legal one.
    while (end == unknown) {
      if (position < lowest_) {
        end = position == root_ ? 0 : static_cast<int>(foreign);
        break;
      }
      const ZQMatrixBaseElement* step = matrix_.elementAt(position);
      const int known = position <= top_ ? depths_[static_cast<size_t>(position)] : static_cast<int>(foreign);
      if (step == nullptr || known == inProgress) {
        end = foreign;
      } else if (known == unknown) {
        depths_[static_cast<size_t>(position)] = inProgress;
      } else if (known != leavesBlock || steps > info_.getMaxDimOfMatrix()) {
        end = known;
      }
      if (end != unknown) break;
      position += step->getOffsetToElementInPrevDimension();
      ++steps;
      if (!liesInBlock(position)) end = leavesBlock;
    }
    if (trims_ && end >= 0) info_.checkMatrixDimension(end + steps - 1);
    recordPath(element, steps, end);
    return end < 0 ? end : end + steps;
  }

  bool liesInBlock(long long position) {
    if (position >= 0 && position < matrix_.numberOfSlots_) return true;
    if (position < 0) {
      dbPrintf(0, "error performMatrixLinearTest for matrixID %d: addressOfPreviousElement out of left range: %d\n", root_,
               static_cast<int>(position));
    } else {
      dbPrintf(0, "error performMatrixLinearTest for matrixID %d: addressOfPreviousElement out right range: %d\n", root_,
               static_cast<int>(position));
    }
    result_ = 0;
    return false;
  }

  void recordPath(int element, int steps, int end) {
    long long position = element;
    for (int i = 0; i < steps; ++i) {
      int& depth = depths_[static_cast<size_t>(position)];
      if (depth != inProgress) return;
      const ZQMatrixBaseElement* step = matrix_.elementAt(position);
      depth = end < 0 ? end : end + steps - i;
      if (trims_ && end >= 0) info_.updateMatrixIndexInfo(depth - 1, step->getIndexInDimension());
      position += step->getOffsetToElementInPrevDimension();
    }
  }

  bool readPath(int element, int depth) {
    if (depth > path_.count() && !path_.resize(zmatrix::grownCapacity(depth) + 1LL, 0)) return false;
    long long position = element;
    for (int i = depth - 1; i >= 0; --i) {
      const ZQMatrixBaseElement* step = matrix_.elementAt(position);
      path_[i] = step->getIndexInDimension();
      position += step->getOffsetToElementInPrevDimension();
    }
    return true;
  }

  // ---------------------------------------------------------------------------------------------- consistency test: downwards

  // Visits all elements below the root depth first, the children of an element in the order of their field.
  void walkDown(typename Tier::Verification& additions) {
    positions_[0] = root_;
    int depth = 0;
    long long candidate = enterField(depth);
    while (depth > 0) {
      if (candidate < 0) {
        --depth;
        if (depth > 0) candidate = nextInField(positions_[depth]);
        continue;
      }
      const int position = static_cast<int>(candidate);
      candidate = -1;
      if (isOfField(position, depth)) {
        positions_[depth] = position;
        path_[depth - 1] = matrix_.elementAt(position)->getIndexInDimension();
        ++occupied_;
        if (matrix_.elementAt(position)->getWriteCount() >= 1) {
          widen(depth);
          count(position, depth, additions);
        }
        if (matrix_.elementAt(position)->getOffsetToElementInNextDimension() != 0) candidate = enterField(depth);
      }
      if (candidate < 0) candidate = nextInField(position);
    }
  }

  /// Goes down to the first child of the element at `depth`. -1, and no change, if the child lies too deep, or if the link
  /// doesn't lead to the first element of the field: a fault, whose hidden elements show as differences of the counts.
  long long enterField(int& depth) {
    const long long parent = positions_[depth];
    const long long child = parent + matrix_.elementAt(parent)->getOffsetToElementInNextDimension();
    if (depth + 1 > info_.getCurrentDimension()) {
      dbPrintf(0, "error in performMatrixConsistencyTest: iDim > dimension\n");
      if (depth + 1 > info_.getInternalCurrentDimension()) dbPrintf(0, "Aha");
      result_ = 0;
      return -1;
    }
    const ZQMatrixBaseElement* element = matrix_.elementAt(child);
    if (element == nullptr || child < lowest_ || child + element->getOffsetToElementInPrevDimension() != parent ||
        element->getOffsetToPreviousElementInDimension() != 0) {
      result_ = 0;
      return -1;
    }
    ++depth;
    fieldBegins_[depth] = child - element->getIndexInDimension();
    return child;
  }

  /// The next element of the field, or -1. A link to anything but a sibling that links back is a fault, reported by the message
  /// of ZQMatrixBase::countField.
  long long nextInField(int position) {
    const ZQMatrixBaseElement* element = matrix_.elementAt(position);
    const int offset = element->getOffsetToNextElementInDimension();
    if (offset == 0) return -1;
    const long long next = static_cast<long long>(position) + offset;
    const long long parent = static_cast<long long>(position) + element->getOffsetToElementInPrevDimension();
    const ZQMatrixBaseElement* sibling = offset > 0 ? matrix_.elementAt(next) : nullptr;
    if (sibling == nullptr || next + sibling->getOffsetToElementInPrevDimension() != parent) {
      zmatrix::reportUnexpectedOffset("Next", offset);
    } else if (sibling->getOffsetToPreviousElementInDimension() != -offset) {
      zmatrix::reportUnexpectedOffset("Previous", sibling->getOffsetToPreviousElementInDimension());
    } else {
      return next;
    }
    result_ = 0;
    return -1;
  }

  /// True if parent link and field begin of the element are those of the field, and its coordinate lies within the index limits.
  bool isOfField(int position, int depth) {
    const ZQMatrixBaseElement* element = matrix_.elementAt(position);
    const int index = element->getIndexInDimension();
    const long long parent = static_cast<long long>(position) + element->getOffsetToElementInPrevDimension();
    return parent == positions_[depth - 1] && position - static_cast<long long>(index) == fieldBegins_[depth] &&
           index >= info_.getMinimalIndices()[depth - 1] && index <= info_.getMaximalIndices()[depth - 1];
  }

  void widen(int depth) {
    if (!trims_) return;
    for (int i = 0; i < depth; ++i) {
      if (path_[i] < lows_[i]) lows_[i] = path_[i];
      if (path_[i] > highs_[i]) highs_[i] = path_[i];
    }
  }

  // ---------------------------------------------------------------------------------------------- counts and trimming

  void count(int position, int depth, typename Tier::Verification& additions) {
    const Element& element = *static_cast<const Element*>(matrix_.elementAt(position));
    ++written_;
    sum_ += element.getWriteCount();
    if (element.getOffsetToElementInNextDimension() == 0) ++ends_;
    if (depth > deepest_) deepest_ = depth;
    if (!additions.look(position, element, path_.data(), depth)) result_ = 0;
  }

  void compareCounts(const Texts& texts) {
    if (written_ != info_.getNumberOfWriteElements()) {
      dbPrintf(0, texts.writeElementsDiffer, written_, info_.getNumberOfWriteElements());
      result_ = 0;
    }
    if (ends_ == info_.getNumberOfEndElements()) return;
    if (Tier::Verification::correctsEndElements) {
      dbPrintf(1, texts.endElementsCorrected, ends_, info_.getNumberOfEndElements());
      info_.setNumberOfEndElements(ends_);
    } else {
      dbPrintf(0, texts.endElementsDiffer, ends_, info_.getNumberOfEndElements());
      result_ = 0;
    }
  }

  void trimDimensions() {
    if (deepest_ > info_.getCurrentDimension()) {
      dbPrintf(0, "error matrixConsistency-Test: _currentDimension < newcurrentDimension unexpected\n");
      result_ = 0;
      return;
    }
    info_._resetIndexLimits();
    info_._setCurrentDimension(deepest_);
    for (int i = 0; i < deepest_; ++i) {
      info_.updateMatrixIndexInfo(i, lows_[i]);
      info_.updateMatrixIndexInfo(i, highs_[i]);
    }
  }

  void trimBlockAndArrays(const Texts& texts) {
    ZQMatrixFileHeader* header = matrix_.getMatrixFileHeader();
    int last = top_;
    while (last > lowest_ && matrix_.elementAt(last) == nullptr) --last;
    if (last > header->getMaximalStack()) {
      dbPrintf(0, "%s", texts.stackUnexpected);
      result_ = 0;
    } else {
      header->_setMaximalStack(last);
    }
    const int oldSize = header->getMatrixBlockSize();
    const int newSize = zmatrix::grownCapacity(header->getMaximalStack() + 1);
    if (oldSize > newSize) {
      dbPrintf(1, texts.blockReduced, oldSize, newSize);
      if (matrix_.resizeBlock(newSize)) header->_setMatrixBlockSize(newSize);
    }
    const int newCapacity = zmatrix::grownCapacity(info_.getCurrentDimension());
    if (info_.getInternalCurrentDimension() > newCapacity) info_._resizeIndexLimits(newCapacity);
  }

  int answer(int* numberOfWriteElements, int* numberOfEndElements) const {
    store(numberOfWriteElements, written_);
    store(numberOfEndElements, ends_);
    return result_;
  }

  Matrix& matrix_;
  Info& info_;
  const int root_;
  const int lowest_;  // the first position that is not a root's
  const int top_;
  const bool trims_;
  zmatrix::ZQArray<int> depths_;     // linear test: per position its depth, or a PathState
  zmatrix::ZQArray<int> path_;       // the index vector of the current element
  zmatrix::ZQArray<int> positions_;  // consistency test: the elements from the root down to the current one
  zmatrix::ZQArray<long long> fieldBegins_;
  zmatrix::ZQArray<int> lows_, highs_;
  int result_ = 1;
  int written_ = 0;
  int ends_ = 0;
  int occupied_ = 0;
  int deepest_ = 0;
  long long sum_ = 0;
};

}  // namespace zmatrix
