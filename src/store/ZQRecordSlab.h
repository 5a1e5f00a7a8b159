// Memory for the element records of one matrix: large chunks handed out in order, so that the records of one learning pass lie in
// a row, and a list of records given back, used again first. A record never moves. All memory goes back when the slab is cleared.
#pragma once

#include <cstddef>

#include "frame/ZQPageProvider.h"

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
    if (next == end && !provideRecords()) return nullptr;
    void* record = next;
    next += recordSize;
    return record;
  }

  /// Provides for so many records that are about to be written, in one piece. Nothing happens if memory doesn't suffice for them
  /// all.
  void reserve(size_t numberOfRecords);

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

  bool provideRecords();
  void releaseChunks(Chunk* from);
  bool addChunk(size_t numberOfRecords);

  size_t recordSize = 32;
  size_t recordsInNextChunk = 256;
  char* next = nullptr;
  char* end = nullptr;
  char* endOfChunk = nullptr;  // above `end` only in what was reserved
  Released* firstReleased = nullptr;
  Chunk* lastChunk = nullptr;
  zmatrix::ZQPageProvider pages;  // of what was reserved
};
