// The three tiers under one face, so that a test is told once: how each is made, written and read, and what its records hold.
#pragma once

#include <cstddef>
#include <vector>

#include "flat/ZQMatrixCreators.h"
#include "store/ZQFreeSlotSearch.h"
#include "support/PlainStore.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <class Matrix>
struct TierUnderTest;

template <>
struct TierUnderTest<ZQMatrixBase> {
  static constexpr plain::Tier tier = plain::Tier::base;
  static constexpr auto create = createAndInitMatrixBase;
  static constexpr auto destroy = deleteMatrixBase;
  static int write(ZQMatrixBase& matrix, std::vector<int> vector, long long value, int, int, int) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value);
  }
  static plain::Read read(ZQMatrixBase& matrix, std::vector<int> vector) {
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
  static int write(ZQMatrixMedium& matrix, std::vector<int> vector, long long value, int startFlag, int endFlag, int) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value, static_cast<char>(startFlag),
                                  static_cast<char>(endFlag));
  }
  static plain::Read read(ZQMatrixMedium& matrix, std::vector<int> vector) {
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
  static int write(ZQMatrix& matrix, std::vector<int> vector, long long value, int startFlag, int endFlag, int symbolMarker) {
    return matrix.writeMatrixData(vector.data(), static_cast<int>(vector.size()), value, static_cast<char>(startFlag),
                                  static_cast<char>(endFlag), symbolMarker);
  }
  static plain::Read read(ZQMatrix& matrix, const std::vector<int>& vector) {
    return TierUnderTest<ZQMatrixMedium>::read(matrix, vector);
  }
  static plain::Element copyOf(const ZQMatrixBaseElement* element) {
    const auto* full = static_cast<const ZQMatrixElement*>(element);
    plain::Element copy = TierUnderTest<ZQMatrixMedium>::copyOf(element);
    copy.symbolID = full->getSymbolID();
    copy.symbolDownLink = full->getSymbolDownLinkHandle();
    return copy;
  }
};

/// The search's state belongs to the process: a test sets it, and puts it back for the tests that follow.
inline void setSearchState(const plain::SearchState& state) {
  freeSlotSearchState() = {state.firstFree, state.numberOfFunctionCalls, state.lastOffset, state.goodStartIndex};
}

}  // namespace zmatrix
