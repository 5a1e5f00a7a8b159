// Error messages of the operations on index vectors: printed at level 0, and standard output is flushed, since a host may read
// it.
#pragma once

#include <cstdio>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

inline void complain(const char* message) {
  dbPrintf(0, "%s", message);
  fflush(stdout);
}

}  // namespace zmatrix
