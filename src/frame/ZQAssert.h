// Assertions of conditions that hold inside the library for every call and every file; invalid input gives result codes instead.
// They are enabled where the build defines ZMATRIX_ASSERTIONS, as the presets with sanitizers do, and cost nothing elsewhere.
#pragma once

#ifdef ZMATRIX_ASSERTIONS
#include <cstdio>
#include <cstdlib>

namespace zmatrix {

[[noreturn]] inline void failAssertion(const char* condition, const char* file, int line) noexcept {
  fprintf(stderr, "%s:%d: this should hold: %s\n", file, line, condition);
  abort();
}

}  // namespace zmatrix

#define ZQ_ASSERT(condition) ((condition) ? static_cast<void>(0) : zmatrix::failAssertion(#condition, __FILE__, __LINE__))
#else
#define ZQ_ASSERT(condition) static_cast<void>(0)
#endif
