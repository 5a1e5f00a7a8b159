// Ownership, inside the library, of memory that comes from systemMalloc.
#pragma once

#include <memory>

#include "frame/ZQMemory.h"

namespace zmatrix {

struct SystemFree {
  void operator()(void* pointer) const noexcept { systemFree(pointer); }
};

/// An array of T that is released through systemFree; release() hands it to a host.
template <class T>
using SystemOwned = std::unique_ptr<T[], SystemFree>;

}  // namespace zmatrix
