#include "store/ZQRecordSlab.h"

#include <algorithm>
#include <cstdint>

#include "frame/ZQMemory.h"

namespace {

constexpr size_t headerOfChunk = 16;            // keeps records aligned for their 64-bit value
constexpr size_t mostRecordsInChunk = 1048576;  // some 40 MB, of which only what is handed out is provided
constexpr size_t recordsProvidedAtOnce = 8192;  // of a reserved chunk: what the second level of a cache holds

}  // namespace

bool ZQRecordSlab::addChunk(size_t numberOfRecords) {
  static_assert(sizeof(Chunk) <= headerOfChunk);
  Chunk* chunk = static_cast<Chunk*>(systemMalloc(headerOfChunk + numberOfRecords * recordSize));
  if (chunk == nullptr) return false;
  chunk->previous = lastChunk;
  lastChunk = chunk;
  next = end = reinterpret_cast<char*>(chunk) + headerOfChunk;
  endOfChunk = next + numberOfRecords * recordSize;
  return true;
}

bool ZQRecordSlab::provideRecords() {
  if (end == endOfChunk) {
    if (!addChunk(recordsInNextChunk)) return false;
    if (recordsInNextChunk < mostRecordsInChunk) recordsInNextChunk *= 2;
    pages.begin(next, static_cast<size_t>(endOfChunk - next));
  }
  const size_t recordsLeft = static_cast<size_t>(endOfChunk - end) / recordSize;
  const size_t bytes = std::min(recordsLeft, recordsProvidedAtOnce) * recordSize;
  pages.provide(end, bytes);
  end += bytes;
  return true;
}

void ZQRecordSlab::reserve(size_t numberOfRecords) {
  if (numberOfRecords == 0 || numberOfRecords > SIZE_MAX / 2 / recordSize || !addChunk(numberOfRecords)) return;
  pages.begin(next, static_cast<size_t>(endOfChunk - next));
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
  next = end = endOfChunk = nullptr;
  firstReleased = nullptr;
  recordsInNextChunk = 256;
}
