// Memory for the many small objects of one class: an address for each, but not a trip to the heap. Each thread takes them from a
// slab of its own and may release those of others. With the address sanitizer each object has a block of its own, so that a use
// after release is seen.
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
  static void* allocate() {
    return systemMalloc(sizeof(Object));
  }
  static void release(void* memory) {
    systemFree(memory);
  }
#else
  /// Room for one object, or null if memory has run out.
  static void* allocate() {
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
    void watch() {}  // a first use has the destructor run
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
