// Memory for records of one size: large chunks handed out in order, and a list of records given back, used again first. A record
// never moves. All memory goes back when the slab is cleared.
#pragma once

#include <cstddef>

namespace zmatrix {

class ZQRecordSlab {
 public:
  ZQRecordSlab() = default;
  ~ZQRecordSlab() { clear(); }
  ZQRecordSlab(const ZQRecordSlab&) = delete;
  ZQRecordSlab& operator=(const ZQRecordSlab&) = delete;

  /// Sets the size of a record in bytes; only while nothing is allocated.
  void setRecordSize(size_t size) { recordSize = size < sizeof(void*) ? sizeof(void*) : size; }
  size_t getRecordSize() const { return recordSize; }

  /// Room for one record, its content undefined, or null if memory has run out.
  void* allocate() {
    if (firstReleased != nullptr) {
      Released* record = firstReleased;
      firstReleased = record->next;
      return record;
    }
    if (next == end && !addChunk()) return nullptr;
    void* record = next;
    next += recordSize;
    return record;
  }

  /// Takes a record back for the next allocate().
  void release(void* record) {
    Released* released = static_cast<Released*>(record);
    released->next = firstReleased;
    firstReleased = released;
  }

  /// Gives all memory back to the heap; every record is gone.
  void clear();

  /// Every record is gone, and the memory but for the chunk in use, which the next records come from.
  void restart();

 private:
  struct Released {
    Released* next;
  };
  struct Chunk {
    Chunk* previous;
  };

  void releaseChunks(Chunk* from);
  bool addChunk();

  size_t recordSize = 32;
  size_t recordsInNextChunk = 256;
  char* next = nullptr;
  char* end = nullptr;
  Released* firstReleased = nullptr;
  Chunk* lastChunk = nullptr;
};

}  // namespace zmatrix
