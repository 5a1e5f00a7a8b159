#include "music/ZQRecordSlab.h"

#include "frame/ZQMemory.h"

namespace {

constexpr size_t headerOfChunk = 16;          // keeps records aligned for their 64-bit value
constexpr size_t mostRecordsInChunk = 16384;  // about half a megabyte: few heap calls, and little waste

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

void ZQRecordSlab::releaseChunks(Chunk* from) {
  while (from != nullptr) {
    Chunk* previous = from->previous;
    systemFree(from);
    from = previous;
  }
}

void ZQRecordSlab::restart() {
  if (lastChunk == nullptr) return;
  releaseChunks(lastChunk->previous);
  lastChunk->previous = nullptr;
  next = reinterpret_cast<char*>(lastChunk) + headerOfChunk;
  firstReleased = nullptr;
}

void ZQRecordSlab::clear() {
  releaseChunks(lastChunk);
  lastChunk = nullptr;
  next = end = nullptr;
  firstReleased = nullptr;
  recordsInNextChunk = 256;
}
