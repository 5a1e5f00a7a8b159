// Plain store: delete, handles, the walk to successors, the tests of rules, and pruning.
#include <cmath>
#include <cstdlib>

#include "support/PlainStore.h"

namespace plain {

// ------------------------------------------------------------------------------------------------ delete

int Store::remove(const std::vector<int>& vector, int keepInnerElements) {
  if (vector.empty()) return -2;
  const int code = exist(vector);
  if (code < 2) return code - 1;
  int current = vector.back() + info().matrixPtr[vector.size()];
  if (code == 2) {
    if (keepInnerElements != 0) return 1;
    Element& inner = *at(current);
    info().writeCounts -= inner.writeCount;
    inner.writeCount = 0;
    inner.value = 0;
    ++info().deleteEvents;
    --info().writeElements;
    inner.withSuccessor = 0;
    if (inner.withoutPredecessor > 0) --info().startElements;
    inner.withoutPredecessor = 0;
    if (inner.symbolID > 0) {
      inner.symbolDownLink = 0;
      --info().symbols;
    }
    inner.symbolID = 0;
    return 1;
  }
  int removedCount = 0, lastWriteCount = 0;
  while (true) {
    const Element& element = *at(current);
    if (element.child != 0) break;
    if (removedCount > 0 && element.writeCount > 0) break;
    const int parent = current + element.parent;
    const int next = element.next, previous = element.previous;
    lastWriteCount = element.writeCount;
    if (next > 0 && previous < 0) {
      at(current + next)->previous = previous - next;
      at(current + previous)->next = next - previous;
      --info().endElements;
    } else if (next > 0) {
      at(current + next)->previous = 0;
      at(parent)->child = current + next - parent;
      --info().endElements;
    } else if (previous < 0) {
      at(current + previous)->next = 0;
      --info().endElements;
    } else {
      at(parent)->child = 0;
    }
    clearMatrixElement(current, 1);
    ++removedCount;
    if (parent == currentMatrixID) break;
    current = parent;
  }
  ++info().deleteEvents;
  --info().writeElements;
  info().writeCounts -= lastWriteCount;
  return 1;
}

void Store::clearMatrixElement(int position, int flag) {
  if (at(position) == nullptr) return;
  if (flag == 1 && at(position)->withoutPredecessor > 0) --info().startElements;
  if (flag == 1 && at(position)->symbolID > 0) --info().symbols;
  block[static_cast<size_t>(position)].reset();
  --info().elements;
}

// ------------------------------------------------------------------------------------------------ handles

int Store::handleOf(const int* vector, int length) {
  return exist(vector, length) < 2 ? -1 : vector[length - 1] + info().matrixPtr[static_cast<size_t>(length)];
}

int Store::pathLength(int handle) const {
  const int root = currentMatrixID;
  if (at(root) == nullptr || at(root)->child == 0 || infos[static_cast<size_t>(root)].currentDimension == 0) return -1;
  if (handle < 0 || handle > maximalStack) return -1;
  if (at(handle) == nullptr || handle == root) return 0;
  int count = 0;
  for (int position = handle; position != root; ++count) {
    position += at(position)->parent;
    if (position < 0 || position >= maximalStack) return -1;
    if (position < maxNumberOfMatrices && position != root) return -1;
  }
  return count <= 4096 ? count : -1;
}

std::vector<int> Store::path(int handle) const {
  const int length = pathLength(handle);
  if (length < 1 || at(handle)->writeCount < 1) return {};
  std::vector<int> result(static_cast<size_t>(length));
  for (int i = length - 1, position = handle; i >= 0; --i, position += at(position)->parent) {
    result[static_cast<size_t>(i)] = at(position)->index;
  }
  return result;
}

std::vector<int> Store::objex(int handle) {
  std::vector<int> result(static_cast<size_t>(info().coordinateDimension));
  for (size_t i = result.size(); i-- > 0; handle += at(handle)->parent) result[i] = at(handle)->index;
  return result;
}

std::vector<int> Store::successors(int handle, bool onlyStarts) {
  std::vector<int> result;
  const int c = info().coordinateDimension;
  if (handle < 0 || handle > maximalStack || c < 1 || at(handle) == nullptr) return result;
  int position = handle, depth = 0;
  while (true) {
    while (depth < c && at(position)->child != 0) {
      position += at(position)->child;
      ++depth;
    }
    if (depth == c) {
      for (;; position += at(position)->next) {
        const int count = onlyStarts ? at(position)->withoutPredecessor : at(position)->writeCount;
        if (count > 0) result.push_back(position);
        if (at(position)->next == 0) break;
      }
      position += at(position)->parent;
      depth = c - 1;
    }
    if (depth == 0) return result;
    while (at(position)->next == 0 && depth > 0) {
      position += at(position)->parent;
      --depth;
    }
    if (depth == 0) return result;
    position += at(position)->next;
  }
}

// ------------------------------------------------------------------------------------------------ rules

int Store::isRule(int position) {
  const Element* element = at(position);
  const int c = info().coordinateDimension;
  if (element == nullptr || position == currentMatrixID || c < 1 || element->writeCount < 1) return 0;
  int above = position;
  for (int step = 0; step < c; ++step) {
    if (c >= 2 && at(above)->parent == 0) return 0;
    above += at(above)->parent;
  }
  const int r = at(above)->withSuccessor;
  return r >= 1 && element->writeCount <= r;
}

int Store::isDetermined(const int* vector, int length) {
  if (vector == nullptr || length - 1 < 1) return 0;
  const int c = info().coordinateDimension;
  if (c > 1 && length % c != 0) print(0, "isDeterminedMatrixData length of indexVector unexpected: %d\n", length);
  int count = 0, i = 0, ignored = 0, alsoIgnored = 0;
  double r0 = 0.0;
  while (true) {
    while (i < length - 1 && exist(vector + i, length - i) < 2) i += c;
    if (i >= length - 1) return count;
    int position = handleOf(vector + i, length - i);
    const Element& end = *at(position);
    const double stop = static_cast<double>(end.writeCount - end.withSuccessor) / end.writeCount;
    if (i == 0) r0 = stop;
    if (countField(position, &ignored, &alsoIgnored) != 1) return count / c;
    if (c == 1 && i > 0 && std::fabs(stop - r0) > 1e-9) return count;
    for (int j = 0; j < c - 1; ++j) {
      position += at(position)->parent;
      if (countField(position, &ignored, &alsoIgnored) != 1) return (count + j + 1) / c;
    }
    count += c;
    i += c;
    if (i >= length - 1) return count;
  }
}

// ------------------------------------------------------------------------------------------------ pruning

// The coordinates from the root down to `position`. reachedRoot: the walk has reached the root of the current sub-matrix.
std::vector<int> Store::rootPath(int position, int limit, bool& reachedRoot) const {
  std::vector<int> upward;
  while (position >= maxNumberOfMatrices && static_cast<int>(upward.size()) < limit) {
    upward.push_back(at(position)->index);
    position += at(position)->parent;
  }
  reachedRoot = position == currentMatrixID;
  return {upward.rbegin(), upward.rend()};
}

int Store::removeOverDeterminedElements() {
  int total = 0;
  while (true) {
    const int removed = removeOverDeterminedPass();
    if (removed < 0) {
      print(0, "Errorcode removing overdetermined end points for matrixID %d:%d\n", currentMatrixID, removed);
    }
    if (removed > 0) {
      total += removed;
      continue;
    }
    print(1, "successfully removed %d overdetermined end points for matrixID %d\n", total, currentMatrixID);
    info().isOverDetermined = 0;
    return removed == 0;
  }
}

int Store::removeOverDeterminedPass() {
  const int limit = info().currentDimension;
  if (at(currentMatrixID) == nullptr || at(currentMatrixID)->child == 0 || limit == 0) {
    print(1, "removeOverdeterminedElements: matrix is empty!\n");
    return -1;
  }
  int removed = 0;
  for (int position = maximalStack < blockSize ? maximalStack : maximalStack - 1; position >= maxNumberOfMatrices; --position) {
    if (at(position) == nullptr || at(position)->writeCount < 1) continue;
    bool own = false;
    const std::vector<int> vector = rootPath(position, limit, own);
    if (!own || at(position)->child != 0) continue;
    if (isDetermined(vector.data(), static_cast<int>(vector.size())) < 2) continue;
    const bool carriesSymbol = at(position)->symbolID > 0 || at(position)->symbolDownLink > 0;
    if (tier == Tier::full && info().keepSymbols == 1 && carriesSymbol) continue;
    if (remove(vector, 1) >= 1) ++removed;
  }
  return removed;
}

int Store::removeLongElements(int maximalLength) {
  print(1, "******************begin removeLongElements(%d)...\n", maximalLength);
  const int limit = info().currentDimension;
  if (at(currentMatrixID) == nullptr || at(currentMatrixID)->child == 0 || limit == 0) {
    print(0, "removeLongElements: matrix is empty!\n");
    return 1;
  }
  int result = 0;
  const int top = maximalStack < blockSize ? maximalStack : maximalStack - 1;
  for (int position = top; position >= maxNumberOfMatrices; --position) {
    if (at(position) == nullptr) continue;
    bool own = false;
    const int depth = static_cast<int>(rootPath(position, limit + 1, own).size());
    if (!own || depth <= maximalLength) continue;
    const int tooDeep = depth - maximalLength;
    int current = position, marked = 0;
    for (; marked < tooDeep && current > 0; ++marked) {
      markForRemoval(current, result);
      current += at(current)->parent;
    }
    if (marked == tooDeep) at(current)->child = 0;
    for (current = position; at(current)->child != 0;) {
      current += at(current)->child;
      markForRemoval(current, result);
    }
  }
  for (int position = maxNumberOfMatrices; position <= top; ++position) {
    if (at(position) == nullptr || at(position)->writeCount != -1) continue;
    const int next = at(position)->next, previous = at(position)->previous;
    if (next != 0) at(position + next)->previous = previous == 0 ? 0 : previous - next;
    if (previous != 0) at(position + previous)->next = next == 0 ? 0 : next - previous;
    clearMatrixElement(position, 1);
  }
  return result;
}

void Store::markForRemoval(int position, int& result) {
  Element& element = *at(position);
  if (element.writeCount > 0) {
    --info().writeElements;
    if (element.child == 0) --info().endElements;
    ++result;
    ++info().deleteEvents;
  }
  info().writeCounts -= element.writeCount;
  element.writeCount = -1;
}

}  // namespace plain
