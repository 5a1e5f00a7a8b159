// Memory for records of one size: large chunks handed out in order, and a list of records given back, used again first. A record
// never moves. A slab belongs to one thread, which takes records from it without a lock; other threads may give records back. The
// chunks are aligned to their size, so that the address of a record leads to its slab.
//
// When the last record comes back all memory goes but for one chunk. Records that other threads give back count only when the
// slab's own thread looks for memory, or ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>

namespace zmatrix {

class ZQRecordSlab {
 public:
  /// For records of `size` bytes.
  explicit ZQRecordSlab(size_t size) : recordSize(size < sizeof(void*) ? sizeof(void*) : size) {}
  ZQRecordSlab(const ZQRecordSlab&) = delete;
  ZQRecordSlab& operator=(const ZQRecordSlab&) = delete;

  /// The slab that a record comes from.
  static ZQRecordSlab* of(void* record) {
    return reinterpret_cast<Chunk*>(reinterpret_cast<uintptr_t>(record) & ~(sizeOfChunk - 1))->slab;
  }

  /// Room for one record, its content undefined, or null if memory has run out. For the slab's own thread.
  void* allocate() {
    if (firstReleased == nullptr && next == end && !provide()) return nullptr;
    numberOfRecords++;
    if (firstReleased != nullptr) {
      Released* record = firstReleased;
      firstReleased = record->next;
      return record;
    }
    void* record = next;
    next += recordSize;
    return record;
  }

  /// Takes a record back for the next allocate(). For the slab's own thread.
  void release(void* record) {
    firstReleased = new (record) Released{firstReleased};
    if (--numberOfRecords == 0) restart();
  }

  /// Takes a record back in any other thread.
  void releaseElsewhere(void* record);

  /// Parts the slab from its thread, which has no more use for it: it is deleted, now or with the last record given back.
  void abandon();

 private:
  static constexpr size_t sizeOfChunk = size_t{1} << 18;  // large enough to be rare, small enough to waste little

  struct Released {
    Released* next;
  };
  struct Chunk {
    ZQRecordSlab* slab;
    Chunk* previous;
  };

  ~ZQRecordSlab() { releaseChunks(lastChunk); }
  bool provide();
  bool addChunk();
  void takeFromElsewhere();
  void restart();
  void handOutFrom(Chunk* chunk);
  static void releaseChunks(Chunk* from);

  const size_t recordSize;
  size_t numberOfRecords = 0;  ///< handed out and not yet taken back here
  char* next = nullptr;
  char* end = nullptr;
  Released* firstReleased = nullptr;
  Chunk* lastChunk = nullptr;

  std::mutex mutex;  ///< guards what follows; numberOfRecords stands once the slab is abandoned
  Released* firstReleasedElsewhere = nullptr;
  size_t numberReleasedElsewhere = 0;
  bool isAbandoned = false;
};

}  // namespace zmatrix
