// A matrix with short names for what tests do with it. Suites are typed over the tiers that they apply to.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "frame/ZQMemory.h"
#include "support/CapturedMessages.h"
#include "support/StoreInvariants.h"
#include "support/TierUnderTest.h"

namespace zmatrix {

template <class Matrix>
class TierMatrix {
 public:
  using Access = TierUnderTest<Matrix>;
  static constexpr bool isBase = Access::tier == plain::Tier::base;

  TierMatrix() { makeAnew(); }
  ~TierMatrix() {
    largestAllocation = static_cast<size_t>(-1);
    Access::destroy(matrix);
    setSearchState({});
  }
  TierMatrix(const TierMatrix&) = delete;
  TierMatrix& operator=(const TierMatrix&) = delete;

  /// Replaces the matrix by a new one.
  void makeAnew() {
    if (matrix != nullptr) Access::destroy(matrix);
    setSearchState({});
    matrix = Access::create();
    messages.listen();
  }

  int write(const Vector& vector, int symbolMarker = 0, int startFlag = 0) {
    return Access::write(*matrix, vector, 7, startFlag, 0, symbolMarker);
  }
  /// Writes each phrase of the items; with wholeIsSymbol the whole gets a symbol if the tier has symbols.
  void writePhrases(const Vector& items, bool wholeIsSymbol = false) {
    for (size_t begin = 0; begin < items.size(); ++begin) {
      for (size_t end = begin + 1; end <= items.size(); ++end) {
        write({items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(end)},
              wholeIsSymbol && end - begin == items.size());
      }
    }
  }
  int remove(const Vector& vector, int keepInnerElements = 0) {
    return matrix->deleteMatrixElement(vector.data(), static_cast<int>(vector.size()), keepInnerElements);
  }
  int exist(const Vector& vector) { return matrix->existMatrixData(vector.data(), static_cast<int>(vector.size())); }
  int handleOf(const Vector& vector) {
    return matrix->getMatrixHandleFromElementVector(vector.data(), static_cast<int>(vector.size()));
  }
  auto* elementOf(const Vector& vector) {
    int position = matrix->getCurrentMatrixID();
    for (const int k : vector) position = matrix->childAt(position, k);
    return matrix->elementAt(position);
  }
  auto* info() { return matrix->getMatrixInfo(); }

  /// A self-test's result, written elements and end elements.
  Vector scan(int trim = 0) {
    int written = -9, ends = -9;
    const int result = matrix->performMatrixLinearTest(&written, &ends, trim);
    return {result, written, ends};
  }
  Vector walk(int trim = 0) {
    int written = -9, ends = -9;
    const int result = matrix->performMatrixConsistencyTest(&written, &ends, trim);
    return {result, written, ends};
  }
  /// Moves the field of a slot to the right and returns the offset.
  int moveFieldOf(int position, int coordinate) {
    int first = position, last = position, newIndex = -1, begin = position - coordinate;
    const int count = matrix->getNumberOfItemsAndFirstLastElementsInSameDimension(position, &first, &last);
    const int offset = matrix->moveFieldToFreePosition(3, &begin, &newIndex, count, &first, &last, 0);
    if (last > matrix->getMaximalStack()) matrix->getMatrixFileHeader()->_setMaximalStack(last);
    return offset;
  }

  /// All that a delete can change: the records of all slots, default ones for free slots, and the counters.
  std::vector<plain::Element> records() {
    std::vector<plain::Element> copies;
    for (int position = 0; position < matrix->getMatrixBlockSize(); ++position) {
      const auto* element = matrix->elementAt(position);
      copies.push_back(element != nullptr ? Access::copyOf(element) : plain::Element());
    }
    return copies;
  }
  Vector counters() { return countersOf(*info()); }

  std::string take() { return messages.take(); }
  bool told(const std::string& sentence) { return take().find(sentence) != std::string::npos; }
  std::string broken() { return brokenInvariant(*matrix); }

  Matrix* matrix = nullptr;
  CapturedMessages messages{1};
};

template <class Matrix>
class TierTest : public testing::Test, public TierMatrix<Matrix> {};

}  // namespace zmatrix
