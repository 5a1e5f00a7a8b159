#include "music/ZQRecordSlab.h"

#include "frame/ZQMemory.h"

namespace zmatrix {

namespace {

constexpr size_t headerOfChunk = 16;  // keeps records aligned for their 64-bit value

// The heap's own header then fits in front of the next chunk, so that aligned chunks lie side by side.
constexpr size_t roomForHeapHeader = 64;

}  // namespace

void ZQRecordSlab::releaseElsewhere(void* record) {
  std::unique_lock lock(mutex_);
  firstReleasedElsewhere_ = new (record) Released{firstReleasedElsewhere_};
  numberReleasedElsewhere_++;
  const bool isLast = isAbandoned_ && numberReleasedElsewhere_ == numberOfRecords_;
  lock.unlock();
  if (isLast) delete this;
}

void ZQRecordSlab::abandon() {
  std::unique_lock lock(mutex_);
  isAbandoned_ = true;
  const bool isUnused = numberReleasedElsewhere_ == numberOfRecords_;
  lock.unlock();
  if (isUnused) delete this;
}

bool ZQRecordSlab::provide() {
  takeFromElsewhere();
  return firstReleased_ != nullptr || next_ != end_ || addChunk();
}

void ZQRecordSlab::takeFromElsewhere() {
  const std::lock_guard lock(mutex_);
  if (numberReleasedElsewhere_ == 0) return;
  firstReleased_ = firstReleasedElsewhere_;  // called only while firstReleased is null
  numberOfRecords_ -= numberReleasedElsewhere_;
  firstReleasedElsewhere_ = nullptr;
  numberReleasedElsewhere_ = 0;
  if (numberOfRecords_ == 0) restart();
}

bool ZQRecordSlab::addChunk() {
  static_assert(sizeof(Chunk) <= headerOfChunk);
  auto* chunk = static_cast<Chunk*>(systemAlignedMalloc(sizeOfChunk, sizeOfChunk - roomForHeapHeader));
  if (chunk == nullptr) return false;
  lastChunk_ = new (chunk) Chunk{this, lastChunk_};
  handOutFrom(chunk);
  return true;
}

void ZQRecordSlab::handOutFrom(Chunk* chunk) {
  next_ = reinterpret_cast<char*>(chunk) + headerOfChunk;
  end_ = next_ + (sizeOfChunk - roomForHeapHeader - headerOfChunk) / recordSize_ * recordSize_;
}

void ZQRecordSlab::restart() {
  releaseChunks(lastChunk_->previous);
  lastChunk_->previous = nullptr;
  handOutFrom(lastChunk_);
  firstReleased_ = nullptr;
}

void ZQRecordSlab::releaseChunks(Chunk* from) {
  while (from != nullptr) {
    Chunk* previous = from->previous;
    systemFree(from);
    from = previous;
  }
}

}  // namespace zmatrix
