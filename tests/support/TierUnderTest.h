// One interface to the three tiers: creation, writing, reading, and copies of elements.
#pragma once

#include <gtest/gtest.h>

#include "flat/ZQMatrixCreators.h"
#include "store/ZQFreeSlotSearch.h"
#include "support/PlainStore.h"
#include "support/Vectors.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
using LearningTiers = testing::Types<ZQMatrixMedium, ZQMatrix>;

template <class Matrix>
struct TierUnderTest;

template <>
struct TierUnderTest<ZQMatrixBase> {
  static constexpr plain::Tier tier = plain::Tier::base;
  static constexpr auto create = createAndInitMatrixBase;
  static constexpr auto destroy = deleteMatrixBase;
  static int write(ZQMatrixBase& matrix, Vector vector, long long value, int, int, int) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value);
  }
  static plain::Read read(ZQMatrixBase& matrix, Vector vector) {
    plain::Read r;
    r.value = matrix.readMatrixData(vector.data(), static_cast<int>(vector.size()), &r.existCode, &r.writeCount);
    return r;
  }
  static plain::Element copyOf(const ZQMatrixBaseElement* element) {
    plain::Element copy;
    copy.writeCount = element->getWriteCount();
    copy.value = element->getValue();
    copy.index = element->getIndexInDimension();
    copy.next = element->getOffsetToNextElementInDimension();
    copy.previous = element->getOffsetToPreviousElementInDimension();
    copy.child = element->getOffsetToElementInNextDimension();
    copy.parent = element->getOffsetToElementInPrevDimension();
    return copy;
  }
};

template <>
struct TierUnderTest<ZQMatrixMedium> {
  static constexpr plain::Tier tier = plain::Tier::medium;
  static constexpr auto create = createAndInitMatrixMedium;
  static constexpr auto destroy = deleteMatrixMedium;
  static int write(ZQMatrixMedium& matrix, Vector vector, long long value, int startFlag, int endFlag, int) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value, static_cast<char>(startFlag),
                                  static_cast<char>(endFlag));
  }
  static plain::Read read(ZQMatrixMedium& matrix, Vector vector) {
    plain::Read r;
    r.value = matrix.readMatrixData(vector.data(), static_cast<int>(vector.size()), &r.existCode, &r.writeCount, &r.withSuccessor,
                                    &r.withoutPredecessor);
    return r;
  }
  static plain::Element copyOf(const ZQMatrixBaseElement* element) {
    const auto* medium = static_cast<const ZQMatrixMediumElement*>(element);
    plain::Element copy = TierUnderTest<ZQMatrixBase>::copyOf(element);
    copy.withSuccessor = medium->getWriteCountWithSuccessor();
    copy.withoutPredecessor = medium->getWriteCountWithoutPredecessor();
    return copy;
  }
};

template <>
struct TierUnderTest<ZQMatrix> {
  static constexpr plain::Tier tier = plain::Tier::full;
  static constexpr auto create = createAndInitMatrix;
  static constexpr auto destroy = deleteMatrix;
  static int write(ZQMatrix& matrix, Vector vector, long long value, int startFlag, int endFlag, int symbolMarker) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value, static_cast<char>(startFlag),
                                  static_cast<char>(endFlag), symbolMarker);
  }
  static plain::Read read(ZQMatrix& matrix, const Vector& vector) { return TierUnderTest<ZQMatrixMedium>::read(matrix, vector); }
  static plain::Element copyOf(const ZQMatrixBaseElement* element) {
    const auto* full = static_cast<const ZQMatrixElement*>(element);
    plain::Element copy = TierUnderTest<ZQMatrixMedium>::copyOf(element);
    copy.symbolID = full->getSymbolID();
    copy.symbolDownLink = full->getSymbolDownLinkHandle();
    return copy;
  }
};

/// In the order of plain::Info::counters().
inline Vector countersOf(const ZQMatrixBaseInfo& info) {
  return {info.getNumberOfMatrixElements(), info.getNumberOfWriteElements(),      info.getNumberOfWriteCounts(),
          info.getNumberOfEndElements(),    info.getNumberOfMatrixDeleteEvents(), info.getNumberOfMatrixWriteEvents()};
}

/// All matrices of a thread share the state of the search: a test that sets it resets it for the next tests.
inline void setSearchState(const plain::SearchState& state) {
  freeSlotSearchState() = {state.firstFree, state.numberOfFunctionCalls, state.lastOffset, state.goodStartIndex};
}

}  // namespace zmatrix
