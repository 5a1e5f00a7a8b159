#include "frame/ZQArray.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using zmatrix::ZQArray;

TEST(ArrayTest, BehavesLikeAVectorAndStaysUnchangedWithoutMemory) {
  std::mt19937 random(5);
  ZQArray<int> array;
  std::vector<int> expected;
  for (int i = 0; i < 3000; ++i) {
    const int value = static_cast<int>(random() % 9), size = static_cast<int>(random() % 300);
    zmatrix::largestAllocation = random() % 4 == 0 ? 200 : static_cast<size_t>(-1);
    switch (random() % 6) {
      case 0:
        if (array.resize(size, value)) expected.resize(static_cast<size_t>(size), value);
        break;
      case 1:
        if (array.assign(size, value)) expected.assign(static_cast<size_t>(size), value);
        break;
      case 2:
        if (array.copyFrom(std::span<const int>(expected).subspan(expected.size() / 2)))
          expected.erase(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(expected.size() / 2));
        break;
      case 3: {  // a host takes the memory and hands it back
        int* const memory = array.releaseFitted();
        EXPECT_TRUE(array.empty() && array.data() == nullptr);
        array.adopt(memory, expected.size());
        break;
      }
      default:
        if (array.empty() ? array.append(value) : array.append(array.front()))
          expected.push_back(expected.empty() ? value : expected.front());
    }
    EXPECT_FALSE(array.resize(-1) || array.resize(1LL << 40));
    ASSERT_TRUE(std::equal(array.begin(), array.end(), expected.begin(), expected.end())) << i;
  }
  zmatrix::largestAllocation = static_cast<size_t>(-1);
}

}  // namespace
