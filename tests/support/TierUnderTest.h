// One interface to the three tiers: creation, writing, reading, and copies of elements.
#pragma once

#include <gtest/gtest.h>

#include <type_traits>

#include "flat/ZQMatrixCreators.h"
#include "store/ZQFreeSlotSearch.h"
#include "support/PlainStore.h"
#include "support/Vectors.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
using LearningTiers = testing::Types<ZQMatrixMedium, ZQMatrix>;

template <class Matrix>
struct TierUnderTest {
  static constexpr plain::Tier tier = std::is_same_v<Matrix, ZQMatrix>         ? plain::Tier::full
                                      : std::is_same_v<Matrix, ZQMatrixMedium> ? plain::Tier::medium
                                                                               : plain::Tier::base;

  static Matrix* create() {
    if constexpr (tier == plain::Tier::base) return createAndInitMatrixBase();
    if constexpr (tier == plain::Tier::medium) return createAndInitMatrixMedium();
    if constexpr (tier == plain::Tier::full) return createAndInitMatrix();
  }
  static void destroy(Matrix* matrix) {
    if constexpr (tier == plain::Tier::base) deleteMatrixBase(matrix);
    if constexpr (tier == plain::Tier::medium) deleteMatrixMedium(matrix);
    if constexpr (tier == plain::Tier::full) deleteMatrix(matrix);
  }
  static int write(Matrix& matrix, Vector vector, long long value, [[maybe_unused]] int startFlag, [[maybe_unused]] int endFlag,
                   [[maybe_unused]] int symbolMarker) {
    const int length = static_cast<int>(vector.size());
    const char start = static_cast<char>(startFlag), end = static_cast<char>(endFlag);
    if constexpr (tier == plain::Tier::base) return matrix.writeMatrixData(vector.data(), length, value);
    if constexpr (tier == plain::Tier::medium) return matrix.writeMatrixData(vector.data(), length, value, start, end);
    if constexpr (tier == plain::Tier::full)
      return matrix.writeMatrixData(vector.data(), length, value, start, end, symbolMarker);
  }
  static plain::Read read(Matrix& matrix, Vector vector) {
    const int length = static_cast<int>(vector.size());
    plain::Read r;
    if constexpr (tier == plain::Tier::base) {
      r.value = matrix.readMatrixData(vector.data(), length, &r.existCode, &r.writeCount);
    } else {
      r.value =
          matrix.readMatrixData(vector.data(), length, &r.existCode, &r.writeCount, &r.withSuccessor, &r.withoutPredecessor);
    }
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
    if constexpr (tier != plain::Tier::base) {
      const auto* medium = static_cast<const ZQMatrixMediumElement*>(element);
      copy.withSuccessor = medium->getWriteCountWithSuccessor();
      copy.withoutPredecessor = medium->getWriteCountWithoutPredecessor();
    }
    if constexpr (tier == plain::Tier::full) {
      const auto* full = static_cast<const ZQMatrixElement*>(element);
      copy.symbolID = full->getSymbolID();
      copy.symbolDownLink = full->getSymbolDownLinkHandle();
    }
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
