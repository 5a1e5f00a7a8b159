#include "frame/ZQPageProvider.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

// Parts of any size at any place, some of them written before they are provided, in an allocation large enough for large pages.
TEST(ZQPageProviderTest, LeavesWhatIsWrittenAndWhatLiesBeside) {
  constexpr size_t size = size_t{24} << 20, margin = 5000;
  for (const size_t part : {size_t{1}, size_t{4095}, size_t{300'000}, size_t{5'000'000}, size}) {
    const std::unique_ptr<unsigned char, void (*)(void*)> memory(static_cast<unsigned char*>(std::calloc(size, 1)), std::free);
    ASSERT_NE(memory, nullptr);
    zmatrix::ZQPageProvider provider;
    const size_t begin = margin, end = size - margin;
    for (size_t i = 0; i < begin; ++i) memory.get()[i] = memory.get()[size - 1 - i] = 0xee;
    provider.begin(memory.get() + begin, end - begin);
    const size_t step = std::max(part, (end - begin) / 1000);
    for (size_t at = begin; at < end; at += step) {
      memory.get()[std::min(at + step, end) - 1] = 0x77;
      provider.provide(memory.get() + at, std::min(part, end - at));
      ++memory.get()[at];
    }
    size_t sum = 0;
    for (size_t i = 0; i < size; ++i) sum += memory.get()[i];
    const size_t steps = (end - begin + step - 1) / step;
    EXPECT_EQ(sum, 2 * margin * 0xee + steps * (0x77 + 1)) << part;
  }
}

}  // namespace
