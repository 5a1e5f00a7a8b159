// Memory for the many small objects of one class, without a heap call for each. When the last object is released, all memory is
// freed except for one chunk of at most half a megabyte. Under the address sanitizer each object has a heap block of its own, so
// that a use after release is detected.
#pragma once

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
  /// Room for one object, or null without memory.
  static void* allocate() {
    void* memory = slab.allocate();
    if (memory != nullptr) livingObjects++;
    return memory;
  }

  static void release(void* memory) {
    if (memory == nullptr) return;
    slab.release(memory);
    if (--livingObjects == 0) slab.restart();
  }

 private:
  struct Slab : ZQRecordSlab {
    Slab() { setRecordSize(sizeof(Object)); }
  };
  static inline Slab slab;
  static inline size_t livingObjects = 0;
#endif
};

}  // namespace zmatrix
