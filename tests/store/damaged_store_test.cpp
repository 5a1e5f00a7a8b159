// A store with one link bent in memory: the self-tests tell of every such link, in the tier's words, and repair none; and
// whatever is done on such a store stays within the block and ends.
#include <algorithm>

#include "store/StoreTwin.h"

namespace {

using Vector = std::vector<int>;

enum class Link { parent, child, next, previous };

int linkOf(const plain::Element& element, Link link) {
  switch (link) {
    case Link::parent:
      return element.parent;
    case Link::child:
      return element.child;
    case Link::next:
      return element.next;
    default:
      return element.previous;
  }
}

void bend(ZQMatrixBaseElement& element, Link link, int offset) {
  if (link == Link::parent) element.setOffsetToElementInPrevDimension(offset);
  if (link == Link::child) element.setOffsetToElementInNextDimension(offset);
  if (link == Link::next) element.setOffsetToNextElementInDimension(offset);
  if (link == Link::previous) element.setOffsetToPreviousElementInDimension(offset);
}

/// A small store: fields of three and more in two sub-matrices, paths that are written and paths that only lead on.
template <class Matrix>
class DamagedStore {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;

  DamagedStore() : matrix(Access::create()) {
    zmatrix::setSearchState({});
    matrix->setInitialMatrixBlocksize(60);
    for (const int id : {1, 0}) {
      matrix->setCurrentMatrixID(id);
      for (const Vector& path : paths()) Access::write(*matrix, path, 1, path.size() == 1, 0, path.size() == 2);
    }
    messages.listen();
  }
  ~DamagedStore() {
    Access::destroy(matrix);
    zmatrix::setSearchState({});
  }
  DamagedStore(const DamagedStore&) = delete;
  DamagedStore& operator=(const DamagedStore&) = delete;

  static const std::vector<Vector>& paths() {
    static const std::vector<Vector> all = {{1}, {2}, {4}, {1, 2}, {1, 3}, {1, 5}, {2, 7, 1}, {2, 7, 2}, {4, -1}};
    return all;
  }

  std::vector<int> positionsOfCurrent() {
    std::vector<int> positions;
    for (int position = matrix->getMaxNumberOfMatrices(); position <= matrix->getMaximalStack(); ++position) {
      int up = position;
      while (up >= matrix->getMaxNumberOfMatrices() && matrix->elementAt(up) != nullptr) {
        up += matrix->elementAt(up)->getOffsetToElementInPrevDimension();
      }
      if (up == matrix->getCurrentMatrixID()) positions.push_back(position);
    }
    return positions;
  }
  std::vector<plain::Element> records() {
    std::vector<plain::Element> copies;
    for (int position = 0; position < matrix->getMatrixBlockSize(); ++position) {
      const ZQMatrixBaseElement* element = matrix->elementAt(position);
      copies.push_back(element != nullptr ? Access::copyOf(element) : plain::Element());
    }
    return copies;
  }
  int scan() { return matrix->performMatrixLinearTest(&written, &ends, 0); }
  int walk() { return matrix->performMatrixConsistencyTest(&written, &ends, 0); }

  Matrix* matrix;
  zmatrix::CapturedMessages messages{1};
  int written = 0, ends = 0;
};

/// Where a link can wrongly lead: nowhere, beside its target, out of the block at either end, to a slot of its own kind.
std::vector<int> wrongOffsets(int right) {
  std::vector<int> offsets = {0, 1, -1, 5, 100, -100, -right, right + 2, INT_MAX, INT_MIN + 1};
  std::sort(offsets.begin(), offsets.end());
  offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
  std::erase(offsets, right);
  return offsets;
}

/// Calls `look` with a fresh store for each wrong offset of each link of each element.
template <class Matrix, class Look>
void forEachBentLink(Look look) {
  // One store at a time listens to the messages.
  const std::vector<int> positions = DamagedStore<Matrix>().positionsOfCurrent();
  const std::vector<plain::Element> records = DamagedStore<Matrix>().records();
  ASSERT_EQ(positions.size(), 10u);
  for (const Link link : {Link::parent, Link::child, Link::next, Link::previous}) {
    for (const int position : positions) {
      const int right = linkOf(records[static_cast<size_t>(position)], link);
      for (const int offset : wrongOffsets(right)) {
        SCOPED_TRACE("link " + std::to_string(static_cast<int>(link)) + " of slot " + std::to_string(position) + " from " +
                     std::to_string(right) + " to " + std::to_string(offset));
        DamagedStore<Matrix> store;
        bend(*store.matrix->elementAt(position), link, offset);
        look(store);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

template <class Matrix>
class DamagedStoreTest : public testing::Test {};
using Tiers = testing::Types<ZQMatrixBase, ZQMatrixMedium, ZQMatrix>;
TYPED_TEST_SUITE(DamagedStoreTest, Tiers);

TYPED_TEST(DamagedStoreTest, isSoundBeforeItIsDamaged) {
  DamagedStore<TypeParam> store;
  EXPECT_EQ(zmatrix::brokenInvariant(*store.matrix), "");
  EXPECT_EQ(store.scan(), 1);
  EXPECT_EQ(store.walk(), 1);
}

TYPED_TEST(DamagedStoreTest, everyBentLinkIsToldAndStays) {
  forEachBentLink<TypeParam>([](DamagedStore<TypeParam>& store) {
    const std::vector<plain::Element> before = store.records();
    const int scanned = store.scan();
    EXPECT_LT(std::min(scanned, store.walk()), 1);
    const std::string told = store.messages.take();
    const bool hasWords = told.find("error ") != std::string::npos || told.find("warning: ") != std::string::npos ||
                          told.find("is unexpected\n") != std::string::npos;
    EXPECT_TRUE(hasWords) << told;
    EXPECT_EQ(store.scan(), scanned);
    EXPECT_LT(store.walk(), 1);
    EXPECT_TRUE(store.records() == before);

    // Trimming, too, looks at every slot, and leaves a block that can be used.
    const int stack = store.matrix->getMaximalStack();
    store.matrix->performMatrixLinearTest(&store.written, &store.ends, 1);
    store.matrix->performMatrixConsistencyTest(&store.written, &store.ends, 1);
    EXPECT_LE(store.matrix->getMaximalStack(), stack);
    EXPECT_GT(store.matrix->getMatrixBlockSize(), store.matrix->getMaximalStack());
    for (const int k : {77, -20, 3}) DamagedStore<TypeParam>::Access::write(*store.matrix, {k, 5, k}, 1, 0, 0, 0);
  });
}

TYPED_TEST(DamagedStoreTest, eachKindOfLinkInTheTiersWords) {
  struct Case {
    Vector path;
    Link link;
    int offset;
    int scan;
    std::string words;
  };
  const bool isBase = DamagedStore<TypeParam>::Access::tier == plain::Tier::base;
  const std::string scanned = "performMatrixLinearTest for matrixID 0", counted = "matrixConsistency-Test: number";
  const std::string field = "getNumberOfItemsAndFirstLastElementsInSaneDimension: offsetTo";
  for (const Case& c :
       {Case{{1, 3}, Link::parent, -99, 0, "error " + scanned + ": addressOfPreviousElement out of left range: -"},
        Case{{1, 3}, Link::parent, 99, 0, "error " + scanned + ": addressOfPreviousElement out right range: 1"},
        Case{{1}, Link::child, 0, 1, "error matrixConsistency-Test:: numberOfOccupiedPositions differs"},
        Case{{1, 5},
             Link::child,
             1,
             1,
             isBase ? "error " + counted + "OfEndElementsInMatrix differs from _numberOfEndElements "
                    : "warning:  matrixLinear-Test: numberOfEndElementsInMatrix differs from _numberOfEndElements "},
        Case{{1, 2}, Link::next, -3, 1, field + "NextElementInDimension: -3 is unexpected\n"},
        Case{{1, 5}, Link::next, 99, 1, field + "NextElementInDimension: 99 is unexpected\n"},
        Case{{1, 5}, Link::previous, 0, 1, field + "PreviousElementInDimension: 0 is unexpected\n"},
        Case{{1, 3}, Link::next, 0, 1, "error " + counted + "OfWriteElementsInMatrix differs from "}}) {
    SCOPED_TRACE(c.words);
    DamagedStore<TypeParam> store;
    int position = 0;
    for (const int k : c.path) position = store.matrix->childAt(position, k);
    bend(*store.matrix->elementAt(position), c.link, c.offset);
    if (isBase && c.link == Link::child) {
      EXPECT_EQ(store.scan(), 0);  // the scan counts ends too
    } else {
      EXPECT_EQ(store.scan(), c.scan);
    }
    EXPECT_EQ(store.walk(), 0);
    const std::string told = store.messages.take();
    EXPECT_NE(told.find(c.words), std::string::npos) << told;
  }
}

TYPED_TEST(DamagedStoreTest, workOnItStaysWithinTheBlock) {
  using Access = zmatrix::TierUnderTest<TypeParam>;
  forEachBentLink<TypeParam>([](DamagedStore<TypeParam>& store) {
    TypeParam& matrix = *store.matrix;
    int length = 0, count = 0;
    for (int position = 0; position <= matrix.getMaximalStack(); ++position) {
      matrix.mFree(matrix.getIndexVectorFromMatrixHandle(position, &length));
      matrix.mFree(matrix.getSuccessorHandlesFromMatrixHandle(position, &count));
      matrix.getLengthOfIndexVectorFromMatrixHandle(position);
      matrix.getObjexFromMatrixHandle(position);
    }
    for (const Vector& path : DamagedStore<TypeParam>::paths()) {
      Access::read(matrix, path);
      matrix.deleteMatrixElement(path.data(), static_cast<int>(path.size()), static_cast<int>(path.size()) % 2);
      Access::write(matrix, {path[0], path[0] + 20, 3}, 1, 1, 0, 1);
      Access::write(matrix, {path.back() - 9}, 1, 1, 0, 1);
    }
    store.scan();
    store.walk();
    matrix.setCurrentMatrixID(1);  // whose fields interleave with the damaged ones
    for (const Vector& path : DamagedStore<TypeParam>::paths()) Access::write(matrix, {path[0], 6, path.back()}, 1, 0, 0, 0);
    if constexpr (requires { matrix.removeOverDeterminedElements(); }) {
      matrix.removeOverDeterminedElements();
      matrix.setCurrentMatrixID(0);
      matrix.removeLongElements(1);
      matrix.clearMatrixForID(0);
      matrix.removeEmptyMatrices();
    }
  });
}

}  // namespace
