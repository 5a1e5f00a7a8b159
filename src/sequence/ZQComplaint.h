// Errors of the operations on index vectors: at level 0, and on the console at once, since a host may read it.
#pragma once

#include <cstdio>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

inline void complain(const char* message) {
  dbPrintf(0, "%s", message);
  fflush(stdout);
}

}  // namespace zmatrix
