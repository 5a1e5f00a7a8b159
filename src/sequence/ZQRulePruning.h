// Pruning, shared by the tiers that learn: removes paths whose last item a shorter context also determines, cuts paths that
// exceed a length, empties a sub-matrix, and drops empty sub-matrices. A pass scans the block once, highest slot first; an
// element belongs to the sub-matrix whose root its links lead up to. Links are checked before they are followed: a damaged one
// ends the walk, so no scan reads outside the block or loops for ever.
#pragma once

#include <algorithm>
#include <cstdio>

#include "frame/ZQArray.h"
#include "frame/ZQProgress.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQSuffixLinks.h"
#include "store/ZQStoreDelete.h"

namespace zmatrix {

template <class Tier>
struct ZQRulePruning {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;

  static int removeOverDetermined(Matrix& matrix) {
    int total = 0;
    int removed = 0;
    ZQSuffixLinks links;  // passes only delete, so the links stay valid for all of them
    links.build(matrix);
    // Removing a leaf can make its parent a leaf, which the next pass may remove.
    for (int passNumber = 1; (removed = removeOverDeterminedOnce(matrix, passNumber, links)) > 0; ++passNumber) {
      total += removed;
    }
    const int id = matrix.getCurrentMatrixID();
    if (removed < 0) dbPrintf(0, "Errorcode removing overdetermined end points for matrixID %d:%d\n", id, removed);
    dbPrintf(1, "successfully removed %d overdetermined end points for matrixID %d\n", total, id);
    matrix.getMatrixInfo()->_setIsOverDetermined(0);
    return removed == 0 ? 1 : 0;
  }

  static int removeOverDeterminedOnce(Matrix& matrix, int passNumber) {
    ZQSuffixLinks links;
    links.build(matrix);
    return removeOverDeterminedOnce(matrix, passNumber, links);
  }

  /// If memory ran out for the links, each path is looked up from the root.
  static int removeOverDeterminedOnce(Matrix& matrix, int passNumber, const ZQSuffixLinks& links) {
    dbPrintf(6, "**************begin removeOverDeterminedPoints...\n");
    const int depthLimit = matrix.getMatrixInfo()->getCurrentDimension();
    zmatrix::ZQArray<int> path;
    if (isEmpty(matrix) || !path.resize(depthLimit, 0)) {
      dbPrintf(1, "removeOverdeterminedElements: matrix is empty!\n");
      return -1;
    }
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText,
             "removeOverdetermined elements pass no. %d...", passNumber);
    const int top = topPosition(matrix);
    const int bottom = matrix.getMaxNumberOfMatrices();
    int removed = 0;
    for (int position = top; position >= bottom; --position) {
      reportSometimes(position, top - position, top - bottom + 1);
      const ZQMatrixBaseElement* element = matrix.elementAt(position);
      if (element == nullptr || element->getWriteCount() < 1 || element->getOffsetToElementInNextDimension() != 0) continue;
      if (links.isKnown(position) && !isRedundant(matrix, links, position, depthLimit)) continue;
      if (links.isKnown(position) && isQuiet(matrix) && links.depthOf(position) < matrix.getMatrixInfo()->getMaxDimOfMatrix()) {
        ZQStoreDelete<Tier>::cutBack(matrix, *matrix.getMatrixInfo(), position);
        ++removed;
        continue;
      }
      const int length = pathOf(matrix, position, depthLimit, path);
      if (length < 0 || matrix.isDeterminedUpToTwice(path.data(), length) < 2) continue;
      if (!isSpared(matrix, path.data(), length)) removed += removeLeaf(matrix, path.data(), length);
    }
    reportEnd(top - bottom + 1);
    return removed;
  }

  static int removeLong(Matrix& matrix, int maximalLength) {
    dbPrintf(1, "******************begin removeLongElements(%d)...\n", maximalLength);
    if (!matrix.hasBlock()) return -1;
    if (isEmpty(matrix)) {
      dbPrintf(0, "removeLongElements: matrix is empty!\n");
      return 1;
    }
    const int top = topPosition(matrix);
    const int bottom = matrix.getMaxNumberOfMatrices();
    setProgressText("removing elements: first pass");
    int removed = 0;
    // Marked elements are unlinked in the second pass: the first one still walks over them.
    for (int position = top; position >= bottom; --position) {
      reportSometimes(position, top - position, top - bottom + 1);
      if (matrix.elementAt(position) == nullptr) continue;
      const int depth = depthOf(matrix, position);
      if (depth > maximalLength) removed += markTooDeep(matrix, position, depth - std::max(maximalLength, 0));
    }
    reportEnd(top - bottom + 1);
    setProgressText("removing elements: second pass");
    for (int position = bottom; position <= top; ++position) {
      reportSometimes(position, position - bottom, top - bottom + 1);
      const ZQMatrixBaseElement* element = matrix.elementAt(position);
      if (element != nullptr && element->getWriteCount() == markedForRemoval) takeOut(matrix, position);
    }
    reportEnd(top - bottom + 1);
    return removed;
  }

  static int clearForID(Matrix& matrix, int id) {
    if (!matrix.hasBlock()) return -1;
    const int rememberedID = matrix.getCurrentMatrixID();
    if (matrix.getMaxNumberOfMatrices() == 1 && rememberedID == 0) {
      dbPrintf(0, "error from clearMatrixWithID(): cannot remove, matrix must at least contain one sub matrix!\n");
      return -1;
    }
    const bool isLegal = id >= 0 && id < matrix.getMaxNumberOfMatrices();
    if (isLegal) matrix.setCurrentMatrixID(id);
    if (!isLegal || matrix.removeLongElements(0) <= 0) {
      dbPrintf(0, "error from clearMatrixWithID(): removeLongElements() returned error!\n");
      return -1;
    }
    Info& info = *matrix.getMatrixInfo();
    info.deInitMatrixInfo();
    const int hasRoom = info.initMatrixInfo(id);
    matrix.setCurrentMatrixID(rememberedID);
    return hasRoom ? 1 : -1;
  }

  static int removeEmpty(Matrix& matrix) {
    ZQMatrixFileHeader* header = matrix.getMatrixFileHeader();
    if (header == nullptr || !matrix.hasBlock()) return -1;
    if (header->getMaxNumberOfMatrices() == 1) {
      dbPrintf(1, "message from removeEmptyMatrices(): cannot remove, matrix must at least contain one sub matrix!\n");
      return -1;
    }
    // One sub-matrix is always kept, even if all are empty.
    const int kept = std::max(matrix.getHighestOccupiedMatrixID() + 1, 1);
    if (kept == header->getMaxNumberOfMatrices()) {
      dbPrintf(1, "message from removeEmptyMatrices(): no empty matrices for removing found!\n");
      return -1;
    }
    const int rememberedID = matrix.getCurrentMatrixID();
    releaseSubMatrices(matrix, kept);
    matrix.setCurrentMatrixID(rememberedID < kept ? rememberedID : 0);
    return 1;
  }

 private:
  static constexpr int markedForRemoval = -1;  // stored as the write count
  static constexpr int positionsBetweenReports = 16;
  static constexpr int lowestLevelOfVectors = 4;  // debug level from which a removed vector may be shown

  static bool isEmpty(const Matrix& matrix) {
    const ZQMatrixBaseElement* root = matrix.elementAt(matrix.getCurrentMatrixID());
    return root == nullptr || root->getOffsetToElementInNextDimension() == 0 ||
           matrix.getMatrixInfo()->getCurrentDimension() <= 0;
  }

  static int topPosition(Matrix& matrix) { return std::min(matrix.getMaximalStack(), matrix.getNumberOfSlots() - 1); }

  static void setProgressText(const char* text) {
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "%s", text);
  }
  static void reportSometimes(int position, int item, int itemCount) {
    if (position % positionsBetweenReports == 0) matrixProgressDisplay(item, itemCount);
  }
  static void reportEnd(int itemCount) { matrixProgressDisplay(itemCount, itemCount); }

  /// Moves `position` to the element above. False at an empty slot, at a link out of the block, with a message, and at a link of
  /// offset 0.
  static bool stepUp(Matrix& matrix, long long& position, const char* leftText, const char* rightText) {
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    if (element == nullptr) return false;
    const int offset = element->getOffsetToElementInPrevDimension();
    position += offset;
    if (position < 0) dbPrintf(0, "%s%d\n", leftText, static_cast<int>(position));
    if (position >= matrix.getNumberOfSlots()) dbPrintf(0, "%s%d\n", rightText, static_cast<int>(position));
    return offset != 0 && position >= 0 && position < matrix.getNumberOfSlots();
  }

  /// Reads the index vector of an element of the current sub-matrix and returns its length; -1 for any other element.
  static int pathOf(Matrix& matrix, int element, int depthLimit, zmatrix::ZQArray<int>& path) {
    const int lowestElement = matrix.getMaxNumberOfMatrices();
    int length = 0;
    long long position = element;
    while (position >= lowestElement && length < depthLimit) {
      const ZQMatrixBaseElement* step = matrix.elementAt(position);
      if (step == nullptr) return -1;
      path[length++] = step->getIndexInDimension();
      if (!stepUp(matrix, position, "removeOverDeterminedPoints: addressOfPreviousElement out of left range: ",
                  "removeOverDeterminedPoints: addressOfPreviousElement out right range: ")) {
        return -1;
      }
    }
    if (position != matrix.getCurrentMatrixID()) return -1;
    std::reverse(path.data(), path.data() + length);
    return length;
  }

  /// True for a leaf whose last item a shorter context also determines, and which the settings don't spare.
  static bool isRedundant(const Matrix& matrix, const ZQSuffixLinks& links, int position, int depthLimit) {
    if (links.depthOf(position) > depthLimit || matrix.isDeterminedUpToTwice(links, position) < 2) return false;
    return !Tier::sparesSymbols(*matrix.getMatrixInfo()) ||
           !Tier::carriesSymbol(*static_cast<const Element*>(matrix.elementAt(position)));
  }

  /// True if removed vectors are not printed.
  static bool isQuiet(const Matrix& matrix) {
    return !ZQDebugChannel::shows(lowestLevelOfVectors) && !matrix.showsVectors(lowestLevelOfVectors);
  }

  /// True if the settings spare the element. Prints a message if it is missing.
  static bool isSpared(Matrix& matrix, const int* path, int length) {
    if (!Tier::sparesSymbols(*matrix.getMatrixInfo())) return false;
    int handle = 0;
    const ZQMatrixBaseElement* element = matrix.getMatrixElementFromElementVector(path, length, &handle);
    if (element == nullptr) {
      dbPrintf(0, "removeOverdetPoints: element=NULL unexpected for indexVector: ");
      matrix.printIndexVector(path, length, 0, 0);
      return true;
    }
    return Tier::carriesSymbol(*static_cast<const Element*>(element));
  }

  static int removeLeaf(Matrix& matrix, const int* path, int length) {
    dbPrintf(7, "remove   ");
    matrix.printIndexVector(path, length, 0, 7);
    const int code = matrix.deleteMatrixElement(path, length, 1);
    if (code >= 1) return 1;
    dbPrintf(5, "delete element: uncritical warning, rc = %d\n", code);
    matrix.printIndexVector(path, length, 0, 4);
    return 0;
  }

  /// No sound path is longer; a longer chain is a cycle.
  static int longestPath(Matrix& matrix) {
    return std::max(matrix.getMatrixInfo()->getCurrentDimension(), matrix.getMatrixInfo()->getMaxDimOfMatrix());
  }

  /// The length of the path of an element of the current sub-matrix; -1 for any other element.
  static int depthOf(Matrix& matrix, int element) {
    const int lowestElement = matrix.getMaxNumberOfMatrices();
    const int dimension = matrix.getMatrixInfo()->getCurrentDimension();
    const int limit = longestPath(matrix);
    int depth = 0;
    long long position = element;
    while (position >= lowestElement) {
      if (matrix.elementAt(position) == nullptr) dbPrintf(0, "Impossible0!\n");
      if (!stepUp(matrix, position, "RemoveLongElements: addressOfPreviousElement out of left range: ",
                  "removeLongElements: addressOfPreviousElement out right range: ")) {
        return -1;
      }
      if (++depth > limit) return -1;
    }
    if (position != matrix.getCurrentMatrixID()) return -1;
    if (depth > dimension) dbPrintf(0, "error in removeLongElements: iDim > dimension: %d > %d", depth, dimension);
    return depth;
  }

  /// Marks the element, the elements above it that are too deep, and those below it. Returns the number of written ones.
  static int markTooDeep(Matrix& matrix, int element, int tooDeep) {
    int removed = 0;
    long long position = element;
    int marked = 0;
    for (; marked < tooDeep && position > 0; ++marked) {
      if (!mark(matrix, position, removed)) {
        dbPrintf(0, "Impossible1!\n");
        return removed;
      }
      position += matrix.elementAt(position)->getOffsetToElementInPrevDimension();
    }
    ZQMatrixBaseElement* last = matrix.elementAt(position);
    if (marked == tooDeep && last != nullptr) last->setOffsetToElementInNextDimension(0);
    markBelow(matrix, element, removed);
    return removed;
  }

  static void markBelow(Matrix& matrix, long long position, int& removed) {
    for (int steps = longestPath(matrix); steps > 0; --steps) {
      const int child = matrix.elementAt(position)->getOffsetToElementInNextDimension();
      if (child == 0) return;
      position += child;
      if (position < matrix.getMaxNumberOfMatrices() || !mark(matrix, position, removed)) {
        dbPrintf(0, "Impossible2!\n");
        return;
      }
    }
  }

  static bool mark(Matrix& matrix, long long position, int& removed) {
    ZQMatrixBaseElement* element = matrix.elementAt(position);
    if (element == nullptr) return false;
    Info& info = *matrix.getMatrixInfo();
    if (element->getWriteCount() > 0) {
      info.decrementNumberOfWriteElements();
      if (element->getOffsetToElementInNextDimension() == 0) info.decrementNumberOfEndElements();
      info.incrementNumberOfDeleteEvents();
      ++removed;
    }
    // Marking an element a second time adds 1: the sum is wrong until the next recount.
    info.addToNumberOfWriteCounts(zmatrix::negativeOf(element->getWriteCount()));
    element->setWriteCount(markedForRemoval);
    return true;
  }

  static void takeOut(Matrix& matrix, int position) {
    const ZQMatrixBaseElement* element = matrix.elementAt(position);
    const int next = element->getOffsetToNextElementInDimension();
    const int previous = element->getOffsetToPreviousElementInDimension();
    ZQMatrixBaseElement* nextElement = next != 0 ? matrix.elementAt(static_cast<long long>(position) + next) : nullptr;
    ZQMatrixBaseElement* previousElement =
        previous != 0 ? matrix.elementAt(static_cast<long long>(position) + previous) : nullptr;
    if (nextElement != nullptr) {
      nextElement->setOffsetToPreviousElementInDimension(previousElement != nullptr ? previous - next : 0);
    }
    if (previousElement != nullptr) {
      previousElement->setOffsetToNextElementInDimension(nextElement != nullptr ? next - previous : 0);
    }
    matrix.clearMatrixElement(position, 1);
  }

  /// Deletes the elements below a root. A sub-matrix whose record was reset counts as empty but still has its elements, which
  /// would otherwise become children of the next element in the slot of the root.
  static void removeBelow(Matrix& matrix, int root) {
    long long position = root;
    while (true) {
      ZQMatrixBaseElement* element = matrix.elementAt(position);
      const long long child = position + element->getOffsetToElementInNextDimension();
      const ZQMatrixBaseElement* below =
          child != position && child >= matrix.getMaxNumberOfMatrices() ? matrix.elementAt(child) : nullptr;
      if (below != nullptr && child + below->getOffsetToElementInPrevDimension() == position) {
        position = child;
        continue;
      }
      if (position == root) return;
      const long long parent = position + element->getOffsetToElementInPrevDimension();
      const int next = element->getOffsetToNextElementInDimension();
      matrix.destroyElementAt(static_cast<int>(position));
      matrix.elementAt(parent)->setOffsetToElementInNextDimension(next > 0 ? static_cast<int>(position + next - parent) : 0);
      position = parent;
    }
  }

  static void releaseSubMatrices(Matrix& matrix, int kept) {
    ZQMatrixFileHeader* header = matrix.getMatrixFileHeader();
    for (int id = kept; id < header->getMaxNumberOfMatrices(); ++id) {
      if (matrix.elementAt(id) == nullptr) continue;
      removeBelow(matrix, id);
      matrix.destroyElementAt(id);
    }
    static_cast<void>(matrix.resizeSubMatrices(kept));
    if (header->getNumberOfMatrices() > kept) header->_setNumberOfMatrices(kept);
  }
};

}  // namespace zmatrix
