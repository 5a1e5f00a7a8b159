// Memory for records of one size: large chunks, used from begin to end, and a list of released records, which are reused first. A
// record never moves. A slab belongs to one thread, which allocates from it without a lock; other threads may release records.
// Chunks are aligned to their size, so that the address of a record gives its chunk, and that its slab.
//
// When the last record is released, all chunks but one are freed. Records that other threads released are counted only when the
// slab's own thread needs memory, or ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>

namespace zmatrix {

class ZQRecordSlab {
 public:
  /// A slab for records of `size` bytes.
  explicit ZQRecordSlab(size_t size) : recordSize_(size < sizeof(void*) ? sizeof(void*) : size) {}
  ZQRecordSlab(const ZQRecordSlab&) = delete;
  ZQRecordSlab& operator=(const ZQRecordSlab&) = delete;

  /// The slab of a record.
  static ZQRecordSlab* of(void* record) {
    return reinterpret_cast<Chunk*>(reinterpret_cast<uintptr_t>(record) & ~(sizeOfChunk - 1))->slab;
  }

  /// Room for one record with undefined content, or null if memory runs out. Only in the slab's own thread.
  void* allocate() {
    if (firstReleased_ == nullptr && next_ == end_ && !provide()) return nullptr;
    numberOfRecords_++;
    if (firstReleased_ != nullptr) {
      Released* record = firstReleased_;
      firstReleased_ = record->next;
      return record;
    }
    void* record = next_;
    next_ += recordSize_;
    return record;
  }

  /// Makes a record available to the next allocate(). Only in the slab's own thread.
  void release(void* record) {
    firstReleased_ = new (record) Released{firstReleased_};
    if (--numberOfRecords_ == 0) restart();
  }

  /// Releases a record in any other thread.
  void releaseElsewhere(void* record);

  /// Called at the end of the slab's thread: deletes the slab, now or when the last record is released.
  void abandon();

 private:
  static constexpr size_t sizeOfChunk = size_t{1} << 18;  // few heap calls, and little waste

  struct Released {
    Released* next;
  };
  struct Chunk {
    ZQRecordSlab* slab;
    Chunk* previous;
  };

  ~ZQRecordSlab() { releaseChunks(lastChunk_); }
  bool provide();
  bool addChunk();
  void takeFromElsewhere();
  void restart();
  void handOutFrom(Chunk* chunk);
  static void releaseChunks(Chunk* from);

  const size_t recordSize_;
  size_t numberOfRecords_ = 0;  ///< allocated and not yet released in the slab's own thread
  char* next_ = nullptr;
  char* end_ = nullptr;
  Released* firstReleased_ = nullptr;
  Chunk* lastChunk_ = nullptr;

  std::mutex mutex_;  ///< guards the members below, and numberOfRecords once isAbandoned is set
  Released* firstReleasedElsewhere_ = nullptr;
  size_t numberReleasedElsewhere_ = 0;
  bool isAbandoned_ = false;
};

}  // namespace zmatrix
