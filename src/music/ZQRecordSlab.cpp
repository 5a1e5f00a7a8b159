#include "music/ZQRecordSlab.h"

#include "frame/ZQMemory.h"

namespace zmatrix {

namespace {

constexpr size_t headerOfChunk = 16;  // keeps records aligned for their 64-bit value

}  // namespace

void ZQRecordSlab::releaseElsewhere(void* record) {
  std::unique_lock lock(mutex);
  firstReleasedElsewhere = new (record) Released{firstReleasedElsewhere};
  numberReleasedElsewhere++;
  const bool isLast = isAbandoned && numberReleasedElsewhere == numberOfRecords;
  lock.unlock();
  if (isLast) delete this;
}

void ZQRecordSlab::abandon() {
  std::unique_lock lock(mutex);
  isAbandoned = true;
  const bool isUnused = numberReleasedElsewhere == numberOfRecords;
  lock.unlock();
  if (isUnused) delete this;
}

bool ZQRecordSlab::provide() {
  takeFromElsewhere();
  return firstReleased != nullptr || next != end || addChunk();
}

void ZQRecordSlab::takeFromElsewhere() {
  const std::lock_guard lock(mutex);
  if (numberReleasedElsewhere == 0) return;
  firstReleased = firstReleasedElsewhere;  // called only while firstReleased is null
  numberOfRecords -= numberReleasedElsewhere;
  firstReleasedElsewhere = nullptr;
  numberReleasedElsewhere = 0;
  if (numberOfRecords == 0) restart();
}

bool ZQRecordSlab::addChunk() {
  static_assert(sizeof(Chunk) <= headerOfChunk);
  auto* chunk = static_cast<Chunk*>(systemAlignedMalloc(sizeOfChunk, sizeOfChunk));
  if (chunk == nullptr) return false;
  lastChunk = new (chunk) Chunk{this, lastChunk};
  handOutFrom(chunk);
  return true;
}

void ZQRecordSlab::handOutFrom(Chunk* chunk) {
  next = reinterpret_cast<char*>(chunk) + headerOfChunk;
  end = next + (sizeOfChunk - headerOfChunk) / recordSize * recordSize;
}

void ZQRecordSlab::restart() {
  releaseChunks(lastChunk->previous);
  lastChunk->previous = nullptr;
  handOutFrom(lastChunk);
  firstReleased = nullptr;
}

void ZQRecordSlab::releaseChunks(Chunk* from) {
  while (from != nullptr) {
    Chunk* previous = from->previous;
    systemFree(from);
    from = previous;
  }
}

}  // namespace zmatrix
