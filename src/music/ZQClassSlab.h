// Memory for the many small objects of one class, without a heap call for each. Each thread allocates from its own slab and may
// release objects of other threads. Under the address sanitizer each object has a heap block of its own, so that a use after
// release is detected.
#pragma once

#include <new>

#include "frame/ZQMemory.h"
#include "music/ZQRecordSlab.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZMATRIX_HEAP_BLOCK_FOR_EACH_OBJECT 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZMATRIX_HEAP_BLOCK_FOR_EACH_OBJECT 1
#endif
#endif

namespace zmatrix {

template <class Object>
class ZQClassSlab {
 public:
#ifdef ZMATRIX_HEAP_BLOCK_FOR_EACH_OBJECT
  [[nodiscard]] static void* allocate() {
    return systemMalloc(sizeof(Object));
  }
  static void release(void* memory) {
    systemFree(memory);
  }
#else
  /// Room for one object, or null if memory runs out.
  [[nodiscard]] static void* allocate() {
    ZQRecordSlab* slab = slabOfThread;
    if (slab == nullptr) slab = createSlab();
    return slab != nullptr ? slab->allocate() : nullptr;
  }

  static void release(void* memory) {
    if (memory == nullptr) return;
    ZQRecordSlab* slab = ZQRecordSlab::of(memory);
    if (slab == slabOfThread)
      slab->release(memory);
    else
      slab->releaseElsewhere(memory);
  }

 private:
  struct AbandonsSlabAtEndOfThread {
    void watch() {}  // makes the compiler register the destructor with the thread
    ~AbandonsSlabAtEndOfThread() {
      if (slabOfThread != nullptr) slabOfThread->abandon();
      slabOfThread = nullptr;
    }
  };

  [[gnu::noinline]] static ZQRecordSlab* createSlab() {
    static thread_local AbandonsSlabAtEndOfThread endOfThread;
    endOfThread.watch();
    return slabOfThread = new (std::nothrow) ZQRecordSlab(sizeof(Object));
  }

  static inline constinit thread_local ZQRecordSlab* slabOfThread = nullptr;
#endif
};

}  // namespace zmatrix
