// A record that is ready for use.
#pragma once

#include <gtest/gtest.h>

#include "settings/ZQMatrixInfo.h"

namespace zmatrix {

template <class Record>
struct InitialisedRecord : Record {
  explicit InitialisedRecord(int id = 2) { EXPECT_EQ(this->initMatrixInfo(id), 1); }
};

}  // namespace zmatrix
