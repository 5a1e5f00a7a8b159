#include "frame/ZQDecimalNumber.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

template <class Number>
void expectAsStandard(const std::string& text, std::chars_format format) {
  Number expected = 7, value = 7;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), expected, format);
  const auto result = zmatrix::copiedDecimalFromChars(text.data(), text.data() + text.size(), value, format);
  EXPECT_EQ(result.ptr - text.data(), end - text.data()) << text;
  EXPECT_EQ(result.ec, error) << text;
  EXPECT_EQ(memcmp(&value, &expected, sizeof value), 0) << text << ": " << value << ", not " << expected;
}

TEST(DecimalNumberTest, IsParsedAsByTheStandardLibrary) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (size_t left = random() % 12; left > 0; --left) text += "0123456789.eE-+0019infa"[random() % 23];
    for (const auto format : {std::chars_format::fixed, std::chars_format::general}) {
      expectAsStandard<double>(text, format);
      expectAsStandard<float>(text, format);
    }
  }
  for (const char* text : {"-INFx", "nan", "infinity", "1e400", "-1e400", "1e-400", "0e9999", "0.1", "16777217"}) {
    expectAsStandard<double>(text, std::chars_format::general);
    expectAsStandard<float>(text, std::chars_format::general);
  }
}

}  // namespace
