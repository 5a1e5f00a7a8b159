// Handles as a host gets them: an array of systemMalloc, with room for 10 at first, cut to size at the end.
#pragma once

#include "frame/ZQGrowth.h"
#include "frame/ZQSystemOwned.h"

namespace zmatrix {

class ZQHandleList {
 public:
  /// False if memory has run out.
  bool add(int handle) {
    if (numberOfHandles >= capacity || handles == nullptr) {
      const int wanted = handles == nullptr ? capacity : grownCapacity(capacity);
      if (!resize(wanted)) return false;
      capacity = wanted;
    }
    handles[numberOfHandles++] = handle;
    return true;
  }
  int size() const { return numberOfHandles; }
  int* releaseFitted() {
    if (numberOfHandles > 0) resize(numberOfHandles);
    return handles.release();
  }

 private:
  bool resize(int newCapacity) {
    auto* resized = static_cast<int*>(systemRealloc(handles.get(), static_cast<size_t>(newCapacity) * sizeof(int)));
    if (resized == nullptr) return false;
    static_cast<void>(handles.release());
    handles.reset(resized);
    return true;
  }

  SystemOwned<int> handles;
  int capacity = 10;
  int numberOfHandles = 0;
};

}  // namespace zmatrix
