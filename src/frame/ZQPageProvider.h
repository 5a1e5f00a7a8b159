// The pages of a large allocation that is filled from its begin to its end. The system would provide them one by one, each at the
// first write to it, which costs more than the writing. Here they come in pieces, and large ones where that is no slower. Only
// for speed: where the system has no such calls nothing happens.
#pragma once

#include <cstddef>

namespace zmatrix {

class ZQPageProvider {
 public:
  /// Begins with an allocation that was just made; null and 0 for none.
  void begin(void* memory, size_t size);
  /// The same for an allocation, or a part of one, that gets small pages in any case.
  void beginWithSmallPages(void* memory, size_t size);

  /// Provides the pages of a part of the allocation that is going to be written next. Parts come in ascending order.
  void provide(const void* memory, size_t size) {
    const char* endOfPart = static_cast<const char*>(memory) + size;
    if (endOfPart > provided) provideUpTo(static_cast<const char*>(memory), endOfPart);
  }

 private:
  void provideUpTo(const char* from, const char* to);

  char* first = nullptr;
  char* provided = nullptr;  // what lies below has its pages, or does without
  char* end = nullptr;
  bool usesLargePages = false;
};

}  // namespace zmatrix
