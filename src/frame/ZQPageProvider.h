// Provides the pages of a large allocation that is filled from its begin to its end. Without this the system provides pages one
// by one at the first write to each, which costs more than the writing itself. Here they are requested in larger pieces, and as
// large pages where those are not slower. This affects speed only: on a system without these calls nothing happens.
#pragma once

#include <cstddef>

namespace zmatrix {

class ZQPageProvider {
 public:
  /// Begins with an allocation that was just made; null and 0 if there is none.
  void begin(void* memory, size_t size);
  /// The same for an allocation, or a part of one, that always gets small pages.
  void beginWithSmallPages(void* memory, size_t size);

  /// Provides the pages of a part of the allocation that is about to be written. Parts come in ascending order.
  void provide(const void* memory, size_t size) {
    const char* endOfPart = static_cast<const char*>(memory) + size;
    if (endOfPart > provided_) provideUpTo(static_cast<const char*>(memory), endOfPart);
  }

 private:
  void provideUpTo(const char* from, const char* to);

  char* first_ = nullptr;
  char* provided_ = nullptr;  // pages below this address are provided, or were skipped
  char* end_ = nullptr;
  bool usesLargePages_ = false;
};

}  // namespace zmatrix
