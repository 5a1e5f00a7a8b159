// Texts that were looked at once and are kept in tests/data/texts: today's must be the same, byte for byte. One that is meant to
// change is taken anew with ZMATRIX_WRITE_GOLDEN=1 in the environment, and looked at.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/TestFolder.h"

namespace zmatrix {

inline void expectKeptText(const std::string& name, const std::string& text) {
  const std::string path = ZMATRIX_TEST_DATA "/texts/" + name;
  if (getenv("ZMATRIX_WRITE_GOLDEN") != nullptr) std::ofstream(path, std::ios::binary) << text;
  EXPECT_EQ(text, TestFolder::contentOf(path));
}

}  // namespace zmatrix
