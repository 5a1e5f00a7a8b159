#include "store/ZQRecordSlab.h"

#include "frame/ZQMemory.h"

namespace {

constexpr size_t headerOfChunk = 16;          // keeps records aligned for their 64-bit value
constexpr size_t mostRecordsInChunk = 16384;  // half a megabyte or so: large enough to be rare, small enough to waste little

}  // namespace

bool ZQRecordSlab::addChunk() {
  static_assert(sizeof(Chunk) <= headerOfChunk);
  const size_t bytes = recordsInNextChunk * recordSize;
  Chunk* chunk = static_cast<Chunk*>(systemMalloc(headerOfChunk + bytes));
  if (chunk == nullptr) return false;
  chunk->previous = lastChunk;
  lastChunk = chunk;
  next = reinterpret_cast<char*>(chunk) + headerOfChunk;
  end = next + bytes;
  if (recordsInNextChunk < mostRecordsInChunk) recordsInNextChunk *= 2;
  return true;
}

void ZQRecordSlab::clear() {
  while (lastChunk != nullptr) {
    Chunk* previous = lastChunk->previous;
    systemFree(lastChunk);
    lastChunk = previous;
  }
  next = end = nullptr;
  firstReleased = nullptr;
  recordsInNextChunk = 256;
}
