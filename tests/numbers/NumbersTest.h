// A test of the number room: the process's parameters and tables are as at the start, and what is printed is caught.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/ZQSystemOwned.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#include "support/CapturedMessages.h"

namespace zmatrix {

class NumbersTest : public testing::Test {
 protected:
  NumbersTest() {
    setGlobalGocronParametersToDefaults();
    initPrimes(0, 200000, &count);
  }
  ~NumbersTest() override {
    largestAllocation = static_cast<size_t>(-1);
    setGlobalGocronParametersToDefaults();
    deinitPrimes();
    deinitPrimesLarge();
  }

  /// Of "2{3}" "222".
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
  /// The text of a heap block, which is released.
  static std::string textOf(char* block) {
    const SystemOwned<char> owned(block);
    return owned != nullptr ? owned.get() : "(null)";
  }
  /// The values of a heap block, which is released. The length is read late, since the call that makes the block sets it.
  template <class Value>
  static std::vector<Value> valuesOf(Value* block, const int& length) {
    const SystemOwned<Value> owned(block);
    return owned != nullptr ? std::vector<Value>(block, block + length) : std::vector<Value>();
  }

  int count = 0;
  CapturedMessages messages{2};
};

}  // namespace zmatrix
