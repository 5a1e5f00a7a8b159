// The search for a shift compared with a walk over all offsets, on a packed index with scattered holes that changes between the
// searches: the filters that failed searches leave behind must never hide a fit.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include "store/ZQShiftSearch.h"

namespace {

using zmatrix::ZQFreeSlotIndex;
using zmatrix::ZQShiftSearch;

class PackedIndex {
 public:
  PackedIndex(int numberOfSlots, int holesInThousand, unsigned seed) : random(seed) { growBy(numberOfSlots, holesInThousand); }

  void growBy(int numberOfSlots, int holesInThousand) {
    const int oldNumber = index.getNumberOfSlots();
    EXPECT_TRUE(index.resize(oldNumber + numberOfSlots));
    for (int slot = oldNumber; slot < index.getNumberOfSlots(); ++slot) {
      if (below(1000) >= holesInThousand) index.fill(slot);
    }
  }

  int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

  /// A field of `count` occupied slots within `width` slots.
  std::vector<int> field(int count, int width) {
    const int begin = below(index.getNumberOfSlots() - width);
    std::set<int> slots{begin};
    while (static_cast<int>(slots.size()) < count) slots.insert(begin + below(width));
    std::vector<int> positions(slots.begin(), slots.end());
    for (int position : positions) index.fill(position);
    return positions;
  }

  bool fits(const std::vector<int>& positions, long long offset) const {
    return std::all_of(positions.begin(), positions.end(), [&](int position) {
      const long long at = position + offset;
      return at >= 0 && at < index.getNumberOfSlots() && index.isFree(static_cast<int>(at));
    });
  }

  /// The nearest fit, the lower one at a tie; 0 if there is none.
  long long nearestByWalking(const std::vector<int>& positions) const {
    for (long long distance = 1; distance < index.getNumberOfSlots(); ++distance) {
      if (fits(positions, -distance)) return -distance;
      if (fits(positions, distance)) return distance;
    }
    return 0;
  }

  long long nearestBySearch(const std::vector<int>& positions) {
    for (int position : positions) index.lend(position);
    ZQShiftSearch search(index, positions, positions);
    const auto nearest = search.nearest(-positions.front(), index.getNumberOfSlots() - 1 - positions.back());
    if (nearest.left == ZQShiftSearch::none && nearest.right == ZQShiftSearch::none) return 0;
    return nearest.left <= nearest.right ? -nearest.left : nearest.right;
  }

  void move(const std::vector<int>& positions, long long offset) {
    for (int position : positions) index.fill(position);
    for (int position : positions) index.release(position);
    for (int position : positions) index.fill(static_cast<int>(position + offset));
  }

  ZQFreeSlotIndex index;
  std::mt19937 random;
};

struct Shape {
  int count, width, holesInThousand;
};

class ShiftSearchTest : public testing::TestWithParam<Shape> {};

TEST_P(ShiftSearchTest, FindsTheFitThatAWalkFinds) {
  const Shape shape = GetParam();
  PackedIndex packed(150'000, shape.holesInThousand, 11);
  std::vector<std::vector<int>> shapes;
  for (int i = 0; i < 6; ++i) shapes.push_back(packed.field(shape.count, shape.width));
  int numberFound = 0;
  for (int round = 0; round < 60; ++round) {
    // The same few shapes are searched again and again, so that later searches use the filters of earlier ones.
    std::vector<int> positions = shapes[static_cast<size_t>(packed.below(6))];
    const int shift = packed.below(packed.index.getNumberOfSlots() - shape.width) - positions.front();
    for (int& position : positions) packed.index.fill(position += shift);
    const long long found = packed.nearestBySearch(positions);
    const long long expected = packed.nearestByWalking(positions);
    ASSERT_EQ(found, expected) << "round " << round;
    if (found != 0) ++numberFound;
    packed.move(positions, found);
    for (int i = 0; i < 40; ++i) packed.index.release(packed.below(packed.index.getNumberOfSlots()));
    if (round == 30) packed.growBy(3000, shape.holesInThousand);
  }
  EXPECT_GT(numberFound, 0);
}

INSTANTIATE_TEST_SUITE_P(Shapes, ShiftSearchTest,
                         testing::Values(Shape{2, 26, 4}, Shape{3, 26, 12}, Shape{3, 120, 12}, Shape{4, 26, 45},
                                         Shape{4, 100, 45}, Shape{6, 26, 110}, Shape{5, 300, 80}, Shape{3, 9000, 12},
                                         Shape{12, 40, 350}, Shape{100, 9000, 970}),
                         [](const testing::TestParamInfo<Shape>& named) {
                           const Shape& shape = named.param;
                           return std::to_string(shape.count) + "Within" + std::to_string(shape.width) + "At" +
                                  std::to_string(shape.holesInThousand) + "PerThousand";
                         });

}  // namespace
