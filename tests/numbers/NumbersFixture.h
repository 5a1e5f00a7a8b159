// Tests of numbers, each with default parameters, a table of primes and captured messages.
#pragma once

#include <gtest/gtest.h>

#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#include "support/CapturedMessages.h"
#include "support/Vectors.h"

namespace zmatrix {

class NumbersFixture : public testing::Test {
 public:
  NumbersFixture() {
    setGlobalGocronParametersToDefaults();
    initPrimes(0, 200000, &count);
  }
  ~NumbersFixture() override {
    largestAllocation = static_cast<size_t>(-1);
    setGlobalGocronParametersToDefaults();
    deinitPrimes();
    deinitPrimesLarge();
  }

  /// Expands numbers in braces: "2{3}" is "222".
  static std::string repeated(const std::string& pattern) {
    std::string result;
    for (size_t i = 0; i < pattern.size(); ++i) {
      if (pattern[i] != '{') {
        result += pattern[i];
        continue;
      }
      result.append(std::stoul(pattern.substr(i + 1)) - 1, result.back());
      i = pattern.find('}', i);
    }
    return result;
  }
  /// Copies a text from the library and frees it.
  static std::string textOf(char* block) {
    const SystemOwned<char> owned(block);
    return owned != nullptr ? owned.get() : "(null)";
  }

  int count = 0;
  CapturedMessages messages{2};
};

}  // namespace zmatrix
