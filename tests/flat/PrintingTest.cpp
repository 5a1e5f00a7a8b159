// Functions of the C interface that print on standard output, byte for byte.
#include <gtest/gtest.h>
#include <zmatrix/zmatrix.h>

#include <cstdio>
#include <string>

namespace {

template <class Print>
std::string printed(Print print) {
  testing::internal::CaptureStdout();
  print();
  s_flushStdOut();
  return testing::internal::GetCapturedStdout();
}

std::string heading(const char* name, const void* pointer, int length) {
  char text[128];
  std::snprintf(text, sizeof(text), "%s %p (length %d):\n", name, pointer, length);
  return text;
}

}  // namespace

TEST(FlatPrintingTest, PrintsTheArraysOfABinding) {
  const int integers[] = {7, -2};
  const signed char bytes[] = {-128, 127};
  const long long longs[] = {1LL << 40, -1};
  void* const pointers[] = {nullptr};
  EXPECT_EQ(printed([&] { EXPECT_EQ(printJavaIntPointer(integers, 2), 1); }),
            heading("printJavaIntPointer", integers, 2) + "p(0) = 7\np(1) = -2\n\n");
  EXPECT_EQ(printed([&] { EXPECT_EQ(printJavaBytePointer(bytes, 2), 1); }),
            heading("printJavaBytePointer", bytes, 2) + "p(0) = -128\np(1) = 127\n\n");
  EXPECT_EQ(printed([&] { EXPECT_EQ(printJavaLongPointer(longs, 2), 1); }),
            heading("printJavaLongPointer", longs, 2) + "p(0) = 1099511627776\np(1) = -1\n\n");
  EXPECT_EQ(printed([&] { EXPECT_EQ(printJavaPointerPointer(pointers, 1), 1); }),
            heading("printJavaPointerPointer", pointers, 1) + "p(0) = (nil)\n\n");
  EXPECT_EQ(printed([] { EXPECT_EQ(printJavaIntPointer(nullptr, 5), 1); }), heading("printJavaIntPointer", nullptr, 5) + "\n");
  EXPECT_EQ(printed([&] { EXPECT_EQ(printJavaIntPointer(integers, -1), 1); }),
            heading("printJavaIntPointer", integers, -1) + "\n");
}

TEST(FlatPrintingTest, CutsATextAtItsBuffer) {
  EXPECT_EQ(printed([] { s_printf("%d %s 100%%", 3, "%d"); }), "3 %d 100%");
  const std::string longText(5000, 'x');
  EXPECT_EQ(printed([&] { EXPECT_EQ(s_printf("%s", longText.c_str()), 2047); }), std::string(2047, 'x'));
}
