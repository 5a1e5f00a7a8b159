// Memory for records of one size: large chunks, used from begin to end, and a list of released records, which are reused first. A
// record never moves. Clearing the slab frees all memory.
#pragma once

#include <cstddef>

class ZQRecordSlab {
 public:
  ZQRecordSlab() = default;
  ~ZQRecordSlab() { clear(); }
  ZQRecordSlab(const ZQRecordSlab&) = delete;
  ZQRecordSlab& operator=(const ZQRecordSlab&) = delete;

  /// Sets the size of a record in bytes; only while no record is allocated.
  void setRecordSize(size_t size) { recordSize = size < sizeof(void*) ? sizeof(void*) : size; }
  size_t getRecordSize() const { return recordSize; }

  /// Room for one record with undefined content, or null without memory.
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

  /// Makes a record available to the next allocate().
  void release(void* record) {
    Released* released = static_cast<Released*>(record);
    released->next = firstReleased;
    firstReleased = released;
  }

  /// Frees all chunks; all records become invalid.
  void clear();

  /// Frees all chunks except for the current one, which is reused; all records become invalid.
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
