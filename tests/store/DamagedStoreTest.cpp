// A store with one wrong link in memory: the self-tests report each of them with the tier's messages and repair none, and all
// operations on such a store end and stay within the block.
#include <algorithm>
#include <set>

#include "support/Account.h"
#include "support/TierTest.h"

namespace {

using zmatrix::Vector;

struct Link {
  const char* name;
  int plain::Element::*offset;
  void (ZQMatrixBaseElement::*bend)(int);
};
const Link parent = {"parent", &plain::Element::parent, &ZQMatrixBaseElement::setOffsetToElementInPrevDimension};
const Link child = {"child", &plain::Element::child, &ZQMatrixBaseElement::setOffsetToElementInNextDimension};
const Link next = {"next", &plain::Element::next, &ZQMatrixBaseElement::setOffsetToNextElementInDimension};
const Link previous = {"previous", &plain::Element::previous, &ZQMatrixBaseElement::setOffsetToPreviousElementInDimension};

const Vector paths[] = {{1}, {2}, {4}, {1, 2}, {1, 3}, {1, 5}, {2, 7, 1}, {2, 7, 2}, {4, -1}};

/// A small store in two sub-matrices, with fields of three elements, written paths and paths without a write.
template <class Matrix>
class DamagedStore : public zmatrix::TierMatrix<Matrix> {
 public:
  DamagedStore() {
    this->matrix->setInitialMatrixBlocksize(60);
    for (const int id : {1, 0}) {
      this->matrix->setCurrentMatrixID(id);
      for (const Vector& path : paths) this->write(path, path.size() == 2, path.size() == 1);
    }
    this->messages.listen();
  }

  Vector positionsOfCurrent() {
    Vector positions;
    const int roots = this->matrix->getMaxNumberOfMatrices();
    for (int position = roots; position <= this->matrix->getMaximalStack(); ++position) {
      int up = position;
      while (up >= roots && this->matrix->elementAt(up) != nullptr) {
        up += this->matrix->elementAt(up)->getOffsetToElementInPrevDimension();
      }
      if (up == this->matrix->getCurrentMatrixID()) positions.push_back(position);
    }
    return positions;
  }
};

/// Calls `look` with a new store for each wrong offset of each link of each element: 0, near the target, out of the block at
/// either end, to another element.
template <class Matrix, class Look>
void forEachWrongLink(Look look) {
  // Only one store at a time can capture messages.
  const Vector positions = DamagedStore<Matrix>().positionsOfCurrent();
  const std::vector<plain::Element> records = DamagedStore<Matrix>().records();
  ASSERT_EQ(positions.size(), 10u);
  for (const Link& link : {parent, child, next, previous}) {
    for (const int position : positions) {
      const int right = records[static_cast<size_t>(position)].*link.offset;
      for (const int offset : std::set<int>{0, 1, -1, 5, 100, -100, -right, right + 2, INT_MAX, INT_MIN + 1}) {
        if (offset == right) continue;
        SCOPED_TRACE(link.name + (" of slot " + std::to_string(position)) + " from " + std::to_string(right) + " to " +
                     std::to_string(offset));
        DamagedStore<Matrix> store;
        (store.matrix->elementAt(position)->*link.bend)(offset);
        look(store);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

template <class Matrix>
class DamagedStoreTest : public testing::Test {};
TYPED_TEST_SUITE(DamagedStoreTest, zmatrix::Tiers);

TYPED_TEST(DamagedStoreTest, WrongLinksAreReportedAndNotRepaired) {
  EXPECT_EQ(DamagedStore<TypeParam>().scan()[0], 1);
  EXPECT_EQ(DamagedStore<TypeParam>().walk()[0], 1);
  forEachWrongLink<TypeParam>([](DamagedStore<TypeParam>& store) {
    const std::vector<plain::Element> before = store.records();
    const int scanned = store.scan()[0];
    EXPECT_LT(std::min(scanned, store.walk()[0]), 1);
    const std::string messages = store.take();
    const std::string expected[] = {"error ", "warning: ", "is unexpected\n"};
    EXPECT_TRUE(std::any_of(std::begin(expected), std::end(expected), [&](const auto& part) {
      return messages.find(part) != std::string::npos;
    })) << messages;
    EXPECT_EQ(store.scan()[0], scanned);
    EXPECT_LT(store.walk()[0], 1);
    EXPECT_TRUE(store.records() == before);

    // Pruning and trimming look at every slot too, and leave a usable block.
    if constexpr (requires { store.matrix->removeLongElements(1); }) {
      store.matrix->removeOverDeterminedElements();
      store.matrix->removeLongElements(1);
    }
    const int stack = store.matrix->getMaximalStack();
    store.scan(1);
    store.walk(1);
    EXPECT_LE(store.matrix->getMaximalStack(), stack);
    EXPECT_GT(store.matrix->getMatrixBlockSize(), store.matrix->getMaximalStack());
    for (const int k : {77, -20, 3}) store.write({k, 5, k});
  });
}

TYPED_TEST(DamagedStoreTest, EachKindOfLinkHasItsMessages) {
  const struct {
    Vector path;
    Link link;
    int offset;
  } cases[] = {{{1, 3}, parent, -99}, {{1, 3}, parent, 99}, {{1}, child, 0},       {{1, 5}, child, 1},
               {{1, 2}, next, -3},    {{1, 5}, next, 99},   {{1, 5}, previous, 0}, {{1, 3}, next, 0}};
  DamagedStore<TypeParam>* current = nullptr;
  zmatrix::Account tell([&] { return current->take(); });
  for (const auto& [path, link, offset] : cases) {
    DamagedStore<TypeParam> store;
    current = &store;
    (store.elementOf(path)->*link.bend)(offset);
    tell(link.name, path, offset);
    tell("scan", store.scan());
    tell("walk", store.walk());
  }
}

TYPED_TEST(DamagedStoreTest, OperationsStayWithinTheBlock) {
  forEachWrongLink<TypeParam>([](DamagedStore<TypeParam>& store) {
    TypeParam& matrix = *store.matrix;
    int length = 0, count = 0;
    for (int position = 0; position <= matrix.getMaximalStack(); ++position) {
      matrix.mFree(matrix.getIndexVectorFromMatrixHandle(position, &length));
      matrix.mFree(matrix.getSuccessorHandlesFromMatrixHandle(position, &count));
      matrix.getLengthOfIndexVectorFromMatrixHandle(position);
      matrix.getObjexFromMatrixHandle(position);
    }
    for (const Vector& path : paths) {
      zmatrix::TierUnderTest<TypeParam>::read(matrix, path);
      store.remove(path, static_cast<int>(path.size()) % 2);
      store.write({path[0], path[0] + 20, 3}, 1, 1);
      store.write({path.back() - 9}, 1, 1);
    }
    store.scan();
    store.walk();
    matrix.setCurrentMatrixID(1);  // its fields interleave with the damaged ones
    for (const Vector& path : paths) store.write({path[0], 6, path.back()});
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
