#include "frame/ZQPageProvider.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#if __has_include(<sys/mman.h>)
#include <sys/mman.h>
#endif

namespace zmatrix {

#ifdef MADV_POPULATE_WRITE

namespace {

constexpr size_t sizeOfPage = 4096;  // where pages are larger, the system refuses other multiples: harmless
constexpr size_t sizeOfLargePage = size_t{2} << 20;
constexpr size_t smallestForLargePages = 4 * sizeOfLargePage;
constexpr double slowestLargePages = 1;  // nanoseconds per byte; small pages always take less

char* roundedUp(const char* address, size_t size) {
  return reinterpret_cast<char*>((reinterpret_cast<uintptr_t>(address) + size - 1) & ~(size - 1));
}

char* roundedDown(const char* address, size_t size) {
  return reinterpret_cast<char*>(reinterpret_cast<uintptr_t>(address) & ~(size - 1));
}

}  // namespace

void ZQPageProvider::beginWithSmallPages(void* memory, size_t size) {
  first_ = provided_ = roundedUp(static_cast<char*>(memory), sizeOfPage);
  end_ = std::max(provided_, roundedDown(static_cast<char*>(memory) + size, sizeOfPage));
  usesLargePages_ = false;
}

void ZQPageProvider::begin(void* memory, size_t size) {
  beginWithSmallPages(memory, size);
  usesLargePages_ =
      size >= smallestForLargePages && madvise(provided_, static_cast<size_t>(end_ - provided_), MADV_HUGEPAGE) == 0;
}

// On a virtual machine the hypervisor may first have to find large pages, which takes ten times as long as providing small pages.
// The time of the first call shows this, and the whole allocation goes on with small pages: the whole, so that the system still
// treats it as one mapping.
void ZQPageProvider::provideUpTo(const char* from, const char* to) {
  char* begin = std::max(provided_, roundedDown(from, sizeOfPage));
  char* last = std::min(end_, usesLargePages_ ? roundedUp(to, sizeOfLargePage) : roundedDown(to, sizeOfPage));
  if (begin >= last) return;
  const auto size = static_cast<size_t>(last - begin);
  const auto start = std::chrono::steady_clock::now();
  madvise(begin, size, MADV_POPULATE_WRITE);
  const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
  provided_ = last;
  if (usesLargePages_ && time.count() > slowestLargePages * static_cast<double>(size)) {
    usesLargePages_ = false;
    madvise(first_, static_cast<size_t>(end_ - first_), MADV_NOHUGEPAGE);
  }
}

#else

void ZQPageProvider::begin(void*, size_t) {
}
void ZQPageProvider::beginWithSmallPages(void*, size_t) {
}
void ZQPageProvider::provideUpTo(const char*, const char*) {
}

#endif

}  // namespace zmatrix
