#include "frame/ZQZeroedMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

bool isAll(char byte, const char* from, const char* to) {
  return std::all_of(from, to, [byte](char found) { return found == byte; });
}

TEST(ZeroedMemoryTest, KeepsItsContentAndIsZeroBehindIt) {
  zmatrix::ZQZeroedMemory memory;
  size_t written = 0;
  for (const size_t size : {size_t{100}, size_t{70'000}, size_t{65'536}, size_t{1'000}, size_t{3'000'000}, size_t{2'999'999},
                            size_t{1}, size_t{20'000'000}}) {
    ASSERT_TRUE(memory.resize(size));
    char* begin = memory.getBegin();
    EXPECT_GE(memory.getWholeSize(), size);
    written = std::min(written, size);
    EXPECT_TRUE(isAll(7, begin, begin + written)) << size;
    EXPECT_TRUE(isAll(0, begin + written, begin + size)) << size;
    memset(begin, 7, size);
    written = size;
  }
}

}  // namespace
